#include "platform/linux/source/PlasmaWindows.h"

#include <plasma-window-management-client-protocol.h>

#include <climits>

namespace fernhop::freedesktop {

namespace {

constexpr std::uint32_t newestKnownVersion = 16;

/// Answers an event that says nothing to us.
template <typename... Arguments>
void ignore(void *, Arguments...) {}

} // namespace

/// What the compositor tells; the context is the list, or one window of it.
struct PlasmaWindows::Events {
    static void windowByNumber(void *self, org_kde_plasma_window_management *management,
                               std::uint32_t number) {
        // From 13 on each window is told a second time, by its UUID.
        if (org_kde_plasma_window_management_get_version(management) <
            ORG_KDE_PLASMA_WINDOW_MANAGEMENT_WINDOW_WITH_UUID_SINCE_VERSION)
            static_cast<PlasmaWindows *>(self)->appeared(
                org_kde_plasma_window_management_get_window(management, number));
    }
    static void windowByUuid(void *self, org_kde_plasma_window_management *management, std::uint32_t,
                             const char *uuid) {
        static_cast<PlasmaWindows *>(self)->appeared(
            org_kde_plasma_window_management_get_window_by_uuid(management, uuid));
    }
    static void appID(void *self, org_kde_plasma_window *, const char *id) {
        static_cast<PlasmaWindow *>(self)->window.identity.names = {id};
    }
    static void state(void *self, org_kde_plasma_window *, std::uint32_t flags) {
        static_cast<PlasmaWindow *>(self)->window.isActive =
            (flags & ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_ACTIVE) != 0;
    }
    static void process(void *self, org_kde_plasma_window *, std::uint32_t pid) {
        if (pid > 0 && pid <= INT_MAX)
            static_cast<PlasmaWindow *>(self)->window.identity.pid = static_cast<pid_t>(pid);
    }
    static void described(void *self, org_kde_plasma_window *) {
        static_cast<PlasmaWindow *>(self)->window.isDescribed = true;
    }
    static void unmapped(void *self, org_kde_plasma_window *) {
        const PlasmaWindow &window = *static_cast<PlasmaWindow *>(self);
        window.owner.disappeared(window);
    }

    // Field by field: a newer description of the protocol has more of them, for versions that we do not bind.
    static constexpr auto ofManagement() {
        org_kde_plasma_window_management_listener listener{};
        listener.show_desktop_changed = ignore;
        listener.window = windowByNumber;
        listener.stacking_order_changed = ignore;
        listener.stacking_order_uuid_changed = ignore;
        listener.window_with_uuid = windowByUuid;
        return listener;
    }
    static constexpr auto ofWindow() {
        org_kde_plasma_window_listener listener{};
        listener.title_changed = ignore;
        listener.app_id_changed = appID;
        listener.state_changed = state;
        listener.virtual_desktop_changed = ignore;
        listener.themed_icon_name_changed = ignore;
        listener.unmapped = unmapped;
        listener.initial_state = described;
        listener.parent_window = ignore;
        listener.geometry = ignore;
        listener.icon_changed = ignore;
        listener.pid_changed = process;
        listener.virtual_desktop_entered = ignore;
        listener.virtual_desktop_left = ignore;
        listener.application_menu = ignore;
        listener.activity_entered = ignore;
        listener.activity_left = ignore;
        listener.resource_name_changed = ignore;
        return listener;
    }
};

bool PlasmaWindows::isOfferedBy(const WaylandConnection &connection) {
    return connection.offers(org_kde_plasma_window_management_interface);
}

PlasmaWindows::PlasmaWindows(const WaylandConnection &connection, WaylandWindows &windows)
    : server(connection), list(windows),
      management(reinterpret_cast<org_kde_plasma_window_management *>(
          connection.bind(org_kde_plasma_window_management_interface, newestKnownVersion))) {
    static constexpr auto listener = Events::ofManagement();
    org_kde_plasma_window_management_add_listener(management, &listener, this);
}

PlasmaWindows::~PlasmaWindows() {
    for (const auto &window : plasmaWindows)
        org_kde_plasma_window_destroy(window.handle);
    org_kde_plasma_window_management_destroy(management);
}

void PlasmaWindows::appeared(org_kde_plasma_window *handle) {
    static constexpr auto listener = Events::ofWindow();
    WaylandWindow &window = list.add();
    window.activate = [this, handle] { activate(handle); };
    PlasmaWindow &plasmaWindow = plasmaWindows.emplace_back(PlasmaWindow{*this, handle, window});
    org_kde_plasma_window_add_listener(handle, &listener, &plasmaWindow);
}

void PlasmaWindows::disappeared(const PlasmaWindow &window) {
    org_kde_plasma_window_destroy(window.handle);
    list.remove(window.window);
    plasmaWindows.remove_if([&](const PlasmaWindow &other) { return &other == &window; });
}

void PlasmaWindows::activate(org_kde_plasma_window *handle) const {
    constexpr std::uint32_t active = ORG_KDE_PLASMA_WINDOW_MANAGEMENT_STATE_ACTIVE;
    org_kde_plasma_window_set_state(handle, active, active);
    server.flush();
}

} // namespace fernhop::freedesktop
