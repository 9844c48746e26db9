#include "platform/macos/SystemLog.h"

#include "platform/LogLine.h"
#include "platform/macos/Conversions.h"

namespace fernhop::macos {

namespace {

/// A format string without conversions that comes out as `line`.
std::string formatOf(const std::string &line) {
    std::string format;
    format.reserve(line.size());
    for (const char character : line)
        format.append(character == '%' ? 2 : 1, character);
    return format;
}

} // namespace

// The line is the format string, and there are no arguments: a conversion that a link brings along, "%s" or
// "%n", would read or write what is none of its business. So each percent sign reaches the system's parser as
// "%%", which is how a conversion that has no argument stands as it was written.
void SystemLog::log(const std::string &format) {
    @autoreleasepool {
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wformat-security"
        NSLog(toNSString(formatOf(logLine(format))));
#pragma clang diagnostic pop
    }
}

} // namespace fernhop::macos
