#include "cli/Commands.h"
#include "cli/Results.h"
#include "cli/SettingsDocument.h"

#include <cstddef>
#include <string>

namespace fernhop::cli {
namespace {

std::string counted(std::size_t count, const std::string &noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

} // namespace

CommandResult carryOut(const command::Export &, const Call &call) {
    if (const auto problem = call.context.session.settingsProblem())
        return failed(*problem + " Nothing was exported.");
    return done(encodeSettings(storedSettings(call.context.preferences)));
}

CommandResult carryOut(const command::Import &, const Call &call) {
    const auto decoded = decodeSettings(call.input);
    if (const auto *fault = std::get_if<std::string>(&decoded))
        return refusedDocument(*fault);
    const auto &document = std::get<SettingsDocument>(decoded);
    const bool stored = storeSettings(document, call.context.preferences);
    call.context.controller.rebuildMenu();
    if (!stored)
        return failed("The settings could not be stored.");
    return done("Stored " + counted(document.urlRules.size(), "URL rule") + " and " +
                counted(document.appRules.size(), "app rule") + ".\n");
}

} // namespace fernhop::cli
