#pragma once

#include "cli/Command.h"
#include "platform/CommandResult.h"

#include <string>
#include <variant>
#include <vector>

namespace fernhop::cli {

/// Understands the words after the program's name. The result is the command; or what answers without one: a
/// help text, the version, or the complaint about wrong usage. Words may be any bytes. A word that begins
/// with "-" is an option only when it could be the name of one (letters and hyphens) and no "--" stands
/// before it.
[[nodiscard]] std::variant<Command, CommandResult> parseCommand(const std::vector<std::string> &words);

} // namespace fernhop::cli
