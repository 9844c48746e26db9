#pragma once

#include <optional>
#include <string>

namespace fernhop::freedesktop {

/// The web browser that a desktop keeps in a setting of its own, beside the default applications.
struct DesktopBrowserSetting {
    std::string text;              ///< as written, for people
    std::optional<std::string> id; ///< desktop-file ID; nothing when it is a command or is not installed

    /// Whether the setting is this desktop-file ID, installed or not.
    [[nodiscard]] bool names(const std::string &wanted) const {
        return text == wanted || text == wanted + ".desktop";
    }
};

} // namespace fernhop::freedesktop
