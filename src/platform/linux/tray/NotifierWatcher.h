#pragma once

/// Where items and their hosts meet, by the StatusNotifierItem specification; the interface has the name too.
namespace fernhop::freedesktop::notifierWatcher {

inline constexpr const char *name = "org.kde.StatusNotifierWatcher";
inline constexpr const char *path = "/StatusNotifierWatcher";

} // namespace fernhop::freedesktop::notifierWatcher
