#pragma once

#include "cli/Command.h"
#include "cli/Context.h"
#include "platform/CommandResult.h"

#include <string_view>

namespace fernhop::cli {

/// The surroundings of a command.
struct Call {
    std::string_view input; ///< what the command reads
    const Context &context;
};

/// Carries out a command. Only the client reads and writes files: here documents come from the input and go
/// to the output.
[[nodiscard]] CommandResult carryOut(const command::Run &, const Call &call);
[[nodiscard]] CommandResult carryOut(const command::Open &open, const Call &call);
[[nodiscard]] CommandResult carryOut(const command::Explain &explain, const Call &call);
[[nodiscard]] CommandResult carryOut(const command::Match &match, const Call &call);
[[nodiscard]] CommandResult carryOut(const command::Status &status, const Call &call);
[[nodiscard]] CommandResult carryOut(const command::ListApps &list, const Call &call);
[[nodiscard]] CommandResult carryOut(const command::ListBrowsers &list, const Call &call);
[[nodiscard]] CommandResult carryOut(const command::ListURLRules &list, const Call &call);
[[nodiscard]] CommandResult carryOut(const command::AddURLRule &rule, const Call &call);
[[nodiscard]] CommandResult carryOut(const command::EditURLRule &rule, const Call &call);
[[nodiscard]] CommandResult carryOut(const command::RemoveURLRule &rule, const Call &call);
[[nodiscard]] CommandResult carryOut(const command::ListAppRules &list, const Call &call);
[[nodiscard]] CommandResult carryOut(const command::SetAppRule &rule, const Call &call);
[[nodiscard]] CommandResult carryOut(const command::RemoveAppRule &rule, const Call &call);
[[nodiscard]] CommandResult carryOut(const command::SwitchRouting &routing, const Call &call);
[[nodiscard]] CommandResult carryOut(const command::SetDefault &choice, const Call &call);
[[nodiscard]] CommandResult carryOut(const command::RestoreOnQuit &restore, const Call &call);
[[nodiscard]] CommandResult carryOut(const command::Export &, const Call &call);
[[nodiscard]] CommandResult carryOut(const command::Import &, const Call &call);
[[nodiscard]] CommandResult carryOut(const command::ShowDialog &dialog, const Call &call);
[[nodiscard]] CommandResult carryOut(const command::Refresh &, const Call &call);
[[nodiscard]] CommandResult carryOut(const command::Quit &, const Call &call);

} // namespace fernhop::cli
