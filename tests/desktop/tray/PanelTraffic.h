#pragma once

#include "platform/linux/service/BusClient.h"

#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace fernhop::desktoptest {

/// Listens to what a panel asks of a menu, to tell when it knows the menu as it is now.
class PanelTraffic {
  public:
    /// Calls and answers of `ourselves`, a name on the bus, do not count.
    PanelTraffic(const std::string &address, std::string ourselves)
        : ownName(std::move(ourselves)), connection(freedesktop::connectTo(address)) {
        g_dbus_connection_add_filter(connection.get(), passed, this, nullptr);
        const freedesktop::PendingCall call(connection.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                            "org.freedesktop.DBus.Monitoring", "BecomeMonitor",
                                            g_variant_new("(@asu)", g_variant_new_strv(nullptr, 0), 0));
        (void)call.wait();
    }
    ~PanelTraffic() { g_dbus_connection_close_sync(connection.get(), nullptr, nullptr); }
    PanelTraffic(const PanelTraffic &) = delete;
    PanelTraffic &operator=(const PanelTraffic &) = delete;

    /// Whether the panel was told the layout with this revision, and everything that it asked since.
    [[nodiscard]] bool knows(guint32 revision) {
        const std::lock_guard lock(mutex);
        return isTold && toldRevision == revision && unanswered.empty();
    }

  private:
    static GDBusMessage *passed(GDBusConnection *bus, GDBusMessage *message, gboolean isIncoming,
                                gpointer self) {
        if (!isIncoming ||
            text(g_dbus_message_get_destination(message)) == g_dbus_connection_get_unique_name(bus))
            return message;
        static_cast<PanelTraffic *>(self)->note(message);
        // What others say to each other is not for us to answer; the bus ends a monitor that speaks.
        g_object_unref(message);
        return nullptr;
    }

    void note(GDBusMessage *message) {
        const std::lock_guard lock(mutex);
        const std::string_view interface = text(g_dbus_message_get_interface(message));
        const std::string sender(text(g_dbus_message_get_sender(message)));
        const std::string receiver(text(g_dbus_message_get_destination(message)));
        if (g_dbus_message_get_message_type(message) == G_DBUS_MESSAGE_TYPE_METHOD_CALL) {
            const bool isAnswered =
                (g_dbus_message_get_flags(message) & G_DBUS_MESSAGE_FLAGS_NO_REPLY_EXPECTED) == 0;
            if (interface == "com.canonical.dbusmenu" && sender != ownName && isAnswered)
                unanswered.emplace(sender, g_dbus_message_get_serial(message));
        } else if (unanswered.erase({receiver, g_dbus_message_get_reply_serial(message)}) > 0) {
            noteLayout(g_dbus_message_get_body(message));
        }
    }

    void noteLayout(GVariant *body) {
        if (!body || !g_variant_is_of_type(body, G_VARIANT_TYPE("(u(ia{sv}av))")))
            return;
        g_variant_get_child(body, 0, "u", &toldRevision);
        isTold = true;
    }

    static std::string_view text(const char *text) { return text ? text : ""; }

    const std::string ownName;
    std::mutex mutex;                                     ///< messages come on a thread of the connection
    std::set<std::pair<std::string, guint32>> unanswered; ///< who asked, and the number of the call
    guint32 toldRevision = 0;
    bool isTold = false;
    freedesktop::BusConnection connection;
};

} // namespace fernhop::desktoptest
