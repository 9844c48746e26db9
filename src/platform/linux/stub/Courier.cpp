#include "platform/linux/stub/Courier.h"

#include "platform/Version.h"
#include "platform/linux/base/FernhopService.h"
#include "platform/linux/base/OwnProgram.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <memory>
#include <utility>

namespace fernhop::stub {
namespace {

using namespace freedesktop;
using Kind = DeliveryResult::Kind;

// A link that crashes the resident must not be delivered again and again.
constexpr int mostAttempts = 5;

struct Unref {
    void operator()(sd_bus *bus) const { sd_bus_flush_close_unref(bus); }
    void operator()(sd_bus_message *message) const { sd_bus_message_unref(message); }
};
using Bus = std::unique_ptr<sd_bus, Unref>;
using Message = std::unique_ptr<sd_bus_message, Unref>;

class Error {
  public:
    Error() = default;
    ~Error() { sd_bus_error_free(&error); }
    Error(const Error &) = delete;
    Error &operator=(const Error &) = delete;

    sd_bus_error *out() { return &error; }
    [[nodiscard]] bool is(const char *errorName) const {
        return sd_bus_error_has_name(&error, errorName) != 0;
    }
    [[nodiscard]] bool isOneOf(const char *prefix) const {
        return error.name != nullptr && strncmp(error.name, prefix, strlen(prefix)) == 0;
    }
    [[nodiscard]] std::string text(int result) const {
        return error.message != nullptr ? error.message : strerror(-result);
    }

