#include "platform/linux/launch/ChildProcesses.h"

#include "support/RecordingBrowser.h"
#include "support/TemporaryHome.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

namespace fernhop::freedesktop {
namespace {

using support::RecordingBrowser;
using support::TemporaryHome;

class SpawnTest : public testing::Test {
  protected:
    SpawnRequest request(const std::vector<std::string> &links) {
        SpawnRequest made{{RecordingBrowser::program(), home.root() + "/browser.record"}, environment};
        made.arguments.insert(made.arguments.end(), links.begin(), links.end());
        return made;
    }

    pid_t run(const SpawnRequest &asked) {
        const auto child = spawn(asked);
        if (!child)
            return -1;
        int status = 0;
        EXPECT_EQ(waitpid(*child, &status, 0), *child);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
        return *child;
    }

    int errorOf(const SpawnRequest &asked) {
        const auto child = spawn(asked);
        return child ? 0 : child.failure().errorNumber;
    }

    TemporaryHome home;
    RecordingBrowser browser{home, "browser"};
    Environment environment{{"PATH=" + home.root() + "/bin", "GREETING=hello"}};
};

TEST_F(SpawnTest, HandsOverArgumentsAsTheyAre) {
    const std::vector<std::string> links = {"",    "-x",       "a b\n'\"\\`$(x)`;|&",
                                            "%F0", "\xff\xfe", std::string(100'000, 'x')};
    ASSERT_GT(run(request(links)), 0);
    EXPECT_EQ(browser.starts().at(0).arguments, links);
}

TEST_F(SpawnTest, GivesExactlyTheEnvironmentAsked) {
    const pid_t child = run(request({}));
    const std::map<std::string, std::string> expected = {
        {"PATH", home.root() + "/bin"},
        {"GREETING", "hello"},
        {"GIO_LAUNCHED_DESKTOP_FILE_PID", std::to_string(child)}};
    EXPECT_EQ(browser.starts().at(0).environment, expected);
}

TEST_F(SpawnTest, TheChildsPidReplacesAnInheritedOne) {
    auto asked = request({});
    asked.environment.set("GIO_LAUNCHED_DESKTOP_FILE_PID", "1");
    const pid_t child = run(asked);
    EXPECT_EQ(browser.starts().at(0).environment.at("GIO_LAUNCHED_DESKTOP_FILE_PID"), std::to_string(child));
}

TEST_F(SpawnTest, TheChildLeadsASessionOfItsOwn) {
    const pid_t child = run(request({}));
    EXPECT_EQ(browser.starts().at(0).session, child);
}

TEST_F(SpawnTest, RunsInTheWorkingDirectory) {
    auto asked = request({});
    asked.workingDirectory = home.home();
    run(asked);
    EXPECT_EQ(browser.starts().at(0).folder, home.home());
}

TEST_F(SpawnTest, NoDescriptorLeaks) {
    const int leaky = open("/dev/zero", O_RDONLY);
    const int high = fcntl(leaky, F_DUPFD, 500);
    run(request({}));
    const auto started = browser.starts().at(0);
    for (const auto &descriptor : started.descriptors)
        EXPECT_TRUE(descriptor.starts_with("0:/dev/null") || descriptor.starts_with("1:") ||
                    descriptor.starts_with("2:"))
            << descriptor;
    close(high);
    close(leaky);
}

TEST_F(SpawnTest, ResetsSignals) {
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    sigaddset(&blocked, SIGUSR1);
    sigprocmask(SIG_BLOCK, &blocked, &before);
    const auto pipeBefore = signal(SIGPIPE, SIG_IGN);
    run(request({}));
    signal(SIGPIPE, pipeBefore);
    sigset_t after;
    sigprocmask(SIG_SETMASK, &before, &after);
    EXPECT_TRUE(browser.starts().at(0).blockedSignals.empty());
    EXPECT_TRUE(browser.starts().at(0).ignoredSignals.empty());
    EXPECT_TRUE(sigismember(&after, SIGTERM)) << "this process's mask is unchanged";
}

TEST_F(SpawnTest, ReportsWhyAProgramCannotRun) {
    EXPECT_EQ(errorOf({}), ENOENT);
    EXPECT_EQ(errorOf({{"/nowhere/browser"}, environment}), ENOENT);
    EXPECT_EQ(errorOf({{"browser-of-no-path"}, environment}), ENOENT);
    EXPECT_EQ(errorOf({{home.home()}, environment}), EACCES);
    home.write(home.root() + "/plain", "text");
    EXPECT_EQ(errorOf({{home.root() + "/plain"}, environment}), EACCES);
    home.writeProgram(home.root() + "/broken", "#!/nowhere/interpreter\n");
    EXPECT_EQ(errorOf({{home.root() + "/broken"}, environment}), ENOENT);
    home.writeProgram(home.root() + "/bare", "echo no interpreter is named\n");
    EXPECT_EQ(errorOf({{home.root() + "/bare"}, environment}), ENOEXEC);
}

TEST_F(SpawnTest, ReportsAMissingWorkingDirectory) {
    auto asked = request({});
    asked.workingDirectory = "/nowhere";
    EXPECT_EQ(errorOf(asked), ENOENT);
    EXPECT_TRUE(browser.starts().empty());
}

TEST_F(SpawnTest, ReportsAnArgumentThatIsTooLong) {
    EXPECT_EQ(errorOf(request({std::string(200'000, 'x')})), E2BIG);
    EXPECT_TRUE(browser.starts().empty());
}

TEST_F(SpawnTest, SearchesThePathInOrder) {
    home.write(home.root() + "/first/tool", "not executable");
    home.writeProgram(home.root() + "/second/tool", "");
    home.writeProgram(home.root() + "/third/tool", "");
    const auto path = home.root() + "/first:" + home.root() + "/second:" + home.root() + "/third";
    EXPECT_EQ(*findProgram("tool", path), home.root() + "/second/tool");
    EXPECT_EQ(*findProgram("/a/tool", path), "/a/tool");
    EXPECT_EQ(findProgram("tool", home.root() + "/first").failure().errorNumber, EACCES);
    EXPECT_EQ(findProgram("other", path).failure().errorNumber, ENOENT);
    EXPECT_EQ(findProgram("", path).failure().errorNumber, ENOENT);
}

TEST_F(SpawnTest, NeverSearchesTheCurrentFolder) {
    home.writeProgram(home.root() + "/tool", "");
    ASSERT_EQ(chdir(home.root().c_str()), 0);
    EXPECT_EQ(findProgram("tool", ":.:/nowhere").failure().errorNumber, ENOENT);
    ASSERT_EQ(chdir("/"), 0);
}

using namespace std::chrono_literals;

// The encoding of wait statuses on Linux: the exit status in the second byte, the signal in the first.
int exited(int status) {
    return status << 8;
}

/// Why a launch failed; empty when it did not.
std::string failureOf(int waitStatus, std::chrono::nanoseconds lived) {
    const auto failure = launchFailure(waitStatus, lived);
    return failure ? failure->reason : std::string();
}

TEST(LaunchFailure, AnEndWithoutErrorIsNone) {
    EXPECT_EQ(failureOf(exited(0), 0ns), "");
    EXPECT_EQ(failureOf(exited(0), 1h), "");
}

TEST(LaunchFailure, ProgramsThatCouldNotRunFailed) {
    EXPECT_EQ(failureOf(exited(126), 1ms), "Permission denied");
    EXPECT_EQ(failureOf(exited(127), 1ms), "No such file or directory");
    EXPECT_EQ(failureOf(exited(255), 1ms), "The program ended with exit status 255");
}

TEST(LaunchFailure, ASignalSoonAfterTheStartFailed) {
    EXPECT_EQ(failureOf(SIGSEGV, 1s), "Segmentation fault");
    EXPECT_EQ(failureOf(SIGABRT | 0x80, 1s), "Aborted") << "with a core dump";
}

TEST(LaunchFailure, OtherStatusesAreNone) {
    EXPECT_EQ(failureOf(exited(1), 1ms), "");
}

TEST(LaunchFailure, AnEndLaterOnIsNone) {
    EXPECT_EQ(failureOf(exited(255), earlyExitWindow), "The program ended with exit status 255");
    EXPECT_EQ(failureOf(exited(255), earlyExitWindow + 1ns), "");
    EXPECT_EQ(failureOf(SIGKILL, 1h), "");
}

} // namespace
} // namespace fernhop::freedesktop
