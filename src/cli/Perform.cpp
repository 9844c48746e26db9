#include "cli/Perform.h"

#include "cli/CommandParser.h"
#include "cli/Commands.h"

#include <variant>

namespace fernhop::cli {

CommandResult perform(const std::vector<std::string> &arguments, std::string_view input,
                      const Context &context) {
    const auto parsed = parseCommand(arguments);
    if (const auto *answer = std::get_if<CommandResult>(&parsed))
        return *answer;
    const Call call{input, context};
    return std::visit([&](const auto &command) { return carryOut(command, call); },
                      std::get<Command>(parsed));
}

} // namespace fernhop::cli
