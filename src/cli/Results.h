#pragma once

#include "platform/CommandResult.h"

#include <string>
#include <string_view>

namespace fernhop::cli {

/// Success, with `output` to print, whose lines end with newlines.
[[nodiscard]] CommandResult done(std::string output);

/// Failure; `reason` is a sentence, which is made safe for a terminal here.
[[nodiscard]] CommandResult failed(std::string_view reason);

/// Wrong usage, independent of the system's state; `reason` as for `failed`.
[[nodiscard]] CommandResult misused(std::string_view reason);

/// A line for standard error about something that did not keep the command from its work; `reason` as above.
[[nodiscard]] std::string warning(std::string_view reason);

/// `text` in quotation marks.
[[nodiscard]] std::string inQuotes(std::string_view text);

} // namespace fernhop::cli
