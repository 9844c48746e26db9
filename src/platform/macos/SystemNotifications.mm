#include "platform/macos/SystemNotifications.h"

#include "platform/macos/Conversions.h"
#include "platform/macos/SystemRunningApplication.h"

/// Takes notifications for an observer of the core.
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

Notification fromNSNotification(NSNotification *notification) {
    Notification result{fromNSString([notification name]), std::nullopt};
    NSDictionary *userInfo = [notification userInfo];
    if (!userInfo)
        return result;
    auto &told = result.userInfo.emplace();
    for (id key in userInfo) {
        id value = [userInfo objectForKey:key];
        const auto name = textOf(key);
        if (name && [value isKindOfClass:[NSRunningApplication class]])
            told.emplace(*name, std::make_shared<SystemRunningApplication>(value));
    }
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
        [center.get() addObserver:added.get() selector:selector name:toNSString(name) object:nil];
    }
}

} // namespace fernhop::macos
