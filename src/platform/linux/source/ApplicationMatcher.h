#pragma once

#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/base/Processes.h"
#include "platform/linux/source/EntryIndex.h"

#include <unistd.h>

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace fernhop::freedesktop {

/// What a window shows of its application. Texts are claims of the application: any bytes.
struct WindowIdentity {
    std::vector<std::string> names;          ///< WM_CLASS instance and class; on Wayland the app_id
    std::vector<std::string> applicationIDs; ///< IDs that the toolkit gives beside the names
    std::optional<pid_t> pid;                ///< the process, where the session shows it
};

/// Whether this is the desktop-file ID of a part of the desktop itself: its shell, panel or window manager.
/// Users open links with these, not in them.
[[nodiscard]] bool isDesktopShell(std::string_view desktopID);

/// This process as an application.
struct OwnApplication {
    std::string id; ///< desktop-file ID
    pid_t pid = getpid();
};

/// Finds the installed application that a window or a process belongs to, as a desktop-file ID. Keeps an
/// index of the desktop entries. For something that it neither knows nor has looked for before, it looks
/// whether the entries have changed, and reads them again if so. Parts of the desktop itself (shell, panel)
/// are no application. Main thread only.
class ApplicationMatcher {
  public:
    /// `ownApplication` is the answer for our own windows. The entries and processes outlive the matcher.
    ApplicationMatcher(const DesktopEntries &entries, const Processes &processes,
                       OwnApplication ownApplication);

    /// Several searches for one purpose, which last no longer than this object: whether the entries have
    /// changed is looked at only once for all of them. The matcher outlives it.
    class Occasion {
      public:
        explicit Occasion(ApplicationMatcher &used) : matcher(used) { matcher.occasion = Checked::notYet; }
        ~Occasion() { matcher.occasion = Checked::eachTime; }
        Occasion(const Occasion &) = delete;
        Occasion &operator=(const Occasion &) = delete;

      private:
        ApplicationMatcher &matcher;
    };

    /// The application of a window: by StartupWMClass, then desktop-file ID, of the window's names; then by
    /// sandbox, by the ID that the toolkit gave, by process, and by the last word of an ID.
    [[nodiscard]] std::optional<std::string> applicationOf(const WindowIdentity &window);

    /// The application that a process is part of: by sandbox, by the entry that it was launched from, or by
    /// its program. A program that runs others (a shell, a link opener) is no application.
    [[nodiscard]] std::optional<std::string> applicationOf(pid_t process);

    /// The application whose systemd unit a control group is.
    [[nodiscard]] std::optional<std::string> applicationOfControlGroup(const std::string &path);

    /// The installed application with this ID, or with the desktop entry at this path.
    [[nodiscard]] std::optional<std::string> applicationNamed(const std::string &text);

    /// The installed application that runs a program of this name; nothing for shells, link openers and such.
    [[nodiscard]] std::optional<std::string> applicationRunning(const std::string &program);

    [[nodiscard]] const std::string &ownIdentifier() const { return own.id; }
    [[nodiscard]] pid_t ownProcess() const { return own.pid; }

  private:
    using Answer = std::optional<std::string>;

    Answer lookUp(const std::string &what, const std::function<Answer()> &search);
    Answer ofWindow(const WindowIdentity &window) const;
    Answer ofProcess(pid_t process) const;
    Answer ofSandbox(pid_t process) const;
    Answer ofLaunch(pid_t process) const;
    Answer ofProgram(pid_t process) const;
    Answer named(const std::string &text) const;
    Answer ofNames(const std::vector<std::string> &names) const;
    [[nodiscard]] bool readChangedEntries();

    /// Whether it was looked at if the entries have changed.
    enum class Checked { eachTime, notYet, already };

    const DesktopEntries &desktopEntries;
    const Processes &runningProcesses;
    OwnApplication own;
    EntryIndex index;
    std::optional<std::size_t> readFingerprint; ///< of the entries in the index; nothing: none were read
    Checked occasion = Checked::eachTime;
    std::deque<std::string> unknown; ///< what was not found, the latest last
};

} // namespace fernhop::freedesktop
