#pragma once

#include "app/AppDelegate.h"
#include "cli/LocalSession.h"
#include "cli/Perform.h"
#include "cli/ResidentSession.h"
#include "fakes/FakeDesktop.h"
#include "fakes/FakeSessionReport.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace fernhop::cli {

/// A desktop with two browsers and an editor, on which commands are performed: by a running Fernhop after
/// `launch`, by a `LocalSession` before.
class World : public fakes::FakeDesktop {
  public:
    World() {
        applications.installApplication("/Applications/Fernhop.app", own, "Fernhop", {"http", "https"});
        applications.installApplication("/Applications/Alpha.app", alpha, "Alpha Browser", {"http", "https"});
        applications.installApplication("/Applications/Beta.app", beta, "Beta Browser", {"https"});
        applications.installApplication("/Applications/Editor.app", editor, "Editor");
    }
    World(const World &) = delete;
    World &operator=(const World &) = delete;

    void launch() {
        delegate.emplace(desktop);
        delegate->applicationDidFinishLaunching();
        resident.emplace(*delegate, desktop, report,
                         [this](const DialogRequest &request) { dialogs.push_back(request); });
        statusBar.menusSet = 0;
    }

    CommandResult run(const std::vector<std::string> &words, std::string_view input = "") {
        if (resident)
            return perform(words, input, resident->context());
        LocalSession local(parts);
        return perform(words, input, local.context());
    }

    Preferences preferences() { return Preferences(defaults); }

    void setDefaultBrowser(const std::string &bundleID) {
        launchServices.handlers = {{"http", bundleID}, {"https", bundleID}};
    }

    const std::string own = "org.fernhop.Fernhop";
    const std::string alpha = "org.example.Alpha";
    const std::string beta = "org.example.Beta";
    const std::string editor = "org.example.Editor";

    fakes::FakeSessionReport report;

    std::vector<DialogRequest> dialogs; ///< the requested dialogs

    std::optional<AppDelegate> delegate;
    std::optional<ResidentSession> resident;

  private:
    Platform desktop = platform();
    LocalSession::Parts parts{workspace,    launchServices, defaults,       applications,
                              applications, sound,          desktop.layout, report};
};

} // namespace fernhop::cli
