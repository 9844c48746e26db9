#pragma once

#include "platform/linux/base/GPointer.h"

#include <functional>
#include <optional>

namespace fernhop::freedesktop {

/// Whether anyone on the bus shows the items of org.kde.StatusNotifierWatcher. Main thread only.
class NotifierHosts {
  public:
    /// Asks the bus, whose answer comes later; `changed` is called whenever the answer is another. `bus`
    /// outlives the object.
    NotifierHosts(GDBusConnection *bus, std::function<void()> changed);
    ~NotifierHosts();
    NotifierHosts(const NotifierHosts &) = delete;
    NotifierHosts &operator=(const NotifierHosts &) = delete;

    /// Nothing until the bus has answered.
    [[nodiscard]] std::optional<bool> areThere() const { return present; }

  private:
    void ask();
    void take(bool hostIsThere);
    static void watcherAppeared(GDBusConnection *bus, const gchar *name, const gchar *owner, gpointer self);
    static void watcherVanished(GDBusConnection *bus, const gchar *name, gpointer self);
    static void hostsChanged(GDBusConnection *bus, const gchar *sender, const gchar *path,
                             const gchar *interface, const gchar *signal, GVariant *body, gpointer self);
    static void answered(GObject *bus, GAsyncResult *result, gpointer self);

    GDBusConnection *bus;
    std::function<void()> changed;
    std::optional<bool> present;
    GObjectPointer<GCancellable> question;
    guint subscription = 0;
    guint watch = 0;
};

} // namespace fernhop::freedesktop