  private:
    sd_bus_error error{}; // what SD_BUS_ERROR_NULL is, which is no C++
};

// As bytes: environment variables and links may hold bytes that are not allowed in a string on the bus.
int appendBytes(sd_bus_message *message, const char *key, const std::string &value) {
    if (value.empty())
        return 0;
    int result = sd_bus_message_open_container(message, 'e', "sv");
    if (result >= 0)
        result = sd_bus_message_append(message, "s", key);
    if (result >= 0)
        result = sd_bus_message_open_container(message, 'v', "ay");
    if (result >= 0)
        result = sd_bus_message_append_array(message, 'y', value.data(), value.size());
    if (result >= 0)
        result = sd_bus_message_close_container(message);
    return result < 0 ? result : sd_bus_message_close_container(message);
}

int appendProcess(sd_bus_message *message, const char *key, pid_t process) {
    return process <= 0 ? 0 : sd_bus_message_append(message, "{sv}", key, "i", process);
}

int appendOrigin(sd_bus_message *message, const LinkOrigin &origin) {
    int result = sd_bus_message_open_container(message, 'a', "{sv}");
    if (result >= 0)
        result = sd_bus_message_append(message, "{sv}", platformdata::version, "s", programVersion());
    for (const auto &[key, value] : {std::pair(platformdata::activationToken, &origin.activationToken),
                                     {platformdata::startupID, &origin.startupID},
                                     {platformdata::controlGroup, &origin.controlGroup},
                                     {platformdata::desktopFile, &origin.desktopFile}})
        if (result >= 0)
            result = appendBytes(message, key, *value);
    if (result >= 0)
        result = appendProcess(message, platformdata::launchedPid, origin.launchedPid);
    if (result >= 0)
        result = appendProcess(message, platformdata::parentPid, origin.parentPid);
    return result < 0 ? result : sd_bus_message_close_container(message);
}

int appendLinks(sd_bus_message *message, const std::vector<std::string> &links) {
    int result = sd_bus_message_open_container(message, 'a', "ay");
    for (auto link = links.begin(); result >= 0 && link != links.end(); ++link)
        result = sd_bus_message_append_array(message, 'y', link->data(), link->size());
    return result < 0 ? result : sd_bus_message_close_container(message);
}

/// Starts a program in a session of its own and without our output, because the resident outlives this
/// process, its terminal and a reader that waits for the end of our output. `option` may be null. Returns an
/// errno value, or 0.
int spawnDetached(const std::string &program, const char *option, pid_t &child) {
    posix_spawn_file_actions_t files;
    posix_spawnattr_t attributes;
    posix_spawn_file_actions_init(&files);
    posix_spawnattr_init(&attributes);
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&files, STDOUT_FILENO, STDERR_FILENO);
    posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    const std::array<const char *, 3> arguments = {program.c_str(), option, nullptr};
    const int failure = posix_spawn(&child, program.c_str(), &files, &attributes,
                                    const_cast<char *const *>(arguments.data()), environ);
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

bool endedWithSuccess(pid_t child) {
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// Whether an upgrade has put another program in this one's place, and has written it completely: it runs.
bool canBeReplaced() {
    pid_t child = 0;
    return ownProgramWasReplaced() && spawnDetached(ownProgramPath(), "--version", child) == 0 &&
           endedWithSuccess(child);
}

/// Starts the resident and waits until it, or another one, has its name on the bus. False when it ended
/// before; `reason` then says why.
bool startResident(sd_bus *bus, std::string &reason) {
    bool appeared = false;
    const auto rule =
        std::string("type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
                    "member='NameOwnerChanged',arg0='") +
        serviceName + "'";
    sd_bus_slot *watch = nullptr;
    sd_bus_add_match(bus, &watch, rule.c_str(), ownerChanged, &appeared);
    const auto program = programBeside("fernhop");
    pid_t child = 0;
    const int failure = spawnDetached(program, nullptr, child);
    if (failure == 0) {
        const int childDescriptor = static_cast<int>(syscall(SYS_pidfd_open, child, 0));
        waitForNameOrEnd(bus, appeared, childDescriptor);
        close(childDescriptor);
    } else {
        reason = program + ": " + strerror(failure);
    }
    sd_bus_slot_unref(watch);
    if (failure != 0)
        return false;
    // The resident ends with success when another one has the name.
    if (appeared || endedWithSuccess(child))
        return true;
    reason = "Fernhop ended before it could take links";
    return false;
}

/// One delivery, repeated while that may help.
class Courier {
  public:
    Courier(const std::vector<std::string> &linksToDeliver, const LinkOrigin &linkOrigin)
        : links(linksToDeliver), origin(linkOrigin) {}

    DeliveryResult run() {
        DeliveryResult last{Kind::failed, {}};
        for (;;) {
            if (!bus && !connect())
                return {Kind::noBus, "there is no session bus"};
            Error error;
            const int result = call(error);
            if (result >= 0)
                return {Kind::delivered, {}};
            last.reason = error.text(result);
            if (error.is(otherVersionError)) {
                if (canBeReplaced())
                    return {Kind::replaced, last.reason};
                if (!pauses.wait())
                    return {Kind::refused, last.reason};
                continue;
            }
            if (!canTryAgain(error, last.reason))
                return last;
        }
    }

  private:
    bool connect() {
        sd_bus *opened = nullptr;
        if (sd_bus_open_user(&opened) < 0)
            return false;
        bus.reset(opened);
        return true;
    }

    int call(Error &error) {
        const bool justStart = links.empty();
        sd_bus_message *created = nullptr;
        int result =
            sd_bus_message_new_method_call(bus.get(), &created, serviceName, serviceObjectPath,
                                           justStart ? "org.freedesktop.Application" : serviceInterface,
                                           justStart ? "Activate" : "OpenLinks");
        const Message message(created);
        if (result >= 0 && !justStart)
            result = appendLinks(message.get(), links);
        if (result >= 0)
            result = appendOrigin(message.get(), origin);
        // Without a time limit: until the answer comes, only this process is sure to keep the links.
        return result < 0 ? result : sd_bus_call(bus.get(), message.get(), UINT64_MAX, error.out(), nullptr);
    }

    bool canTryAgain(const Error &error, std::string &reason) {
        if (sd_bus_is_open(bus.get()) <= 0) {
            bus.reset();
            return ++attempts < mostAttempts;
        }
        // The resident ended before it answered.
        if (error.is(SD_BUS_ERROR_NO_REPLY) || error.is(SD_BUS_ERROR_DISCONNECTED))
            return ++attempts < mostAttempts;
        if (error.is(SD_BUS_ERROR_SERVICE_UNKNOWN) || error.is(SD_BUS_ERROR_NAME_HAS_NO_OWNER) ||
            error.is("org.freedesktop.DBus.Error.TimedOut") ||
            error.isOneOf("org.freedesktop.DBus.Error.Spawn."))
            // During an upgrade its program may be missing for a moment.
            return startResident(bus.get(), reason) ? ++attempts < mostAttempts : pauses.wait();
        return false;
    }

    const std::vector<std::string> &links;
    const LinkOrigin &origin;
    Bus bus;
    Pauses pauses;
    int attempts = 0; ///< calls that a resident could have answered
};

} // namespace

DeliveryResult deliver(const std::vector<std::string> &links, const LinkOrigin &origin) {
    return Courier(links, origin).run();
}

} // namespace fernhop::stub
