#pragma once

#include "platform/Workspace.h"

namespace fernhop::macos {

/// The shared workspace.
class SystemWorkspace : public Workspace {
  public:
    [[nodiscard]] std::optional<Url>
    urlForApplicationWithBundleIdentifier(const std::string &bundleID) const override;
    [[nodiscard]] std::shared_ptr<RunningApplication> frontmostApplication() const override;
    void openUrls(const std::vector<Url> &urls, const Url &applicationUrl,
                  const OpenConfiguration &configuration, OpenCompletion completion) override;
    bool openUrl(const Url &url) override;
    [[nodiscard]] ui::ImageReference iconForFile(const std::string &path, double side) const override;
};

} // namespace fernhop::macos
