#pragma once

#include "cli/Command.h"
#include "platform/CommandResult.h"

#include <string>
#include <variant>
#include <vector>

namespace fernhop::cli {

/// Parses the arguments after the program's name. The result is the command, or the final result when there
/// is nothing to carry out: a help text, the version, or an error about wrong usage. Arguments may be any
/// bytes. One that begins with "-" is an option only when it could be the name of one (letters and hyphens)
/// and no
/// "--" precedes it.
[[nodiscard]] std::variant<Command, CommandResult> parseCommand(const std::vector<std::string> &words);

} // namespace fernhop::cli
