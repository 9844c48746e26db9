#pragma once

#include "support/Environment.h"

#include <sys/types.h>

#include <string>
#include <vector>

namespace fernhop::support {

/// What to start.
struct Command {
    std::vector<std::string> arguments;    ///< the program, looked up in PATH, and its arguments
    Environment environment;               ///< changes to this process's environment
    std::string output = "/dev/null";      ///< file for standard output and error; empty: inherited
    std::vector<int> keptDescriptors = {}; ///< stay open in the child, under the same number
    uid_t user = 0;                        ///< run as this user and group; 0: as this process
};

/// A process that a test started. It ends with the test, however the test ends.
class ChildProcess {
  public:
    explicit ChildProcess(const Command &command);

    /// Kills the process and waits for it.
    ~ChildProcess();

    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;

    [[nodiscard]] pid_t pid() const { return processID; }
    [[nodiscard]] bool isRunning();

    void signal(int number);

    /// Waits until it has ended by itself; its exit status, or 128 and the signal that ended it.
    int wait();

    /// Sends SIGTERM and waits; kills the process when it does not end.
    void terminate();

  private:
    void takeStatus(int waitStatus);

    pid_t processID = -1;
    bool running = false;
    int status = 0;
};

/// Whether a program of this name is in PATH.
[[nodiscard]] bool isInstalled(const std::string &program);

/// The user to run programs as that refuse the superuser: this process's, or another one if that is root.
[[nodiscard]] uid_t ordinaryUser();

} // namespace fernhop::support
