#include "platform/linux/source/ForeignToplevels.h"

#include "platform/linux/source/ForeignToplevelProtocol.h"

#include <algorithm>

namespace fernhop::freedesktop {

namespace protocol = foreigntoplevel;

namespace {

void request(wl_proxy *object, std::uint32_t opcode) {
    wl_proxy_marshal_flags(object, opcode, nullptr, wl_proxy_get_version(object), 0);
}

void destroy(wl_proxy *object, std::uint32_t opcode) {
    wl_proxy_marshal_flags(object, opcode, nullptr, wl_proxy_get_version(object), WL_MARSHAL_FLAG_DESTROY);
}

bool contains(const wl_array &states, std::uint32_t state) {
    const auto *const first = static_cast<const std::uint32_t *>(states.data);
    const auto *const end = first + states.size / sizeof(std::uint32_t);
    return std::find(first, end, state) != end;
}

} // namespace

/// In the order of the protocol's events, as libwayland calls them by their place.
struct ForeignToplevels::ManagerEvents {
    void (*toplevel)(void *self, wl_proxy *, wl_proxy *handle) = [](void *self, wl_proxy *,
                                                                    wl_proxy *handle) {
        static_cast<ForeignToplevels *>(self)->appeared(handle);
    };
    void (*finished)(void *self, wl_proxy *) = [](void *, wl_proxy *) {};
};

struct ForeignToplevels::HandleEvents {
    void (*title)(void *, wl_proxy *, const char *) = [](void *, wl_proxy *, const char *) {};
    void (*appID)(void *, wl_proxy *, const char *) = [](void *self, wl_proxy *, const char *id) {
        static_cast<Toplevel *>(self)->window.identity.names = {id};
    };
    void (*outputEnter)(void *, wl_proxy *, wl_output *) = [](void *, wl_proxy *, wl_output *) {};
    void (*outputLeave)(void *, wl_proxy *, wl_output *) = [](void *, wl_proxy *, wl_output *) {};
    void (*state)(void *, wl_proxy *, wl_array *) = [](void *self, wl_proxy *, wl_array *states) {
        static_cast<Toplevel *>(self)->window.isActive = contains(*states, protocol::stateActivated);
    };
    void (*done)(void *, wl_proxy *) = [](void *self, wl_proxy *) {
        static_cast<Toplevel *>(self)->window.isDescribed = true;
    };
    void (*closed)(void *, wl_proxy *) = [](void *self, wl_proxy *) {
        const Toplevel &toplevel = *static_cast<Toplevel *>(self);
        toplevel.owner.disappeared(toplevel);
    };
};

bool ForeignToplevels::isOfferedBy(const WaylandConnection &connection) {
    return connection.offers(protocol::managerInterface);
}

ForeignToplevels::ForeignToplevels(const WaylandConnection &connection, WaylandWindows &windows)
    : server(connection), list(windows),
      manager(connection.bind(protocol::managerInterface, protocol::version)),
      seat(connection.bind(wl_seat_interface, 1)) {
    static ManagerEvents events;
    wl_proxy_add_listener(manager, reinterpret_cast<void (**)()>(&events), this);
}

ForeignToplevels::~ForeignToplevels() {
    for (const auto &toplevel : toplevels)
        destroy(toplevel.handle, protocol::handleDestroy);
    request(manager, protocol::managerStop);
    wl_proxy_destroy(manager);
    if (seat)
        wl_proxy_destroy(seat);
}

void ForeignToplevels::appeared(wl_proxy *handle) {
    static HandleEvents events;
    WaylandWindow &window = list.add();
    window.activate = [this, handle] { activate(handle); };
    Toplevel &toplevel = toplevels.emplace_back(Toplevel{*this, handle, window});
    wl_proxy_add_listener(handle, reinterpret_cast<void (**)()>(&events), &toplevel);
}

void ForeignToplevels::disappeared(const Toplevel &toplevel) {
    destroy(toplevel.handle, protocol::handleDestroy);
    list.remove(toplevel.window);
    toplevels.remove_if([&](const Toplevel &other) { return &other == &toplevel; });
}

void ForeignToplevels::activate(wl_proxy *handle) const {
    if (!seat)
        return;
    wl_proxy_marshal_flags(handle, protocol::handleActivate, nullptr, wl_proxy_get_version(handle), 0, seat);
    server.flush();
}

} // namespace fernhop::freedesktop
