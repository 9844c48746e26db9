#pragma once
#include <CoreFoundation/CoreFoundation.h>

typedef int OSStatus;

// Deprecated, as in the SDK, whatever the oldest system is that is built for.
extern "C" __attribute__((deprecated)) CFStringRef LSCopyDefaultHandlerForURLScheme(CFStringRef scheme);
extern "C" __attribute__((deprecated)) OSStatus LSSetDefaultHandlerForURLScheme(CFStringRef scheme,
                                                                                CFStringRef bundleIdentifier);
