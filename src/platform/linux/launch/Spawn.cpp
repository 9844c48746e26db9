#include "platform/linux/launch/Spawn.h"

#include <fcntl.h>
#include <linux/close_range.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string_view>

namespace fernhop::freedesktop {
namespace {

// Long enough for any process identifier.
constexpr std::size_t pidDigits = 20;

/// Everything the child needs, made ready in the parent: between vfork and exec nothing may be allocated.
struct ChildPlan {
    const char *program;
    const char *directory; ///< null: stay
    char *const *arguments;
    char *const *environment;
    char *pidText; ///< where the child writes its identifier; null: nowhere
};

std::vector<char *> pointers(std::vector<std::string> &texts) {
    std::vector<char *> result;
    result.reserve(texts.size() + 1);
    for (auto &text : texts)
        result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

void writePid(char *text, pid_t pid) {
    std::array<char, pidDigits> reversed{};
    std::size_t length = 0;
    for (; pid > 0; pid /= 10)
        reversed[length++] = static_cast<char>('0' + pid % 10);
    while (length > 0)
        *text++ = reversed[--length];
    *text = '\0';
}

void resetSignals() {
    struct sigaction standard = {};
    standard.sa_handler = SIG_DFL;
    for (int number = 1; number < NSIG; ++number)
        sigaction(number, &standard, nullptr);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

void closeEverythingFrom(unsigned int first) {
    if (syscall(SYS_close_range, first, ~0U, 0U) == 0)
        return;
    const long limit = sysconf(_SC_OPEN_MAX);
    for (long descriptor = first; descriptor < limit; ++descriptor)
        close(static_cast<int>(descriptor));
}

void standardInputFromNowhere() {
    const int nowhere = open("/dev/null", O_RDONLY);
    if (nowhere > STDIN_FILENO)
        dup2(nowhere, STDIN_FILENO);
}

/// Becomes the program. Returns the errno value when that fails.
int becomeProgram(const ChildPlan &plan) {
    setsid();
    if (plan.directory != nullptr && chdir(plan.directory) != 0)
        return errno;
    standardInputFromNowhere();
    closeEverythingFrom(STDERR_FILENO + 1);
    if (plan.pidText != nullptr)
        writePid(plan.pidText, getpid());
    resetSignals();
    execve(plan.program, plan.arguments, plan.environment);
    return errno;
}

/// Signals stay out while parent and child share their memory: a handler that ran in the child would write to
/// the parent.
class SignalsBlocked {
  public:
    SignalsBlocked() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before);
    }
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before, nullptr); }
    SignalsBlocked(const SignalsBlocked &) = delete;
    SignalsBlocked &operator=(const SignalsBlocked &) = delete;

  private:
    sigset_t before{};
};

// vfork and not fork: a failing exec is told through shared memory at once, and no page table is copied on
// the road of a link. Kept out of line, as the child runs on this very stack frame.
[[gnu::noinline]] std::variant<pid_t, SpawnError> runChild(const ChildPlan &plan) {
    const SignalsBlocked blocked;
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
        return SpawnError{errno};
    if (failure == 0)
        return child;
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
    return SpawnError{failure};
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

std::variant<std::string, SpawnError> findProgram(const std::string &name, const std::string &searchPath) {
    if (name.empty())
        return SpawnError{ENOENT};
    if (name.find('/') != std::string::npos)
        return name;
    int failure = ENOENT;
    std::string_view rest = searchPath;
    while (!rest.empty()) {
        const auto folder = rest.substr(0, rest.find(':'));
        rest.remove_prefix(std::min(rest.size(), folder.size() + 1));
        // An empty or relative folder would find programs in whatever folder the user happens to be in.
        if (!folder.starts_with('/'))
            continue;
        auto path = std::string(folder) + '/' + name;
        if (isExecutableFile(path))
            return path;
        if (errno == EACCES)
            failure = EACCES;
    }
    return SpawnError{failure};
}

std::variant<pid_t, SpawnError> spawn(const SpawnRequest &request) {
    if (request.arguments.empty())
        return SpawnError{ENOENT};
    const auto found =
        findProgram(request.arguments.front(),
                    request.environment.value("PATH").value_or("/usr/local/bin:/usr/bin:/bin"));
    if (const auto *error = std::get_if<SpawnError>(&found))
        return *error;
    auto arguments = request.arguments;
    auto environment = request.environment;
    if (!request.pidVariable.empty())
        environment.unset(request.pidVariable);
    auto assignments = environment.assignments();
    char *pidText = nullptr;
    if (!request.pidVariable.empty()) {
        assignments.push_back(request.pidVariable + '=' + std::string(pidDigits, '\0'));
        pidText = assignments.back().data() + request.pidVariable.size() + 1;
    }
    const auto argumentPointers = pointers(arguments);
    const auto environmentPointers = pointers(assignments);
    return runChild({std::get<std::string>(found).c_str(),
                     request.workingDirectory.empty() ? nullptr : request.workingDirectory.c_str(),
                     argumentPointers.data(), environmentPointers.data(), pidText});
}

} // namespace fernhop::freedesktop
