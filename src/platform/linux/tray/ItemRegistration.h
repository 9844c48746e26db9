#pragma once

#include "platform/linux/base/GPointer.h"

namespace fernhop::freedesktop {

/// Makes an item known to org.kde.StatusNotifierWatcher: to the one that is there, and to each that comes
/// later or again. Main thread only.
class ItemRegistration {
  public:
    /// The item is on `bus`, which outlives the object, already.
    explicit ItemRegistration(GDBusConnection *bus);
    ~ItemRegistration();
    ItemRegistration(const ItemRegistration &) = delete;
    ItemRegistration &operator=(const ItemRegistration &) = delete;

    /// Whether the watcher that is there now has taken the item.
    [[nodiscard]] bool isDone() const { return done; }

  private:
    void call();
    void stop();
    void tryAgain();
    static void watcherAppeared(GDBusConnection *bus, const gchar *name, const gchar *owner, gpointer self);
    static void watcherVanished(GDBusConnection *bus, const gchar *name, gpointer self);
    static void answered(GObject *bus, GAsyncResult *result, gpointer self);
    static gboolean waited(gpointer self);

    GDBusConnection *bus;
    bool done = false;
    int triesLeft = 0;
    guint waiting = 0;
    GObjectPointer<GCancellable> question;
    guint watch = 0;
};

} // namespace fernhop::freedesktop
