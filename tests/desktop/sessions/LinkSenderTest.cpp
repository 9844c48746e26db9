#include "DesktopSession.h"
#include "platform/linux/source/XTestClient.h"
#include "support/PrivateDisplay.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>
#include <signal.h>

namespace fernhop::desktoptest {
namespace {

using Links = std::vector<std::string>;

/// The application that runs the program which opens a link.
class LinkSender : public testing::Test {
  protected:
    /// Writes Chat's program and the entry that names it.
    void writeChat(const std::string &script) {
        session.home.writeProgram(program, "#!/bin/sh\n" + script + "\n");
        session.home.writeDesktopEntry(DesktopSession::chat,
                                       "[Desktop Entry]\nType=Application\nName=Chat\nExec=" + program +
                                           " %u\nMimeType=x-scheme-handler/chat;\n");
    }

    /// Chat runs a line of shell. GIO starts it as desktops do, by a link of a kind of its own.
    void chatRuns(const std::string &line) {
        writeChat(line);
        session.home.write(session.home.root() + "/etc/mimeapps.list",
                           "[Default Applications]\nx-scheme-handler/chat=org.example.Chat.desktop\n");
        ASSERT_EQ(session.run({"gio", "open", "chat:start"}), 0) << session.output();
    }

    /// Chat, started without GIO, runs Fernhop's program for links.
    int chatOpens(const std::string &link, const support::Environment &more = {}) {
        writeChat("\"$@\"\nexit 0");
        return session.run({program, session.program("fernhop-open"), link}, more);
    }

    void expectFromChat() {
        EXPECT_EQ(linksOf(session.chatBrowser, 1), Links{"https://chat/"}) << session.log();
        EXPECT_EQ(session.browser.links(), Links{});
        EXPECT_EQ(session.status()["source"], DesktopSession::chat);
    }

    DesktopSession session;
    const std::string program = session.home.root() + "/bin/chat";
};

TEST_F(LinkSender, IsKnownFromGioOpen) {
    session.begin({});
    EXPECT_EQ(session.status()["sourceProvider"], "link sender");
    chatRuns("gio open https://chat/");
    expectFromChat();
}

TEST_F(LinkSender, IsKnownFromXdgOpen) {
    if (!support::isInstalled("xdg-open"))
        GTEST_SKIP() << "xdg-utils is not installed";
    session.begin({});
    chatRuns("DISPLAY=:none xdg-open https://chat/");
    expectFromChat();
}

TEST_F(LinkSender, IsKnownFromACallOverTheBus) {
    session.begin({});
    chatRuns("gdbus call --session --dest org.fernhop.Fernhop --object-path /org/fernhop/Fernhop "
             "--method org.freedesktop.Application.Open \"['https://chat/']\" '{}'");
    expectFromChat();
}

TEST_F(LinkSender, IsNotTakenForTheSenderOfTheNextLink) {
    session.begin({});
    chatRuns("gio open https://chat/");
    expectFromChat();
    ASSERT_EQ(session.run({"gio", "open", "https://nobody/"}), 0) << session.output();
    EXPECT_EQ(linksOf(session.browser, 1), Links{"https://nobody/"});
    EXPECT_EQ(session.chatBrowser.links(), Links{"https://chat/"});
}

TEST_F(LinkSender, IsKnownFromItsProcesses) {
    session.begin({});
    EXPECT_EQ(chatOpens("https://chat/"), 0) << session.output();
    expectFromChat();
}

TEST_F(LinkSender, IsKnownWithoutABus) {
    session.begin({});
    EXPECT_EQ(chatOpens("https://chat/", {{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere"}}), 0);
    EXPECT_EQ(linksOf(session.chatBrowser, 1), Links{"https://chat/"}) << session.output();
}

TEST_F(LinkSender, IsUsedWhereTheFocusedWindowIsUnknown) {
    if (!support::PrivateDisplay::isAvailable())
        GTEST_SKIP() << "Xvfb or openbox is not installed";
    const support::PrivateDisplay display(session.home);
    support::XTestClient windows(display.name());
    session.begin(display.environment());
    windows.window("org.example.mail", DesktopSession::mail);
    ASSERT_TRUE(session.sourceBecomes(DesktopSession::mail)) << session.output();
    const auto unknown = windows.window("nobody", "Nobody");
    ASSERT_TRUE(support::waitUntil([&] { return windows.active() == unknown; }));
    // Mail is the source until the resident has received the change of focus, too.
    EXPECT_TRUE(support::waitUntil([&] {
        EXPECT_EQ(chatOpens("https://chat/"), 0) << session.output();
        return !session.chatBrowser.links().empty();
    }));
}

TEST_F(LinkSender, IsUsedWhileTheDisplayDoesNotAnswer) {
    if (!support::PrivateDisplay::isAvailable())
        GTEST_SKIP() << "Xvfb or openbox is not installed";
    support::PrivateDisplay display(session.home);
    support::XTestClient windows(display.name());
    session.begin(display.environment());
    windows.window("org.example.mail", DesktopSession::mail);
    ASSERT_TRUE(session.sourceBecomes(DesktopSession::mail)) << session.output();
    display.stop();
    EXPECT_EQ(chatOpens("https://chat/"), 0) << session.output();
    EXPECT_EQ(linksOf(session.chatBrowser, 1), Links{"https://chat/"}) << session.log();
    EXPECT_EQ(session.status()["sourceProvider"], "link sender");
    display.resume();
    EXPECT_TRUE(support::waitUntil([&] { return session.status()["sourceProvider"] == "x11"; }));
    EXPECT_EQ(chatOpens("https://mail/"), 0) << session.output();
    EXPECT_EQ(linksOf(session.mailBrowser, 1), Links{"https://mail/"}) << "the focus counts again";
}

TEST_F(LinkSender, IsKnownAfterTheEndOfTheDisplay) {
    if (!support::PrivateDisplay::isAvailable())
        GTEST_SKIP() << "Xvfb or openbox is not installed";
    support::PrivateDisplay display(session.home);
    session.begin(display.environment());
    display.kill();
    EXPECT_EQ(chatOpens("https://chat/"), 0) << session.output();
    EXPECT_EQ(linksOf(session.chatBrowser, 1), Links{"https://chat/"}) << session.output();
    session.killResident(SIGTERM); // the one that was started for the link
}

} // namespace
} // namespace fernhop::desktoptest
