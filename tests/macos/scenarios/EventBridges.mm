#include "macos/scenarios/EventBridges.h"

#include "macos/double/AppleEvents.h"
#include "platform/Workspace.h"
#include "platform/macos/Conversions.h"

#import <AppKit/AppKit.h>

namespace fernhop::macos {

namespace {

NSAppleEventDescriptor *descriptorOf(const LinkEventDescriptor &event) {
    NSAppleEventDescriptor *descriptor =
        event.stringValue ? [NSAppleEventDescriptor descriptorWithString:toNSString(*event.stringValue)]
                          : [[[NSAppleEventDescriptor alloc] init] autorelease];
    for (const auto &[keyword, parameter] : event.parameters)
        [descriptor setParamDescriptor:descriptorOf(parameter) forKeyword:keyword];
    return descriptor;
}

/// An application in its own class, anything else as another object.
id informationOf(const std::shared_ptr<Object> &told) {
    const auto application = std::dynamic_pointer_cast<RunningApplication>(told);
    if (!application)
        return @"no application";
    const auto identifier = application->bundleIdentifier();
    return [NSRunningApplication applicationWithIdentifier:identifier ? toNSString(*identifier) : nil];
}

NSDictionary *userInfoOf(const Notification &notification) {
    if (!notification.userInfo)
        return nil;
    NSMutableDictionary *information = [NSMutableDictionary dictionary];
    for (const auto &[key, told] : *notification.userInfo)
        if (told)
            [information setObject:informationOf(told) forKey:toNSString(key)];
    return information;
}

} // namespace

void LinksBridge::setEventHandler(LinkEventHandler handler, FourCharCode eventClass, FourCharCode eventID) {
    system.setEventHandler(std::move(handler), eventClass, eventID);
    const auto deliver = [eventClass, eventID](const LinkEventDescriptor &event, LinkEventDescriptor &) {
        @autoreleasepool {
            macos_double::deliverAppleEvent(eventClass, eventID, descriptorOf(event));
        }
    };
    memory.setEventHandler(deliver, eventClass, eventID);
}

void NotificationsBridge::addObserver(std::string_view name,
                                      std::function<void(const Notification &)> observer) {
    system.addObserver(name, std::move(observer));
    memory.addObserver(name, [this](const Notification &notification) {
        @autoreleasepool {
            [center.get() postNotificationName:toNSString(notification.name)
                                        object:nil
                                      userInfo:userInfoOf(notification)];
        }
    });
}

} // namespace fernhop::macos
