#include "platform/linux/stub/LinkOrigin.h"

#include "platform/linux/base/Environment.h"
#include "platform/linux/base/Processes.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace fernhop::stub {
namespace {

using freedesktop::Environment;

// GIO's variables stay in the environment of all descendants of a launched process. When they name another
// process than this one, they tell the application that this process descends from.
std::string inheritedDesktopFile(const Environment &environment, pid_t launchedPid) {
    if (const auto id = desktopIDOfPath(environment.value("BAMF_DESKTOP_FILE_HINT", "")); !id.empty())
        return id;
    return launchedPid == getpid() ? std::string()
                                   : desktopIDOfPath(environment.value("GIO_LAUNCHED_DESKTOP_FILE", ""));
}

} // namespace

std::string desktopIDOfPath(const std::string &path) {
    constexpr std::string_view extension = ".desktop";
    constexpr std::string_view folder = "/applications/";
    if (path.size() <= extension.size() || !path.ends_with(extension))
        return {};
    auto start = path.rfind(folder);
    start = start == std::string::npos ? path.rfind('/') + 1 : start + folder.size();
    auto id = path.substr(start, path.size() - extension.size() - start);
    std::replace(id.begin(), id.end(), '/', '-');
    return id;
}

LinkOrigin readLinkOrigin() {
    const auto environment = Environment::current();
    LinkOrigin origin;
    origin.activationToken = environment.value("XDG_ACTIVATION_TOKEN", "");
    origin.startupID = environment.value("DESKTOP_STARTUP_ID", "");
    origin.controlGroup = freedesktop::Processes().controlGroupOf(getpid()).value_or("");
    const auto launched = environment.value("GIO_LAUNCHED_DESKTOP_FILE_PID", "");
    origin.launchedPid = static_cast<pid_t>(strtol(launched.c_str(), nullptr, 10));
    origin.desktopFile = inheritedDesktopFile(environment, origin.launchedPid);
    origin.parentPid = getppid();
    return origin;
}

} // namespace fernhop::stub
