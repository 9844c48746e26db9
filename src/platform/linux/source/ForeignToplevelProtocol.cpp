#include "platform/linux/source/ForeignToplevelProtocol.h"

#include <wayland-client-protocol.h>

#include <array>

namespace fernhop::freedesktop::foreigntoplevel {

namespace {

// One entry for each argument: the interface of objects, null for anything else.
std::array<const wl_interface *, 1> seatArgument{&wl_seat_interface};
std::array<const wl_interface *, 1> outputArgument{&wl_output_interface};
std::array<const wl_interface *, 1> handleArgument{&handleInterface};
std::array<const wl_interface *, 5> rectangleArguments{&wl_surface_interface, nullptr, nullptr, nullptr,
                                                       nullptr};
std::array<const wl_interface *, 1> plainArgument{nullptr};

constexpr std::array managerRequests{wl_message{"stop", "", nullptr}};
const std::array managerEvents{wl_message{"toplevel", "n", handleArgument.data()},
                               wl_message{"finished", "", nullptr}};

const std::array handleRequests{wl_message{"set_maximized", "", nullptr},
                                wl_message{"unset_maximized", "", nullptr},
                                wl_message{"set_minimized", "", nullptr},
                                wl_message{"unset_minimized", "", nullptr},
                                wl_message{"activate", "o", seatArgument.data()},
                                wl_message{"close", "", nullptr},
                                wl_message{"set_rectangle", "oiiii", rectangleArguments.data()},
                                wl_message{"destroy", "", nullptr}};
const std::array handleEvents{wl_message{"title", "s", plainArgument.data()},
                              wl_message{"app_id", "s", plainArgument.data()},
                              wl_message{"output_enter", "o", outputArgument.data()},
                              wl_message{"output_leave", "o", outputArgument.data()},
                              wl_message{"state", "a", plainArgument.data()},
                              wl_message{"done", "", nullptr},
                              wl_message{"closed", "", nullptr}};

} // namespace

const wl_interface managerInterface{"zwlr_foreign_toplevel_manager_v1",
                                    version,
                                    managerRequests.size(),
                                    managerRequests.data(),
                                    managerEvents.size(),
                                    managerEvents.data()};
const wl_interface handleInterface{"zwlr_foreign_toplevel_handle_v1",
                                   version,
                                   handleRequests.size(),
                                   handleRequests.data(),
                                   handleEvents.size(),
                                   handleEvents.data()};

} // namespace fernhop::freedesktop::foreigntoplevel
