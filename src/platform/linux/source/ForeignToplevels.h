#pragma once

#include "platform/linux/source/WaylandConnection.h"
#include "platform/linux/source/WaylandWindows.h"
#include "platform/linux/source/WindowSource.h"

#include <list>

namespace fernhop::freedesktop {

/// Follows the windows of wlroots compositors (sway and others) by the protocol
/// zwlr_foreign_toplevel_management_unstable_v1. The interface tables are our own, as no package holds the
/// protocol's description.
class ForeignToplevels : public WindowSource {
  public:
    [[nodiscard]] static bool isOfferedBy(const WaylandConnection &connection);

    /// Both outlive this object. The windows are known after the connection's next synchronization.
    ForeignToplevels(const WaylandConnection &connection, WaylandWindows &windows);
    ~ForeignToplevels() override;
    ForeignToplevels(const ForeignToplevels &) = delete;
    ForeignToplevels &operator=(const ForeignToplevels &) = delete;

  private:
    struct Toplevel {
        ForeignToplevels &owner;
        wl_proxy *handle;
        WaylandWindow &window;
    };
    struct ManagerEvents;
    struct HandleEvents;

    void appeared(wl_proxy *handle);
    void disappeared(const Toplevel &toplevel);
    void activate(wl_proxy *handle) const;

    const WaylandConnection &server;
    WaylandWindows &list;
    wl_proxy *manager;
    wl_proxy *seat;
    std::list<Toplevel> toplevels;
};

} // namespace fernhop::freedesktop
