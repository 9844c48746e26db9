#pragma once

#include <glib.h>
#include <sys/types.h>

#include <functional>
#include <map>

namespace fernhop::freedesktop {

/// Waits, through the default main loop, for the end of processes that this one started, and reaps them. Main
/// thread only.
class ChildWatches {
  public:
    /// Called with the status of waitpid(2).
    using Ended = std::function<void(int waitStatus)>;

    ChildWatches() = default;

    /// Stops waiting; the processes live on, and nothing is called for them any more.
    ~ChildWatches();
    ChildWatches(const ChildWatches &) = delete;
    ChildWatches &operator=(const ChildWatches &) = delete;

    /// Calls `ended` once, when the child ends. `child` must not have been reaped.
    void watch(pid_t child, Ended ended);

    /// How many children have not ended yet.
    [[nodiscard]] std::size_t count() const { return watches.size(); }

  private:
    struct Watch {
        guint source;
        Ended ended;
    };

    static void childEnded(GPid child, gint waitStatus, gpointer self);

    std::map<pid_t, Watch> watches;
};

} // namespace fernhop::freedesktop
