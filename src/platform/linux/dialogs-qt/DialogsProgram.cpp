#include "platform/linux/dialogs-qt/DialogsProgram.h"

#include <utility>

namespace fernhop::freedesktop {
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

void DialogsProgram::open(const std::string &selector, const std::string &subject, const std::string &token) {
    Request request{{message::open, selector, subject, token}};
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
        {path, dialogMode}, request.message.back(),
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
