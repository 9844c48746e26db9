#pragma once

#include <wayland-util.h>

#include <cstdint>

/// The wire facts of zwlr_foreign_toplevel_management_unstable_v1, version 1: all that following and raising
/// windows takes.
namespace fernhop::freedesktop::foreigntoplevel {

extern const wl_interface managerInterface;
extern const wl_interface handleInterface;

inline constexpr std::uint32_t version = 1;

/// Requests, by their place on the wire.
inline constexpr std::uint32_t managerStop = 0;
inline constexpr std::uint32_t handleActivate = 4;
inline constexpr std::uint32_t handleDestroy = 7;

/// The value for an activated window in the array of states.
inline constexpr std::uint32_t stateActivated = 2;

} // namespace fernhop::freedesktop::foreigntoplevel
