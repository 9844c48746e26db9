#include "platform/linux/defaulthandler/RoutingDiagnostics.h"

#include "platform/linux/defaulthandler/KdeBrowser.h"
#include "platform/linux/defaulthandler/MimeDefaults.h"
#include "platform/linux/defaulthandler/XfceBrowser.h"

#include <algorithm>

namespace fernhop::freedesktop {
namespace {

constexpr const char *refusalText =
    "its Exec line would let a shell or another interpreter run what stands in a link.";

struct Diagnosis {
    using Handler = std::optional<MimeLookup::Handler>;

    const XdgSession &session;
    const DesktopEntries &entries;
    const std::string &ownID;
    const std::optional<std::string> &browser;
    MimeLookup lookup{session, entries};
    MimeDefaults defaults{session, lookup};
    KdeBrowser kde{session, entries};
    XfceBrowser xfce{session, entries};
    std::vector<std::string> problems = {};

    std::vector<std::string> find() {
        findInOwnEntry();
        findInFiles();
        if (isRoutingMeant()) {
            findInDefaults();
            findInXfce();
            findInKde();
        }
        findInEnvironment();
        findInBrowsers();
        return std::move(problems);
    }

    /// What the session's opener starts for a scheme.
    Handler handlerOf(const std::string &scheme) const {
        return lookup.handler(scheme, linkOpenerOf(session));
    }

    bool isOurs(const Handler &handler) const {
        if (!handler)
            return false;
        const auto preferred = isXfceOpener(handler->id) ? xfce.setting() : std::nullopt;
        return handler->id == ownID || (preferred && preferred->id == ownID);
    }

    bool isRoutingMeant() const {
        const auto preferred = xfce.setting();
        return isOurs(handlerOf("http")) || isOurs(handlerOf("https")) ||
               defaults.userListNames("https", ownID) ||
               (session.isDesktop("xfce") && preferred && preferred->id == ownID);
    }

    void findInOwnEntry() {
        const auto entry = entries.entry(ownID);
        if (!entry) {
            problems.push_back(
                "The desktop entry " + ownID +
                ".desktop is not installed where this desktop looks, or its program is missing.");
            return;
        }
        for (const std::string scheme : {"http", "https"}) {
            if (std::ranges::find(entry->schemes, scheme) == entry->schemes.end())
                problems.push_back("The desktop entry " + entry->path +
                                   " does not declare x-scheme-handler/" + scheme + ".");
        }
    }

    void findInFiles() {
        for (const auto &path : defaults.decisiveUserLists()) {
            if (lookup.isRejected(path))
                problems.push_back(path + " is damaged, so desktops ignore all of it.");
            if (lookup.namesTooMany(path))
                problems.push_back(path + " names more than " + std::to_string(MimeLookup::mostApplications) +
                                   " applications for one kind of links; only the first of them count.");
            if (!canReplaceConfigurationFile(path))
                problems.push_back(path + " cannot be written, so the default browser cannot be changed.");
        }
    }

    void findInDefaults() {
        for (const std::string scheme : {"https", "http"}) {
            const auto handler = handlerOf(scheme);
            if (!handler)
                problems.push_back("No handler is set for " + scheme + " links.");
            else if (!isOurs(handler))
                problems.push_back(scheme + " links go to " + handler->id + ", as " + handler->path +
                                   " says.");
            else
                findInAssociation(scheme, *handler);
        }
    }

    void findInAssociation(const std::string &scheme, const MimeLookup::Handler &handler) {
        if (!handler.isSet)
            problems.push_back("No handler is set for " + scheme + " links. They go to Fernhop because " +
                               handler.path + " names it first.");
        const auto inGio = lookup.handler(scheme, LinkOpener::gio);
        if (!isOurs(inGio))
            problems.push_back("GTK applications and portals open " + scheme + " links " +
                               (inGio ? "in " + inGio->id + ", as " + inGio->path + " says." : "nowhere."));
    }

    void findInXfce() {
        const auto preferred = xfce.setting();
        if (!session.isDesktop("xfce") || (preferred && preferred->id == ownID))
            return;
        if (!preferred)
            problems.push_back(
                "Xfce's preferred web browser (helpers.rc) is not set; xdg-open and exo-open ask.");
        else if (preferred->names(ownID))
            problems.push_back("Xfce's preferred web browser (helpers.rc) is Fernhop, but its helper file is "
                               "missing or of no use.");
        else
            problems.push_back("Xfce's preferred web browser (helpers.rc) is " + preferred->text +
                               "; xdg-open and exo-open take links there.");
    }

    void findInKde() {
        const auto preferred = kde.setting();
        if (!session.isDesktop("kde") || !preferred || preferred->id == ownID)
            return;
        problems.push_back("BrowserApplication in kdeglobals is " + preferred->text +
                           "; older KDE applications take links there." +
                           (kde.isLocked() ? " The administrator has locked it." : ""));
    }

    void findInBrowsers() {
        for (const auto &entry : entries.refused())
            problems.push_back(entry.path + " is not used as a browser: " + refusalText);
    }

    void findInEnvironment() {
        if (browser && !browser->empty() && browser->find("fernhop-open") == std::string::npos)
            problems.push_back("The environment variable BROWSER is " + *browser +
                               "; programs that follow it take links there.");
    }
};

} // namespace

std::optional<std::string> browserRefusal(const DesktopEntries &entries, const std::string &id) {
    const auto entry = entries.entry(id);
    if (entry && isGenericOpener(*entry) && !isFernhop(*entry))
        return "it only passes links on to the default browser: they would come back.";
    const auto refused = entries.refused();
    const bool isRefused = std::ranges::find(refused, id, &DesktopEntry::id) != refused.end();
    return isRefused ? std::optional(std::string(refusalText)) : std::nullopt;
}

std::vector<std::string> routingProblems(const XdgSession &session, const DesktopEntries &entries,
                                         const std::string &ownID,
                                         const std::optional<std::string> &browserVariable) {
    return Diagnosis{session, entries, ownID, browserVariable}.find();
}

} // namespace fernhop::freedesktop
