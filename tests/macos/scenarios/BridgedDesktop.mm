#include "macos/scenarios/BridgedDesktop.h"

#include "macos/double/Recorder.h"
#include "macos/scenarios/AlertBridge.h"
#include "macos/scenarios/DefaultsBridge.h"
#include "macos/scenarios/EventBridges.h"
#include "macos/scenarios/ServiceBridges.h"
#include "macos/scenarios/StatusBarBridge.h"
#include "macos/ui/RecordingTarget.h"
#include "main/MacSelections.h"

#import <AppKit/AppKit.h>

namespace fernhop::macos {

namespace {

/// Converts represented objects like the application.
class PayloadTarget : public RecordingTarget {
  public:
    [[nodiscard]] id attachment(const ui::RepresentedObject &value) const override {
        return attachmentFor(value);
    }
    [[nodiscard]] ui::RepresentedObject representedObject(id attachment) const override {
        return valueOfAttachment(attachment);
    }
};

} // namespace

struct BridgedDesktop::Bridges {
    ~Bridges() { [pool drain]; }
    Bridges(const Bridges &) = delete;
    Bridges &operator=(const Bridges &) = delete;

    explicit Bridges(FakeDesktop &desktop)
        : workspace(desktop.workspace), launchServices(desktop.launchServices), defaults(desktop.defaults),
          log(desktop.log), sound(desktop.sound), application(desktop.application), links(desktop.links),
          workspaceCenter(desktop.workspaceCenter, workspaceNotifications,
                          [[NSWorkspace sharedWorkspace] notificationCenter]),
          distributedCenter(desktop.distributedCenter, distributedNotifications,
                            [NSDistributedNotificationCenter defaultCenter]),
          statusBar(desktop.statusBar, target), alerts(desktop.alerts, target) {}

    /// Releases the objects of the scenario.
    NSAutoreleasePool *pool = [[NSAutoreleasePool alloc] init];
    PayloadTarget target;
    WorkspaceBridge workspace;
    LaunchServicesBridge launchServices;
    DefaultsBridge defaults;
    LogBridge log;
    SoundBridge sound;
    ApplicationBridge application;
    LinksBridge links;
    SystemNotifications workspaceNotifications = SystemNotifications::ofWorkspace();
    SystemNotifications distributedNotifications = SystemNotifications::distributed();
    NotificationsBridge workspaceCenter;
    NotificationsBridge distributedCenter;
    StatusBarBridge statusBar;
    AlertBridge alerts;
};

BridgedDesktop::BridgedDesktop()
    : bridges((macos_double::reset(), std::make_unique<Bridges>(static_cast<FakeDesktop &>(*this)))) {}

BridgedDesktop::~BridgedDesktop() = default;

Platform BridgedDesktop::platform() {
    const Platform inMemory = FakeDesktop::platform();
    return {bridges->application,    bridges->workspace, bridges->workspaceCenter, bridges->distributedCenter,
            bridges->launchServices, bridges->defaults,  inMemory.files,           inMemory.bundles,
            bridges->links,          bridges->log,       bridges->sound,           bridges->statusBar,
            inMemory.images,         bridges->alerts,    inMemory.layout};
}

} // namespace fernhop::macos
