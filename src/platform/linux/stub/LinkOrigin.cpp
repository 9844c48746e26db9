#include "platform/linux/stub/LinkOrigin.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>

namespace fernhop::stub {
namespace {

std::string variable(const char *name) {
    const char *value = getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

std::string contents(const char *path) {
    std::string text;
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return text;
    std::array<char, 4096> buffer{};
    for (ssize_t length = 0; (length = read(file, buffer.data(), buffer.size())) > 0;)
        text.append(buffer.data(), static_cast<std::size_t>(length));
    close(file);
    return text;
}

// GIO leaves its marks in the environment of all descendants. Naming another process than this one, they tell
// the application that this process descends from.
std::string inheritedDesktopFile(pid_t launchedPid) {
    if (const auto id = desktopIDOfPath(variable("BAMF_DESKTOP_FILE_HINT")); !id.empty())
        return id;
    return launchedPid == getpid() ? std::string() : desktopIDOfPath(variable("GIO_LAUNCHED_DESKTOP_FILE"));
}

} // namespace

std::string unifiedControlGroup(const std::string &text) {
    std::size_t start = 0;
    while (start < text.size()) {
        const auto end = std::min(text.find('\n', start), text.size());
        if (text.compare(start, 3, "0::") == 0)
            return text.substr(start + 3, end - start - 3);
        start = end + 1;
    }
    return {};
}

std::string desktopIDOfPath(const std::string &path) {
    constexpr std::string_view extension = ".desktop";
    constexpr std::string_view folder = "/applications/";
    if (path.size() <= extension.size() ||
        path.compare(path.size() - extension.size(), std::string::npos, extension) != 0)
        return {};
    auto start = path.rfind(folder);
    start = start == std::string::npos ? path.rfind('/') + 1 : start + folder.size();
    auto id = path.substr(start, path.size() - extension.size() - start);
    std::replace(id.begin(), id.end(), '/', '-');
    return id;
}

LinkOrigin readLinkOrigin() {
    LinkOrigin origin;
    origin.activationToken = variable("XDG_ACTIVATION_TOKEN");
    origin.startupID = variable("DESKTOP_STARTUP_ID");
    origin.controlGroup = unifiedControlGroup(contents("/proc/self/cgroup"));
    origin.launchedPid =
        static_cast<pid_t>(strtol(variable("GIO_LAUNCHED_DESKTOP_FILE_PID").c_str(), nullptr, 10));
    origin.desktopFile = inheritedDesktopFile(origin.launchedPid);
    origin.parentPid = getppid();
    return origin;
}

} // namespace fernhop::stub
