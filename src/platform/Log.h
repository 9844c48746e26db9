#pragma once

#include <string>

namespace fernhop {

/// The system's log. May be called on any thread.
class Log {
  public:
    virtual ~Log() = default;

    /// Writes one line. `format` is read as a format string without arguments: "%%" is one percent sign, and
    /// every other conversion stands as written. Raw control characters never reach the log.
    virtual void log(const std::string &format) = 0;
};

} // namespace fernhop
