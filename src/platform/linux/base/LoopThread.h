#pragma once

#include <functional>
#include <memory>
#include <thread>

namespace fernhop::freedesktop {

/// A thread with a loop of its own, which is the thread's default GLib context. For what has to wait for
/// another process that may have stopped to answer: the thread then hangs, and nobody else. Used by one other
/// thread.
class LoopThread {
  public:
    LoopThread();

    /// Ends the thread after what it was given. One that hangs is left alone, and what it was given stays.
    ~LoopThread();
    LoopThread(const LoopThread &) = delete;
    LoopThread &operator=(const LoopThread &) = delete;

    /// Has the thread do `work`, after what it was given before. It is dropped when there is no thread.
    void post(std::function<void()> work);

    /// The same, and waits until it is done; whether it is. False after half a second, or at once while the
    /// thread hangs. The work may still be done later, so it owns what it uses.
    [[nodiscard]] bool perform(std::function<void()> work);

    /// Whether work has been waited for in vain, and is not done yet.
    [[nodiscard]] bool hangs() const;

  private:
    struct Shared;

    std::shared_ptr<Shared> shared;
    std::thread thread;
    unsigned performed = 0; ///< how many works were waited for
};

} // namespace fernhop::freedesktop
