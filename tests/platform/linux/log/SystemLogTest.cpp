#include "platform/linux/log/SystemLog.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

namespace fernhop::freedesktop {
namespace {

/// Runs `work` in a process that has /run and /dev for itself; what it returns is the result, or nothing
/// where this system does not let us.
template <typename Work>
std::optional<int> withOwnSystemFolders(Work work) {
    constexpr int refused = 99;
    const pid_t child = fork();
    if (child == 0) {
        const bool isAlone = (unshare(CLONE_NEWNS) == 0 || unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0) &&
                             mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
                             mount("none", "/run", "tmpfs", 0, nullptr) == 0 &&
                             mount("none", "/dev", "tmpfs", 0, nullptr) == 0 && mkdir("/dev/shm", 0777) == 0;
        _exit(isAlone ? work() : refused);
    }
    int status = 0;
    waitpid(child, &status, 0);
    if (WIFEXITED(status) && WEXITSTATUS(status) == refused)
        return std::nullopt;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// A daemon's end of a datagram socket.
class Daemon {
  public:
    explicit Daemon(const char *path) : socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
        std::filesystem::create_directories(std::filesystem::path(path).parent_path());
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, path, sizeof address.sun_path - 1);
        isReady = bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    }
    ~Daemon() { close(socket); }
    Daemon(const Daemon &) = delete;
    Daemon &operator=(const Daemon &) = delete;

    /// The next message, from the datagram or from the file that came with it; empty when there is none.
    std::string next() {
        pollfd ready{socket, POLLIN, 0};
        if (poll(&ready, 1, 5000) != 1)
            return {};
        std::vector<char> bytes(1 << 20);
        alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))];
        iovec part{bytes.data(), bytes.size()};
        msghdr message{};
        message.msg_iov = &part;
        message.msg_iovlen = 1;
        message.msg_control = control;
        message.msg_controllen = sizeof control;
        const ssize_t length = recvmsg(socket, &message, 0);
        const cmsghdr *const header = CMSG_FIRSTHDR(&message);
        if (header && header->cmsg_type == SCM_RIGHTS)
            return contentsOf(header);
        return {bytes.data(), static_cast<std::size_t>(length < 0 ? 0 : length)};
    }

    bool isReady = false;

  private:
    static std::string contentsOf(const cmsghdr *header) {
        int file = -1;
        std::memcpy(&file, CMSG_DATA(header), sizeof file);
        struct stat status {};
        fstat(file, &status);
        std::string contents(static_cast<std::size_t>(status.st_size), '\0');
        const ssize_t length = pread(file, contents.data(), contents.size(), 0);
        close(file);
        return length == status.st_size ? contents : std::string();
    }

    int socket;
};

/// The value of a field in the journal's own form: "NAME=value\n", or "NAME\n", 64 bits of length, value.
std::string fieldOf(const std::string &message, const std::string &name) {
    if (const auto start = message.find(name + "="); start != std::string::npos) {
        const auto value = start + name.size() + 1;
        return message.substr(value, message.find('\n', value) - value);
    }
    const auto start = message.find(name + "\n");
    if (start == std::string::npos)
        return {};
    const auto length = start + name.size() + 1;
    std::uint64_t size = 0;
    std::memcpy(&size, message.data() + length, sizeof size);
    return message.substr(length + sizeof size, size);
}

TEST(SystemLogTest, SpeaksToTheJournal) {
    const auto result = withOwnSystemFolders([] {
        Daemon journal("/run/systemd/journal/socket");
        Daemon syslog("/dev/log");
        if (!journal.isReady || !syslog.isReady)
            return 1;
        SystemLog log(-1);
        log.log("Fernhop: 100%% of %s\n");
        const std::string message = journal.next();
        if (fieldOf(message, "MESSAGE") != "Fernhop: 100% of %s\\u000A")
            return 2;
        if (fieldOf(message, "SYSLOG_IDENTIFIER") != "fernhop" || fieldOf(message, "PRIORITY") != "4")
            return 3;
        return 0;
    });
    if (!result)
        GTEST_SKIP() << "no mount namespace of our own";
    EXPECT_EQ(result, 0);
}

std::ptrdiff_t openDescriptors() {
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return std::distance(begin(all), end(all));
}

