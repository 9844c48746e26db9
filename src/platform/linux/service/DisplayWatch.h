#pragma once

#include "platform/linux/base/Environment.h"

#include <glib.h>

#include <functional>
#include <map>
#include <string>

namespace fernhop::freedesktop {

/// Tells when the X server or the Wayland compositor of the session has gone. It looks at the sockets of this
/// process, whoever opened them, and is called by the GLib main loop before what has its usual priority:
/// toolkits and their plugins end the process at once when they find their connection broken. Main thread
/// only.
class DisplayWatch {
  public:
    /// `whenEnded` is called once for each connection that the display has closed.
    DisplayWatch(const Environment &environment, std::function<void()> whenEnded);
    ~DisplayWatch();
    DisplayWatch(const DisplayWatch &) = delete;
    DisplayWatch &operator=(const DisplayWatch &) = delete;

    /// Watches the connections that there are now; to be called again when there may be more. Only those by
    /// sockets of this machine count.
    void watchConnections();

  private:
    struct Connection {
        guint source = 0;
        std::string display; ///< address of its other end
    };

    static gboolean hungUp(gint descriptor, GIOCondition condition, gpointer self);
    [[nodiscard]] bool isDisplay(const std::string &address) const;

    const std::string compositor; ///< path of its socket; empty: none
    const std::function<void()> ended;
    std::map<int, Connection> connections; ///< by their descriptors
};

} // namespace fernhop::freedesktop
