#pragma once

#include "platform/LaunchServices.h"
#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/base/Environment.h"
#include "platform/linux/defaulthandler/KdeBrowser.h"
#include "platform/linux/defaulthandler/MimeDefaults.h"
#include "platform/linux/defaulthandler/XfceBrowser.h"

#include <optional>
#include <string>

namespace fernhop::freedesktop {

/// The default handlers of a freedesktop session, as its openers (xdg-open, gio open, exo-open, KIO, the
/// portals) find them. What an opener falls back to where nothing is set counts as no handler. Bundle
/// identifiers are desktop-file IDs.
///
/// A handler that is not installed is refused: links would go nowhere. A browser setting that a desktop keeps
/// for both schemes goes with https.
class FreedesktopLaunchServices : public LaunchServices {
  public:
    /// `ownID` is Fernhop's desktop-file ID. `desktopEntries` outlives this object.
    FreedesktopLaunchServices(XdgSession session, const DesktopEntries &desktopEntries, std::string ownID);

    [[nodiscard]] std::optional<std::string>
    copyDefaultHandlerForUrlScheme(const std::string &scheme) const override;

    bool setDefaultHandlerForUrlScheme(const std::string &scheme, const std::string &bundleID) override;

  private:
    [[nodiscard]] std::optional<std::string> defaultApplication(const std::string &scheme) const;
    [[nodiscard]] bool isXfce() const { return session.isDesktop("xfce"); }
    [[nodiscard]] bool isKde() const { return session.isDesktop("kde"); }
    bool setDesktopBrowsers(const DesktopEntry &entry);

    XdgSession session;
    const DesktopEntries &entries;
    std::string ownDesktopID;
    MimeDefaults defaults;
    KdeBrowser kde;
    XfceBrowser xfce;
};

} // namespace fernhop::freedesktop
