#include "macos/double/Recorder.h"

#import <CoreServices/CoreServices.h>
#import <Foundation/Foundation.h>

namespace {

using fernhop::macos_double::recorder;

std::string text(CFStringRef string) {
    return [reinterpret_cast<NSString *>(const_cast<__CFString *>(string)) UTF8String];
}

} // namespace

void CFRelease(CFTypeRef object) {
    [reinterpret_cast<id>(const_cast<void *>(object)) release];
}

CFStringRef LSCopyDefaultHandlerForURLScheme(CFStringRef scheme) {
    const auto found = recorder().services.handlers.find(text(scheme));
    if (found == recorder().services.handlers.end())
        return nullptr;
    return reinterpret_cast<CFStringRef>([[NSString alloc] initWithUTF8String:found->second.c_str()]);
}

OSStatus LSSetDefaultHandlerForURLScheme(CFStringRef scheme, CFStringRef bundleIdentifier) {
    auto &services = recorder().services;
    services.handlersSet.emplace_back(text(scheme), text(bundleIdentifier));
    if (services.handlerStatus == 0)
        services.handlers[text(scheme)] = text(bundleIdentifier);
    return services.handlerStatus;
}
