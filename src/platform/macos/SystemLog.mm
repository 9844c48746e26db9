#include "platform/macos/SystemLog.h"

#include "platform/LogLine.h"
#include "platform/macos/Conversions.h"

namespace fernhop::macos {

namespace {

/// A format string without conversions that prints `line`.
std::string formatOf(const std::string &line) {
    std::string format;
    format.reserve(line.size());
    for (const char character : line)
        format.append(character == '%' ? 2 : 1, character);
    return format;
}

} // namespace

// The line is the format string, and there are no arguments: a conversion in a link, such as "%s" or "%n",
// would read or write foreign memory. So the system's parser receives each percent sign as "%%", and the
// conversion is printed as written.
void SystemLog::log(const std::string &format) {
    @autoreleasepool {
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wformat-security"
        NSLog(toNSString(formatOf(logLine(format))));
#pragma clang diagnostic pop
    }
}

} // namespace fernhop::macos
