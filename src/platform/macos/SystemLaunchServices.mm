#include "platform/macos/SystemLaunchServices.h"

#include "platform/macos/Conversions.h"
#include "platform/macos/Reference.h"

#import <CoreServices/CoreServices.h>

// The functions that replace these identify applications by their URL, and are missing on the oldest system.
#pragma clang diagnostic ignored "-Wdeprecated-declarations"

namespace fernhop::macos {

namespace {

/// The same string for Core Foundation's functions.
CFStringRef toCFString(const std::string &text) {
    return (CFStringRef)toNSString(text);
}

} // namespace

std::optional<std::string>
SystemLaunchServices::copyDefaultHandlerForUrlScheme(const std::string &scheme) const {
    @autoreleasepool {
        // The caller of a "copy" function owns the result, whichever framework releases it.
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
