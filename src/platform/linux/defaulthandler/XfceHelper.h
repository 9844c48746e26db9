#pragma once

#include "platform/linux/applications/DesktopEntries.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop::freedesktop {

/// A helper file of Xfce ("xfce4/helpers/ID.desktop"): how exo-open starts a web browser. A value.
struct XfceHelper {
    std::vector<std::string> binaries; ///< names of the program, the first in PATH is used; may be empty
    bool isOurs = false;               ///< `helperFileFor` made it

    /// Reads a helper file; nothing when it is none of a web browser.
    [[nodiscard]] static std::optional<XfceHelper> parse(std::string_view bytes);

    /// Whether Xfce can start it: it names its program, or one of `binaries` is in PATH.
    [[nodiscard]] bool isUsable() const;
};

/// The text of a helper file that starts `entry` just as its Exec line says; nothing when Xfce's format
/// cannot express it.
[[nodiscard]] std::optional<std::string> helperFileFor(const DesktopEntry &entry);

} // namespace fernhop::freedesktop
