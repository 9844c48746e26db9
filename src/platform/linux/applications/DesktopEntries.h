#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// What of a desktop entry matters to Fernhop. All texts are unescaped.
struct DesktopEntry {
    std::string id;   ///< desktop-file ID without ".desktop"
    std::string path; ///< of the file
    std::string name; ///< in the user's locale
    std::string unlocalizedName;
    std::string exec; ///< unescaped by the rules of key files, its own quoting still in place
    std::string tryExec;
    std::string startupWMClass;
    std::string icon;
    std::string workingDirectory;     ///< Path=; empty: none
    std::vector<std::string> schemes; ///< of its x-scheme-handler/* MIME types, as written
    bool noDisplay = false;
    bool dbusActivatable = false;
    bool startupNotify = false;
    bool terminal = false;
};

/// The installed desktop entries by ID, found as the desktop finds them: the first folder that has the ID
/// decides. Main thread only. Looks at the disk at each call.
class DesktopEntries {
  public:
    virtual ~DesktopEntries() = default;

    /// The entry that the desktop would launch for an ID, `NoDisplay` ones included; nothing when it is not
    /// installed, hidden, or its program is missing.
    [[nodiscard]] virtual std::optional<DesktopEntry> entry(const std::string &id) const = 0;

    /// The entry in a file; nothing when it cannot be opened as an application.
    [[nodiscard]] virtual std::optional<DesktopEntry> entryAtPath(const std::string &path) const = 0;

    /// All entries that can be launched, `NoDisplay` ones included, each ID once, in folder order.
    [[nodiscard]] virtual std::vector<DesktopEntry> all() const = 0;
};

} // namespace fernhop::freedesktop
