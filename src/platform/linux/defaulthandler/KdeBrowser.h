#pragma once

#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/base/ConfigurationFile.h"
#include "platform/linux/base/Environment.h"
#include "platform/linux/defaulthandler/DesktopBrowserSetting.h"

#include <optional>
#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// KDE's own record of the browser, "BrowserApplication" in kdeglobals. Current KIO opens links in the
/// default application and asks this record only where none is set; older KDE libraries, and programs that
/// ask "am I the default", take it first. Main thread only.
class KdeBrowser {
  public:
    /// `desktopEntries` outlives this object.
    KdeBrowser(const XdgSession &session, const DesktopEntries &desktopEntries);

    /// What is set, by the user or for all users; nothing when nothing is.
    [[nodiscard]] std::optional<DesktopBrowserSetting> setting() const;

    /// Writes the user's setting. False when the administrator locked it, or the file cannot be written.
    bool set(const std::string &id);

    /// Whether the administrator locked the setting.
    [[nodiscard]] bool isLocked() const;

  private:
    struct Globals {
        std::optional<std::string> browser; ///< empty text when the setting was deleted
        bool isLocked = false;
    };

    static Globals parse(const std::optional<std::string> &bytes);
    [[nodiscard]] Globals effective() const;

    std::vector<std::string> paths; ///< the least important first
    const DesktopEntries &entries;
    mutable ParsedFiles<Globals> files;
};

} // namespace fernhop::freedesktop
