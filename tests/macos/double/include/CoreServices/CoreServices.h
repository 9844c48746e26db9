#pragma once
#include <CoreFoundation/CoreFoundation.h>

typedef int OSStatus;

extern "C" CFStringRef LSCopyDefaultHandlerForURLScheme(CFStringRef scheme);
extern "C" OSStatus LSSetDefaultHandlerForURLScheme(CFStringRef scheme, CFStringRef bundleIdentifier);
