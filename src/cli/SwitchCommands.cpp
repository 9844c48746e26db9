#include "cli/Commands.h"
#include "cli/NameLookup.h"
#include "cli/PlainText.h"
#include "cli/Results.h"
#include "platform/ui/Button.h"
#include "platform/ui/MenuItem.h"

#include <string>

namespace fernhop::cli {

namespace {

CommandResult turnRoutingOn(const Context &context) {
    // With a fallback that is lost, links that no rule matches would not go where they go now.
    if (!context.defaultHandlers.isRoutingEnabled() && !context.defaultHandlers.rememberFallback())
        return failed("App Routing stays off: the fallback browser could not be stored.");
    context.defaultHandlers.turnAppRoutingOn();
    if (!context.defaultHandlers.isRoutingEnabled())
        return failed("The system refused to turn App Routing on. 'fernhop status' may show why.");
    return done("App Routing is on.\n");
}

CommandResult turnRoutingOff(const Context &context) {
    if (context.defaultHandlers.isRoutingEnabled())
        context.defaultHandlers.disableAppRouting();
    if (!context.defaultHandlers.isRoutingEnabled())
        return done("App Routing is off.\n");
    if (!context.defaultHandlers.effectiveDefaultBrowserID())
        return failed("App Routing stays on: there is no browser to take over the links.");
    return failed("The system refused to turn App Routing off. 'fernhop status' may show why.");
}

bool isDefault(const std::string &bundleID, const LaunchServices &launchServices) {
    return launchServices.copyDefaultHandlerForUrlScheme("http") == bundleID &&
           launchServices.copyDefaultHandlerForUrlScheme("https") == bundleID;
}

} // namespace

CommandResult carryOut(const command::SwitchRouting &routing, const Call &call) {
    return routing.on ? turnRoutingOn(call.context) : turnRoutingOff(call.context);
}

CommandResult carryOut(const command::SetDefault &choice, const Call &call) {
    const auto browser = lookUpBrowser(choice.browser, BrowserKind::listed, call.context);
    if (const auto *failure = std::get_if<CommandResult>(&browser))
        return *failure;
    ui::MenuItem item;
    item.representedObject = std::get<std::string>(browser);
    call.context.defaultHandlers.switchSystemDefaultBrowser(&item);
    const std::string description = describeApplication(std::get<std::string>(browser), call.context);
    if (!isDefault(std::get<std::string>(browser), call.context.launchServices))
        return failed("The system did not accept " + description + " as the default browser.");
    return done("The default browser is " + plain(description) + ".\n");
}

CommandResult carryOut(const command::RestoreOnQuit &restore, const Call &call) {
    ui::Button checkBox;
    checkBox.state = restore.on ? ui::ControlState::on : ui::ControlState::off;
    if (!call.context.defaultHandlers.toggleRestoreDefaultBrowserOnQuit(&checkBox))
        return failed("The change could not be stored.");
    return done(std::string("The default browser is ") + (restore.on ? "" : "not ") +
                "restored when Fernhop quits.\n");
}

CommandResult carryOut(const command::Run &, const Call &call) {
    return call.context.session.running() ? done("Fernhop is already running.\n")
                                          : failed("Fernhop is not running.");
}

CommandResult carryOut(const command::Refresh &, const Call &call) {
    // Without a running Fernhop nothing is out of date: each start and each command scans anew.
    return done(call.context.controller.refresh() ? "" : "Fernhop is not running.\n");
}

CommandResult carryOut(const command::Quit &, const Call &call) {
    return done(call.context.controller.quit() ? "" : "Fernhop is not running.\n");
}

} // namespace fernhop::cli
