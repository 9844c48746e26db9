#pragma once

#include <glib.h>

#include <chrono>
#include <functional>
#include <utility>

namespace fernhop::freedesktop {

/// Has the main loop run a function once, after a pause, unless it is stopped or destroyed before.
class Timer {
  public:
    Timer() = default;
    ~Timer() { stop(); }
    Timer(const Timer &) = delete;
    Timer &operator=(const Timer &) = delete;

    /// Starts the pause anew; `elapsed` may start the timer again, or destroy it. What the main loop has to
    /// do with a lower `priority` number goes first.
    void start(std::chrono::milliseconds pause, std::function<void()> elapsed,
               int priority = G_PRIORITY_DEFAULT) {
        const auto fire = [](gpointer self) -> gboolean {
            auto &timer = *static_cast<Timer *>(self);
            timer.source = 0;
            std::exchange(timer.onElapsed, nullptr)();
            return G_SOURCE_REMOVE;
        };
        stop();
        onElapsed = std::move(elapsed);
        source = g_timeout_add_full(priority, static_cast<guint>(pause.count()), fire, this, nullptr);
    }
    void stop() {
        if (const guint running = std::exchange(source, 0); running != 0)
            g_source_remove(running);
    }
    [[nodiscard]] bool isRunning() const { return source != 0; }

  private:
    std::function<void()> onElapsed;
    guint source = 0;
};

} // namespace fernhop::freedesktop
