#pragma once

#include "app/Platform.h"
#include "platform/linux/applications/ApplicationPlaces.h"
#include "platform/linux/applications/DesktopBundles.h"
#include "platform/linux/applications/InstalledDesktopEntries.h"
#include "platform/linux/applications/PosixFileManager.h"
#include "platform/linux/base/Processes.h"
#include "platform/linux/defaulthandler/FreedesktopLaunchServices.h"
#include "platform/linux/launch/FreedesktopWorkspace.h"
#include "platform/linux/launch/Launcher.h"
#include "platform/linux/log/SystemLog.h"
#include "platform/linux/service/LinkService.h"
#include "platform/linux/service/SessionApplication.h"
#include "platform/linux/settings/PropertyListDefaults.h"
#include "platform/linux/sound/CanberraSound.h"
#include "platform/linux/source/ApplicationMatcher.h"
#include "platform/linux/source/FocusProvider.h"
#include "platform/linux/source/LaunchSignals.h"
#include "platform/linux/source/SenderEvidence.h"
#include "platform/linux/source/SourceNotifications.h"
#include "platform/linux/tray/IconFinder.h"
#include "platform/linux/tray/ImageRenderer.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop::freedesktop {

/// The freedesktop backend put together: each implementation once, in the order in which they stand on each
/// other. Main thread only.
struct LinuxDesktop {
    /// `environment` is the process's, as it was at its start. `bus` is the session bus, or null where there
    /// is none; it outlives the desktop.
    LinuxDesktop(const Environment &environment, GDBusConnection *bus);
    LinuxDesktop(const LinuxDesktop &) = delete;
    LinuxDesktop &operator=(const LinuxDesktop &) = delete;

    /// What the controller is made with, beside what it shows itself with. It refers to this object and to
    /// the arguments.
    [[nodiscard]] Platform platform(ui::StatusBar &statusBar, ui::AlertPresenter &alerts, Sound &sound);

    /// What keeps links from arriving at Fernhop, for people.
    [[nodiscard]] std::vector<std::string> routingProblems() const;

    const std::optional<std::string> browserVariable; ///< BROWSER
    const ApplicationPlaces places;
    const XdgSession configuration;
    const ApplicationLayout layout;
    const PosixFileManager files;
    const InstalledDesktopEntries entries;
    const DesktopBundles bundles;
    PropertyListDefaults defaults;
    FreedesktopLaunchServices launchServices;
    SystemLog log;
    CanberraSound sound;
    const Processes processes;
    ApplicationMatcher matcher;
    const std::unique_ptr<FocusProvider> focus;
    PostingNotificationCenter workspaceNotifications;
    PostingNotificationCenter distributedNotifications;
    LaunchSignals launchSignals;
    SenderEvidence senderEvidence;
    SourceNotifications sourceNotifications;
    CurrentDelivery currentDelivery;
    LinkDispatcher links;
    Launcher launcher;
    FreedesktopWorkspace workspace;
    SessionApplication application;
    const IconFinder icons;
    LinuxImages images;
};

/// A file of the installation or the build tree that this program is of, by its path below the prefix.
[[nodiscard]] std::string installedFile(std::string_view path);

/// What the environment says about the displays of the session.
[[nodiscard]] SessionDisplays displaysOf(const Environment &environment);

} // namespace fernhop::freedesktop
