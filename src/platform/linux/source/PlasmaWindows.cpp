#include "platform/linux/source/WaylandFocusProvider.h"

#include <plasma-window-management-client-protocol.h>

#include <climits>

namespace fernhop::freedesktop {
namespace {

using Management = org_kde_plasma_window_management;
using Handle = org_kde_plasma_window;

constexpr std::uint32_t newestKnownVersion = 16;

WaylandWindow &windowOf(void *data) {
    return *static_cast<WaylandWindow *>(data);
}

// Field by field: a newer description of the protocol has more of them, for versions that we do not bind.
constexpr auto windowEvents = [] {
    org_kde_plasma_window_listener listener{};
    listener.title_changed = ignoreEvent;
    listener.app_id_changed = [](void *window, Handle *, const char *id) {
        windowOf(window).identity.names = {id};
    };
    listener.state_changed = [](void *window, Handle *, std::uint32_t flags) {
        windowOf(window).isActive = (flags & ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_ACTIVE) != 0;
    };
    listener.virtual_desktop_changed = ignoreEvent;
    listener.themed_icon_name_changed = ignoreEvent;
    listener.unmapped = [](void *window, Handle *) { windowOf(window).isClosed = true; };
    listener.initial_state = [](void *window, Handle *) { windowOf(window).isDescribed = true; };
    listener.parent_window = ignoreEvent;
    listener.geometry = ignoreEvent;
    listener.icon_changed = ignoreEvent;
    listener.pid_changed = [](void *window, Handle *, std::uint32_t pid) {
        if (pid > 0 && pid <= INT_MAX)
            windowOf(window).identity.pid = static_cast<pid_t>(pid);
    };
    listener.virtual_desktop_entered = ignoreEvent;
    listener.virtual_desktop_left = ignoreEvent;
    listener.application_menu = ignoreEvent;
    listener.activity_entered = ignoreEvent;
    listener.activity_left = ignoreEvent;
    listener.resource_name_changed = ignoreEvent;
    return listener;
}();

class PlasmaWindows : public WaylandWindowFeed {
  public:
    PlasmaWindows(const WaylandConnection &connection, WaylandWindows &windowList, Management *bound)
        : server(connection), windows(windowList), management(bound) {
        static constexpr auto events = [] {
            org_kde_plasma_window_management_listener listener{};
            listener.show_desktop_changed = ignoreEvent;
            listener.window = appeared;
            listener.stacking_order_changed = ignoreEvent;
            listener.stacking_order_uuid_changed = ignoreEvent;
            listener.window_with_uuid = appearedWithUuid;
            return listener;
        }();
        org_kde_plasma_window_management_add_listener(management, &events, this);
    }
    ~PlasmaWindows() override { org_kde_plasma_window_management_destroy(management); }
    PlasmaWindows(const PlasmaWindows &) = delete;
    PlasmaWindows &operator=(const PlasmaWindows &) = delete;

  private:
    static void appeared(void *self, Management *management, std::uint32_t number) {
        // From that version on each window is announced a second time, by its UUID.
        if (org_kde_plasma_window_management_get_version(management) <
            ORG_KDE_PLASMA_WINDOW_MANAGEMENT_WINDOW_WITH_UUID_SINCE_VERSION)
            static_cast<PlasmaWindows *>(self)->add(
                org_kde_plasma_window_management_get_window(management, number));
    }
    static void appearedWithUuid(void *self, Management *management, std::uint32_t, const char *uuid) {
        static_cast<PlasmaWindows *>(self)->add(
            org_kde_plasma_window_management_get_window_by_uuid(management, uuid));
    }

    void add(Handle *handle) {
        WaylandWindow &window = windows.add();
        window.handle = {handle, org_kde_plasma_window_destroy};
        window.activate = [this, handle] {
            constexpr std::uint32_t active = ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_ACTIVE;
            org_kde_plasma_window_set_state(handle, active, active);
            server.flush();
        };
        org_kde_plasma_window_add_listener(handle, &windowEvents, &window);
    }

    const WaylandConnection &server;
    WaylandWindows &windows;
    Management *management;
};

} // namespace

std::unique_ptr<WaylandWindowFeed> makePlasmaWindowFeed(const WaylandConnection &connection,
                                                        WaylandWindows &windows) {
    auto *const management = static_cast<Management *>(
        connection.bind(org_kde_plasma_window_management_interface, newestKnownVersion));
    return management ? std::make_unique<PlasmaWindows>(connection, windows, management) : nullptr;
}

} // namespace fernhop::freedesktop
