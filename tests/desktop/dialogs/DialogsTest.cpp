#include "DialogSession.h"
#include "platform/linux/source/XTestClient.h"
#include "platform/linux/tray/TrayHost.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <optional>
#include <random>
#include <thread>
#include <utility>

namespace fernhop::desktoptest {
namespace {

using freedesktop::GCharPointer;

/// The running Fernhop on a display of its own, with a dialog open.
class Dialogs : public testing::Test {
  protected:
    void SetUp() override {
        if (const auto missing = DialogSession::missing(); !missing.empty())
            GTEST_SKIP() << missing;
        session.emplace();
    }

    bool residentHasToolkit() const {
        std::ifstream maps("/proc/" + std::to_string(session->resident->pid()) + "/maps");
        const std::string text{std::istreambuf_iterator<char>(maps), {}};
        return text.find("libQt") != std::string::npos;
    }

    /// Whether links are routed, the default role is Fernhop's, and a dialog opens.
    void expectEverythingWorks() {
        EXPECT_EQ(session->residentPid(), session->resident->pid()) << session->log();
        EXPECT_TRUE(session->tells({"url-rules", "list"}, "kept.example")) << session->output();
        EXPECT_TRUE(session->tells({"status", "--json"}, "\"routing\": true")) << session->output();
        ASSERT_TRUE(session->open({"feedback"}, feedback)) << session->log();
        EXPECT_TRUE(session->press({"Escape"}));
        EXPECT_TRUE(session->closes(feedback));
    }

    /// A measure of the dialog's window, by its name in what xdotool tells.
    int measure(const std::string &title, const std::string &name) {
        EXPECT_TRUE(
            session->input({"search", "--onlyvisible", "--name", title, "getwindowgeometry", "--shell"}));
        const std::string told = session->output();
        const auto place = told.find(name + "=");
        return place == std::string::npos ? 0 : std::stoi(told.substr(place + name.size() + 1));
    }

    static constexpr const char *feedback = "建议反馈";
    std::optional<DialogSession> session;
};

TEST_F(Dialogs, ResidentNeverLoadsTheToolkit) {
    session->startFernhop();
    ASSERT_EQ(session->fernhop({"url-rules", "add", "one.example", "web"}), 0);
    ASSERT_TRUE(session->tells({"url-rules", "list", "--json"}, "\"id\": \""));
    const std::string list = session->output(), mark = "\"id\": \"";
    const auto start = list.find(mark) + mark.size();
    const std::string id = list.substr(start, list.find('"', start) - start);
    const std::pair<std::vector<std::string>, const char *> all[] = {
        {{"add-url-rule"}, "添加 URL 浏览器规则"},
        {{"edit-url-rule", id}, "修改 URL 浏览器规则"},
        {{"add-app-rules"}, "添加 App 浏览器规则"},
        {{"edit-app-rule", "web"}, "修改浏览器规则"},
        {{"feedback"}, feedback}};
    for (const auto &[words, title] : all) {
        ASSERT_TRUE(session->open(words, title)) << title;
        EXPECT_FALSE(residentHasToolkit()) << title;
        ASSERT_TRUE(session->press({"Escape"}));
        ASSERT_TRUE(session->closes(title));
    }
    EXPECT_FALSE(residentHasToolkit());
}

TEST_F(Dialogs, ResidentShowsWhatWasSaved) {
    session->startFernhop();
    ASSERT_EQ(session->fernhop({"default", "web"}), 0);
    ASSERT_TRUE(session->open({"add-url-rule"}, "添加 URL 浏览器规则"));
    ASSERT_TRUE(session->type("docs.example") && session->press({"Return"}));
    EXPECT_TRUE(session->tells({"url-rules", "list", "--json"}, "\"pattern\": \"docs.example\""));
    EXPECT_TRUE(session->tells({"status", "--json"}, "\"routing\": true")) << "a first rule turns it on";
    freedesktop::Host tray(session->bus->address(), "org.fernhop.Fernhop");
    EXPECT_TRUE(support::waitUntil([&] {
        const auto layout = tray.layout();
        const GCharPointer text(g_variant_print(layout.first.get(), FALSE));
        return std::string(text.get()).find("docs.example") != std::string::npos;
    }));
    EXPECT_TRUE(support::waitUntil([&] { return session->program() == 0; })) << "it ends with its dialog";
}

TEST_F(Dialogs, NothingElseChangesWhenTheProgramIsKilled) {
    session->startFernhop();
    ASSERT_EQ(session->fernhop({"url-rules", "add", "kept.example", "web"}), 0);
    ASSERT_TRUE(session->routeAndRestoreOnQuit());
    const char *asked = std::getenv("FERNHOP_TEST_KILLS");
    const int times = asked ? std::stoi(asked) : 10;
    std::mt19937 random(4711);
    std::uniform_int_distribution<int> milliseconds(0, 250);
    for (int time = 0; time < times; ++time) {
        ASSERT_EQ(session->fernhop({"dialog", time % 2 ? "feedback" : "add-url-rule"}), 0);
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds(random)));
        if (const pid_t program = session->program(); program > 0)
            kill(program, SIGKILL);
    }
    // One that was killed on its way to its dialog is started anew, once.
    int quiet = 0;
    ASSERT_TRUE(support::waitUntil([&] {
        const pid_t program = session->program();
        if (program > 0)
            kill(program, SIGKILL);
        quiet = program > 0 ? 0 : quiet + 1;
        return quiet == 10;
    }));
    expectEverythingWorks();
    EXPECT_EQ(session->fernhop({"quit"}), 0);
    EXPECT_EQ(session->resident->wait(), 0);
    EXPECT_TRUE(session->tells({"status", "--json"}, "\"httpsHandler\": \"web\"")) << session->output();
}

