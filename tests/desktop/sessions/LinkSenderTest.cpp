#include "DesktopSession.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

namespace fernhop::desktoptest {
namespace {

using Links = std::vector<std::string>;

/// A session that tells nobody which window is in front. Chat is started as desktops start applications.
class LinkSender : public testing::Test {
  protected:
    void SetUp() override { session.begin({}); }

    /// Lets Chat run a line of shell. GIO starts it, as it takes links of a kind of its own.
    void chatRuns(const std::string &line) {
        const auto program = session.home.root() + "/bin/chat";
        session.home.writeProgram(program, "#!/bin/sh\n" + line + "\n");
        session.home.writeDesktopEntry(DesktopSession::chat,
                                       "[Desktop Entry]\nType=Application\nName=Chat\nExec=" + program +
                                           " %u\nMimeType=x-scheme-handler/chat;\n");
        session.home.write(session.home.root() + "/etc/mimeapps.list",
                           "[Default Applications]\nx-scheme-handler/chat=org.example.Chat.desktop\n");
        ASSERT_EQ(session.run({"gio", "open", "chat:start"}), 0) << session.output();
    }

    void expectFromChat() {
        EXPECT_EQ(linksOf(session.chatBrowser, 1), Links{"https://chat/"}) << session.log();
        EXPECT_EQ(session.browser.links(), Links{});
        EXPECT_EQ(session.status()["source"], DesktopSession::chat);
    }

    DesktopSession session;
};

TEST_F(LinkSender, IsKnownFromGioOpen) {
    EXPECT_EQ(session.status()["sourceProvider"], "link sender");
    chatRuns("gio open https://chat/");
    expectFromChat();
}

TEST_F(LinkSender, IsKnownFromXdgOpen) {
    if (!support::isInstalled("xdg-open"))
        GTEST_SKIP() << "xdg-utils is not installed";
    chatRuns("DISPLAY=:none xdg-open https://chat/");
    expectFromChat();
}

TEST_F(LinkSender, IsKnownFromACallOverTheBus) {
    chatRuns("gdbus call --session --dest org.fernhop.Fernhop --object-path /org/fernhop/Fernhop "
             "--method org.freedesktop.Application.Open \"['https://chat/']\" '{}'");
    expectFromChat();
}

TEST_F(LinkSender, IsNotTakenForTheSenderOfTheNextLink) {
    chatRuns("gio open https://chat/");
    expectFromChat();
    ASSERT_EQ(session.run({"gio", "open", "https://nobody/"}), 0) << session.output();
    EXPECT_EQ(linksOf(session.browser, 1), Links{"https://nobody/"});
    EXPECT_EQ(session.chatBrowser.links(), Links{"https://chat/"});
}

} // namespace
} // namespace fernhop::desktoptest
