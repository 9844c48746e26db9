#pragma once

#include "platform/Workspace.h"
#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/launch/Launcher.h"
#include "platform/linux/source/FocusProvider.h"
#include "platform/linux/source/LinkDelivery.h"

namespace fernhop::freedesktop {

/// Applications of a freedesktop session: a bundle is a desktop entry. Main thread only.
class FreedesktopWorkspace : public Workspace {
  public:
    /// Everything must outlive this object.
    FreedesktopWorkspace(const DesktopEntries &entries, FocusProvider &focus, Launcher &launcher,
                         CurrentDelivery &current);

    [[nodiscard]] std::optional<Url>
    urlForApplicationWithBundleIdentifier(const std::string &bundleID) const override;
    [[nodiscard]] std::shared_ptr<RunningApplication> frontmostApplication() const override;
    void openUrls(const std::vector<Url> &urls, const Url &applicationUrl,
                  const OpenConfiguration &configuration, OpenCompletion completion) override;
    bool openUrl(const Url &url) override;
    [[nodiscard]] ui::ImageReference iconForFile(const std::string &path, double side) const override;

  private:
    const DesktopEntries &entries;
    FocusProvider &focus;
    Launcher &launcher;
    CurrentDelivery &current;
};

} // namespace fernhop::freedesktop
