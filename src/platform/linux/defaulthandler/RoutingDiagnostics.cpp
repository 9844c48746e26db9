#include "platform/linux/defaulthandler/RoutingDiagnostics.h"

#include "platform/linux/defaulthandler/XfceBrowser.h"

#include <algorithm>
#include <utility>

namespace fernhop::freedesktop {

RoutingDiagnostics::RoutingDiagnostics(XdgSession xdgSession, const DesktopEntries &desktopEntries,
                                       std::string ownID, std::optional<std::string> browserVariable)
    : session(std::move(xdgSession)), entries(desktopEntries), ownDesktopID(std::move(ownID)),
      browser(std::move(browserVariable)), defaults(session, entries), kde(session, entries),
      xfce(session, entries) {}

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
    return isOurs(defaults.setting("http")) || isOurs(defaults.setting("https")) ||
           defaults.userListNames("https", ownDesktopID) ||
           (session.isDesktop("xfce") && preferred && preferred->id == ownDesktopID);
}

void RoutingDiagnostics::findInOwnEntry(Problems &problems) const {
    const auto entry = entries.entry(ownDesktopID);
    if (!entry) {
        problems.push_back("The desktop entry " + ownDesktopID +
                           ".desktop is not installed where this desktop looks, or its program is missing.");
        return;
    }
    for (const std::string scheme : {"http", "https"}) {
        if (std::ranges::find(entry->schemes, scheme) == entry->schemes.end())
            problems.push_back("The desktop entry " + entry->path + " does not declare x-scheme-handler/" +
                               scheme + ".");
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
    for (const auto *scheme : {"https", "http"}) {
        const auto setting = defaults.setting(scheme);
        if (!isOurs(setting))
            problems.push_back(describe(scheme, setting));
    }
}

void RoutingDiagnostics::findInXfce(Problems &problems) const {
    const auto preferred = xfce.setting();
    if (!session.isDesktop("xfce") || (preferred && preferred->id == ownDesktopID))
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
    if (!session.isDesktop("kde") || !preferred || preferred->id == ownDesktopID)
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
