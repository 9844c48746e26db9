#include "cli/Perform.h"

#include "cli/CommandParser.h"
#include "cli/Commands.h"
#include "cli/Results.h"

#include <optional>
#include <type_traits>
#include <variant>

namespace fernhop::cli {

namespace {

template <typename AnyOf, typename... Commands>
constexpr bool isOneOf = (std::is_same_v<AnyOf, Commands> || ...);

/// Whether a command shows or uses rules or settings. Not those that tell by themselves that they cannot be
/// read, nor the one that replaces all of them.
template <typename AnyCommand>
constexpr bool needsSettings =
    !isOneOf<AnyCommand, command::Run, command::Open, command::Match, command::Status, command::ListApps,
             command::ListBrowsers, command::Export, command::Import, command::Refresh, command::Quit>;

template <typename AnyCommand>
CommandResult carryOutWithWarning(const AnyCommand &command, const Call &call) {
    const auto problem = needsSettings<AnyCommand> ? call.context.session.settingsProblem() : std::nullopt;
    CommandResult result = carryOut(command, call);
    if (problem)
        result.errors.insert(0, warning(*problem));
    return result;
}

} // namespace

CommandResult perform(const std::vector<std::string> &arguments, std::string_view input,
                      const Context &context) {
    const auto parsed = parseCommand(arguments);
    if (const auto *answer = std::get_if<CommandResult>(&parsed))
        return *answer;
    const Call call{input, context};
    return std::visit([&](const auto &command) { return carryOutWithWarning(command, call); },
                      std::get<Command>(parsed));
}

} // namespace fernhop::cli
