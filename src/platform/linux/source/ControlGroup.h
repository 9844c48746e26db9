#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace fernhop::freedesktop {

/// The desktop-file IDs that a control group's path may stand for, the likeliest first. Desktops put each
/// application into a unit of systemd that is named after it: "app-gnome-org.gnome.Nautilus-4711.scope",
/// "app-flatpak-org.mozilla.firefox-4711.scope", "app-org.kde.konsole-0f2a….scope",
/// "app-org.kde.kate@0f2a….service", "snap.firefox.firefox-….scope"; a hyphen inside of an ID is written
/// "\x2d", though not by everybody. Which of them are installed is for the caller to look up.
[[nodiscard]] std::vector<std::string> applicationsOfControlGroup(std::string_view path);

} // namespace fernhop::freedesktop