TEST_F(Dialogs, OneThatHangsGivesWayToTheNext) {
    session->startFernhop();
    ASSERT_TRUE(session->open({"add-url-rule"}, "添加 URL 浏览器规则"));
    const pid_t hung = session->program();
    kill(hung, SIGSTOP);
    ASSERT_TRUE(session->open({"feedback"}, feedback)) << session->log();
    EXPECT_NE(session->program(), hung);
    EXPECT_FALSE(session->shows("添加 URL 浏览器规则"));
}

TEST_F(Dialogs, ProgramEndsWithTheResident) {
    for (const int signal : {SIGKILL, SIGTERM}) {
        session.emplace();
        session->startFernhop();
        ASSERT_TRUE(session->open({"feedback"}, feedback));
        session->killResident(signal);
        EXPECT_TRUE(session->closes(feedback)) << signal;
    }
}

TEST_F(Dialogs, WithoutADisplayTheyBeep) {
    session->display->kill();
    for (const char *variable : {"DISPLAY", "WAYLAND_DISPLAY"})
        session->environment[variable] = std::nullopt;
    session->startFernhop();
    EXPECT_EQ(session->fernhop({"dialog", "feedback"}), 0);
    EXPECT_TRUE(support::waitUntil([&] { return session->beeps() == 1; }));
    EXPECT_EQ(session->residentPid(), session->resident->pid());
}

TEST_F(Dialogs, LinksAreRoutedWhileOneIsOpen) {
    session->startFernhop();
    ASSERT_EQ(session->fernhop({"default", "web"}), 0);
    ASSERT_TRUE(session->open({"feedback"}, "建议反馈"));
    EXPECT_EQ(session->LinkSession::open({"https://one.example/"}), 0);
    EXPECT_EQ(session->opened(1), std::vector<std::string>{"https://one.example/"});
    EXPECT_TRUE(session->shows("建议反馈"));
    ASSERT_TRUE(session->press({"Escape"}));
    EXPECT_TRUE(session->closes("建议反馈"));
}

TEST_F(Dialogs, SecondOneBringsTheOpenOneToTheFront) {
    session->startFernhop();
    ASSERT_TRUE(session->open({"add-url-rule"}, "添加 URL 浏览器规则"));
    support::XTestClient client(session->display->name());
    const auto dialog = client.active();
    const auto another = client.window("another", "Another");
    ASSERT_TRUE(support::waitUntil([&] { return client.isManaged(another); }));
    client.activate(another);
    ASSERT_TRUE(support::waitUntil([&] { return client.active() == another; }));
    EXPECT_EQ(session->fernhop({"dialog", "feedback"}), 0);
    EXPECT_TRUE(support::waitUntil([&] { return client.active() == dialog; }));
    EXPECT_FALSE(session->shows("建议反馈"));
    ASSERT_TRUE(session->type("still.the.same") && session->press({"Return"}));
    EXPECT_TRUE(session->tells({"url-rules", "list"}, "still.the.same"));
}

TEST_F(Dialogs, NextOneOpensAfterTheFirstIsClosed) {
    session->startFernhop();
    for (int time = 0; time < 3; ++time) {
        ASSERT_TRUE(session->open({"feedback"}, "建议反馈"));
        ASSERT_TRUE(session->press({"Return"}));
        ASSERT_TRUE(session->closes("建议反馈"));
    }
}

TEST_F(Dialogs, FernhopEndsWithOneOpen) {
    session->startFernhop();
    ASSERT_TRUE(session->open({"add-app-rules"}, "添加 App 浏览器规则"));
    EXPECT_EQ(session->fernhop({"quit"}), 0);
    EXPECT_EQ(session->resident->wait(), 0);
}

TEST_F(Dialogs, FernhopEndsInOrderWithItsDisplay) {
    for (const bool isOpen : {true, false}) {
        session.emplace();
        session->startFernhop();
        ASSERT_TRUE(session->routeAndRestoreOnQuit()) << session->output();
        ASSERT_TRUE(session->open({"feedback"}, "建议反馈"));
        if (!isOpen) {
            ASSERT_TRUE(session->press({"Escape"}));
            ASSERT_TRUE(session->closes("建议反馈"));
        }
        session->display->kill();
        EXPECT_EQ(session->resident->wait(), 0) << session->log();
        EXPECT_TRUE(session->tells({"status", "--json"}, "\"httpsHandler\": \"web\"")) << session->output();
    }
}

TEST_F(Dialogs, DenserScreensShowThemAsLarge) {
    if (!support::isInstalled("xprop"))
        GTEST_SKIP() << "xprop is not installed";
    session->startFernhop();
    ASSERT_TRUE(session->open({"feedback"}, "建议反馈"));
    const int width = measure("建议反馈", "WIDTH"), height = measure("建议反馈", "HEIGHT");
    EXPECT_GE(width, 440);
    EXPECT_GE(height, 250);
    ASSERT_EQ(session->fernhop({"quit"}), 0);
    session->resident->wait();
    // As desktops set their scale; the toolkit wants the tab.
    ASSERT_EQ(session->run({"xprop", "-root", "-f", "RESOURCE_MANAGER", "8s", "-set", "RESOURCE_MANAGER",
                            "Xft.dpi:\t192"}),
              0);
    session->startFernhop();
    ASSERT_TRUE(session->open({"feedback"}, "建议反馈"));
    EXPECT_NEAR(measure("建议反馈", "WIDTH"), 2 * width, 4);
    EXPECT_NEAR(measure("建议反馈", "HEIGHT"), 2 * height, 8);
}

} // namespace
} // namespace fernhop::desktoptest
