#pragma once

#include "platform/Application.h"
#include "platform/ApplicationLayout.h"
#include "platform/Bundle.h"
#include "platform/FileManager.h"
#include "platform/LaunchServices.h"
#include "platform/LinkEvents.h"
#include "platform/Log.h"
#include "platform/Notifications.h"
#include "platform/Sound.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"
#include "platform/ui/Alert.h"
#include "platform/ui/Images.h"
#include "platform/ui/StatusItem.h"

namespace fernhop {

/// The desktop as the controller uses it: one implementation of each interface, made once by `main`. All of
/// them outlive the controller.
struct Platform {
    Application &application;
    Workspace &workspace;
    NotificationCenter &workspaceNotifications;
    NotificationCenter &distributedNotifications;
    LaunchServices &launchServices;
    UserDefaults &defaults;
    const FileManager &files;
    const Bundles &bundles;
    LinkEvents &links;
    Log &log;
    Sound &sound;
    ui::StatusBar &statusBar;
    const ui::Images &images;
    ui::AlertPresenter &alerts;
    ApplicationLayout layout;
};

} // namespace fernhop
