#pragma once

namespace fernhop {

/// The alert sound. May be called on any thread; never blocks.
class Sound {
  public:
    virtual ~Sound() = default;

    /// Starts the sound and returns at once; does nothing when sound is not available.
    virtual void beep() = 0;
};

} // namespace fernhop
