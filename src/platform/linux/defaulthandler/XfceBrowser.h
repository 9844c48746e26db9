#pragma once

#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/base/Environment.h"
#include "platform/linux/base/ParsedFiles.h"
#include "platform/linux/defaulthandler/BrowserChoice.h"
#include "platform/linux/defaulthandler/XfceHelper.h"

#include <optional>
#include <string>

namespace fernhop::freedesktop {

/// Xfce's own record of the browser, "WebBrowser" in helpers.rc: exo-open, and with it xdg-open in Xfce,
/// takes it for http and https alike and never looks at the default applications. Main thread only.
class XfceBrowser {
  public:
    /// `desktopEntries` outlives this object.
    XfceBrowser(const XdgSession &session, const DesktopEntries &desktopEntries);

    /// What is set, by the user or for all users; nothing when nothing is.
    [[nodiscard]] std::optional<BrowserChoice> choice() const;

    /// Makes `entry` the user's setting, with a helper file for it where Xfce has none. False when a file
    /// cannot be written, or one of that name, not written by us, is in the way.
    bool set(const DesktopEntry &entry);

  private:
    struct HelperFile {
        std::string path;
        std::optional<XfceHelper> helper;
    };

    [[nodiscard]] std::optional<std::string> setting() const;
    [[nodiscard]] std::optional<HelperFile> helperFile(const std::string &id) const;
    [[nodiscard]] bool provideHelper(const DesktopEntry &entry);

    XdgSession places;
    const DesktopEntries &entries;
    mutable ParsedFiles<std::optional<std::string>> settings;
    mutable ParsedFiles<std::optional<XfceHelper>> helpers;
};

} // namespace fernhop::freedesktop
