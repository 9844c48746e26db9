#include "platform/linux/dialogs-qt/DialogsProgram.h"

#include "platform/Version.h"
#include "platform/linux/base/GPointer.h"
#include "platform/linux/base/Text.h"

#include <utility>
#include <vector>

namespace fernhop::freedesktop {

/// It has a connection to the resident as its standard input, and runs from construction to its own end, at
/// the latest to destruction.
class HelperProgram {
  public:
    struct Callbacks {
        std::function<void(const Message &)> received;
        /// Called once, after the last message; may destroy the object.
        std::function<void(ExitStatus)> ended;
    };

    /// `command` is the program's path and its arguments. `startupID` tells the display server on whose
    /// behalf its first window shows; empty: nobody's. Null when the program cannot be started.
    [[nodiscard]] static std::unique_ptr<HelperProgram>
    start(std::vector<std::string> command, const std::string &startupID, Callbacks callbacks);

    /// Kills the program if it still runs.
    ~HelperProgram() {
        g_cancellable_cancel(waiting.get());
        kill();
    }
    HelperProgram(const HelperProgram &) = delete;
    HelperProgram &operator=(const HelperProgram &) = delete;

    void send(const Message &message) const { connection.send(message); }

    /// Ends the program at once, also one that hangs; `ended` is called as at any other end.
    void kill() { g_subprocess_force_exit(process.get()); }

  private:
    HelperProgram(GObjectPointer<GSubprocess> started, FileDescriptor end, Callbacks callbacks);

    const GObjectPointer<GSubprocess> process;
    const GObjectPointer<GCancellable> waiting{g_cancellable_new()};
    const Callbacks call;
    MessageSocket connection;
};

std::unique_ptr<HelperProgram> HelperProgram::start(std::vector<std::string> command,
                                                    const std::string &startupID, Callbacks callbacks) {
    auto [ownEnd, otherEnd] = MessageSocket::makePair();
    if (!ownEnd)
        return nullptr;
    const GObjectPointer<GSubprocessLauncher> launcher(g_subprocess_launcher_new(G_SUBPROCESS_FLAGS_NONE));
    g_subprocess_launcher_take_stdin_fd(launcher.get(), otherEnd.release());
    // Those of the resident are used up.
    g_subprocess_launcher_unsetenv(launcher.get(), "XDG_ACTIVATION_TOKEN");
    g_subprocess_launcher_unsetenv(launcher.get(), "DESKTOP_STARTUP_ID");
    if (!startupID.empty())
        g_subprocess_launcher_setenv(launcher.get(), "DESKTOP_STARTUP_ID", startupID.c_str(), TRUE);
    command.emplace_back(programVersion()); // an upgrade may have replaced one of the two programs
    GObjectPointer<GSubprocess> started(
        g_subprocess_launcher_spawnv(launcher.get(), pointersTo(command).data(), nullptr));
    if (!started)
        return nullptr;
    return std::unique_ptr<HelperProgram>(
        new HelperProgram(std::move(started), std::move(ownEnd), std::move(callbacks)));
}

HelperProgram::HelperProgram(GObjectPointer<GSubprocess> started, FileDescriptor end, Callbacks callbacks)
    : process(std::move(started)), call(std::move(callbacks)), connection(std::move(end)) {
    connection.listen(call.received, [] {}); // its end is told by the process's
    const auto waited = [](GObject *source, GAsyncResult *result, gpointer self) {
        auto *const subprocess = G_SUBPROCESS(source);
        // Cancelled, there is no object any more.
        if (!g_subprocess_wait_finish(subprocess, result, nullptr))
            return;
        static_cast<HelperProgram *>(self)->connection.receiveWaiting();
        const auto ended = static_cast<HelperProgram *>(self)->call.ended;
        ended(g_subprocess_get_if_exited(subprocess) ? ExitStatus(g_subprocess_get_exit_status(subprocess))
                                                     : std::nullopt);
    };
    g_subprocess_wait_async(process.get(), waiting.get(), waited, this);
}

namespace {

constexpr const char *dark = "dark", *light = "light";

// A program that crashes on its way to a dialog gets a second chance.
constexpr int mostStarts = 2;

// How often, and how soon, the program that shows the icon is started again; each further pause is twice as
// long.
constexpr unsigned mostRestarts = 6;
constexpr std::chrono::seconds firstPause(1);

std::string describe(ExitStatus status) {
    return status ? "ended with status " + std::to_string(*status) : "crashed or was killed";
}

} // namespace

std::string appearanceWord(std::optional<ui::AppearanceName> appearance) {
    if (!appearance)
        return "";
    return *appearance == ui::AppearanceName::darkAqua ? dark : light;
}

std::optional<ui::AppearanceName> appearanceOfWord(const std::string &word) {
    if (word == dark)
        return ui::AppearanceName::darkAqua;
    return word == light ? std::optional(ui::AppearanceName::aqua) : std::nullopt;
}

DialogsProgram::DialogsProgram(std::string programPath, std::chrono::milliseconds hangsAfter,
                               Callbacks callbacks)
    : path(std::move(programPath)), patience(hangsAfter), call(std::move(callbacks)) {}

DialogsProgram::~DialogsProgram() = default;

void DialogsProgram::open(const std::string &selector, const std::string &subject, const std::string &token) {
    Request request{{message::open, selector, subject, token, std::to_string(++requests)}};
    if (!program)
        return start(std::move(request));
    program->send(request.message);
    unanswered = std::move(request);
    if (!timer.isRunning())
        timer.start(patience, [this] { program->kill(); }); // its end stops the timer
}

void DialogsProgram::setAppearance(std::optional<ui::AppearanceName> newAppearance) {
    appearance = appearanceWord(newAppearance);
    if (program)
        program->send({message::appearance, appearance});
}

void DialogsProgram::start(Request request) {
    program = HelperProgram::start(
        {path, dialogMode}, request.message[3],
        {[this](const auto &message) { received(message); }, [this](ExitStatus status) { ended(status); }});
    if (!program)
        return call.failed("cannot start " + path, true);
    program->send({message::appearance, appearance});
    program->send(request.message);
    ++request.starts;
    unanswered = std::move(request);
}

void DialogsProgram::received(const Message &message) {
    const std::string &word = message.front();
    if (word == message::handled) {
        if (!unanswered || message.back() != unanswered->message.back())
            return;
        unanswered.reset();
        timer.stop();
    } else if (word == message::changed) {
        call.changed();
    } else if (word == message::beep) {
        call.beep();
    } else if (word == message::perform && message.size() == 3) {
        call.perform(message[1], message[2]);
    }
}

void DialogsProgram::ended(ExitStatus status) {
    program.reset();
    timer.stop();
    auto request = std::exchange(unanswered, std::nullopt);
    if (status == noDisplayStatus)
        return call.failed("there is no display to show a dialog on", true);
    const bool givesUp = request && request->starts >= mostStarts;
    if (status != 0)
        call.failed("the dialogs program " + describe(status), givesUp);
    // It may have ended with its dialog just when it was asked for another.
    if (request && !givesUp)
        start(std::move(*request));
}

IconProgram::IconProgram(std::string programPath, std::string busName)
    : path(std::move(programPath)), item(std::move(busName)) {
    start();
}

IconProgram::~IconProgram() = default;

void IconProgram::start() {
    program = HelperProgram::start({path, iconMode, item}, "",
                                   {[](const Message &) {}, [this](ExitStatus) { ended(); }});
}

void IconProgram::ended() {
    program.reset();
    if (restarts < mostRestarts)
        pause.start(firstPause * (1U << restarts++), [this] { start(); });
}

} // namespace fernhop::freedesktop
