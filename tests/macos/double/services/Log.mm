#include "macos/double/Recorder.h"

#import <Foundation/Foundation.h>

#include <cstdio>
#include <mutex>

// Replaces GNUstep's function, and receives GNUstep's own messages too.
extern "C" void NSLog(NSString *format, ...) {
    static std::mutex mutex;
    const std::lock_guard lock(mutex);
    va_list arguments;
    va_start(arguments, format);
    NSString *line = [[NSString alloc] initWithFormat:format arguments:arguments];
    va_end(arguments);
    auto &services = fernhop::macos_double::recorder().services;
    services.logFormats.push_back([format UTF8String]);
    services.logLines.push_back([line UTF8String]);
    std::fprintf(stderr, "%s\n", [line UTF8String]);
    [line release];
}
