#include "platform/linux/source/WaylandFocusProvider.h"

#include <wlr-foreign-toplevel-management-client-protocol.h>

#include <algorithm>

namespace fernhop::freedesktop {
namespace {

using Manager = zwlr_foreign_toplevel_manager_v1;
using Handle = zwlr_foreign_toplevel_handle_v1;

WaylandWindow &windowOf(void *data) {
    return *static_cast<WaylandWindow *>(data);
}

bool isActivated(const wl_array &states) {
    const auto *const first = static_cast<const std::uint32_t *>(states.data);
    const auto *const end = first + states.size / sizeof(std::uint32_t);
    return std::find(first, end, ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED) != end;
}

constexpr zwlr_foreign_toplevel_handle_v1_listener windowEvents{
    .title = ignoreEvent,
    .app_id = [](void *window, Handle *, const char *id) { windowOf(window).identity.names = {id}; },
    .output_enter = ignoreEvent,
    .output_leave = ignoreEvent,
    .state = [](void *window, Handle *,
                wl_array *states) { windowOf(window).isActive = isActivated(*states); },
    .done = [](void *window, Handle *) { windowOf(window).isDescribed = true; },
    .closed = [](void *window, Handle *) { windowOf(window).isClosed = true; },
};

class ForeignToplevels : public WaylandWindowFeed {
  public:
    ForeignToplevels(const WaylandConnection &connection, WaylandWindows &windowList, Manager *boundManager)
        : server(connection), windows(windowList), manager(boundManager),
          seat(static_cast<wl_seat *>(connection.bind(wl_seat_interface, 1))) {
        static constexpr zwlr_foreign_toplevel_manager_v1_listener events{.toplevel = appeared,
                                                                          .finished = ignoreEvent};
        zwlr_foreign_toplevel_manager_v1_add_listener(manager, &events, this);
    }
    ~ForeignToplevels() override {
        zwlr_foreign_toplevel_manager_v1_stop(manager);
        zwlr_foreign_toplevel_manager_v1_destroy(manager);
        if (seat)
            wl_seat_destroy(seat);
    }
    ForeignToplevels(const ForeignToplevels &) = delete;
    ForeignToplevels &operator=(const ForeignToplevels &) = delete;

  private:
    static void appeared(void *self, Manager *, Handle *handle) {
        auto &feed = *static_cast<ForeignToplevels *>(self);
        WaylandWindow &window = feed.windows.add();
        window.handle = {handle, zwlr_foreign_toplevel_handle_v1_destroy};
        window.activate = [&feed, handle] { feed.activate(handle); };
        zwlr_foreign_toplevel_handle_v1_add_listener(handle, &windowEvents, &window);
    }

    void activate(Handle *handle) const {
        if (!seat)
            return;
        zwlr_foreign_toplevel_handle_v1_activate(handle, seat);
        server.flush();
    }

    const WaylandConnection &server;
    WaylandWindows &windows;
    Manager *manager;
    wl_seat *seat; ///< null: the session has none, and no window can be activated
};

} // namespace

std::unique_ptr<WaylandWindowFeed> makeForeignToplevelFeed(const WaylandConnection &connection,
                                                           WaylandWindows &windows) {
    auto *const manager =
        static_cast<Manager *>(connection.bind(zwlr_foreign_toplevel_manager_v1_interface, 1));
    return manager ? std::make_unique<ForeignToplevels>(connection, windows, manager) : nullptr;
}

} // namespace fernhop::freedesktop
