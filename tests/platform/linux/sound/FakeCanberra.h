#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace fernhop::freedesktop {

/// What the library that stands in for libcanberra does and notes. Its one object is had from the library
/// itself, by the function "fakeCanberra".
struct FakeCanberra {
    std::mutex mutex;
    std::vector<std::string> events;     ///< "event.id" of each sound asked for
    std::atomic<int> contexts = 0;       ///< open now
    std::atomic<bool> isBlocked = false; ///< `ca_context_create` does not return
    std::atomic<bool> isEndless = false; ///< a sound does not end by itself
    std::string missing;                 ///< playing this event fails at once
    std::string failing;                 ///< playing this event fails later

    std::vector<std::string> takeEvents() {
        const std::lock_guard lock(mutex);
        return std::exchange(events, {});
    }
};

} // namespace fernhop::freedesktop
