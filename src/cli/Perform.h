#pragma once

#include "cli/Context.h"
#include "platform/CommandResult.h"

#include <string>
#include <string_view>
#include <vector>

namespace fernhop::cli {

/// Runs one whole command in this process. `arguments` are the words after the program's name; `input` is
/// what the command reads: the document of `import`, the lines of `match`. Arguments and input may be
/// anything: they come from other processes. No files are read or written, which is the client's part. Main
/// thread only.
[[nodiscard]] CommandResult perform(const std::vector<std::string> &arguments, std::string_view input,
                                    const Context &context);

} // namespace fernhop::cli
