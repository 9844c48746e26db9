#include "platform/linux/dialogs-qt/HelperProgram.h"

#include "platform/Version.h"

#include <utility>

namespace fernhop::freedesktop {

std::unique_ptr<HelperProgram> HelperProgram::start(const std::vector<std::string> &command,
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
    std::vector<const char *> words;
    for (const std::string &word : command)
        words.push_back(word.c_str());
    words.push_back(programVersion()); // an upgrade may have replaced one of the two programs
    words.push_back(nullptr);
    GObjectPointer<GSubprocess> started(g_subprocess_launcher_spawnv(launcher.get(), words.data(), nullptr));
    if (!started)
        return nullptr;
    return std::unique_ptr<HelperProgram>(
        new HelperProgram(std::move(started), std::move(ownEnd), std::move(callbacks)));
}

HelperProgram::HelperProgram(GObjectPointer<GSubprocess> started, FileDescriptor end, Callbacks callbacks)
    : process(std::move(started)), waiting(g_cancellable_new()), call(std::move(callbacks)),
      connection(std::move(end)) {
    connection.listen(call.received, [] {}); // its end is told by the process's
    g_subprocess_wait_async(process.get(), waiting.get(), waited, this);
}

HelperProgram::~HelperProgram() {
    g_cancellable_cancel(waiting.get());
    kill();
}

void HelperProgram::waited(GObject *process, GAsyncResult *result, gpointer self) {
    // Cancelled, there is no object any more.
    if (!g_subprocess_wait_finish(G_SUBPROCESS(process), result, nullptr))
        return;
    auto &own = *static_cast<HelperProgram *>(self);
    own.connection.receiveWaiting();
    auto *const subprocess = own.process.get();
    const bool exited = g_subprocess_get_if_exited(subprocess);
    const auto ended = own.call.ended;
    ended(exited ? ExitStatus(g_subprocess_get_exit_status(subprocess)) : std::nullopt);
}

} // namespace fernhop::freedesktop
