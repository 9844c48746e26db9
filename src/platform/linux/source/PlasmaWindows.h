#pragma once

#include "platform/linux/source/WaylandConnection.h"
#include "platform/linux/source/WaylandWindows.h"
#include "platform/linux/source/WindowSource.h"

#include <list>
#include <string>

struct org_kde_plasma_window;
struct org_kde_plasma_window_management;

namespace fernhop::freedesktop {

/// Follows the windows of Plasma's compositor by the protocol org_kde_plasma_window_management, which the
/// compositor offers only to programs that their desktop entry asks it for.
class PlasmaWindows : public WindowSource {
  public:
    [[nodiscard]] static bool isOfferedBy(const WaylandConnection &connection);

    /// Both outlive this object. The windows are known after two synchronizations of the connection.
    PlasmaWindows(const WaylandConnection &connection, WaylandWindows &windows);
    ~PlasmaWindows() override;
    PlasmaWindows(const PlasmaWindows &) = delete;
    PlasmaWindows &operator=(const PlasmaWindows &) = delete;

  private:
    struct PlasmaWindow {
        PlasmaWindows &owner;
        org_kde_plasma_window *handle;
        WaylandWindow &window;
    };
    struct Events;

    void appeared(org_kde_plasma_window *handle);
    void disappeared(const PlasmaWindow &window);
    void activate(org_kde_plasma_window *handle) const;

    const WaylandConnection &server;
    WaylandWindows &list;
    org_kde_plasma_window_management *management;
    std::list<PlasmaWindow> plasmaWindows;
};

} // namespace fernhop::freedesktop
