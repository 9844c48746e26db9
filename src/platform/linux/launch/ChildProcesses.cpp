#include "platform/linux/launch/ChildProcesses.h"

#include "platform/linux/base/Processes.h"
#include "platform/linux/base/Text.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <string_view>
#include <utility>

namespace fernhop::freedesktop {
namespace {

constexpr const char *pidVariable = "GIO_LAUNCHED_DESKTOP_FILE_PID";

// Long enough for any process identifier and the zero byte after it.
constexpr std::size_t pidSpace = 20;

/// Everything the child needs, prepared in the parent: between vfork and exec nothing may be allocated.
struct ChildPlan {
    const char *program;
    const char *directory; ///< null: stay
    char *const *arguments;
    char *const *environment;
    char *pidText; ///< where the child writes its identifier, `pidSpace` zero bytes
};

void resetSignals() {
    struct sigaction standard = {};
    standard.sa_handler = SIG_DFL;
    for (int number = 1; number < NSIG; ++number)
        sigaction(number, &standard, nullptr);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

void standardInputFromNowhere() {
    const int nowhere = open("/dev/null", O_RDONLY);
    if (nowhere > STDIN_FILENO) {
        dup2(nowhere, STDIN_FILENO);
        close(nowhere);
    }
}

/// Becomes the program. Returns the errno value when that fails.
int becomeProgram(const ChildPlan &plan) {
    setsid();
    if (plan.directory != nullptr && chdir(plan.directory) != 0)
        return errno;
    closefrom(STDERR_FILENO + 1); // first, as the process may have no descriptor left to open anything
    standardInputFromNowhere();
    std::to_chars(plan.pidText, plan.pidText + pidSpace, getpid());
    resetSignals();
    execve(plan.program, plan.arguments, plan.environment);
    return errno;
}

// vfork and not fork: a failing exec is reported through shared memory at once, and no page table is copied
// while a link waits. Kept out of line, as the child runs on this very stack frame.
[[gnu::noinline]] Result<pid_t> runChild(const ChildPlan &plan) {
    // Parent and child share their memory: a handler that ran in the child would write to the parent.
    const SignalBlock block;
    volatile int failure = 0;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    const pid_t child = vfork();
#pragma GCC diagnostic pop
    if (child == 0) {
        failure = becomeProgram(plan);
        _exit(127);
    }
    if (child < 0)
        return Failure::ofSystem(errno);
    if (failure == 0)
        return child;
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
    return Failure::ofSystem(failure);
}

// Children whose end is not waited for with a descriptor are looked at: often while their end may mean that
// their link was not opened, then only so that none stays a zombie for long.
constexpr std::chrono::milliseconds shortPause{100};
constexpr std::chrono::milliseconds longPause{10'000};

/// Whether half of the descriptors that this process may have are still free. GLib takes one for each child,
/// and links need some to be routed at all.
bool mayTakeDescriptor() {
    rlimit limit = {};
    const int lowestFree = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0);
    if (lowestFree < 0)
        return false;
    close(lowestFree);
    return getrlimit(RLIMIT_NOFILE, &limit) == 0 && static_cast<rlim_t>(lowestFree) < limit.rlim_cur / 2;
}

bool isExecutableFile(const std::string &path) {
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0)
        return false;
    if (!S_ISREG(status.st_mode) || access(path.c_str(), X_OK) != 0) {
        errno = EACCES;
        return false;
    }
    return true;
}

} // namespace

std::size_t longestArgument() {
    // MAX_ARG_STRLEN of execve(2), which no header of the C library has.
    return static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) * 32 - 1;
}

Result<std::string> findProgram(const std::string &name, const std::string &searchPath) {
    if (name.empty())
        return Failure::ofSystem(ENOENT);
    if (name.find('/') != std::string::npos)
        return name;
    int failure = ENOENT;
    for (const auto folder : pieces(searchPath, ':')) {
        // An empty or relative folder would find programs in whatever folder the user happens to be in.
        if (!folder.starts_with('/'))
            continue;
        auto path = std::string(folder) + '/' + name;
        if (isExecutableFile(path))
            return path;
        if (errno == EACCES)
            failure = EACCES;
    }
    return Failure::ofSystem(failure);
}

Result<pid_t> spawn(SpawnRequest request) {
    if (request.arguments.empty())
        return Failure::ofSystem(ENOENT);
    const auto program = findProgram(request.arguments.front(),
                                     request.environment.value("PATH", "/usr/local/bin:/usr/bin:/bin"));
    if (!program)
        return program.failure();
    request.environment.unset(pidVariable);
    auto assignments = request.environment.assignments();
    const auto prefix = std::string(pidVariable) + '=';
    auto &pidAssignment = assignments.emplace_back(prefix + std::string(pidSpace, '\0'));
    const auto environment = pointersTo(assignments);
    const auto arguments = pointersTo(request.arguments);
    return runChild({program->c_str(),
                     request.workingDirectory.empty() ? nullptr : request.workingDirectory.c_str(),
                     arguments.data(), environment.data(), pidAssignment.data() + prefix.size()});
}

std::optional<Failure> launchFailure(int waitStatus, std::chrono::nanoseconds lived) {
    if (lived > earlyExitWindow)
        return std::nullopt;
    if (WIFSIGNALED(waitStatus))
        return Failure{g_strsignal(WTERMSIG(waitStatus))};
    // 126 and 127 are the shell's "cannot run" and "not found" (POSIX, Shell Command Language 2.8.2); 255 is
    // what wrapper scripts and runtimes end with when they could not start the program.
    switch (WEXITSTATUS(waitStatus)) {
    case 126:
        return Failure::ofSystem(EACCES);
    case 127:
        return Failure::ofSystem(ENOENT);
    case 255:
        return Failure{"The program ended with exit status 255"};
    default:
        return std::nullopt;
    }
}

ChildWatches::~ChildWatches() {
    for (const auto &[child, watch] : watches)
        if (watch.source != 0)
            g_source_remove(watch.source);
}

void ChildWatches::watch(pid_t child, Ended ended) {
    const auto childEnded = [](GPid process, gint waitStatus, gpointer self) {
        static_cast<ChildWatches *>(self)->end(process, waitStatus);
    };
    const guint source = mayTakeDescriptor() ? g_child_watch_add(child, childEnded, this) : 0;
    watches.insert_or_assign(child, Watch{source, std::chrono::steady_clock::now(), std::move(ended)});
    if (source == 0)
        look.start(shortPause, [this] { lookForEnded(); });
}

void ChildWatches::end(pid_t child, int waitStatus) {
    if (const auto watch = watches.extract(child))
        watch.mapped().ended(waitStatus);
}

void ChildWatches::lookForEnded() {
    std::vector<std::pair<pid_t, int>> ended;
    std::optional<std::chrono::milliseconds> pause;
    const auto now = std::chrono::steady_clock::now();
    for (const auto &[child, watch] : watches) {
        int waitStatus = 0;
        if (watch.source != 0)
            continue;
        if (waitpid(child, &waitStatus, WNOHANG) == child)
            ended.emplace_back(child, waitStatus);
        else
            pause = now - watch.begin < earlyExitWindow ? shortPause : pause.value_or(longPause);
    }
    if (pause)
        look.start(*pause, [this] { lookForEnded(); });
    for (const auto &[child, waitStatus] : ended)
        end(child, waitStatus);
}

} // namespace fernhop::freedesktop
