#include "platform/linux/stub/ResidentStart.h"

#include "platform/linux/base/FernhopService.h"
#include "platform/linux/base/OwnProgram.h"
#include "platform/linux/base/Text.h"
#include "platform/linux/stub/SdBus.h"
#include "platform/linux/stub/SessionEnvironment.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string_view>
#include <vector>

namespace fernhop::stub {
namespace {

using namespace freedesktop;
using Clock = std::chrono::steady_clock;

// Between two looks at what the bus does not tell.
constexpr std::chrono::milliseconds tick{20};

// The resident has its name after some 50 ms. These are for a busy machine, and for processes that hang.
constexpr std::chrono::seconds longestTurn{3};
constexpr std::chrono::seconds longestStart{10};

std::string homeOrRoot(const Environment &environment) {
    const auto home = XdgSession::of(environment).home;
    struct stat status = {};
    return stat(home.c_str(), &status) == 0 && S_ISDIR(status.st_mode) ? home : "/";
}

/// Starts a program as a process that outlives this one: in a session of its own, with the usual handling of
/// signals, and without our output, on whose end somebody may be waiting. Returns an errno value, or 0.
int spawnDetached(std::vector<std::string> command, const Environment &environment, pid_t &child) {
    posix_spawn_file_actions_t files;
    posix_spawnattr_t attributes;
    posix_spawn_file_actions_init(&files);
    posix_spawnattr_init(&attributes);
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&files, STDOUT_FILENO, STDERR_FILENO);
    posix_spawn_file_actions_addclosefrom_np(&files, STDERR_FILENO + 1);
    posix_spawn_file_actions_addchdir_np(&files, homeOrRoot(environment).c_str());
    sigset_t signals;
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes, &signals);
    sigfillset(&signals);
    posix_spawnattr_setsigdefault(&attributes, &signals);
    posix_spawnattr_setflags(&attributes,
                             POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    auto assignments = environment.assignments();
    const int failure = posix_spawn(&child, command.front().c_str(), &files, &attributes,
                                    pointersTo(command).data(), pointersTo(assignments).data());
    posix_spawn_file_actions_destroy(&files);
    posix_spawnattr_destroy(&attributes);
    return failure;
}

/// One start. The turn to start the resident is a name on the bus: it goes to one process, and from one that
/// ends to the next in the queue, or from one that hangs to whoever asks for it with force.
class Start {
  public:
    explicit Start(sd_bus *sessionBus) : bus(sessionBus) {
        sd_bus_get_unique_name(bus, &self);
        const auto rule = std::string("type='signal',sender='org.freedesktop.DBus',interface='org."
                                      "freedesktop.DBus',member='NameOwnerChanged',arg0namespace='") +
                          serviceName + "'";
        sd_bus_slot *slot = nullptr;
        sd_bus_add_match(bus, &slot, rule.c_str(), ownerChanged, this);
        watch.reset(slot);
    }
    ~Start() { sd_bus_release_name(bus, turnName); }
    Start(const Start &) = delete;
    Start &operator=(const Start &) = delete;

    StartResult run(std::string &reason) {
        if (!takeTurn())
            return failed(reason, "the session bus was closed");
        // It may have come between the call that did not find it and the watch.
        if (!isPresent && hasResident())
            isPresent = true;
        pid_t child = 0;
        if (!isPresent && !isLate()) {
            const auto program = programBeside("fernhop");
            const auto environment = sessionEnvironment(bus, Environment::current());
            if (const int failure = spawnDetached({program}, environment, child); failure != 0)
                return failed(reason, program + ": " + strerror(failure));
        }
        return waitFor(child, reason);
    }

  private:
    struct SlotDelete {
        void operator()(sd_bus_slot *slot) const { sd_bus_slot_unref(slot); }
    };

    static int ownerChanged(sd_bus_message *message, void *self, sd_bus_error *) {
        auto &start = *static_cast<Start *>(self);
        const char *name = nullptr;
        const char *before = nullptr;
        const char *after = nullptr;
        if (sd_bus_message_read(message, "sss", &name, &before, &after) < 0)
            return 0;
        if (std::string_view(name) == serviceName)
            start.isPresent = *after != '\0';
        else if (std::string_view(name) == turnName)
            start.turnChanged(after);
        return 0;
    }

    void turnChanged(std::string_view owner) {
        hasTurn = hasTurn || (self != nullptr && owner == self);
        turnEnd = Clock::now() + longestTurn;
    }

    [[nodiscard]] bool isLate() const { return Clock::now() > end; }

    /// Waits for the turn, or for a resident, or until it is late; false when the bus closed meanwhile.
    [[nodiscard]] bool takeTurn() {
        constexpr std::uint64_t queued = SD_BUS_NAME_QUEUE | SD_BUS_NAME_ALLOW_REPLACEMENT;
        // Where the bus has no turns to give, everybody has one.
        hasTurn = sd_bus_request_name(bus, turnName, queued) != 0;
        while (!hasTurn && !isPresent && !isLate()) {
            if (!processFor(bus, tick))
                return false;
            if (Clock::now() < turnEnd)
                continue;
            hasTurn = sd_bus_request_name(bus, turnName, queued | SD_BUS_NAME_REPLACE_EXISTING) != 0;
            turnEnd = Clock::now() + longestTurn;
        }
        return true;
    }

    [[nodiscard]] bool hasResident() {
        sd_bus_message *reply = nullptr;
        int has = 0;
        return sd_bus_call_method(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                  "org.freedesktop.DBus", "NameHasOwner", nullptr, &reply, "s",
                                  serviceName) >= 0 &&
               sd_bus_message_read(MessagePointer(reply).get(), "b", &has) > 0 && has != 0;
    }

    static StartResult failed(std::string &reason, std::string text) {
        reason = std::move(text);
        return StartResult::failed;
    }

    StartResult waitFor(pid_t child, std::string &reason) {
        while (!isPresent && !isLate()) {
            int status = 0;
            const bool ended = child > 0 && waitpid(child, &status, WNOHANG) != 0;
            // It ends with success when another one has the name.
            if (ended && WIFEXITED(status) && WEXITSTATUS(status) == 0)
                return StartResult::present;
            if (ended || !processFor(bus, tick))
                return failed(reason, "Fernhop ended before it could take links");
        }
        if (isPresent)
            return StartResult::present;
        reason = "Fernhop hangs while it starts";
        return StartResult::hangs;
    }

    static constexpr const char *turnName = "org.fernhop.Fernhop.Start";

    sd_bus *const bus;
    const char *self = nullptr; ///< this connection's own name
    std::unique_ptr<sd_bus_slot, SlotDelete> watch;
    const Clock::time_point end = Clock::now() + longestStart;
    Clock::time_point turnEnd = Clock::now() + longestTurn;
    bool hasTurn = false;
    bool isPresent = false; ///< whether a resident has its name
};

} // namespace

StartResult startResident(sd_bus *bus, std::string &reason) {
    return Start(bus).run(reason);
}

bool canBeReplaced() {
    pid_t child = 0;
    int status = 0;
    return ownProgramWasReplaced() &&
           spawnDetached({ownProgramPath(), "--version"}, Environment::current(), child) == 0 &&
           waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace fernhop::stub
