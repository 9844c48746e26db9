#pragma once

#include <optional>
#include <string>
#include <vector>

namespace fernhop {

/// What shows the icon by which Fernhop is worked with.
enum class IconPlace {
    nowhere,
    panel,      ///< one that shows StatusNotifier items
    windowTray, ///< a tray of X11, which takes windows
};

/// What can be told about this desktop session: for people who ask why a link went where it went, or did not
/// arrive. Main thread only. Asked afresh at each call.
class SessionReport {
  public:
    virtual ~SessionReport() = default;

    /// The bundle identifier of the application that links are taken to come from; nothing when unknown.
    [[nodiscard]] virtual std::optional<std::string> source() const = 0;

    /// Short name of what tells the source in this session ("x11", "wlroots", "link sender").
    [[nodiscard]] virtual std::string sourceProvider() const = 0;

    /// Whether Fernhop runs in this session and takes links.
    [[nodiscard]] virtual bool running() const = 0;

    /// What shows the icon now.
    [[nodiscard]] virtual IconPlace iconPlace() const = 0;

    /// What in this desktop keeps links from arriving or from being opened: one sentence each, for people.
    /// Empty when all is well.
    [[nodiscard]] virtual std::vector<std::string> problems() const = 0;
};

} // namespace fernhop
