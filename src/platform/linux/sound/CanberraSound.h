#pragma once

#include "platform/Sound.h"

#include <memory>
#include <string>

namespace fernhop::freedesktop {

/// The bell of the user's sound theme, or its warning sound where it has no bell. What plays it is loaded
/// with the first sound and works on a thread that ends with the sound. Where nothing can play it, all stays
/// quiet.
class CanberraSound final : public Sound {
  public:
    /// `library` is libcanberra, by name or path.
    explicit CanberraSound(std::string library = "libcanberra.so.0");

    /// Stops the sound. A sound system that does not answer is waited for no longer than a moment.
    ~CanberraSound() override;

    CanberraSound(const CanberraSound &) = delete;
    CanberraSound &operator=(const CanberraSound &) = delete;

    /// While a sound is playing, another call adds nothing.
    void beep() override;

  private:
    struct Playing;

    std::shared_ptr<Playing> playing;
};

} // namespace fernhop::freedesktop
