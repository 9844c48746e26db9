#include "platform/linux/defaulthandler/RoutingDiagnostics.h"

#include "platform/linux/defaulthandler/XfceBrowser.h"

#include <algorithm>
#include <utility>

namespace fernhop::freedesktop {

namespace {

constexpr std::string_view httpType = "x-scheme-handler/http";
constexpr std::string_view httpsType = "x-scheme-handler/https";

} // namespace

RoutingDiagnostics::RoutingDiagnostics(XdgSession session, const DesktopEntries &desktopEntries,
                                       std::string ownID, std::optional<std::string> browserVariable)
    : places(std::move(session)), entries(desktopEntries), ownDesktopID(std::move(ownID)),
      browser(std::move(browserVariable)), defaults(places, entries), kde(places, entries),
      xfce(places, entries) {}

std::vector<std::string> RoutingDiagnostics::find() const {
    Problems problems;
    findInOwnEntry(problems);
    findInFiles(problems);
    if (isRoutingMeant()) {
        findInDefaults(problems);
        findInXfce(problems);
        findInKde(problems);
    }
    findInEnvironment(problems);
    return problems;
}

bool RoutingDiagnostics::isOurs(const Setting &setting) const {
    if (!setting)
        return false;
    const auto preferred = isXfceOpener(setting->id) ? xfce.setting() : std::nullopt;
    return setting->id == ownDesktopID || (preferred && preferred->id == ownDesktopID);
}

bool RoutingDiagnostics::isRoutingMeant() const {
    const auto preferred = xfce.setting();
    return isOurs(defaults.setting(std::string(httpType))) ||
           isOurs(defaults.setting(std::string(httpsType))) ||
           defaults.userListNames(std::string(httpsType), ownDesktopID) ||
           (places.isDesktop("xfce") && preferred && preferred->id == ownDesktopID);
}

void RoutingDiagnostics::findInOwnEntry(Problems &problems) const {
    const auto entry = entries.entry(ownDesktopID);
    if (!entry) {
        problems.push_back("The desktop entry " + ownDesktopID +
                           ".desktop is not installed where this desktop looks, or its program is missing.");
        return;
    }
    for (const auto type : {httpType, httpsType}) {
        const auto scheme = type.substr(type.find('/') + 1);
        if (std::find(entry->schemes.begin(), entry->schemes.end(), scheme) == entry->schemes.end())
            problems.push_back("The desktop entry " + entry->path + " does not declare " + std::string(type) +
                               ".");
    }
}

void RoutingDiagnostics::findInFiles(Problems &problems) const {
    for (const auto &path : defaults.decisiveUserLists()) {
        if (defaults.isRejected(path))
            problems.push_back(path + " is damaged, so desktops ignore all of it.");
        if (!canReplaceConfigurationFile(path))
            problems.push_back(path + " cannot be written, so the default browser cannot be changed.");
    }
}

std::string RoutingDiagnostics::describe(const std::string &scheme, const Setting &setting) const {
    if (!setting)
        return "No handler is set for " + scheme + " links.";
    return scheme + " links go to " + setting->id + ", as " + setting->path + " says.";
}

void RoutingDiagnostics::findInDefaults(Problems &problems) const {
    for (const auto type : {httpsType, httpType}) {
        const auto setting = defaults.setting(std::string(type));
        if (!isOurs(setting))
            problems.push_back(describe(std::string(type.substr(type.find('/') + 1)), setting));
    }
}

void RoutingDiagnostics::findInXfce(Problems &problems) const {
    const auto preferred = xfce.setting();
    if (!places.isDesktop("xfce") || (preferred && preferred->id == ownDesktopID))
        return;
    if (!preferred)
        problems.push_back(
            "Xfce's preferred web browser (helpers.rc) is not set; xdg-open and exo-open ask.");
    else if (preferred->names(ownDesktopID))
        problems.push_back("Xfce's preferred web browser (helpers.rc) is Fernhop, but its helper file is "
                           "missing or of no use.");
    else
        problems.push_back("Xfce's preferred web browser (helpers.rc) is " + preferred->text +
                           "; xdg-open and exo-open take links there.");
}

void RoutingDiagnostics::findInKde(Problems &problems) const {
    const auto preferred = kde.setting();
    if (!places.isDesktop("kde") || !preferred || preferred->id == ownDesktopID)
        return;
    problems.push_back("BrowserApplication in kdeglobals is " + preferred->text +
                       "; older KDE applications take links there." +
                       (kde.isLocked() ? " The administrator has locked it." : ""));
}

void RoutingDiagnostics::findInEnvironment(Problems &problems) const {
    if (browser && !browser->empty() && browser->find("fernhop-open") == std::string::npos)
        problems.push_back("The environment variable BROWSER is " + *browser +
                           "; programs that follow it take links there.");
}

} // namespace fernhop::freedesktop
