#pragma once

#include "platform/Workspace.h"
#include "platform/linux/source/StartupNotification.h"

#include <sys/types.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace fernhop::freedesktop {

class ApplicationMatcher;

/// The name of a provider where only the sender of a link tells its source.
inline constexpr const char *linkSenderProvider = "link sender";

/// An application known by its desktop-file ID, or one that no desktop entry describes.
class DesktopApplication : public RunningApplication {
  public:
    explicit DesktopApplication(std::optional<std::string> desktopID) : id(std::move(desktopID)) {}

    [[nodiscard]] std::optional<std::string> bundleIdentifier() const override { return id; }

    /// From now on the application is unknown.
    void forgetIdentifier() { id.reset(); }

  private:
    std::optional<std::string> id;
};

/// Which window to bring to the front.
struct RaiseRequest {
    std::string desktopID;    ///< desktop-file ID of the application, without ".desktop"
    std::optional<pid_t> pid; ///< a process of it, where known
};

/// The session's view of the focused application. One class for each kind of session, and one for sessions
/// that show nothing. Used on one thread, from whose loop the callbacks come.
class FocusProvider {
  public:
    virtual ~FocusProvider() = default;

    /// Short name for people: "x11", "wlroots", "plasma", "link sender".
    [[nodiscard]] virtual std::string name() = 0;

    /// The application that is focused now; null when there is none or the session does not show it. The
    /// observer knows it before this returns.
    [[nodiscard]] virtual std::shared_ptr<RunningApplication> frontmost() = 0;

    /// From now on calls `activated` whenever another application gets the focus. Called once.
    virtual void observe(std::function<void(std::shared_ptr<RunningApplication>)> activated) = 0;

    /// Asks the session to bring a window of an application to the front. False when it cannot; where the
    /// application has no window yet, a window that appears soon afterwards is raised.
    virtual bool raise(const RaiseRequest &request) = 0;

    /// Announces to the window manager that an application is about to start, so that its window may come to
    /// the front. Returns the identifier that the application must be given; nothing where windows need none,
    /// or the display does not answer.
    [[nodiscard]] virtual std::optional<std::string> announceStartup(const StartupAnnouncement &) {
        return std::nullopt;
    }

    /// Withdraws the announcement of an application that will not start after all.
    virtual void withdrawStartup(const std::string &) {}

    /// From now on calls `ended` once when the display has closed its connection, which is the end of the
    /// session. Where the session's windows are not shown there is no connection, and no call.
    void onDisplayEnd(std::function<void()> ended) { displayEnd = std::move(ended); }

  protected:
    void displayEnded() const {
        if (displayEnd)
            displayEnd();
    }

  private:
    std::function<void()> displayEnd;
};

/// The session's displays, from its environment; empty: not set.
struct SessionDisplays {
    std::string sessionType;    ///< XDG_SESSION_TYPE
    std::string waylandDisplay; ///< WAYLAND_DISPLAY
    std::string xDisplay;       ///< DISPLAY
};

/// Whether this is an X11 session, in which all windows belong to the X display.
[[nodiscard]] bool isXSession(const SessionDisplays &displays);

/// The provider for a session; never null. In a Wayland session the X display is not asked: it knows only the
/// windows of X11 programs, and would still call one of them focused while the user is in another window. A
/// display that does not answer holds up nobody. The matcher is for the provider alone, which uses it on a
/// thread of its own.
[[nodiscard]] std::unique_ptr<FocusProvider> makeFocusProvider(const SessionDisplays &displays,
                                                               std::shared_ptr<ApplicationMatcher> matcher);

} // namespace fernhop::freedesktop
