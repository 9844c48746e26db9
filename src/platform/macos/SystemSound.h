#pragma once

#include "platform/Sound.h"

namespace fernhop::macos {

/// The system's alert sound.
class SystemSound : public Sound {
  public:
    void beep() override;
};

} // namespace fernhop::macos
