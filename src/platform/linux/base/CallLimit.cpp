#include "platform/linux/base/CallLimit.h"

#include <malloc.h>

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace fernhop::freedesktop {

/// Gives the memory of a flood, or of a large call, back to the system when it is over: the allocator would
/// keep it.
class CallLimit::MemoryReturn {
  public:
    /// From any thread.
    void request() {
        if (requests->fetch_add(1) > 0)
            return;
        const auto look = [](gpointer data) -> gboolean {
            auto &count = **static_cast<Count *>(data);
            if (count.exchange(1) > 1)
                return G_SOURCE_CONTINUE;
            count = 0;
            malloc_trim(0);
            return G_SOURCE_REMOVE;
        };
        g_timeout_add_seconds_full(G_PRIORITY_LOW, 1, look, new Count(requests),
                                   [](gpointer count) { delete static_cast<Count *>(count); });
    }

  private:
    using Count = std::shared_ptr<std::atomic<unsigned>>;

    Count requests = std::make_shared<std::atomic<unsigned>>(0); ///< in the last second or two
};

/// The calls in progress. GLib's thread reads the messages and sends the answers.
class CallLimit::Calls {
  public:
    Calls(std::size_t mostCalls, std::function<bool(std::string_view)> refusable)
        : most(mostCalls), mayRefuse(std::move(refusable)) {}

    /// The message that goes on; null: none does. Takes the message.
    GDBusMessage *incoming(GDBusConnection *connection, GDBusMessage *message) {
        const char *const sender = g_dbus_message_get_sender(message);
        const char *const method = g_dbus_message_get_member(message);
        if (g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL || !sender ||
            !mayRefuse(method))
            return message;
        if (isLarge(message))
            memory.request();
        const bool wantsReply =
            (g_dbus_message_get_flags(message) & G_DBUS_MESSAGE_FLAGS_NO_REPLY_EXPECTED) == 0;
        if (!add(sender, g_dbus_message_get_serial(message), wantsReply)) {
            refuse(connection, message);
            memory.request();
            return nullptr;
        }
        return wantsReply ? message : withReply(message);
    }

    /// The same for what this process sends.
    GDBusMessage *outgoing(GDBusMessage *message) {
        const char *const receiver = g_dbus_message_get_destination(message);
        const guint32 serial = g_dbus_message_get_reply_serial(message);
        if (!receiver || serial == 0 || remove(receiver, serial))
            return message;
        g_object_unref(message);
        return nullptr;
    }

  private:
    using Serials = std::map<guint32, bool>; ///< of calls, and whether a reply is wanted

    /// Whether there is room for one more.
    bool add(const std::string &sender, guint32 serial, bool wantsReply) {
        const std::lock_guard lock(mutex);
        auto &own = calls[sender];
        return own.size() < most && own.emplace(serial, wantsReply).second;
    }

    /// Whether the reply to this call is wanted.
    bool remove(const std::string &sender, guint32 serial) {
        const std::lock_guard lock(mutex);
        const auto own = calls.find(sender);
        if (own == calls.end())
            return true;
        const auto call = own->second.find(serial);
        const bool isWanted = call == own->second.end() || call->second;
        own->second.erase(serial);
        if (own->second.empty())
            calls.erase(own);
        return isWanted;
    }

    static bool isLarge(GDBusMessage *message) {
        constexpr gsize large = 64 << 10;
        GVariant *const body = g_dbus_message_get_body(message);
        return body && g_variant_get_size(body) > large;
    }

    // The reply is what tells that a call has been handled, also where nobody waits for it.
    static GDBusMessage *withReply(GDBusMessage *message) {
        GDBusMessage *const copy = g_dbus_message_copy(message, nullptr);
        if (!copy)
            return message;
        g_dbus_message_set_flags(copy, G_DBUS_MESSAGE_FLAGS_NONE);
        g_object_unref(message);
        return copy;
    }

    static void refuse(GDBusConnection *connection, GDBusMessage *message) {
        const GObjectPointer<GDBusMessage> call(message);
        if ((g_dbus_message_get_flags(message) & G_DBUS_MESSAGE_FLAGS_NO_REPLY_EXPECTED) != 0)
            return;
        const GObjectPointer<GDBusMessage> error(g_dbus_message_new_method_error_literal(
            message, "org.freedesktop.DBus.Error.LimitsExceeded", "Too many calls are in progress"));
        g_dbus_connection_send_message(connection, error.get(), G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr,
                                       nullptr);
    }

    MemoryReturn memory;
    const std::size_t most;
    const std::function<bool(std::string_view)> mayRefuse;
    std::mutex mutex;
    std::map<std::string, Serials> calls; ///< by the unique name of the caller
};

CallLimit::CallLimit(GDBusConnection *connection, std::size_t mostCalls,
                     std::function<bool(std::string_view)> mayRefuse)
    : bus(static_cast<GDBusConnection *>(g_object_ref(connection))) {
    const GDBusMessageFilterFunction look = [](GDBusConnection *same, GDBusMessage *message,
                                               gboolean isIncoming, gpointer calls) {
        return isIncoming ? static_cast<Calls *>(calls)->incoming(same, message)
                          : static_cast<Calls *>(calls)->outgoing(message);
    };
    // The filter may still run on its thread after it has been removed; GLib tells when it is over.
    filter = g_dbus_connection_add_filter(bus.get(), look, new Calls(mostCalls, std::move(mayRefuse)),
                                          [](gpointer calls) { delete static_cast<Calls *>(calls); });
}

CallLimit::~CallLimit() {
    g_dbus_connection_remove_filter(bus.get(), filter);
}

} // namespace fernhop::freedesktop
