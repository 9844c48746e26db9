#include "platform/linux/stub/Resident.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstring>

namespace fernhop::stub {
namespace {

/// Starts the program in a session of its own and away from our output, as it outlives this process, its
/// terminal and whoever reads what we print until the end. The error as an errno value, or 0.
int spawnResident(const std::string &program, pid_t &child) {
    posix_spawn_file_actions_t files;
    posix_spawnattr_t attributes;
    posix_spawn_file_actions_init(&files);
    posix_spawnattr_init(&attributes);
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&files, STDOUT_FILENO, STDERR_FILENO);
    posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    std::string argument = program;
    const std::array<char *, 2> arguments = {argument.data(), nullptr};
    const int failure = posix_spawn(&child, program.c_str(), &files, &attributes, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&files);
    posix_spawnattr_destroy(&attributes);
    return failure;
}

int ownerChanged(sd_bus_message *message, void *appeared, sd_bus_error *) {
    const char *name = nullptr;
    const char *before = nullptr;
    const char *after = nullptr;
    if (sd_bus_message_read(message, "sss", &name, &before, &after) >= 0 && *after != '\0')
        *static_cast<bool *>(appeared) = true;
    return 0;
}

/// Waits until `appeared` is set or the child has ended, whichever is first.
void waitForNameOrEnd(sd_bus *bus, const bool &appeared, int childDescriptor) {
    while (!appeared) {
        const int processed = sd_bus_process(bus, nullptr);
        if (processed < 0)
            return;
        if (processed > 0)
            continue;
        std::array<pollfd, 2> waiting = {{{sd_bus_get_fd(bus), static_cast<short>(sd_bus_get_events(bus)), 0},
                                          {childDescriptor, POLLIN, 0}}};
        poll(waiting.data(), waiting.size(), -1);
        if (waiting[1].revents != 0)
            return;
    }
}

/// Whether the resident, having ended at once, says that another one runs.
bool endedWell(pid_t child, std::string &reason) {
    int status = 0;
    if (waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0)
        return true;
    reason = "Fernhop ended before it could take links";
    return false;
}

} // namespace

std::string residentProgram() {
    std::array<char, PATH_MAX> path{};
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    if (length <= 0)
        return "fernhop";
    const std::string own(path.data(), static_cast<std::size_t>(length));
    return own.substr(0, own.rfind('/') + 1) + "fernhop";
}

bool startResident(sd_bus *bus, const char *name, std::string &reason) {
    bool appeared = false;
    const auto rule =
        std::string("type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
                    "member='NameOwnerChanged',arg0='") +
        name + "'";
    sd_bus_slot *watch = nullptr;
    sd_bus_add_match(bus, &watch, rule.c_str(), ownerChanged, &appeared);
    const auto program = residentProgram();
    pid_t child = 0;
    const int failure = spawnResident(program, child);
    if (failure == 0) {
        const int childDescriptor = static_cast<int>(syscall(SYS_pidfd_open, child, 0));
        waitForNameOrEnd(bus, appeared, childDescriptor);
        close(childDescriptor);
    } else {
        reason = program + ": " + strerror(failure);
    }
    sd_bus_slot_unref(watch);
    return failure == 0 && (appeared || endedWell(child, reason));
}

} // namespace fernhop::stub
