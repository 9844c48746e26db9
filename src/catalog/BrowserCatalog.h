#pragma once

#include "catalog/ApplicationCatalog.h"
#include "platform/Workspace.h"
#include "rules/Browser.h"

#include <optional>
#include <string>
#include <vector>

namespace fernhop {

/// Finds browsers and names by bundle identifier, and lists the installed browsers. Caches nothing: each call
/// asks the system. Main thread only.
class BrowserCatalog {
  public:
    /// Owns `applications`; the others must outlive this object.
    BrowserCatalog(const Workspace &workspace, const FileManager &files, const Bundles &bundles,
                   ApplicationCatalog applications);

    /// The application with this identifier, browser or not, with the identifier as given; nothing when it is
    /// not installed.
    [[nodiscard]] std::optional<Browser> browser(const std::string &bundleID) const;

    /// The name to show for an identifier: that of the application, or the identifier itself when it is not
    /// installed.
    [[nodiscard]] std::string appDisplayName(const std::string &bundleID) const;

    /// The installed applications that declare "http" or "https", in the catalog's order.
    [[nodiscard]] std::vector<Browser> installedBrowsers(const std::optional<std::string> &excluding) const;

  private:
    const Workspace &workspace;
    const FileManager &fileManager;
    const Bundles &bundles;
    ApplicationCatalog applicationCatalog;
};

} // namespace fernhop
