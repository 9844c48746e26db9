#include "WaylandTestClient.h"

#include <sys/mman.h>
#include <unistd.h>
#include <xdg-shell-client-protocol.h>

#include <stdexcept>
#include <string_view>

namespace fernhop::support {

namespace {

constexpr int width = 64;
constexpr int height = 64;
constexpr int stride = width * 4;

void configured(void *window, xdg_surface *role, std::uint32_t serial) {
    xdg_surface_ack_configure(role, serial);
    static_cast<WaylandTestClient::Window *>(window)->isConfigured = true;
}

} // namespace

WaylandTestClient::WaylandTestClient(const std::string &name) : display(wl_display_connect(name.c_str())) {
    if (!display)
        throw std::runtime_error("no Wayland display");
    static constexpr wl_registry_listener listener{offered, [](void *, wl_registry *, std::uint32_t) {}};
    registry = wl_display_get_registry(display);
    wl_registry_add_listener(registry, &listener, this);
    wl_display_roundtrip(display);
    if (!compositor || !memory || !shell)
        throw std::runtime_error("the compositor shows no windows");
}

WaylandTestClient::~WaylandTestClient() {
    for (const auto &window : windows)
        destroy(window);
    xdg_wm_base_destroy(shell);
    wl_shm_destroy(memory);
    wl_compositor_destroy(compositor);
    wl_registry_destroy(registry);
    wl_display_disconnect(display);
}

void WaylandTestClient::offered(void *self, wl_registry *registry, std::uint32_t name, const char *interface,
                                std::uint32_t) {
    auto &client = *static_cast<WaylandTestClient *>(self);
    const auto bind = [&](const wl_interface &type) { return wl_registry_bind(registry, name, &type, 1); };
    const std::string_view offer = interface;
    if (offer == wl_compositor_interface.name)
        client.compositor = static_cast<wl_compositor *>(bind(wl_compositor_interface));
    else if (offer == wl_shm_interface.name)
        client.memory = static_cast<wl_shm *>(bind(wl_shm_interface));
    else if (offer == xdg_wm_base_interface.name)
        client.shell = static_cast<xdg_wm_base *>(bind(xdg_wm_base_interface));
}

WaylandTestClient::Window &WaylandTestClient::open(const std::string &appID) {
    static constexpr xdg_surface_listener listener{configured};
    Window &window = windows.emplace_back();
    window.surface = wl_compositor_create_surface(compositor);
    window.role = xdg_wm_base_get_xdg_surface(shell, window.surface);
    xdg_surface_add_listener(window.role, &listener, &window);
    window.toplevel = xdg_surface_get_toplevel(window.role);
    xdg_toplevel_set_app_id(window.toplevel, appID.c_str());
    wl_surface_commit(window.surface);
    while (!window.isConfigured && wl_display_dispatch(display) >= 0) {
    }
    wl_buffer *const buffer = makeBuffer();
    wl_surface_attach(window.surface, buffer, 0, 0);
    wl_surface_damage(window.surface, 0, 0, width, height);
    wl_surface_commit(window.surface);
    wl_display_roundtrip(display);
    wl_buffer_destroy(buffer);
    return window;
}

wl_buffer *WaylandTestClient::makeBuffer() const {
    const int file = memfd_create("window", MFD_CLOEXEC);
    if (file < 0 || ftruncate(file, stride * height) != 0)
        throw std::runtime_error("no memory to share");
    wl_shm_pool *const pool = wl_shm_create_pool(memory, file, stride * height);
    wl_buffer *const buffer =
        wl_shm_pool_create_buffer(pool, 0, width, height, stride, WL_SHM_FORMAT_XRGB8888);
    wl_shm_pool_destroy(pool);
    wl_display_flush(display);
    ::close(file);
    return buffer;
}

void WaylandTestClient::rename(const Window &window, const std::string &appID) {
    xdg_toplevel_set_app_id(window.toplevel, appID.c_str());
    wl_display_roundtrip(display);
}

void WaylandTestClient::close(Window &window) {
    destroy(window);
    windows.remove_if([&](const Window &other) { return &other == &window; });
    wl_display_roundtrip(display);
}

void WaylandTestClient::destroy(const Window &window) {
    xdg_toplevel_destroy(window.toplevel);
    xdg_surface_destroy(window.role);
    wl_surface_destroy(window.surface);
}

} // namespace fernhop::support
