#include "platform/linux/service/SessionApplication.h"

#include <glib-unix.h>

#include <csignal>

namespace fernhop::freedesktop {

SessionApplication::SessionApplication() : loop(g_main_loop_new(nullptr, FALSE)) {}

SessionApplication::~SessionApplication() {
    for (const guint source : signalSources)
        g_source_remove(source);
    if (busHandler != 0)
        g_signal_handler_disconnect(watchedBus, busHandler);
}

void SessionApplication::terminate() {
    if (ended)
        return;
    // Set before asking: the controller may call this again meanwhile.
    ended = true;
    if (shouldTerminate && shouldTerminate() != TerminateReply::now)
        ended = false;
    if (ended)
        g_main_loop_quit(loop.get());
}

void SessionApplication::endWithSignals() {
    const auto end = [](gpointer self) -> gboolean {
        static_cast<SessionApplication *>(self)->terminate();
        return G_SOURCE_CONTINUE;
    };
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        signalSources.push_back(g_unix_signal_add(number, end, this));
}

void SessionApplication::endWithBus(GDBusConnection *bus) {
    watchedBus = bus;
    const auto end = +[](SessionApplication *self) { self->terminate(); };
    busHandler = g_signal_connect_swapped(bus, "closed", G_CALLBACK(end), this);
    if (g_dbus_connection_is_closed(bus))
        terminate();
}

void SessionApplication::run() {
    if (!ended)
        g_main_loop_run(loop.get());
}

} // namespace fernhop::freedesktop
