#include "platform/linux/base/OwnProgram.h"

#include "platform/linux/base/Processes.h"

#include <sys/stat.h>
#include <unistd.h>

#include <thread>

namespace fernhop::freedesktop {
namespace {

constexpr const char *runningProgram = "/proc/self/exe";

} // namespace

const std::string &ownProgramPath() {
    static const std::string path = Processes().programPathOf(getpid()).value_or("");
    return path;
}

std::string programBeside(const std::string &name) {
    const auto &own = ownProgramPath();
    return own.substr(0, own.rfind('/') + 1) + name;
}

bool ownProgramWasReplaced() {
    struct stat running {};
    struct stat installed {};
    return stat(runningProgram, &running) == 0 && stat(ownProgramPath().c_str(), &installed) == 0 &&
           (running.st_dev != installed.st_dev || running.st_ino != installed.st_ino);
}

bool Pauses::wait() {
    if (next > longest)
        return false;
    std::this_thread::sleep_for(next);
    next *= 2;
    return true;
}

} // namespace fernhop::freedesktop
