#include "platform/macos/SystemNotifications.h"

#include "platform/macos/Conversions.h"
#include "platform/macos/SystemRunningApplication.h"

/// Receives notifications for an observer of the core.
@interface FernhopObserver : NSObject {
    std::function<void(const fernhop::Notification &)> _observer;
}
- (instancetype)initWithObserver:(std::function<void(const fernhop::Notification &)>)observer;
- (void)activeApplicationDidChange:(NSNotification *)notification;
- (void)systemAppearanceDidChange;
@end

@implementation FernhopObserver

- (instancetype)initWithObserver:(std::function<void(const fernhop::Notification &)>)observer {
    self = [super init];
    if (self)
        _observer = std::move(observer);
    return self;
}

- (void)activeApplicationDidChange:(NSNotification *)notification {
    _observer(fernhop::macos::fromNSNotification(notification));
}

- (void)systemAppearanceDidChange {
    _observer({std::string(fernhop::themeChangedNotification), std::nullopt});
}

@end

namespace fernhop::macos {

namespace {

/// The system's own constant if it has one, since its text is unspecified.
NSString *systemName(std::string_view name) {
    return name == didActivateApplicationNotification ? NSWorkspaceDidActivateApplicationNotification
                                                      : toNSString(name);
}

} // namespace

Notification fromNSNotification(NSNotification *notification) {
    Notification result{fromNSString([notification name]), std::nullopt};
    NSDictionary *userInfo = [notification userInfo];
    if (!userInfo)
        return result;
    auto &told = result.userInfo.emplace();
    id application = [userInfo objectForKey:NSWorkspaceApplicationKey];
    if ([application isKindOfClass:[NSRunningApplication class]])
        told.emplace(workspaceApplicationKey, std::make_shared<SystemRunningApplication>(application));
    return result;
}

SystemNotifications::SystemNotifications(NSNotificationCenter *notificationCenter, SEL observerSelector)
    : center(notificationCenter), selector(observerSelector) {}

SystemNotifications SystemNotifications::ofWorkspace() {
    return {
        [[NSWorkspace sharedWorkspace] notificationCenter], @selector(activeApplicationDidChange:)
    };
}

SystemNotifications SystemNotifications::distributed() {
    return {
        [NSDistributedNotificationCenter defaultCenter], @selector(systemAppearanceDidChange)
    };
}

SystemNotifications::~SystemNotifications() {
    for (const auto &observer : observers)
        [center.get() removeObserver:observer.get()];
}

void SystemNotifications::addObserver(std::string_view name,
                                      std::function<void(const Notification &)> observer) {
    @autoreleasepool {
        const auto &added = observers.emplace_back(
            Reference<NSObject>::adopting([[FernhopObserver alloc] initWithObserver:std::move(observer)]));
        [center.get() addObserver:added.get() selector:selector name:systemName(name) object:nil];
    }
}

} // namespace fernhop::macos
