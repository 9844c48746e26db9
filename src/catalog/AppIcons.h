#pragma once

#include "catalog/BrowserCatalog.h"
#include "platform/Workspace.h"
#include "platform/ui/Image.h"
#include "rules/Browser.h"
#include "rules/InstalledApplication.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace fernhop {

/// Icons and names of applications, for menus and dialogs. Each icon is fetched once for each bundle and
/// size. Main thread only.
class AppIcons {
  public:
    /// Where icons and names come from; must outlive this object. The lists are read at each call.
    struct Sources {
        const Workspace &workspace;
        const BrowserCatalog &catalog;
        const std::vector<InstalledApplication> &installedApplications;
        const std::vector<Browser> &installedBrowsers;
    };

    explicit AppIcons(Sources iconSources) : sources(iconSources) {}

    /// The icon of the bundle at `appURL`, `size` points wide and high; never null. The object is shared. A
    /// size that is not finite is a programming error and ends the process.
    [[nodiscard]] ui::ImageReference appIcon(const Url &appURL, double size);

    /// The icon of an application by its identifier, always at 16 points; null without an identifier or when
    /// the application is not installed.
    [[nodiscard]] ui::ImageReference appIcon(const std::optional<std::string> &bundleID, double size);

    /// The name to show for an identifier.
    [[nodiscard]] std::string appName(const std::string &bundleID) const;

    /// Discards the cached icons, since applications may have changed theirs.
    void clear() { appIconCache.clear(); }

  private:
    [[nodiscard]] std::optional<Url> urlOf(const std::string &bundleID) const;

    Sources sources;
    std::unordered_map<std::string, ui::ImageReference> appIconCache; ///< by path, "#" and whole size
};

} // namespace fernhop
