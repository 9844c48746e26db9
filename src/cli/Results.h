#pragma once

#include "platform/CommandResult.h"

#include <string>
#include <string_view>

namespace fernhop::cli {

/// A command that was carried out and has `output` to show, lines with their ends.
[[nodiscard]] CommandResult done(std::string output);

/// A command that could not be carried out; `reason` is a sentence, made harmless for a terminal here.
[[nodiscard]] CommandResult failed(std::string_view reason);

/// A command that makes no sense whatever the state of the system; `reason` as for `failed`.
[[nodiscard]] CommandResult misused(std::string_view reason);

/// `text` in quotation marks, for a sentence.
[[nodiscard]] std::string inQuotes(std::string_view text);

} // namespace fernhop::cli
