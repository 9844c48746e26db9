#include "platform/linux/source/WaylandConnection.h"

#include <glib-unix.h>

#include <algorithm>
#include <utility>

namespace fernhop::freedesktop {

WaylandConnection::WaylandConnection(const std::string &name)
    : display(wl_display_connect(name.c_str())), alive(display != nullptr) {
    if (!alive)
        return;
    static constexpr wl_registry_listener listener{
        .global =
            [](void *self, wl_registry *, std::uint32_t number, const char *interface,
               std::uint32_t version) {
                static_cast<WaylandConnection *>(self)->globals.try_emplace(interface,
                                                                            Global{number, version});
            },
        .global_remove =
            [](void *self, wl_registry *, std::uint32_t number) {
                std::erase_if(static_cast<WaylandConnection *>(self)->globals,
                              [number](const auto &global) { return global.second.name == number; });
            }};
    registry = wl_display_get_registry(display);
    wl_registry_add_listener(registry, &listener, this);
    synchronize();
}

WaylandConnection::~WaylandConnection() {
    if (source) {
        g_source_destroy(source);
        g_source_unref(source);
    }
    if (!display)
        return;
    wl_registry_destroy(registry);
    wl_display_disconnect(display);
}

void *WaylandConnection::bind(const wl_interface &interface, std::uint32_t version) const {
    const auto found = globals.find(interface.name);
    if (!alive || found == globals.end())
        return nullptr;
    return wl_registry_bind(registry, found->second.name, &interface,
                            std::min(version, found->second.version));
}

void WaylandConnection::synchronize() {
    if (alive)
        alive = wl_display_roundtrip(display) >= 0;
}

void WaylandConnection::flush() const {
    if (alive)
        wl_display_flush(display);
}

void WaylandConnection::listen(std::function<void()> dispatched, std::function<void()> lost) {
    onDispatched = std::move(dispatched);
    onLost = std::move(lost);
    if (!alive)
        return;
    const auto readable = [](gint, GIOCondition, gpointer self) -> gboolean {
        auto &connection = *static_cast<WaylandConnection *>(self);
        if (wl_display_dispatch(connection.display) >= 0) {
            connection.onDispatched();
            connection.flush();
            return G_SOURCE_CONTINUE;
        }
        connection.alive = false;
        connection.onLost();
        return G_SOURCE_REMOVE;
    };
    source = g_unix_fd_source_new(wl_display_get_fd(display),
                                  static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR));
    g_source_set_callback(source, G_SOURCE_FUNC(+readable), this, nullptr);
    g_source_attach(source, g_main_context_get_thread_default());
}

} // namespace fernhop::freedesktop
