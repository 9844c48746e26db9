#pragma once

#include "cli/Context.h"
#include "platform/CommandResult.h"

#include <string>
#include <string_view>
#include <vector>

namespace fernhop::cli {

/// Performs one command in this process. `arguments` do not include the program's name; `input` is what the
/// command reads: the document of `import`, the lines of `match`. Neither is trusted: they come from other
/// processes. Reads and writes no files; the client does. Main thread only.
[[nodiscard]] CommandResult perform(const std::vector<std::string> &arguments, std::string_view input,
                                    const Context &context);

} // namespace fernhop::cli
