#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The names of systemd units that hold applications. Desktops put each application into a unit of its own
/// that is named after it: "app-gnome-org.gnome.Nautilus-4711.scope", "app-org.kde.konsole-0f2a….scope",
/// "app-flatpak-org.mozilla.firefox-4711.scope", "app-org.kde.kate@0f2a….service",
/// "snap.firefox.firefox-….scope". A hyphen within an ID is written "\x2d", though not by every desktop.
namespace fernhop::freedesktop {

/// The desktop-file IDs that a control group's path may stand for, the likeliest first. The caller looks up
/// which of them are installed.
[[nodiscard]] std::vector<std::string> applicationsOfControlGroup(std::string_view path);

/// The scope of an application that Fernhop launches: "app-fernhop-<application>-<random>.scope", escaped as
/// systemd.unit(5) says.
[[nodiscard]] std::string launchScopeName(std::string_view desktopID, std::string_view random);

} // namespace fernhop::freedesktop
