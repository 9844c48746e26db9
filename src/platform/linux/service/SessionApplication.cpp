#include "platform/linux/service/SessionApplication.h"

#include <glib-unix.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <charconv>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <utility>

namespace fernhop::freedesktop {
namespace {

/// The address of the local socket that a descriptor is connected to; empty for any other descriptor. An
/// abstract address begins with a zero byte.
std::string peerAddressOf(int descriptor) {
    sockaddr_un address{};
    socklen_t length = sizeof address;
    constexpr socklen_t start = offsetof(sockaddr_un, sun_path);
    if (getpeername(descriptor, reinterpret_cast<sockaddr *>(&address), &length) != 0 ||
        address.sun_family != AF_UNIX || length <= start)
        return {};
    std::string name(address.sun_path, std::min<std::size_t>(length, sizeof address) - start);
    // The length of a path includes its terminating zero byte.
    if (name.front() != '\0')
        name.resize(std::min(name.find('\0'), name.size()));
    return name;
}

std::vector<int> openDescriptors() {
    std::vector<int> descriptors;
    std::error_code error;
    std::filesystem::directory_iterator entry("/proc/self/fd", error);
    for (; entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const std::string name = entry->path().filename();
        int descriptor = -1;
        std::from_chars(name.data(), name.data() + name.size(), descriptor);
        descriptors.push_back(descriptor);
    }
    return descriptors;
}

} // namespace

DisplayWatch::DisplayWatch(const Environment &environment, std::function<void()> ended)
    : compositor(compositorSocket(environment.value("WAYLAND_DISPLAY").value_or(""),
                                  environment.value("XDG_RUNTIME_DIR").value_or(""))),
      onEnded(std::move(ended)) {}

DisplayWatch::~DisplayWatch() {
    for (const auto &[descriptor, connection] : connections)
        g_source_remove(connection.source);
}

void DisplayWatch::watchConnections() {
    for (const int descriptor : openDescriptors()) {
        auto display = peerAddressOf(descriptor);
        if (!isDisplay(display) || connections.contains(descriptor))
            continue;
        const guint source = g_unix_fd_add_full(G_PRIORITY_HIGH, descriptor, G_IO_HUP, hungUp, this, nullptr);
        connections.emplace(descriptor, Connection{source, std::move(display)});
    }
}

gboolean DisplayWatch::hungUp(gint descriptor, GIOCondition, gpointer self) {
    auto &watch = *static_cast<DisplayWatch *>(self);
    const auto closed = watch.connections.extract(descriptor);
    // When this process closed it, the descriptor is free or belongs to another socket now.
    if (closed && peerAddressOf(descriptor) == closed.mapped().display)
        watch.onEnded();
    return G_SOURCE_REMOVE;
}

bool DisplayWatch::isDisplay(const std::string &address) const {
    // X servers listen on a path and on an abstract address.
    const std::string path = address.starts_with('\0') ? address.substr(1) : address;
    return path.starts_with("/tmp/.X11-unix/X") || (!compositor.empty() && path == compositor);
}

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
    for (const int number : {SIGTERM, SIGINT, SIGHUP})
        signalSources.push_back(g_unix_signal_add(number, signalCame, this));
}

gboolean SessionApplication::signalCame(gpointer self) {
    static_cast<SessionApplication *>(self)->terminate();
    return G_SOURCE_CONTINUE;
}

void SessionApplication::endWithBus(GDBusConnection *bus) {
    watchedBus = bus;
    busHandler = g_signal_connect(bus, "closed", G_CALLBACK(busClosed), this);
    if (g_dbus_connection_is_closed(bus))
        terminate();
}

void SessionApplication::busClosed(GDBusConnection *, gboolean, GError *, gpointer self) {
    static_cast<SessionApplication *>(self)->terminate();
}

void SessionApplication::endWithDisplay(const Environment &environment) {
    if (!display)
        display.emplace(environment, [this] { terminate(); });
    display->watchConnections();
}

void SessionApplication::run() {
    if (!ended)
        g_main_loop_run(loop.get());
}

} // namespace fernhop::freedesktop
