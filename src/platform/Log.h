#pragma once

#include <string>

namespace fernhop {

/// The system's log. May be called on any thread.
class Log {
  public:
    virtual ~Log() = default;

    /// Writes one line. `format` is a format string without arguments: "%%" becomes one percent sign, any
    /// other conversion stays as written. Raw control characters never reach the log.
    virtual void log(const std::string &format) = 0;
};

} // namespace fernhop
