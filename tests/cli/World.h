#pragma once

#include "app/AppDelegate.h"
#include "cli/LocalSession.h"
#include "cli/Perform.h"
#include "cli/ResidentSession.h"
#include "fakes/FakeAlerts.h"
#include "fakes/FakeApplication.h"
#include "fakes/FakeApplications.h"
#include "fakes/FakeImages.h"
#include "fakes/FakeLaunchServices.h"
#include "fakes/FakeLinkEvents.h"
#include "fakes/FakeNotificationCenter.h"
#include "fakes/FakeSessionReport.h"
#include "fakes/FakeStatusBar.h"
#include "fakes/FakeUserDefaults.h"
#include "fakes/FakeWorkspace.h"

#include <optional>
#include <string>
#include <vector>

namespace fernhop::cli {

/// A desktop with two browsers and an editor, on which commands are performed: by a running Fernhop once
/// `launch` was called, else by a stand-in.
class World {
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
        delegate.emplace(platform);
        delegate->applicationDidFinishLaunching();
        resident.emplace(*delegate, platform, report);
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
        services.handlers = {{"http", bundleID}, {"https", bundleID}};
    }

    const std::string own = "org.fernhop.Fernhop";
    const std::string alpha = "org.example.Alpha";
    const std::string beta = "org.example.Beta";
    const std::string editor = "org.example.Editor";

    fakes::FakeApplications applications;
    fakes::FakeNotificationCenter center;
    fakes::FakeNotificationCenter distributed;
    fakes::FakeWorkspace workspace{applications, center};
    fakes::FakeLaunchServices services;
    fakes::FakeUserDefaults defaults;
    fakes::FakeApplication application;
    fakes::FakeLinkEvents links;
    fakes::FakeLog log;
    fakes::FakeSound sound;
    fakes::FakeSessionReport report;
    fakes::FakeStatusBar statusBar;
    fakes::FakeImages images;
    fakes::FakeAlerts alerts;

    std::optional<AppDelegate> delegate;
    std::optional<ResidentSession> resident;

  private:
    ApplicationLayout layout = macApplicationLayout(applications);
    Platform platform{application, workspace,    center,       distributed, services,
                      defaults,    applications, applications, links,       log,
                      sound,       statusBar,    images,       alerts,      layout};
    LocalSession::Parts parts{workspace,    services, defaults, applications,
                              applications, sound,    layout,   report};
};

} // namespace fernhop::cli
