#include "platform/linux/launch/ChildExit.h"

#include <glib.h>
#include <sys/wait.h>

#include <cerrno>
#include <cstring>

namespace fernhop::freedesktop {
namespace {

// 126 and 127 are the shell's "cannot run" and "not found" (POSIX, Shell Command Language 2.8.2); 255 is what
// wrapper scripts and runtimes end with when they could not start the program.
std::optional<std::string> exitFailure(int status) {
    switch (status) {
    case 126:
        return g_strerror(EACCES);
    case 127:
        return g_strerror(ENOENT);
    case 255:
        return "The program ended with exit status 255";
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<std::string> launchFailure(int waitStatus, std::chrono::nanoseconds lived) {
    if (lived > earlyExitWindow)
        return std::nullopt;
    if (WIFSIGNALED(waitStatus))
        return g_strsignal(WTERMSIG(waitStatus));
    return exitFailure(WEXITSTATUS(waitStatus));
}

} // namespace fernhop::freedesktop
