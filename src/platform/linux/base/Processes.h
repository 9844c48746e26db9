#pragma once

#include <signal.h>
#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// Looks at other processes of the user. Any of them may be gone at any time, belong to somebody else, or
/// have written nonsense into what it shows: then there is nothing. Reads a bounded amount and never waits.
class Processes {
  public:
    /// `folder` is where the kernel shows its processes.
    explicit Processes(std::string folder = "/proc");

    [[nodiscard]] std::optional<pid_t> parentOf(pid_t pid) const;

    /// The path that the running program was started from, whatever is there now; nothing when the process is
    /// gone or not ours.
    [[nodiscard]] std::optional<std::string> programPathOf(pid_t pid) const;

    /// The file name of the program that runs; nothing when the process is gone or not ours.
    [[nodiscard]] std::optional<std::string> programOf(pid_t pid) const;

    /// Its command line, as it shows it.
    [[nodiscard]] std::vector<std::string> argumentsOf(pid_t pid) const;

    /// A variable of the environment that it was started with.
    [[nodiscard]] std::optional<std::string> variableOf(pid_t pid, const std::string &name) const;

    /// The path of its unified control group, "/user.slice/…".
    [[nodiscard]] std::optional<std::string> controlGroupOf(pid_t pid) const;

    /// The application ID of the Flatpak sandbox that it lives in.
    [[nodiscard]] std::optional<std::string> flatpakOf(pid_t pid) const;

  private:
    [[nodiscard]] std::string pathOf(pid_t pid, const char *name) const;

    std::string root;
};

/// Blocks all signals of the calling thread. A thread or a process that begins meanwhile begins like that.
class SignalBlock {
  public:
    SignalBlock() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before);
    }
    ~SignalBlock() { pthread_sigmask(SIG_SETMASK, &before, nullptr); }
    SignalBlock(const SignalBlock &) = delete;
    SignalBlock &operator=(const SignalBlock &) = delete;

  private:
    sigset_t before{};
};

} // namespace fernhop::freedesktop