TEST(SystemLogTest, LongLinesLeaveNoDescriptorOpen) {
    const auto result = withOwnSystemFolders([] {
        Daemon journal("/run/systemd/journal/socket");
        SystemLog log(-1);
        log.log("Fernhop: the first line opens the socket");
        if (!journal.isReady || journal.next().empty())
            return 1;
        const auto before = openDescriptors();
        const std::string line = "Fernhop: https://x/" + std::string(500'000, 'a') + " fallback=none";
        for (int count = 0; count < 10; ++count) {
            log.log(line);
            const std::string message = fieldOf(journal.next(), "MESSAGE");
            if (openDescriptors() != before)
                return 2;
            if (message.size() > 32768 || message.find(" bytes ...]") == std::string::npos ||
                !message.starts_with("Fernhop: https://x/a") || !message.ends_with("a fallback=none"))
                return 3;
        }
        return 0;
    });
    if (!result)
        GTEST_SKIP() << "no mount namespace of our own";
    EXPECT_EQ(result, 0);
}

TEST(SystemLogTest, SpeaksToSyslogWhereThereIsNoJournal) {
    const auto result = withOwnSystemFolders([] {
        Daemon syslog("/dev/log");
        if (!syslog.isReady)
            return 1;
        SystemLog log(-1);
        log.log("Fernhop: 100%% of %s\n");
        const std::string message = syslog.next();
        if (!message.starts_with("<12>") || message.find("fernhop[") == std::string::npos ||
            message.find("]: Fernhop: 100% of %s\\u000A") == std::string::npos)
            return 2;
        log.log("Fernhop: https://x/" + std::string(500'000, 'a') + " fallback=none");
        const std::string shortened = syslog.next();
        if (shortened.size() > 8192 || shortened.find(" bytes ...]") == std::string::npos ||
            shortened.find(" fallback=none") == std::string::npos)
            return 3;
        return 0;
    });
    if (!result)
        GTEST_SKIP() << "no mount namespace of our own";
    EXPECT_EQ(result, 0);
}

class Pipe {
  public:
    explicit Pipe(int flags = O_CLOEXEC) {
        int both[2];
        if (pipe2(both, flags) == 0)
            reader = both[0], writer = both[1];
    }
    ~Pipe() {
        close(reader);
        close(writer);
    }
    std::string read() {
        std::string text(1 << 20, '\0');
        const ssize_t length = ::read(reader, text.data(), text.size());
        text.resize(static_cast<std::size_t>(length < 0 ? 0 : length));
        return text;
    }
    int reader = -1;
    int writer = -1;
};

TEST(SystemLogTest, WritesToAPipe) {
    Pipe pipe;
    SystemLog(pipe.writer).log("Fernhop: 100%%");
    EXPECT_EQ(pipe.read(), "Fernhop: 100%\n");
}

TEST(SystemLogTest, WritesToATerminal) {
    const int controller = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_TRUE(controller >= 0 && grantpt(controller) == 0 && unlockpt(controller) == 0);
    const int terminal = open(ptsname(controller), O_RDWR | O_NOCTTY);
    SystemLog(terminal).log("Fernhop: \x1b[2J");
    char text[100];
    const ssize_t length = read(controller, text, sizeof text);
    EXPECT_EQ(std::string(text, static_cast<std::size_t>(length)), "Fernhop: \\u001B[2J\r\n");
    close(terminal);
    close(controller);
}

TEST(SystemLogTest, WritesToAFile) {
    char path[] = "/tmp/fernhop-log-XXXXXX";
    const int file = mkstemp(path);
    SystemLog(file).log("Fernhop: one");
    SystemLog(file).log("Fernhop: two");
    std::ifstream stream(path);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), "Fernhop: one\nFernhop: two\n");
    close(file);
    unlink(path);
}

TEST(SystemLogTest, WritesNothingToTheJournalsSocket) {
    int both[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, both), 0);
    SystemLog(both[0]).log("Fernhop: once is enough");
    char byte = 0;
    EXPECT_EQ(recv(both[1], &byte, 1, MSG_DONTWAIT), -1);
    close(both[0]);
    close(both[1]);
}

TEST(SystemLogTest, ShortensWhatAPipeWouldNotTakeInOnePiece) {
    Pipe pipe;
    SystemLog(pipe.writer).log("Fernhop: " + std::string(200'000, 'a') + " end");
    const std::string text = pipe.read();
    EXPECT_LE(text.size(), 4096U);
    EXPECT_TRUE(text.ends_with(" end\n"));
    EXPECT_NE(text.find(" bytes ...]"), std::string::npos);
}

TEST(SystemLogTest, DoesNotWaitForAReaderThatDoesNotRead) {
    Pipe pipe;
    SystemLog log(pipe.writer);
    for (int line = 0; line < 1000; ++line)
        log.log("Fernhop: " + std::string(1000, 'x'));
    EXPECT_TRUE(pipe.read().ends_with("x\n")) << "whole lines only";
}

TEST(SystemLogTest, SurvivesAReaderThatHasGone) {
    Pipe pipe;
    close(pipe.reader);
    SystemLog(pipe.writer).log("Fernhop: nobody reads this");
    pipe.reader = -1;
    sigset_t pending{};
    sigpending(&pending);
    EXPECT_FALSE(sigismember(&pending, SIGPIPE));
}

TEST(SystemLogTest, LinesOfSeveralThreadsStayWhole) {
    Pipe pipe;
    SystemLog log(pipe.writer);
    std::vector<std::thread> threads;
    for (char letter = 'a'; letter < 'e'; ++letter) {
        threads.emplace_back([&log, letter] {
            for (int line = 0; line < 20; ++line)
                log.log(std::string(500, letter));
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    const std::string text = pipe.read();
    EXPECT_EQ(text.size(), 4U * 20 * 501);
    for (std::size_t start = 0; start + 501 <= text.size(); start += 501)
        EXPECT_EQ(text.substr(start, 501), std::string(500, text[start]) + "\n");
}

} // namespace
} // namespace fernhop::freedesktop
