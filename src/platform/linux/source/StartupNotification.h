#pragma once

#include <optional>
#include <string>

namespace fernhop::freedesktop {

/// A launch as it is announced to the window manager of an X display, by the startup notification protocol
/// 0.1 of freedesktop.org.
struct StartupAnnouncement {
    std::string desktopID;   ///< of the launched application
    std::string name;        ///< of the application, for people
    std::string windowClass; ///< StartupWMClass; empty: unknown
};

/// The text of one protocol message: "new: ID=… NAME="…"". Values are quoted, so that they may hold anything
/// but a zero byte.
[[nodiscard]] std::string startupMessage(const std::string &startupID,
                                         const StartupAnnouncement &announcement);

/// Announces to the window manager that an application is about to start, so that its window may come to the
/// front. Returns the identifier that the application must be given; nothing when the display (":0", say)
/// cannot be reached. A server that does not answer holds this up.
[[nodiscard]] std::optional<std::string> announceStartup(const std::string &display,
                                                         const StartupAnnouncement &announcement);

/// Withdraws the announcement of an application that will not start after all.
void withdrawStartup(const std::string &display, const std::string &startupID);

} // namespace fernhop::freedesktop
