#pragma once

#include "platform/linux/base/GPointer.h"
#include "platform/linux/base/Timer.h"

#include <functional>
#include <optional>
#include <utility>

namespace fernhop::freedesktop {

/// Follows org.kde.StatusNotifierWatcher, where items and the hosts that show them meet: registers the item
/// of a connection with the running watcher and with each one that starts later, and learns whether there is
/// a host. Main thread only.
class NotifierWatcher {
  public:
    /// The item is on `bus`, which outlives the object, already.
    explicit NotifierWatcher(GDBusConnection *bus);
    ~NotifierWatcher();
    NotifierWatcher(const NotifierWatcher &) = delete;
    NotifierWatcher &operator=(const NotifierWatcher &) = delete;

    /// Whether the running watcher has accepted the item.
    [[nodiscard]] bool hasItem() const { return isRegistered; }

    /// Whether any host shows items; nothing until the bus has answered.
    [[nodiscard]] std::optional<bool> hasHost() const { return host; }

    /// Calls `changed`, in place of what was set before, whenever hasHost() has changed.
    void whenHostChanges(std::function<void()> changed) { onHostChange = std::move(changed); }

  private:
    void appeared();
    void registerItem();
    void queryHost();
    void setHost(bool isPresent);
    void stop();

    GDBusConnection *bus;
    bool isRegistered = false;
    int triesLeft = 0;
    Timer retry;
    std::optional<bool> host;
    std::function<void()> onHostChange = [] {};
    GObjectPointer<GCancellable> registration, query; ///< of the calls that are not answered yet
    guint subscription = 0;
    guint watch = 0;
};

} // namespace fernhop::freedesktop
