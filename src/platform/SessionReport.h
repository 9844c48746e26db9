#pragma once

#include <optional>
#include <string>
#include <vector>

namespace fernhop {

/// Where the tray icon is shown.
enum class IconPlace {
    nowhere,
    panel,      ///< in a panel that supports StatusNotifierItem
    xembedTray, ///< in an XEmbed tray of X11
};

/// Describes the desktop session for people who want to know why a link opened where it did, or did not
/// arrive. Main thread only. Nothing is cached.
class SessionReport {
  public:
    virtual ~SessionReport() = default;

    /// The bundle identifier of the current source application; nothing when unknown.
    [[nodiscard]] virtual std::optional<std::string> source() const = 0;

    /// Short name of what reports the source in this session ("x11", "wlroots", "link sender").
    [[nodiscard]] virtual std::string sourceProvider() const = 0;

    /// Whether Fernhop is running in this session and receives links.
    [[nodiscard]] virtual bool running() const = 0;

    /// Where the tray icon is shown now.
    [[nodiscard]] virtual IconPlace iconPlace() const = 0;

    /// What of the stored rules and settings cannot be read and therefore counts as empty, a sentence;
    /// nothing when all can.
    [[nodiscard]] virtual std::optional<std::string> settingsProblem() const = 0;

    /// Why the installed application with this identifier is treated as if it were not there, the end of a
    /// sentence; nothing when it is not installed or can be used.
    [[nodiscard]] virtual std::optional<std::string> refusal(const std::string &bundleID) const = 0;

    /// The problems that keep links from arriving or from being opened, a sentence each, other than
    /// `settingsProblem`; empty when there are none.
    [[nodiscard]] virtual std::vector<std::string> problems() const = 0;
};

} // namespace fernhop
