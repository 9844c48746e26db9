#pragma once

#include "support/Waiting.h"

#include <glib.h>

namespace fernhop::support {

/// Runs the default main loop until `condition` holds; false on timeout. The condition is asked
/// again after each event, and now and then when there is none (it may be about another process).
template <typename Condition>
[[nodiscard]] bool runUntil(Condition condition) {
    return waitUntil([&] {
        while (!condition()) {
            if (!g_main_context_iteration(nullptr, FALSE))
                return false;
        }
        return true;
    });
}

/// Dispatches everything that is ready now.
inline void runPending() {
    while (g_main_context_iteration(nullptr, FALSE)) {
    }
}

} // namespace fernhop::support
