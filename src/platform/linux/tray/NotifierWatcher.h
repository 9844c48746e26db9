#pragma once

#include "platform/linux/base/GPointer.h"

#include <functional>
#include <optional>

namespace fernhop::freedesktop {

/// Where items and their hosts meet, by the StatusNotifierItem specification; the interface has the name too.
namespace notifierWatcher {
inline constexpr const char *name = "org.kde.StatusNotifierWatcher";
inline constexpr const char *path = "/StatusNotifierWatcher";
} // namespace notifierWatcher

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
    [[nodiscard]] std::optional<bool> arePresent() const { return present; }

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
