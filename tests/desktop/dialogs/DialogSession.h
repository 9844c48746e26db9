#pragma once

#include "desktop/links/LinkSession.h"
#include "support/PrivateDisplay.h"

#include <memory>
#include <string>
#include <vector>

namespace fernhop::desktoptest {

/// A session with a display and a bus, in which Fernhop's dialogs are worked with real input. Its beeps are
/// counted instead of heard. Two browsers are installed, "web" and "other".
class DialogSession : public LinkSession {
  public:
    /// What this machine lacks to have one; empty: nothing.
    [[nodiscard]] static std::string missing();

    /// Starts the display and the bus, not Fernhop.
    DialogSession();

    /// Opens a dialog by the words of the command line, and gives the keyboard to its window; false when none
    /// of this title shows.
    [[nodiscard]] bool open(const std::vector<std::string> &words, const std::string &title);

    /// Sends pointer and keys as `xdotool` takes them; whether it could.
    bool input(std::vector<std::string> words);
    bool press(const std::vector<std::string> &keys);
    bool type(const std::string &text) { return input({"type", text}); }

    /// Whether a window of this title shows.
    [[nodiscard]] bool shows(const std::string &title);
    /// Waits until no such window shows any more.
    [[nodiscard]] bool closes(const std::string &title);
    /// Waits until what a command tells has a text in it.
    [[nodiscard]] bool tells(const std::vector<std::string> &command, const std::string &text);

    /// The process of the program that shows the open dialog; 0: none runs.
    [[nodiscard]] pid_t program() const;

    /// How often Fernhop has beeped so far.
    [[nodiscard]] int beeps() const;

    /// The settings file's bytes; none when there is no file.
    [[nodiscard]] std::string settings() const;

    std::unique_ptr<support::PrivateDisplay> display;
    support::RecordingBrowser other{home, "other"};
};

} // namespace fernhop::desktoptest
