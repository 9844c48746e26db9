#pragma once

namespace fernhop {

/// The sound that tells the user that something did not work. May be called on any thread; never blocks.
class Sound {
  public:
    virtual ~Sound() = default;

    /// Starts the sound and returns at once; where there is no sound, nothing happens.
    virtual void beep() = 0;
};

} // namespace fernhop
