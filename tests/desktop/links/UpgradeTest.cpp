#include "BusSender.h"
#include "LinkSession.h"
#include "SilentBrowser.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <sstream>
#include <thread>

namespace fernhop::desktoptest {
namespace {

namespace files = std::filesystem;
using Links = std::vector<std::string>;

std::string wholeFile(const std::string &path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

/// How an installation puts a file in the place of another.
enum class Replacement {
    rename,  ///< under another name first, as dpkg does
    inPlace, ///< removed, written in steps and then made executable, as `cmake --install` does
};

/// Fernhop in a folder of its own, in versions that differ in nothing else.
class Installation {
  public:
    explicit Installation(std::string folder) : prefix(std::move(folder)) {
        for (const auto &file : programFiles())
            install(file, "1.0.0", Replacement::rename, [] {});
        files::create_directories(prefix + "/share");
        files::copy(support::buildFolder() + "/share/fernhop", prefix + "/share/fernhop",
                    files::copy_options::recursive);
    }

    /// Replaces each program by another version of it, such as "1.0.7"; calls `meanwhile` again and again.
    void upgrade(
        const std::string &version, Replacement replacement,
        const std::function<void()> &meanwhile = [] {}) const {
        for (const auto &file : programFiles())
            install(file, version, replacement, meanwhile);
    }

    [[nodiscard]] std::string bin() const { return prefix + "/bin"; }

  private:
    static Links programFiles() {
        Links found;
        for (const char *folder : {"bin", "lib/fernhop"})
            for (const auto &entry : files::directory_iterator(support::buildFolder() + "/" + folder))
                if (entry.is_regular_file())
                    found.push_back(std::string(folder) + '/' + entry.path().filename().string());
        return found;
    }

    static std::string inVersion(std::string bytes, const std::string &version) {
        const std::string mark = "Fernhop version ";
        for (auto at = bytes.find(mark); at != std::string::npos; at = bytes.find(mark, at + 1))
            if (bytes.compare(at + mark.size(), 5, "1.0.0") == 0)
                bytes.replace(at + mark.size(), 5, version);
        return bytes;
    }

    void install(const std::string &file, const std::string &version, Replacement replacement,
                 const std::function<void()> &meanwhile) const {
        const auto target = prefix + '/' + file;
        const auto bytes = inVersion(wholeFile(support::buildFolder() + "/" + file), version);
        const auto written = target + (replacement == Replacement::rename ? ".new" : "");
        files::create_directories(files::path(target).parent_path());
        files::remove(written);
        constexpr std::size_t steps = 4;
        for (std::size_t step = 0; step < steps; ++step) {
            meanwhile();
            const auto from = bytes.size() * step / steps;
            std::ofstream(written, std::ios::binary | std::ios::app)
                .write(bytes.data() + from,
                       static_cast<std::streamsize>(bytes.size() * (step + 1) / steps - from));
        }
        files::permissions(written, files::perms{0755});
        if (written != target)
            files::rename(written, target);
        meanwhile();
    }

    std::string prefix;
};

/// Opens one link after the other in one way.
class Sender {
  public:
    Sender(LinkSession &linkSession, std::string senderName)
        : session(linkSession), name(std::move(senderName)) {}
    virtual ~Sender() = default;

    /// Starts to open the next link when the last one has been opened; `more` is whether there is a next.
    void proceed(bool more) {
        if (opening && isOpening())
            return;
        const bool again = opening && !wasTaken();
        if (opening && !again)
            ++sent;
        opening = more || again;
        if (opening)
            open("https://" + name + "/" + std::to_string(sent));
    }

    [[nodiscard]] bool isDone() const { return !opening; }

    [[nodiscard]] Links links() const {
        Links all;
        for (int number = 0; number < sent; ++number)
            all.push_back("https://" + name + "/" + std::to_string(number));
        return all;
    }

  protected:
    virtual void open(const std::string &link) = 0;
    virtual bool isOpening() = 0;
    /// Whether Fernhop got the link. Else there was no program to take it, and it may be sent again.
    virtual bool wasTaken() = 0;

    LinkSession &session;

  private:
    std::string name;
    bool opening = false;
    int sent = 0;
};

/// Opens links by a program.
class ProgramSender : public Sender {
  public:
    ProgramSender(LinkSession &linkSession, const std::string &senderName, Links program, int absent)
        : Sender(linkSession, senderName), command(std::move(program)), absentStatus(absent) {}

  private:
    void open(const std::string &link) override {
        auto arguments = command;
        arguments.push_back(link);
        current = link;
        process = session.start(arguments);
    }
    // Not every program waits until the link has been opened. Fernhop may wait a second for gio's signal
    // about its launch, so such a program could send faster than links are opened.
    bool isOpening() override {
        if (process->isRunning() || std::chrono::steady_clock::now() < nextLook)
            return true;
        nextLook = std::chrono::steady_clock::now() + std::chrono::milliseconds(100);
        const auto opened = session.browser.links();
        return process->wait() == 0 && std::ranges::find(opened, current) == opened.end();
    }
    bool wasTaken() override {
        const int status = process->wait();
        EXPECT_TRUE(status == 0 || status == absentStatus) << command[0] << " ended with " << status;
        return status != absentStatus;
    }

    Links command;
    int absentStatus; ///< the exit status when fernhop-open is not there
    std::unique_ptr<support::ChildProcess> process;
    std::string current; ///< the link that is being opened
    std::chrono::steady_clock::time_point nextLook;
};

/// Opens links as an application does that calls over the bus by itself.
class CallSender : public Sender {
  public:
    CallSender(LinkSession &linkSession, const std::string &senderName)
        : Sender(linkSession, senderName), connection(linkSession.bus->address()) {}

  private:
    void open(const std::string &link) override {
        answer.reset();
        const char *links[] = {link.c_str(), nullptr};
        g_dbus_connection_call(
            connection.connection(), "org.fernhop.Fernhop", "/org/fernhop/Fernhop",
            "org.freedesktop.Application", "Open",
            g_variant_new("(^as@a{sv})", links, g_variant_new_array(G_VARIANT_TYPE("{sv}"), nullptr, 0)),
            nullptr, G_DBUS_CALL_FLAGS_NONE, G_MAXINT, nullptr, answered, this);
    }
    bool isOpening() override {
        while (g_main_context_iteration(nullptr, FALSE)) {
        }
        return !answer;
    }
    bool wasTaken() override {
        const bool absent = *answer == "org.freedesktop.DBus.Error.ServiceUnknown" ||
                            answer->starts_with("org.freedesktop.DBus.Error.Spawn.");
        EXPECT_TRUE(answer->empty() || absent) << *answer;
        return !absent;
    }
    static void answered(GObject *bus, GAsyncResult *result, gpointer self) {
        GError *error = nullptr;
        const freedesktop::GVariantPointer reply(
            g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &error));
        const freedesktop::GErrorPointer failure(error);
        const freedesktop::GCharPointer name(failure ? g_dbus_error_get_remote_error(failure.get())
                                                     : nullptr);
        static_cast<CallSender *>(self)->answer = failure ? (name ? name.get() : failure->message) : "";
    }

    BusSender connection;
    std::optional<std::string> answer; ///< the error of the call; empty: it went well; nothing: none yet
};

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
