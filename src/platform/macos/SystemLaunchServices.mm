#include "platform/macos/SystemLaunchServices.h"

#include "platform/macos/Conversions.h"
#include "platform/macos/Reference.h"

#import <CoreServices/CoreServices.h>

// What would replace these functions knows applications by where they are, and came after the oldest system.
#pragma clang diagnostic ignored "-Wdeprecated-declarations"

namespace fernhop::macos {

namespace {

/// The same string, as Core Foundation's functions take it.
CFStringRef toCFString(const std::string &text) {
    return (CFStringRef)toNSString(text);
}

} // namespace

std::optional<std::string>
SystemLaunchServices::copyDefaultHandlerForUrlScheme(const std::string &scheme) const {
    @autoreleasepool {
        // A function that copies gives its caller one retain, whichever framework takes it back.
        const auto handler =
            Reference<NSString>::adopting((NSString *)LSCopyDefaultHandlerForURLScheme(toCFString(scheme)));
        return textOf(handler.get());
    }
}

bool SystemLaunchServices::setDefaultHandlerForUrlScheme(const std::string &scheme,
                                                         const std::string &bundleID) {
    @autoreleasepool {
        return LSSetDefaultHandlerForURLScheme(toCFString(scheme), toCFString(bundleID)) == 0;
    }
}

} // namespace fernhop::macos
