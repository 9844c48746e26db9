#pragma once

namespace fernhop {

/// The sound that tells the user that something did not work. May be called on any thread; never blocks.
class Sound {
  public:
    virtual ~Sound() = default;

    virtual void beep() = 0;
};

} // namespace fernhop
