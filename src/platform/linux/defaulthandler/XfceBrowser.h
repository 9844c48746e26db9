#pragma once

#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/base/ConfigurationFile.h"
#include "platform/linux/base/Environment.h"
#include "platform/linux/defaulthandler/DesktopBrowserSetting.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop::freedesktop {

/// Whether a desktop entry is Xfce's "Web Browser", which asks helpers.rc what to open; it had the second
/// name up to Xfce 4.14.
[[nodiscard]] constexpr bool isXfceOpener(std::string_view id) {
    return id == "xfce4-web-browser" || id == "exo-web-browser";
}

/// A helper file of Xfce ("xfce4/helpers/ID.desktop"): how exo-open starts a web browser. A value.
struct XfceHelper {
    std::vector<std::string> binaries; ///< names of the program, the first in PATH is used; may be empty
    bool isOurs = false;               ///< `helperFileFor` made it

    /// Reads a helper file; nothing when it is none of a web browser.
    [[nodiscard]] static std::optional<XfceHelper> parse(std::string_view bytes);

    /// Whether Xfce can start it: it names its program, or one of `binaries` is in PATH.
    [[nodiscard]] bool isUsable() const;
};

/// The text of a helper file that starts `entry` just as its Exec line says; nothing when Xfce's format
/// cannot express it.
[[nodiscard]] std::optional<std::string> helperFileFor(const DesktopEntry &entry);

/// Xfce's own record of the browser, "WebBrowser" in helpers.rc: exo-open, and with it xdg-open in Xfce,
/// takes it for http and https alike and never looks at the default applications. Main thread only.
class XfceBrowser {
  public:
    /// `desktopEntries` outlives this object.
    XfceBrowser(const XdgSession &session, const DesktopEntries &desktopEntries);

    /// What is set, by the user or for all users; nothing when nothing is.
    [[nodiscard]] std::optional<DesktopBrowserSetting> setting() const;

    /// Makes `entry` the user's setting, with a helper file for it where Xfce has none. False when a file
    /// cannot be written, or one of that name, not written by us, is in the way.
    bool set(const DesktopEntry &entry);

  private:
    struct HelperFile {
        std::string path;
        std::optional<XfceHelper> helper;
    };

    [[nodiscard]] std::optional<std::string> settingText() const;
    [[nodiscard]] std::optional<HelperFile> helperFile(const std::string &id) const;
    [[nodiscard]] bool provideHelper(const DesktopEntry &entry);

    XdgSession session;
    const DesktopEntries &entries;
    mutable ParsedFiles<std::optional<std::string>> settings;
    mutable ParsedFiles<std::optional<XfceHelper>> helpers;
};

} // namespace fernhop::freedesktop
