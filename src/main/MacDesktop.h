#pragma once

#include "app/Platform.h"
#include "platform/macos/AppleEventLinks.h"
#include "platform/macos/StandardDefaults.h"
#include "platform/macos/SystemApplication.h"
#include "platform/macos/SystemBundles.h"
#include "platform/macos/SystemFiles.h"
#include "platform/macos/SystemLaunchServices.h"
#include "platform/macos/SystemLog.h"
#include "platform/macos/SystemNotifications.h"
#include "platform/macos/SystemSound.h"
#include "platform/macos/SystemWorkspace.h"
#include "platform/macos/ui/SystemAlerts.h"
#include "platform/macos/ui/SystemImages.h"
#include "platform/macos/ui/SystemStatusBar.h"

namespace fernhop::macos {

/// The macOS backend: one instance of each implementation. Main thread only.
struct MacDesktop {
    /// `target` receives the actions of menus and dialogs, and must outlive the desktop.
    explicit MacDesktop(const ActionTarget &target);
    MacDesktop(const MacDesktop &) = delete;
    MacDesktop &operator=(const MacDesktop &) = delete;

    /// The platform for the controller; it refers to this object.
    [[nodiscard]] Platform platform();

    const SystemFiles files;
    const SystemBundles bundles;
    StandardDefaults defaults;
    SystemLaunchServices launchServices;
    SystemLog log;
    SystemSound sound;
    SystemNotifications workspaceNotifications;
    SystemNotifications distributedNotifications;
    SystemWorkspace workspace;
    AppleEventLinks links;
    SystemApplication application;
    SystemStatusBar statusBar;
    const SystemImages images;
    SystemAlerts alerts;
};

} // namespace fernhop::macos
