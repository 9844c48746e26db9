#pragma once

#include "platform/linux/base/Timer.h"
#include "platform/linux/dialogs-qt/MessageSocket.h"
#include "platform/linux/tray/EmbeddedTray.h"
#include "platform/ui/Appearance.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace fernhop::freedesktop {

/// What the program `fernhop-dialogs` is to do, by its first argument: show a dialog, or show in XEmbed trays
/// the item of the connection to the bus whose unique name is the second argument.
inline constexpr const char *dialogMode = "dialog";
inline constexpr const char *iconMode = "icon";

/// What the resident and the programs that it shows windows with tell each other, by first words.
namespace message {
/// To the program: open a dialog, by its action's selector, the rule's or application's identifier, the
/// activation token (empty: none), and the request's number. With one open already, that one comes to the
/// front instead.
inline constexpr const char *open = "open";
/// To the program: the appearance that the user asks for, "dark", "light", or empty where nobody says.
inline constexpr const char *appearance = "appearance";
/// From the program: the `open` of this number was handled. Another one may be on its way meanwhile.
inline constexpr const char *handled = "handled";
/// From the program: settings or the default browser were changed.
inline constexpr const char *changed = "changed";
/// From the program: beep.
inline constexpr const char *beep = "beep";
/// From the program: perform the action of a button, by selector and the button's identifier.
inline constexpr const char *perform = "perform";
} // namespace message

/// The exit status of a program that found no display to show windows on.
inline constexpr int noDisplayStatus = 3;

/// How a program ended: its exit status, or nothing when it crashed or was killed.
using ExitStatus = std::optional<int>;

/// A program of Fernhop that the resident runs beside itself.
class HelperProgram;

/// An appearance as the message of that name carries it.
[[nodiscard]] std::string appearanceWord(std::optional<ui::AppearanceName> appearance);
[[nodiscard]] std::optional<ui::AppearanceName> appearanceOfWord(const std::string &word);

/// The program that shows dialogs, as the resident sees it: started for a dialog, gone with it. Whatever
/// happens to it, the next dialog opens. Main thread only.
class DialogsProgram {
  public:
    struct Callbacks {
        /// The dialog changed settings or the default browser.
        std::function<void()> changed;
        std::function<void()> beep;
        /// Performs the action of a button of the dialog, by the button's identifier.
        std::function<void(const std::string &selector, const std::string &identifier)> perform;
        /// A dialog could not be opened, or went away by itself; `reason` is for the log.
        std::function<void(const std::string &reason, bool couldNotOpen)> failed;
    };

    /// `programPath` is the program's file. A running program that leaves a request unanswered for
    /// `patience` counts as hung, and is killed.
    DialogsProgram(std::string programPath, std::chrono::milliseconds patience, Callbacks callbacks);
    ~DialogsProgram();
    DialogsProgram(const DialogsProgram &) = delete;
    DialogsProgram &operator=(const DialogsProgram &) = delete;

    /// Opens a dialog by its action's selector and the identifier that goes with it, or brings the open one
    /// to the front; returns at once. `token` is the desktop's for this, empty: none.
    void open(const std::string &selector, const std::string &subject, const std::string &token);

    /// Has dialogs look so, the open one included.
    void setAppearance(std::optional<ui::AppearanceName> appearance);

  private:
    struct Request {
        Message message;
        int starts = 0; ///< how often the program was started for it
    };

    void start(Request request);
    void received(const Message &message);
    void ended(ExitStatus status);

    const std::string path;
    const std::chrono::milliseconds patience;
    const Callbacks call;
    std::string appearance;
    std::unique_ptr<HelperProgram> program; ///< null: does not run
    std::optional<Request> unanswered;
    unsigned requests = 0;
    Timer timer; ///< runs while a program that showed a dialog is asked again
};

/// The program that shows the tray item of this process in an XEmbed tray. When it ends by itself it is
/// started again, each time after a longer pause, and after some times no more. Main thread only.
class IconProgram : public EmbeddedIcon {
  public:
    /// `programPath` is the program's file; the item is that of the connection with the unique name
    /// `busName`.
    IconProgram(std::string programPath, std::string busName);
    ~IconProgram() override;
    IconProgram(const IconProgram &) = delete;
    IconProgram &operator=(const IconProgram &) = delete;

    [[nodiscard]] bool isShown() const override { return program != nullptr; }

  private:
    void start();
    void ended();

    const std::string path, item;
    std::unique_ptr<HelperProgram> program;
    Timer pause;
    unsigned restarts = 0;
};

} // namespace fernhop::freedesktop
