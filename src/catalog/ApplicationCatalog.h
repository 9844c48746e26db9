#pragma once

#include "catalog/ApplicationLayout.h"
#include "platform/Bundle.h"
#include "platform/FileManager.h"
#include "rules/InstalledApplication.h"

#include <optional>
#include <string>
#include <vector>

namespace fernhop {

/// Finds the installed applications. Caches nothing: each call scans the disk. Main thread only.
class ApplicationCatalog {
  public:
    /// `files` and `bundles` must outlive this object.
    ApplicationCatalog(const FileManager &files, const Bundles &bundles, ApplicationLayout layout);

    /// The installed applications except the one with the identifier `excluding` (compared exactly), sorted
    /// by name in the user's language, equal names in scan order. Of several with the same identifier only
    /// the first found is listed. Empty when nothing can be read.
    [[nodiscard]] std::vector<InstalledApplication>
    installedApplications(const std::optional<std::string> &excluding) const;

  private:
    [[nodiscard]] std::vector<Url> applicationSearchDirectories() const;
    [[nodiscard]] std::vector<Url> appBundleURLs(const Url &in) const;

    const FileManager &fileManager;
    const Bundles &bundles;
    ApplicationLayout layout;
};

} // namespace fernhop
