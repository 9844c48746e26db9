#include "platform/linux/service/DisplayWatch.h"

#include "platform/linux/base/Environment.h"

#include <glib-unix.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <filesystem>
#include <utility>
#include <vector>

namespace fernhop::freedesktop {

namespace {

/// The name of the socket that this one is connected to; empty when it is no socket of this machine, or none
/// at all. An abstract name begins with a zero byte.
std::string otherEndOf(int descriptor) {
    sockaddr_un address{};
    socklen_t length = sizeof address;
    constexpr socklen_t start = offsetof(sockaddr_un, sun_path);
    if (getpeername(descriptor, reinterpret_cast<sockaddr *>(&address), &length) != 0 ||
        address.sun_family != AF_UNIX || length <= start)
        return {};
    std::string name(address.sun_path, std::min<std::size_t>(length, sizeof address) - start);
    // A path is counted with the zero byte that ends it.
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

DisplayWatch::DisplayWatch(const Environment &environment, std::function<void()> whenEnded)
    : compositor(compositorSocket(environment.value("WAYLAND_DISPLAY").value_or(""),
                                  environment.value("XDG_RUNTIME_DIR").value_or(""))),
      ended(std::move(whenEnded)) {}

DisplayWatch::~DisplayWatch() {
    for (const auto &[descriptor, connection] : connections)
        g_source_remove(connection.source);
}

void DisplayWatch::watchConnections() {
    for (const int descriptor : openDescriptors()) {
        auto display = otherEndOf(descriptor);
        if (!isDisplay(display) || connections.contains(descriptor))
            continue;
        const guint source = g_unix_fd_add_full(G_PRIORITY_HIGH, descriptor, G_IO_HUP, hungUp, this, nullptr);
        connections.emplace(descriptor, Connection{source, std::move(display)});
    }
}

gboolean DisplayWatch::hungUp(gint descriptor, GIOCondition, gpointer self) {
    auto &watch = *static_cast<DisplayWatch *>(self);
    const auto closed = watch.connections.extract(descriptor);
    // Closed at this end, it is no socket any more, or another one has the number.
    if (closed && otherEndOf(descriptor) == closed.mapped().display)
        watch.ended();
    return G_SOURCE_REMOVE;
}

bool DisplayWatch::isDisplay(const std::string &address) const {
    // Where X servers have their sockets, as a path and as an abstract name.
    const std::string path = address.starts_with('\0') ? address.substr(1) : address;
    return path.starts_with("/tmp/.X11-unix/X") || (!compositor.empty() && path == compositor);
}

} // namespace fernhop::freedesktop
