#include "Installation.h"
#include "LinkSession.h"
#include "RepeatedSenders.h"
#include "SilentBrowser.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iterator>
#include <memory>
#include <thread>

namespace fernhop::desktoptest {
namespace {

namespace files = std::filesystem;
using Links = std::vector<std::string>;

class Upgrade : public testing::Test {
  protected:
    ~Upgrade() override { session.killResident(SIGKILL); }

    std::string programOfResident() {
        std::error_code error;
        return files::read_symlink("/proc/" + std::to_string(session.residentPid()) + "/exe", error);
    }
    /// Waits until the resident runs the installed program.
    bool isUpgraded() {
        return support::waitUntil([this] { return programOfResident() == session.program("fernhop"); });
    }
    std::string settings() const {
        return wholeFile(session.home.config() + "/mimeapps.list") +
               wholeFile(session.home.config() + "/fernhop/org.fernhop.Fernhop.plist");
    }
    /// Puts a script in the place of the resident's program.
    void replaceByScript(const std::string &text) const {
        const auto path = session.program("fernhop");
        session.home.writeProgram(path + ".new", "#!/bin/sh\n" + text);
        files::rename(path + ".new", path);
    }
    void startFernhop() {
        session.startBus();
        session.startFernhop();
    }
    /// Expects each link to have been opened once.
    void expectOpenedOnce(Links sent) {
        auto opened = session.opened(sent.size());
        std::ranges::sort(opened);
        std::ranges::sort(sent);
        Links lost;
        std::ranges::set_difference(sent, opened, std::back_inserter(lost));
        EXPECT_EQ(lost, Links());
        Links extra;
        std::ranges::set_difference(opened, sent, std::back_inserter(extra));
        EXPECT_EQ(extra, Links()) << "opened twice, or never sent";
    }

