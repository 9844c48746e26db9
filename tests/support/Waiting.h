#pragma once

#include <chrono>
#include <thread>

namespace fernhop::support {

/// How long a test waits for something that must come. Long, as a loaded machine is not a failure.
inline constexpr std::chrono::seconds patience{30};

/// Waits until `condition` holds, asking again and again; false when patience ran out.
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
