#pragma once

#include "app/Platform.h"
#include "catalog/ApplicationLayout.h"
#include "fakes/FakeAlerts.h"
#include "fakes/FakeApplication.h"
#include "fakes/FakeApplications.h"
#include "fakes/FakeImages.h"
#include "fakes/FakeLaunchServices.h"
#include "fakes/FakeLinkEvents.h"
#include "fakes/FakeNotificationCenter.h"
#include "fakes/FakeStatusBar.h"
#include "fakes/FakeUserDefaults.h"
#include "fakes/FakeWorkspace.h"

#include <string>
#include <utility>

namespace fernhop::fakes {

/// A complete desktop in memory, with a fake of each interface.
class FakeDesktop {
  public:
    FakeApplication application;
    FakeApplications applications;
    FakeNotificationCenter workspaceCenter;
    FakeNotificationCenter distributedCenter;
    FakeWorkspace workspace{applications, workspaceCenter};
    FakeLaunchServices launchServices;
    FakeUserDefaults defaults;
    FakeLinkEvents links;
    FakeLog log;
    FakeSound sound;
    FakeStatusBar statusBar;
    FakeImages images;
    FakeAlerts alerts;

    FakeDesktop() {
        applications.addPath("/Applications");
        applications.addPath("/System/Applications");
    }

    /// Installs a browser in /Applications under an identifier that is also its name.
    Url installBrowser(const std::string &identifier) {
        const std::string path = "/Applications/" + identifier + ".app";
        applications.installApplication(path, identifier, identifier, {"http", "https"});
        return Url::fileUrl(path);
    }

    /// Installs an application that does not open web links.
    Url installApplication(const std::string &identifier) {
        const std::string path = "/Applications/" + identifier + ".app";
        applications.installApplication(path, identifier, identifier);
        return Url::fileUrl(path);
    }

    /// Installs applications that are not browsers: "Alpha", "Beta", "Chat" and "Delta", of two vendors.
    void installFourApplications() {
        for (const auto &[name, id] : {std::pair{"Alpha", "com.example.a"},
                                       {"Beta", "org.sample.b"},
                                       {"Chat", "com.example.c"},
                                       {"Delta", "org.sample.d"}})
            applications.installApplication("/Applications/" + std::string(name) + ".app", id, name);
    }

    Platform platform() {
        return {application,
                workspace,
                workspaceCenter,
                distributedCenter,
                launchServices,
                defaults,
                applications,
                applications,
                links,
                log,
                sound,
                statusBar,
                images,
                alerts,
                macApplicationLayout(applications)};
    }
};

} // namespace fernhop::fakes
