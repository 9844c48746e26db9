#pragma once

#include "catalog/ApplicationCatalog.h"
#include "catalog/BrowserCatalog.h"
#include "cli/Context.h"
#include "cli/Controller.h"
#include "platform/Sound.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"
#include "routing/Router.h"

#include <optional>

namespace fernhop::cli {

/// Replaces the running Fernhop when there is none: commands read the system and change the settings in the
/// client process. Scans for browsers on construction, for other applications on first use. Main thread only.
class LocalSession : public Controller {
  public:
    /// Everything must outlive the session.
    struct Parts {
        Workspace &workspace;
        LaunchServices &launchServices;
        UserDefaults &defaults;
        const FileManager &files;
        const Bundles &bundles;
        Sound &sound;
        const ApplicationLayout &layout;
        const SessionReport &report;
    };

    explicit LocalSession(const Parts &parts);
    LocalSession(const LocalSession &) = delete;
    LocalSession &operator=(const LocalSession &) = delete;

    /// The context for `perform`.
    [[nodiscard]] Context context();

    const std::vector<InstalledApplication> &installedApplications() override;
    const std::vector<Browser> &installedBrowsers() override { return browserList; }
    RoutingDecision decide(const Url &url, const std::optional<std::string> &source) override;
    void rebuildMenu() override {}
    bool refresh() override { return false; }
    bool openDialog(ui::Selector, const std::string &) override { return false; }
    bool quit() override { return false; }

  private:
    Parts parts;
    const ApplicationCatalog applicationCatalog;
    const BrowserCatalog catalog;
    Preferences preferences;
    std::optional<std::vector<InstalledApplication>> applicationList;
    const std::vector<Browser> browserList;
    const Router router;
    DefaultHandlerControl defaultHandlers;
};

} // namespace fernhop::cli
