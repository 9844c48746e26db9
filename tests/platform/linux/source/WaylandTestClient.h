#pragma once

#include <wayland-client.h>

#include <cstdint>
#include <list>
#include <string>

struct xdg_surface;
struct xdg_toplevel;
struct xdg_wm_base;

namespace fernhop::support {

/// A client of a Wayland display that creates the windows of a test.
class WaylandTestClient {
  public:
    explicit WaylandTestClient(const std::string &display);
    ~WaylandTestClient();
    WaylandTestClient(const WaylandTestClient &) = delete;
    WaylandTestClient &operator=(const WaylandTestClient &) = delete;

    struct Window {
        wl_surface *surface;
        xdg_surface *role;
        xdg_toplevel *toplevel;
        bool isConfigured = false;
    };

    /// Shows a window; it stays until `close` or the client's end.
    Window &open(const std::string &appID);

    /// Gives a window another app_id.
    void rename(const Window &window, const std::string &appID);

    void close(Window &window);

  private:
    static void offered(void *self, wl_registry *registry, std::uint32_t name, const char *interface,
                        std::uint32_t version);
    [[nodiscard]] wl_buffer *makeBuffer() const;
    void destroy(const Window &window);

    wl_display *display;
    wl_registry *registry = nullptr;
    wl_compositor *compositor = nullptr;
    wl_shm *memory = nullptr;
    xdg_wm_base *shell = nullptr;
    std::list<Window> windows;
};

} // namespace fernhop::support
