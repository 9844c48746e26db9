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

/// The default handlers of a freedesktop session: the applications that its opener (what xdg-open uses)
/// starts. Where nothing is set, that is the one that is associated with the scheme first. Bundle identifiers
/// are desktop-file IDs.
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

    /// The browser that would open https links if Fernhop were not installed, where Fernhop opens them only
    /// because nothing is set; nothing otherwise.
    [[nodiscard]] std::optional<std::string> browserBehindAssociation() const;

  private:
    /// The application that opens a scheme's links, or would if Fernhop were not installed; empty: none.
    [[nodiscard]] std::string formerHandler(const std::string &scheme) const;
    [[nodiscard]] std::optional<std::string> defaultApplication(const std::string &scheme) const;
    [[nodiscard]] bool isXfce() const { return session.isDesktop("xfce"); }
    [[nodiscard]] bool isKde() const { return session.isDesktop("kde"); }
    bool setDesktopBrowsers(const DesktopEntry &entry);

    XdgSession session;
    const DesktopEntries &entries;
    std::string ownDesktopID;
    MimeLookup lookup;
    MimeDefaults defaults;
    KdeBrowser kde;
    XfceBrowser xfce;
};

} // namespace fernhop::freedesktop
