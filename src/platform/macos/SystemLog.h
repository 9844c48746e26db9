#pragma once

#include "platform/Log.h"

namespace fernhop::macos {

/// The system's log.
class SystemLog : public Log {
  public:
    void log(const std::string &format) override;
};

} // namespace fernhop::macos