    support::TemporaryHome programFiles;
    Installation installation{programFiles.root() + "/installed"};
    LinkSession session{installation.bin()};
};

/// Upgrades several times while links come in all ways at once.
class UpgradeUnderLoad : public Upgrade, public testing::WithParamInterface<Replacement> {
  protected:
    void proceed(bool more) {
        for (const auto &sender : senders)
            sender->proceed(more);
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    Links sent() const {
        Links all;
        for (const auto &sender : senders)
            std::ranges::copy(sender->links(), std::back_inserter(all));
        return all;
    }

    std::vector<std::unique_ptr<Sender>> senders;
};

TEST_P(UpgradeUnderLoad, OpensEachLinkOnceAndRunsTheNewProgram) {
    if (GetParam() == Replacement::rename)
        session.makeActivatable();
    startFernhop();
    ASSERT_TRUE(session.routeAndRestoreOnQuit()) << session.output();
    const auto settingsBefore = settings();
    const Links stub = {session.program("fernhop-open")};
    senders.push_back(std::make_unique<ProgramSender>(session, "stub-1", stub, 127));
    senders.push_back(std::make_unique<ProgramSender>(session, "stub-2", stub, 127));
    // gio ends with success even when it finds no program to give the link to, as while that is being
    // written.
    if (GetParam() == Replacement::rename && support::isInstalled("gio"))
        senders.push_back(std::make_unique<ProgramSender>(session, "gio", Links{"gio", "open"}, 2));
    senders.push_back(std::make_unique<CallSender>(session, "call"));
    for (const char *version : {"1.0.1", "1.0.2", "1.0.3", "1.0.4"}) {
        installation.upgrade(version, GetParam(), [this] { proceed(true); });
        const auto links = sent().size();
        ASSERT_TRUE(support::waitUntil([&] {
            proceed(true);
            return sent().size() > links + 8;
        })) << version;
        ASSERT_TRUE(support::waitUntil([&] {
            proceed(true);
            return programOfResident() == session.program("fernhop");
        })) << version;
    }
    EXPECT_TRUE(support::waitUntil([&] {
        proceed(false);
        return std::ranges::all_of(senders, [](const auto &sender) { return sender->isDone(); });
    }));
    expectOpenedOnce(sent());
    EXPECT_TRUE(isUpgraded());
    EXPECT_EQ(settings(), settingsBefore);
    EXPECT_EQ(session.fernhop({"status"}), 0) << session.output();
    EXPECT_EQ(session.output().find("not running"), std::string::npos) << session.output();
}

INSTANTIATE_TEST_SUITE_P(Replacements, UpgradeUnderLoad,
                         testing::Values(Replacement::rename, Replacement::inPlace),
                         [](const auto &instance) {
                             return instance.param == Replacement::rename ? "ByRename" : "InPlace";
                         });

TEST_F(Upgrade, KeepsItsProcessAndItsEnvironment) {
    session.environment["UPGRADE_TEST"] = "kept";
    startFernhop();
    installation.upgrade("1.0.1", Replacement::rename);
    ASSERT_TRUE(isUpgraded());
    EXPECT_EQ(session.residentPid(), session.resident->pid());
    EXPECT_EQ(session.open({"https://1/"}), 0);
    ASSERT_EQ(session.opened(1), Links{"https://1/"});
    EXPECT_EQ(session.browser.starts()[0].environment["UPGRADE_TEST"], "kept");
}

TEST_F(Upgrade, AProgramThatDoesNotRunIsNotStarted) {
    startFernhop();
    const auto tried = session.home.root() + "/tried";
    replaceByScript("touch '" + tried + "'\nexit 1\n");
    ASSERT_TRUE(support::waitUntil([&] { return files::exists(tried); }));
    EXPECT_EQ(session.open({"https://1/"}), 0) << session.output();
    EXPECT_EQ(session.opened(1), Links{"https://1/"});
    installation.upgrade("1.0.1", Replacement::rename);
    EXPECT_TRUE(isUpgraded());
    EXPECT_EQ(session.residentPid(), session.resident->pid());
}

TEST_F(Upgrade, AProgramThatCannotBeExecutedAfterAllEndsNothing) {
    startFernhop();
    // The new program runs, but is gone when the last link has been opened.
    const BusSender connection(session.bus->address());
    SilentBrowser browser(connection.connection());
    session.home.writeDesktopEntry("org.example.Silent", SilentBrowser::desktopEntry);
    ASSERT_EQ(session.fernhop({"refresh"}), 0) << session.output();
    ASSERT_EQ(session.fernhop({"url-rules", "add", "https://silent", "org.example.Silent"}), 0);
    ASSERT_EQ(session.fernhop({"url-rules", "add", "https://web", "web"}), 0);
    const auto stub = session.start({session.program("fernhop-open"), "https://silent/"});
    ASSERT_TRUE(support::runUntil([&] { return !browser.asked.empty(); }));
    const auto tried = session.home.root() + "/tried";
    replaceByScript("touch '" + tried + "'\n");
    ASSERT_TRUE(support::waitUntil([&] { return files::exists(tried); }));
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    files::remove(session.program("fernhop"));
    browser.answer();
    ASSERT_TRUE(support::runUntil(
        [&] { return session.log().find("No such file or directory") != std::string::npos; }));
    EXPECT_EQ(stub->wait(), 0);
    EXPECT_EQ(session.open({"https://web/"}), 0) << session.output();
    EXPECT_EQ(session.opened(1), Links{"https://web/"});
    EXPECT_EQ(session.residentPid(), session.resident->pid());
    installation.upgrade("1.0.1", Replacement::rename);
    EXPECT_TRUE(isUpgraded());
}

/// A command and a stub of the first version where the resident runs a later one.
class OlderProgram : public Upgrade {
  protected:
    OlderProgram() {
        session.startBus();
        newer.upgrade("1.0.1", Replacement::rename);
        resident = session.start({newer.bin() + "/fernhop"});
        EXPECT_TRUE(support::waitUntil([this] { return session.residentPid() == resident->pid(); }));
    }

    const Installation newer{programFiles.root() + "/newer"};
    std::unique_ptr<support::ChildProcess> resident;
};

TEST_F(OlderProgram, TheStubOpensItsLinksItselfInTheEnd) {
    EXPECT_EQ(session.open({"https://1/", "https://2/"}), 0) << session.output();
    EXPECT_EQ(session.opened(2), (Links{"https://1/", "https://2/"}));
    EXPECT_TRUE(resident->isRunning());
}

TEST_F(OlderProgram, AStubThatIsReplacedWhileItWaitsHandsItsLinksToTheNewOne) {
    const auto stub = session.start({session.program("fernhop-open"), "--", "https://1/"},
                                    {{"XDG_ACTIVATION_TOKEN", "token"}});
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    installation.upgrade("1.0.1", Replacement::inPlace);
    EXPECT_EQ(stub->wait(), 0) << session.output();
    EXPECT_EQ(session.opened(1), Links{"https://1/"});
    EXPECT_EQ(session.browser.starts()[0].environment["XDG_ACTIVATION_TOKEN"], "token");
}

TEST_F(OlderProgram, TheCommandSaysWhatToDo) {
    EXPECT_EQ(session.fernhop({"status"}), 1);
    EXPECT_EQ(session.output(), "fernhop: Another version of Fernhop is running. Quit it from its menu, then "
                                "run this command again.\n");
}

} // namespace
} // namespace fernhop::desktoptest
