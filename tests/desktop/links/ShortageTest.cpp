#include "LinkSession.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <set>

namespace fernhop::desktoptest {
namespace {

using Links = std::vector<std::string>;

Links numberedLinks(int count) {
    Links links;
    for (int number = 0; number < count; ++number)
        links.push_back("https://shortage.example/" + std::to_string(number));
    return links;
}

/// A browser of one process, which writes its link down and runs on for a while.
class SlowBrowser {
  public:
    explicit SlowBrowser(const support::TemporaryHome &home) : record(home.runtime() + "/opened") {
        const auto program = home.root() + "/slow";
        home.writeProgram(program, "#!/bin/sh\necho \"$1\" >>" + record + "\nexec sleep 0.2\n");
        home.writeDesktopEntry("web", "[Desktop Entry]\nType=Application\nName=slow\nExec=" + program +
                                          " %u\nMimeType=x-scheme-handler/http;x-scheme-handler/https;\n");
    }

    /// Waits until each link was opened; whether all were, none twice.
    [[nodiscard]] testing::AssertionResult hasOpenedOnce(const Links &links) const {
        (void)support::waitUntil([&] { return opened().size() >= links.size(); });
        const auto found = opened();
        if (found == std::multiset<std::string>(links.begin(), links.end()))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << found.size() << " of " << links.size();
    }

  private:
    [[nodiscard]] std::multiset<std::string> opened() const {
        std::multiset<std::string> links;
        std::ifstream lines(record);
        for (std::string line; std::getline(lines, line);)
            links.insert(line);
        return links;
    }

    std::string record;
};

TEST(Shortage, WithFewDescriptorsEveryLinkIsOpened) {
    LinkSession session;
    session.startBus();
    const SlowBrowser browser(session.home);
    session.resident = session.start({"prlimit", "--nofile=20", session.program("fernhop")});
    ASSERT_TRUE(support::waitUntil([&] { return session.residentPid() == session.resident->pid(); }));
    const auto links = numberedLinks(60);
    EXPECT_EQ(session.open(links), 0);
    EXPECT_EQ(session.output(), "");
    EXPECT_TRUE(browser.hasOpenedOnce(links));
}

/// A process of a user who has no others, so that only its own count.
std::unique_ptr<support::ChildProcess> startWithFewProcesses(const support::TemporaryHome &home, uid_t user,
                                                             int limit, const Links &links) {
    support::Command command{
        {"prlimit", "--nproc=" + std::to_string(limit), support::buildFolder() + "/bin/fernhop-open"},
        home.environment(),
        home.root() + "/output"};
    command.arguments.insert(command.arguments.end(), links.begin(), links.end());
    command.environment["DBUS_SESSION_BUS_ADDRESS"] = std::nullopt;
    command.user = user;
    return std::make_unique<support::ChildProcess>(command);
}

TEST(Shortage, WithFewProcessesEveryLinkIsOpened) {
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can run programs as a user who has no other processes";
    if (FERNHOP_SANITIZED)
        GTEST_SKIP() << "the sanitizers need a process of their own";
    const auto user = static_cast<uid_t>(200'000 + getpid() % 100'000);
    const support::TemporaryHome home(user);
    const SlowBrowser browser(home);
    const auto links = numberedLinks(20);
    EXPECT_EQ(startWithFewProcesses(home, user, 6, links)->wait(), 0);
    EXPECT_TRUE(browser.hasOpenedOnce(links));
}

} // namespace
} // namespace fernhop::desktoptest
