#include "platform/linux/defaulthandler/FreedesktopLaunchServices.h"

#include "platform/linux/defaulthandler/XfceBrowser.h"

#include <utility>

namespace fernhop::freedesktop {

namespace {

constexpr std::string_view https = "https";

} // namespace

FreedesktopLaunchServices::FreedesktopLaunchServices(XdgSession xdgSession,
                                                     const DesktopEntries &desktopEntries, std::string ownID)
    : session(std::move(xdgSession)), entries(desktopEntries), ownDesktopID(std::move(ownID)),
      lookup(session, entries), defaults(session, lookup), kde(session, entries), xfce(session, entries) {}

// Xfce's own entry stands for whatever its settings name, and would lead a link that we send there back to
// us.
std::optional<std::string> FreedesktopLaunchServices::defaultApplication(const std::string &scheme) const {
    const auto handler = lookup.handler(scheme, linkOpenerOf(session));
    if (!handler)
        return std::nullopt;
    if (!isXfceOpener(handler->id))
        return handler->id;
    const auto browser = xfce.setting();
    return browser ? browser->id : std::nullopt;
}

std::optional<std::string>
FreedesktopLaunchServices::copyDefaultHandlerForUrlScheme(const std::string &scheme) const {
    const auto handler = defaultApplication(scheme);
    if (isKde() && !handler) {
        const auto browser = kde.setting();
        return browser ? browser->id : std::nullopt;
    }
    if (!isXfce() || (scheme != https && handler))
        return handler;
    const auto browser = xfce.setting();
    // Openers of both kinds are in use here. Ours are only the links that neither takes elsewhere.
    if (browser && browser->id)
        return browser->id == ownDesktopID ? handler : browser->id;
    return handler == ownDesktopID ? std::nullopt : handler;
}

bool FreedesktopLaunchServices::setDefaultHandlerForUrlScheme(const std::string &scheme,
                                                              const std::string &bundleID) {
    const auto entry = entries.entry(bundleID);
    if (!entry)
        return false;
    // The former browser stands behind us, so that it gets the links when we are removed.
    bool isDone = defaults.set(scheme, bundleID, bundleID == ownDesktopID ? formerHandler(scheme) : "");
    if (bundleID != ownDesktopID)
        isDone = defaults.replace(scheme, ownDesktopID, bundleID) && isDone;
    if (scheme == https)
        isDone = setDesktopBrowsers(*entry) && isDone;
    return isDone && copyDefaultHandlerForUrlScheme(scheme) == bundleID;
}

std::string FreedesktopLaunchServices::formerHandler(const std::string &scheme) const {
    const auto handler = copyDefaultHandlerForUrlScheme(scheme);
    if (handler && handler != ownDesktopID)
        return *handler;
    const auto next = lookup.handler(scheme, linkOpenerOf(session), ownDesktopID);
    return next ? next->id : "";
}

std::optional<std::string> FreedesktopLaunchServices::browserBehindAssociation() const {
    const auto handler = lookup.handler(std::string(https), linkOpenerOf(session));
    if (!handler || handler->id != ownDesktopID || handler->isSet)
        return std::nullopt;
    const auto former = formerHandler(std::string(https));
    return former.empty() ? std::nullopt : std::optional(former);
}

// Settings of desktops other than this session's are left alone, unless they still name us when the role goes
// to another.
bool FreedesktopLaunchServices::setDesktopBrowsers(const DesktopEntry &entry) {
    const auto stillNamesUs = [this](const std::optional<DesktopBrowserSetting> &browser) {
        return browser && browser->names(ownDesktopID);
    };
    bool isDone = true;
    if (isXfce() || (entry.id != ownDesktopID && stillNamesUs(xfce.setting())))
        isDone = xfce.set(entry);
    const auto inKde = kde.setting();
    if (inKde && !inKde->names(entry.id) && (isKde() || stillNamesUs(inKde))) {
        // KIO opens links in the default application whatever this says, so a lock does no harm.
        isDone = (kde.set(entry.id) || kde.isLocked()) && isDone;
    }
    return isDone;
}

} // namespace fernhop::freedesktop
