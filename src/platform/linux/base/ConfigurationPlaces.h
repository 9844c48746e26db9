#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace fernhop::freedesktop {

/// Where this session keeps what decides about default handlers: the folders of the XDG Base Directory
/// Specification, all absolute, and the desktop's names. A value.
struct ConfigurationPlaces {
    std::string configHome;
    std::vector<std::string> configDirs; ///< the most important first
    std::string dataHome;
    std::vector<std::string> dataDirs; ///< the most important first
    std::vector<std::string> desktops; ///< in lower case, the most important first ("ubuntu", "gnome")

    /// The places that the environment variables of this process name; `currentDesktop` is in the form of
    /// XDG_CURRENT_DESKTOP ("ubuntu:GNOME"), possibly empty.
    [[nodiscard]] static ConfigurationPlaces fromEnvironment(std::string_view currentDesktop);

    /// `configHome` and then `configDirs`.
    [[nodiscard]] std::vector<std::string> allConfigFolders() const;

    /// `dataHome` and then `dataDirs`.
    [[nodiscard]] std::vector<std::string> allDataFolders() const;

    /// Whether the session is of this desktop; `name` in lower case.
    [[nodiscard]] bool isDesktop(std::string_view name) const;
};

} // namespace fernhop::freedesktop
