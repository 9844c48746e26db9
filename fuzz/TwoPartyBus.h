#pragma once

#include "platform/linux/base/GPointer.h"

#include <sys/socket.h>

#include <cstdlib>
#include <string_view>

namespace fernhop::fuzz {

using freedesktop::GObjectPointer;

/// A bus with no daemon, fast enough for a fuzzer: a line between what offers objects and the one who calls
/// them, who also answers for the daemon. Main thread only.
class TwoPartyBus {
  public:
    TwoPartyBus(const TwoPartyBus &) = delete;
    TwoPartyBus &operator=(const TwoPartyBus &) = delete;
    TwoPartyBus() {
        int ends[2];
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
            std::abort();
        caller = connect(ends[0], G_DBUS_CONNECTION_FLAGS_NONE);
        g_dbus_connection_add_filter(caller.get(), answerForDaemon, nullptr, nullptr);
        called = connect(ends[1], G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    }

    /// The connection on which objects are offered.
    [[nodiscard]] GDBusConnection *offering() const { return called.get(); }

    /// Calls a method there, which must be answered, by an error at least. `body` is taken, null for none.
    void post(const char *path, const char *interface, const char *method, GVariant *body) {
        const GObjectPointer<GDBusMessage> message(
            g_dbus_message_new_method_call(nullptr, path, interface, method));
        if (body != nullptr)
            g_dbus_message_set_body(message.get(), body);
        ++unanswered;
        g_dbus_connection_send_message_with_reply(caller.get(), message.get(), G_DBUS_SEND_MESSAGE_FLAGS_NONE,
                                                  -1, nullptr, nullptr, answered, this);
    }

    /// Waits until every call has its answer; the last one.
    GDBusMessage *settle() {
        while (unanswered > 0)
            g_main_context_iteration(nullptr, TRUE);
        return lastAnswer.get();
    }

    /// Calls a method when every call before is answered; its answer, which lives until the next call.
    GDBusMessage *call(const char *path, const char *interface, const char *method, GVariant *body) {
        (void)settle();
        post(path, interface, method, body);
        return settle();
    }

  private:
    static GObjectPointer<GDBusConnection> connect(int descriptor, GDBusConnectionFlags flags) {
        const GObjectPointer<GSocket> socket(g_socket_new_from_fd(descriptor, nullptr));
        const GObjectPointer<GSocketConnection> stream(
            g_socket_connection_factory_create_connection(socket.get()));
        return GObjectPointer<GDBusConnection>(
            g_dbus_connection_new_sync(G_IO_STREAM(stream.get()), nullptr, flags, nullptr, nullptr, nullptr));
    }

    static void answered(GObject *connection, GAsyncResult *result, gpointer self) {
        auto &bus = *static_cast<TwoPartyBus *>(self);
        bus.lastAnswer.reset(
            g_dbus_connection_send_message_with_reply_finish(G_DBUS_CONNECTION(connection), result, nullptr));
        if (!bus.lastAnswer)
            std::abort();
        --bus.unanswered;
    }

    /// On a thread of the connection. Every name is there, and every question has the same answer.
    static GDBusMessage *answerForDaemon(GDBusConnection *connection, GDBusMessage *message,
                                         gboolean isIncoming, gpointer) {
        if (!isIncoming || g_dbus_message_get_message_type(message) != G_DBUS_MESSAGE_TYPE_METHOD_CALL)
            return message;
        const GObjectPointer<GDBusMessage> reply(g_dbus_message_new_method_reply(message));
        const std::string_view member = g_dbus_message_get_member(message);
        if (member == "Hello" || member == "GetNameOwner")
            g_dbus_message_set_body(reply.get(), g_variant_new("(s)", ":1.1"));
        g_dbus_connection_send_message(connection, reply.get(), G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr,
                                       nullptr);
        g_object_unref(message);
        return nullptr;
    }

    GObjectPointer<GDBusConnection> caller;
    GObjectPointer<GDBusConnection> called;
    GObjectPointer<GDBusMessage> lastAnswer;
    int unanswered = 0;
};

} // namespace fernhop::fuzz
