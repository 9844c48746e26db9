#include "support/ChildProcess.h"

#include "support/Waiting.h"

#include <fcntl.h>
#include <grp.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <sstream>

namespace fernhop::support {

namespace {

constexpr uid_t nobody = 65534;

void redirectOutput(const std::string &path) {
    const int input = open("/dev/null", O_RDONLY | O_CLOEXEC);
    dup2(input, STDIN_FILENO);
    if (path.empty())
        return;
    const int output = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
    dup2(output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
}

[[noreturn]] void become(const Command &command, std::vector<char *> &arguments, pid_t parent) {
    const ScopedEnvironment environment(command.environment);
    redirectOutput(command.output);
    for (const int descriptor : command.keptDescriptors)
        fcntl(descriptor, F_SETFD, 0);
    if (command.user != 0 && command.user != getuid()) {
        if (setgroups(0, nullptr) != 0 || setgid(command.user) != 0 || setuid(command.user) != 0)
            _exit(126);
    }
    // After the change of user, which clears it.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() == parent)
        execvp(arguments[0], arguments.data());
    _exit(127);
}

} // namespace

ChildProcess::ChildProcess(const Command &command) {
    std::vector<std::string> texts = command.arguments;
    std::vector<char *> arguments;
    for (auto &text : texts)
        arguments.push_back(text.data());
    arguments.push_back(nullptr);
    const pid_t parent = getpid();
    processID = fork();
    if (processID == 0)
        become(command, arguments, parent);
    running = processID > 0;
}

ChildProcess::~ChildProcess() {
    if (!isRunning())
        return;
    kill(processID, SIGKILL);
    wait();
}

bool ChildProcess::isRunning() {
    int waitStatus = 0;
    if (running && waitpid(processID, &waitStatus, WNOHANG) == processID)
        takeStatus(waitStatus);
    return running;
}

void ChildProcess::signal(int number) {
    if (isRunning())
        kill(processID, number);
}

int ChildProcess::wait() {
    int waitStatus = 0;
    if (running && waitpid(processID, &waitStatus, 0) == processID)
        takeStatus(waitStatus);
    return status;
}

void ChildProcess::terminate() {
    signal(SIGTERM);
    if (!waitUntil([this] { return !isRunning(); })) {
        signal(SIGKILL);
        wait();
    }
}

void ChildProcess::takeStatus(int waitStatus) {
    running = false;
    status = WIFEXITED(waitStatus) ? WEXITSTATUS(waitStatus) : 128 + WTERMSIG(waitStatus);
}

bool isInstalled(const std::string &program) {
    const char *path = std::getenv("PATH");
    std::istringstream folders(path ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');)
        if (access((std::filesystem::path(folder) / program).c_str(), X_OK) == 0)
            return true;
    return false;
}

uid_t ordinaryUser() {
    return getuid() == 0 ? nobody : getuid();
}

} // namespace fernhop::support
