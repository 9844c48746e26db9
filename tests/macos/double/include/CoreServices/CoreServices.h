#pragma once
#include <CoreFoundation/CoreFoundation.h>

typedef int OSStatus;

// Deprecated, as in the SDK, independent of the deployment target.
extern "C" __attribute__((deprecated)) CFStringRef LSCopyDefaultHandlerForURLScheme(CFStringRef scheme);
extern "C" __attribute__((deprecated)) OSStatus LSSetDefaultHandlerForURLScheme(CFStringRef scheme,
                                                                                CFStringRef bundleIdentifier);
