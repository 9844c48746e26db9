#pragma once

#include "platform/Bundle.h"
#include "platform/linux/applications/InstalledDesktopEntries.h"

#include <optional>
#include <string>
#include <string_view>

namespace fernhop::freedesktop {

/// Desktop entries told in the words of application bundles: the identifier is the desktop-file ID,
/// CFBundleDisplayName is the name in the user's language, CFBundleName the name in none, and
/// CFBundleURLTypes holds the schemes of the x-scheme-handler types. An entry with NoDisplay has no
/// identifier. Entries that another file with the same ID hides, and generic openers (a link would come back
/// from them), cannot be opened.
class DesktopBundles : public Bundles {
  public:
    /// `entries` must outlive this object. `resources` is the folder of Fernhop's own images; empty: there is
    /// none.
    explicit DesktopBundles(const InstalledDesktopEntries &entries, std::string resources = {});

    [[nodiscard]] std::unique_ptr<Bundle> bundleWithUrl(const Url &url) const override;
    [[nodiscard]] std::optional<std::string> mainBundleIdentifier() const override;
    [[nodiscard]] std::optional<Url> urlForResource(std::string_view name,
                                                    std::string_view extension) const override;

  private:
    const InstalledDesktopEntries &entries;
    std::string resources;
};

/// The bundle that the desktop would launch for an identifier, what Workspace answers: the file of the
/// desktop entry, NoDisplay ones included, generic openers left out. Nothing when there is none.
[[nodiscard]] std::optional<Url> applicationUrl(const DesktopEntries &entries, const std::string &bundleID);

} // namespace fernhop::freedesktop
