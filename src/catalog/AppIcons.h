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

/// Icons and names of applications, for menus and dialogs. Icons are asked of the workspace once for each
/// bundle and size. Main thread only.
class AppIcons {
  public:
    /// What it looks at; everything must outlive it. The lists are read at each call.
    struct Sources {
        const Workspace &workspace;
        const BrowserCatalog &catalog;
        const std::vector<InstalledApplication> &installedApplications;
        const std::vector<Browser> &installedBrowsers;
    };

    explicit AppIcons(Sources looksAt) : sources(looksAt) {}

    /// The icon of the bundle at `appURL`, `size` points wide and high; never null. The same object each
    /// time: it must not be resized. A size that is no finite number is a programming error and ends the
    /// process.
    [[nodiscard]] ui::ImageReference appIcon(const Url &appURL, double size);

    /// The icon of an application by its identifier, always at 16 points; null without an identifier or when
    /// it is not installed.
    [[nodiscard]] ui::ImageReference appIcon(const std::optional<std::string> &bundleID, double size);

    /// The name to show for an identifier.
    [[nodiscard]] std::string appName(const std::string &bundleID) const;

    /// Forgets all icons, so that those of updated applications are loaded anew.
    void clear() { appIconCache.clear(); }

  private:
    [[nodiscard]] std::optional<Url> urlOf(const std::string &bundleID) const;

    Sources sources;
    std::unordered_map<std::string, ui::ImageReference> appIconCache; ///< by path, "#" and whole size
};

} // namespace fernhop
