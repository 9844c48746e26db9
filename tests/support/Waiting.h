#pragma once

#include <chrono>
#include <thread>

namespace fernhop::support {

/// How long a test waits for an event that must happen. Long, because machines may be loaded.
inline constexpr std::chrono::seconds patience{30};

/// Waits until `condition` holds, asking again and again; false on timeout.
template <typename Condition>
[[nodiscard]] bool waitUntil(Condition condition) {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

} // namespace fernhop::support
