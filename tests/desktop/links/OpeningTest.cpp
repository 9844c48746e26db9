#include "LinkSession.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <utility>

namespace fernhop::desktoptest {
namespace {

using Links = std::vector<std::string>;

class Opening : public testing::Test {
  protected:
    Opening() { session.startBus(); }

    LinkSession session;
};

TEST_F(Opening, FromXdgOpen) {
    if (!support::isInstalled("xdg-open"))
        GTEST_SKIP() << "xdg-utils is not installed";
    session.startFernhop();
    // It looks at desktop entries only where DISPLAY is set.
    ASSERT_EQ(session.run({"xdg-open", "https://a/%F0%c3?x|y"}, {{"DISPLAY", ":none"}}), 0)
        << session.output();
    EXPECT_EQ(session.opened(1), Links{"https://a/%F0%c3?x%7Cy"});
}

TEST_F(Opening, FromGioOpen) {
    session.startFernhop();
    ASSERT_EQ(session.run({"gio", "open", "https://a/?x=1&y=2#z"}), 0) << session.output();
    EXPECT_EQ(session.opened(1), Links{"https://a/?x=1&y=2#z"});
}

TEST_F(Opening, FromACallOverTheBus) {
    session.startFernhop();
    ASSERT_EQ(session.run({"gdbus", "call", "--session", "--dest", "org.fernhop.Fernhop", "--object-path",
                           "/org/fernhop/Fernhop", "--method", "org.freedesktop.Application.Open",
                           "['https://1/', 'https://2/']", "{}"}),
              0)
        << session.output();
    EXPECT_EQ(session.opened(2), (Links{"https://1/", "https://2/"}));
}

TEST_F(Opening, FromTheCommandLine) {
    session.startFernhop();
    EXPECT_EQ(session.fernhop({"open", "https://1/", "https://2/"}), 0) << session.output();
    EXPECT_EQ(session.opened(2), (Links{"https://1/", "https://2/"}));
}

TEST_F(Opening, TheSendersTokensReachTheBrowserAndNothingElseOfOurs) {
    session.startFernhop();
    ASSERT_EQ(session.open({"https://1/", "https://2/"},
                           {{"XDG_ACTIVATION_TOKEN", "token"}, {"DESKTOP_STARTUP_ID", "startup"}}),
              0);
    ASSERT_EQ(session.opened(2).size(), 2U);
    const auto starts = session.browser.starts();
    EXPECT_EQ(starts[0].environment.at("XDG_ACTIVATION_TOKEN"), "token");
    EXPECT_EQ(starts[0].environment.at("DESKTOP_STARTUP_ID"), "startup");
    EXPECT_EQ(starts[1].environment.count("XDG_ACTIVATION_TOKEN"), 0U) << "a token is good for one launch";
    EXPECT_EQ(starts[1].environment.at("GIO_LAUNCHED_DESKTOP_FILE"),
              session.home.applications() + "/web.desktop");
    EXPECT_EQ(starts[1].session, starts[1].pid);
}

TEST_F(Opening, TheRuleOfTheUrlDecides) {
    support::RecordingBrowser other(session.home, "other");
    session.home.writeDesktopEntry("other", other.desktopEntry());
    session.startFernhop();
    ASSERT_EQ(session.fernhop({"url-rules", "add", "https://work.*", "web"}), 0) << session.output();
    ASSERT_EQ(session.fernhop({"url-rules", "add", "example", "other"}), 0) << session.output();
    ASSERT_EQ(session.open({"https://work.example/", "https://example.com/"}), 0);
    EXPECT_EQ(session.opened(1), Links{"https://work.example/"});
    EXPECT_TRUE(support::waitUntil([&] { return other.links() == Links{"https://example.com/"}; }));
}

// In a session that does not tell which window is in front.
TEST_F(Opening, TheRuleOfTheSenderDecides) {
    const support::RecordingBrowser first(session.home, "first");
    session.home.writeDesktopEntry("first", first.desktopEntry());
    session.home.writeDesktopEntry("org.example.Chat",
                                   "[Desktop Entry]\nType=Application\nName=Chat\nExec=true\n");
    session.startFernhop();
    ASSERT_EQ(session.fernhop({"app-rules", "set", "org.example.Chat", "web"}), 0) << session.output();
    const auto chat = session.home.applications() + "/org.example.Chat.desktop";
    ASSERT_EQ(session.open({"https://chat/"},
                           {{"GIO_LAUNCHED_DESKTOP_FILE", chat}, {"GIO_LAUNCHED_DESKTOP_FILE_PID", "1"}}),
              0);
    ASSERT_EQ(session.open({"https://nobody/"}), 0);
    EXPECT_EQ(session.opened(1), Links{"https://chat/"});
    EXPECT_TRUE(support::waitUntil([&] { return first.links() == Links{"https://nobody/"}; }));
}

TEST_F(Opening, ABrowserThatIsNotInstalledIsPassedOver) {
    session.startFernhop();
    ASSERT_EQ(session.fernhop({"url-rules", "add", "example", "web"}), 0) << session.output();
    support::RecordingBrowser other(session.home, "other");
    session.home.writeDesktopEntry("other", other.desktopEntry());
    ASSERT_EQ(session.fernhop({"refresh"}), 0) << session.output();
    session.home.writeDesktopEntry("web",
                                   "[Desktop Entry]\nType=Application\nName=web\nHidden=true\nExec=true\n");
    ASSERT_EQ(session.fernhop({"refresh"}), 0) << session.output();
    ASSERT_EQ(session.open({"https://example.com/"}), 0);
    EXPECT_TRUE(support::waitUntil([&] { return other.links() == Links{"https://example.com/"}; }));
}

TEST_F(Opening, WithNoBrowserAtAllALineSaysSo) {
    session.home.writeDesktopEntry("web",
                                   "[Desktop Entry]\nType=Application\nName=web\nHidden=true\nExec=true\n");
    session.startFernhop();
    ASSERT_EQ(session.open({"https://a/%20"}), 1);
    EXPECT_EQ(session.output(), "fernhop-open: \"https://a/%20\" was not opened: no browser can open it.\n");
    EXPECT_NE(session.log().find(
                  "Fernhop: No valid target browser for URL https://a/%20. source=unknown urlRule=none "
                  "appRule=none fallback=none"),
              std::string::npos)
        << session.log();
}

TEST_F(Opening, ABrowserWhoseProgramIsGoneGivesALine) {
    session.home.writeProgram(session.home.root() + "/gone", "#!/nowhere/interpreter\n");
    session.home.writeDesktopEntry(
        "web", "[Desktop Entry]\nType=Application\nName=web\nExec=" + session.home.root() +
                   "/gone %u\nMimeType=x-scheme-handler/https;\n");
    session.startFernhop();
    ASSERT_EQ(session.open({"https://a/"}), 1);
    EXPECT_NE(session.log().find("Fernhop: Failed to open https://a/ with web: " + session.home.root() +
                                 "/gone: No such file or directory"),
              std::string::npos)
        << session.log();
}

TEST_F(Opening, LinksThatFitNoArgumentAreRefusedAndTheOthersOpened) {
    std::string fitsOnlyAsItIs = "https://long/";
    for (int count = 0; count < 60'000; ++count)
        fitsOnlyAsItIs += "\u00fc";
    session.startFernhop();
    EXPECT_EQ(session.open({fitsOnlyAsItIs, "https://1/"}), 0);
    EXPECT_NE(session.log().find("360013 bytes are more than the 131071 that a program can be given"),
              std::string::npos)
        << session.log();
    EXPECT_EQ(session.fernhop({"open", fitsOnlyAsItIs, "https://2/"}), 1);
    EXPECT_NE(session.output().find("it is too long for a program"), std::string::npos);
    EXPECT_EQ(session.opened(2), (Links{"https://1/", "https://2/"}));
}

constexpr const char *interpretingLines[] = {R"(sh -c browser\\ %u)",
                                             "sh -c true;%u",
                                             "sh -c firefox${IFS}%u",
                                             "sh -c %u",
                                             "bash -lc %u",
                                             "sh -ec %u",
                                             "sh -o errexit -c %u",
                                             "sh -c -- %u",
                                             "env FOO=1 sh -c %u",
                                             "env -S \"sh -c\" %u",
                                             "setsid sh -c %u",
                                             "timeout 5 sh -c %u",
                                             "nice -n 5 sh -c %u",
                                             "xargs sh -c %u",
                                             "script -qc %u /dev/null",
                                             R"(sh -c "sh -c \\"\\$1\\"" sh %u)",
                                             R"(sh -c "eval \\"\\$1\\"" sh %u)",
                                             "find /dev/null -exec sh -c %u ;"};

TEST_F(Opening, NoLinkIsRunByAShell) {
    const auto touched = session.home.root() + "/touched";
    session.startFernhop();
    for (const auto *exec : interpretingLines) {
        session.home.writeDesktopEntry("web",
                                       std::string("[Desktop Entry]\nType=Application\nName=web\nExec=") +
                                           exec + "\nMimeType=x-scheme-handler/https;\n");
        ASSERT_EQ(session.fernhop({"refresh"}), 0) << session.output();
        (void)session.open({"https://x/;touch$IFS$()" + touched + ";"});
    }
    EXPECT_FALSE(std::filesystem::exists(touched)) << "the link was run";
    ASSERT_EQ(session.fernhop({"status"}), 0);
    EXPECT_NE(session.output().find("web.desktop is not used as a browser"), std::string::npos)
        << session.output();
    ASSERT_EQ(session.fernhop({"browsers"}), 0);
    EXPECT_EQ(session.output().find("web"), std::string::npos) << session.output();
}

TEST_F(Opening, ExplainSaysThatAShellWouldRunTheLink) {
    ASSERT_EQ(session.fernhop({"url-rules", "add", "example", "web"}), 0) << session.output();
    session.home.writeDesktopEntry(
        "web",
        "[Desktop Entry]\nType=Application\nName=web\nExec=sh -c %u\nMimeType=x-scheme-handler/https;\n");
    ASSERT_EQ(session.fernhop({"explain", "https://example.com/"}), 0);
    EXPECT_NE(
        session.output().find("The URL rule's browser web is not used: its Exec line would let a shell"),
        std::string::npos)
        << session.output();
}

TEST_F(Opening, ALinkMayBeTheArgumentOfAShell) {
    session.home.writeDesktopEntry(
        "web", "[Desktop Entry]\nType=Application\nName=web\nExec=sh -c \"exec " + session.browser.exec() +
                   " \\\\\"\\\\$1\\\\\"\" sh %u\nMimeType=x-scheme-handler/https;\n");
    session.startFernhop();
    const std::string link = "https://x/;touch$IFS$()" + session.home.root() + "/touched;";
    EXPECT_EQ(session.open({link}), 0);
    EXPECT_EQ(session.opened(1), Links{link});
    EXPECT_FALSE(std::filesystem::exists(session.home.root() + "/touched"));
}

/// Browsers of which one cannot be started, by rules.
class Telling : public testing::Test {
  protected:
    Telling() {
        session.home.writeProgram(session.home.root() + "/gone", "#!/nowhere/interpreter\n");
        session.home.writeDesktopEntry(
            "gone", "[Desktop Entry]\nType=Application\nName=Gone\nExec=" + session.home.root() +
                        "/gone %u\nMimeType=x-scheme-handler/https;\n");
        EXPECT_EQ(session.fernhop({"url-rules", "add", "*opens*", "web"}), 0) << session.output();
        EXPECT_EQ(session.fernhop({"url-rules", "add", "*fails*", "gone"}), 0) << session.output();
    }

    [[nodiscard]] std::string failure(const std::string &link) const {
        return "fernhop: \"" + link + "\" was not opened: " + session.home.root() +
               "/gone: No such file or directory.\n";
    }

    LinkSession session;
};

TEST_F(Telling, WithoutABusTheCommandSaysWhatWasNotOpened) {
    EXPECT_EQ(session.fernhop({"open", "https://fails/", "https://opens/", "no URL"}), 1);
    EXPECT_NE(session.output().find("fernhop: \"no URL\" is not a URL.\n"), std::string::npos)
        << session.output();
    EXPECT_NE(session.output().find(failure("https://fails/")), std::string::npos) << session.output();
    EXPECT_EQ(session.output().find("https://opens/\" was"), std::string::npos) << session.output();
    EXPECT_EQ(session.opened(1), Links{"https://opens/"});
}

TEST_F(Telling, TheStubSaysWhatTheRunningFernhopDidNotOpen) {
    session.startBus();
    session.startFernhop();
    EXPECT_EQ(session.open({"https://fails/", "https://opens/", "no URL"}), 0)
        << "calling again would open one twice";
    EXPECT_EQ(session.output(), "fernhop-open: \"https://fails/\" was not opened: " + session.home.root() +
                                    "/gone: No such file or directory.\n"
                                    "fernhop-open: \"no URL\" was not opened: it is not a URL.\n");
    EXPECT_EQ(session.opened(1), Links{"https://opens/"});
    EXPECT_EQ(session.open({"https://fails/", "no URL"}), 1);
}

/// The system's log, for programs that `command` runs with their own /dev.
class SystemLogSocket {
  public:
    explicit SystemLogSocket(std::string socketPath) : path(std::move(socketPath)) {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        isBound = bind(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    }
    ~SystemLogSocket() { close(socket); }
    SystemLogSocket(const SystemLogSocket &) = delete;
    SystemLogSocket &operator=(const SystemLogSocket &) = delete;

    [[nodiscard]] Links command(const Links &program) const {
        Links words = {"unshare", "--mount", "sh", "-c",
                       "mount -t tmpfs none /dev && ln -s " + path + " /dev/log && exec \"$0\" \"$@\""};
        words.insert(words.end(), program.begin(), program.end());
        return words;
    }
    /// The next message; empty when none comes.
    [[nodiscard]] std::string next() const {
        std::string message(1 << 16, '\0');
        pollfd ready{socket, POLLIN, 0};
        const auto wait = std::chrono::milliseconds(support::patience);
        const bool isThere = poll(&ready, 1, static_cast<int>(wait.count())) == 1;
        const auto length = isThere ? recv(socket, message.data(), message.size(), 0) : 0;
        message.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
        return message;
    }

    bool isBound = false;

  private:
    std::string path;
    int socket = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
};

TEST_F(Telling, TheSystemsLogHasWhatTheStubSays) {
    const SystemLogSocket log(session.home.root() + "/log-socket");
    ASSERT_TRUE(log.isBound);
    if (session.run(log.command({"true"})) != 0)
        GTEST_SKIP() << "no mount namespace of our own";
    session.startBus();
    session.startFernhop();
    const auto stub = session.program("fernhop-open");
    EXPECT_EQ(session.run(log.command({stub, "100%% no\x1b URL" + std::string(100'000, 'x')})), 1);
    const auto message = log.next();
    EXPECT_TRUE(message.starts_with("<12>")) << message;
    EXPECT_NE(message.find("fernhop-open["), std::string::npos) << message;
    EXPECT_NE(message.find("]: \"100%% no\\u001B URLxxx"), std::string::npos) << message;
    EXPECT_TRUE(message.ends_with("\" was not opened: it is not a URL.")) << message;
    EXPECT_LT(message.size(), 5000U);
    // More lines than wait in a socket that nobody reads.
    Links many(600, "no URL");
    many.insert(many.begin(), stub);
    EXPECT_EQ(session.run(log.command(many)), 1);
}

TEST_F(Telling, WithAResidentTheCommandSaysWhatWasNotOpened) {
    session.startBus();
    session.startFernhop();
    EXPECT_EQ(session.fernhop({"open", "https://fails/", "https://opens/", "no URL"}), 1);
    EXPECT_NE(session.output().find("fernhop: \"no URL\" is not a URL.\n"), std::string::npos)
        << session.output();
    EXPECT_NE(session.output().find(failure("https://fails/")), std::string::npos) << session.output();
    EXPECT_EQ(session.output().find("https://opens/\" was"), std::string::npos) << session.output();
    EXPECT_EQ(session.opened(1), Links{"https://opens/"});
}

TEST_F(Telling, InPlaceOfTheStubTheStatusSaysWhetherAnyLinkIsInSafeHands) {
    const auto open = [&](const Links &links) {
        std::vector<std::string> words{"--without-bus", "--"};
        words.insert(words.end(), links.begin(), links.end());
        return session.fernhop(words);
    };
    EXPECT_EQ(open({"https://fails/", "https://opens/"}), 0);
    EXPECT_NE(session.output().find(failure("https://fails/")), std::string::npos) << session.output();
    EXPECT_EQ(session.opened(1), Links{"https://opens/"});
    EXPECT_EQ(open({"https://fails/"}), 1);
    EXPECT_NE(session.output().find(failure("https://fails/")), std::string::npos) << session.output();
}

} // namespace
} // namespace fernhop::desktoptest
