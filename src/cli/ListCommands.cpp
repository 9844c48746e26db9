#include "cli/Commands.h"
#include "cli/Json.h"
#include "cli/NameLookup.h"
#include "cli/PlainText.h"
#include "cli/Results.h"
#include "cli/Table.h"

#include <string>

namespace fernhop::cli {

namespace {

std::string joined(const std::set<std::string> &words) {
    std::string result;
    for (const auto &word : words)
        result += (result.empty() ? "" : " ") + word;
    return result;
}

template <typename List>
std::string arrayText(const List &list) {
    Json array = Json::array();
    for (const auto &entry : list)
        array.push_back(toJson(entry));
    return documentText(array);
}

std::string onOff(bool value) {
    return value ? "on" : "off";
}

Json iconName(IconPlace place) {
    switch (place) {
    case IconPlace::panel:
        return "panel";
    case IconPlace::xembedTray:
        return "xembedTray";
    case IconPlace::nowhere:
        break;
    }
    return nullptr;
}

std::string iconText(const SessionReport &session) {
    switch (session.iconPlace()) {
    case IconPlace::panel:
        return "shown by a panel that supports StatusNotifierItem";
    case IconPlace::xembedTray:
        return "shown by an XEmbed tray";
    case IconPlace::nowhere:
        break;
    }
    return session.running()
               ? "not shown: there is no panel or tray for it (GNOME needs its AppIndicator extension)"
               : "not shown";
}

struct State {
    bool routing;
    std::optional<std::string> httpHandler;
    std::optional<std::string> httpsHandler;
    std::optional<std::string> fallback;
    bool restoreOnQuit;
    std::vector<std::string> problems;
};

std::vector<std::string> problemsIn(const Context &context) {
    auto problems = context.session.problems();
    if (const auto settings = context.session.settingsProblem())
        problems.insert(problems.begin(), *settings);
    if (context.controller.installedBrowsers().empty())
        problems.emplace_back("No web browser was found, so no link can be opened.");
    return problems;
}

State stateOf(const Context &context) {
    const UserDefaults &defaults = context.preferences.userDefaults();
    return {context.defaultHandlers.isRoutingEnabled(),
            context.launchServices.copyDefaultHandlerForUrlScheme("http"),
            context.launchServices.copyDefaultHandlerForUrlScheme("https"),
            defaults.stringForKey(settingsKey::routingFallbackBrowserID),
            defaults.boolForKey(settingsKey::restoresDefaultBrowserOnQuit),
            problemsIn(context)};
}

Json statusDocument(const State &state, const SessionReport &session) {
    return {{"routing", state.routing},
            {"httpHandler", toJson(state.httpHandler)},
            {"httpsHandler", toJson(state.httpsHandler)},
            {"fallback", toJson(state.fallback)},
            {"restoreOnQuit", state.restoreOnQuit},
            {"source", toJson(session.source())},
            {"sourceProvider", session.sourceProvider()},
            {"running", session.running()},
            {"icon", iconName(session.iconPlace())},
            {"problems", state.problems}};
}

std::string statusText(const State &state, const Context &context) {
    const auto named = [&](const std::optional<std::string> &bundleID, const char *otherwise) {
        return bundleID ? plain(describeApplication(*bundleID, context)) : std::string(otherwise);
    };
    const SessionReport &session = context.session;
    std::string text =
        "Fernhop:            " + std::string(session.running() ? "running" : "not running") + "\n";
    text += "Icon:               " + iconText(session) + "\n";
    text += "App Routing:        " + onOff(state.routing) + "\n";
    text += "Handler of http:    " + named(state.httpHandler, "none") + "\n";
    text += "Handler of https:   " + named(state.httpsHandler, "none") + "\n";
    text += "Fallback browser:   " + named(state.fallback, "none stored") + "\n";
    text += "Restore on quit:    " + onOff(state.restoreOnQuit) + "\n";
    text += "Source application: " + named(session.source(), "unknown") + "\n";
    text += "Source reported by: " + plain(session.sourceProvider()) + "\n";
    for (const auto &problem : state.problems)
        text += "Problem: " + plain(problem) + "\n";
    return text;
}

} // namespace

CommandResult carryOut(const command::Status &status, const Call &call) {
    const State state = stateOf(call.context);
    return done(status.json ? documentText(statusDocument(state, call.context.session))
                            : statusText(state, call.context));
}

CommandResult carryOut(const command::ListApps &list, const Call &call) {
    const auto &applications = call.context.controller.installedApplications();
    if (list.json)
        return done(arrayText(applications));
    if (applications.empty())
        return done("No applications found.\n");
    Table table({"NAME", "IDENTIFIER", "URL SCHEMES"});
    for (const auto &application : applications)
        table.add({application.name, application.bundleID, joined(application.urlSchemes)});
    return done(table.text());
}

CommandResult carryOut(const command::ListBrowsers &list, const Call &call) {
    const auto &browsers = call.context.controller.installedBrowsers();
    if (list.json)
        return done(arrayText(browsers));
    if (browsers.empty())
        return done("No browsers found.\n");
    Table table({"NAME", "IDENTIFIER"});
    for (const auto &browser : browsers)
        table.add({browser.name, browser.bundleID});
    return done(table.text());
}

CommandResult carryOut(const command::ListURLRules &list, const Call &call) {
    const auto rules = call.context.preferences.urlRules();
    if (list.json)
        return done(arrayText(rules));
    if (rules.empty())
        return done("No URL rules yet.\n");
    Table table({"ID", "PATTERN", "BROWSER"});
    for (const auto &rule : rules)
        table.add({rule.id, rule.pattern, describeApplication(rule.browserBundleID, call.context)});
    return done(table.text());
}

CommandResult carryOut(const command::ListAppRules &list, const Call &call) {
    const auto rules = call.context.preferences.appRules();
    if (list.json) {
        Json array = Json::array();
        for (const auto &[app, browser] : rules)
            array.push_back({{"sourceBundleID", app}, {"browserBundleID", browser}});
        return done(documentText(array));
    }
    if (rules.empty())
        return done("No app rules yet.\n");
    Table table({"APPLICATION", "BROWSER"});
    for (const auto &[app, browser] : rules)
        table.add({describeApplication(app, call.context), describeApplication(browser, call.context)});
    return done(table.text());
}

} // namespace fernhop::cli
