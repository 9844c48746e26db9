#include "platform/linux/base/OwnProgram.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <string_view>
#include <thread>

namespace fernhop::freedesktop {
namespace {

constexpr const char *runningProgram = "/proc/self/exe";

std::string readPath() {
    std::array<char, PATH_MAX> buffer{};
    const ssize_t length = readlink(runningProgram, buffer.data(), buffer.size());
    std::string path(buffer.data(), length < 0 ? 0 : static_cast<std::size_t>(length));
    constexpr std::string_view deleted = " (deleted)"; // the kernel's addition
    if (path.ends_with(deleted))
        path.resize(path.size() - deleted.size());
    return path;
}

} // namespace

const std::string &ownProgramPath() {
    static const std::string path = readPath();
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
