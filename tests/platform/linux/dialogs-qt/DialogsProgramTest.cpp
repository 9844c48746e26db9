#include "platform/linux/dialogs-qt/DialogsProgram.h"

#include "support/Folders.h"
#include "support/MainLoop.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <vector>

namespace fernhop::freedesktop {
namespace {

/// The resident's side, with the program that was built or with a script in its place.
class DialogsProgramTest : public testing::Test {
  protected:
    [[nodiscard]] std::unique_ptr<DialogsProgram>
    dialogs(const std::string &path, std::chrono::milliseconds patience = std::chrono::hours(1)) {
        return std::make_unique<DialogsProgram>(
            path, patience,
            DialogsProgram::Callbacks{[this] { ++changes; }, [this] { ++beeps; },
                                      [this](const auto &selector, const auto &identifier) {
                                          performed.push_back(selector + " " + identifier);
                                      },
                                      [this](const auto &reason, bool couldNotOpen) {
                                          failures.push_back(reason);
                                          notOpened += couldNotOpen ? 1 : 0;
                                      }});
    }
    /// A program of these lines of Python, where `resident` is the connection and `said()` what comes next.
    [[nodiscard]] std::string script(const std::string &lines) {
        const std::string path = home.root() + "/program";
        home.writeProgram(path,
                          "#!/usr/bin/python3\n"
                          "import os, socket, sys, time\n"
                          "resident = socket.socket(fileno=0)\n"
                          "started = open('" +
                              home.root() +
                              "/started', 'a')\n"
                              "print(file=started, flush=True)\n"
                              "def said(): return resident.recv(1000).decode().split('\\0')\n"
                              "def answer(request): resident.send(b'handled\\0' + request[-1].encode())\n" +
                              lines);
        return path;
    }
    [[nodiscard]] std::size_t starts() const { return std::filesystem::file_size(home.root() + "/started"); }
    [[nodiscard]] bool becomes(const auto &condition) { return support::runUntil(condition); }

    support::TemporaryHome home;
    int changes = 0, beeps = 0, notOpened = 0;
    std::vector<std::string> performed, failures;
};

TEST_F(DialogsProgramTest, MissingProgramCannotOpen) {
    const auto program = dialogs("/nonexistent/program");
    program->open("showFeedbackDialog", "", "");
    program->open("showFeedbackDialog", "", "");
    EXPECT_EQ(notOpened, 2);
}

TEST_F(DialogsProgramTest, WithoutADisplayNothingOpens) {
    for (const char *variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        unsetenv(variable);
    const auto program = dialogs(support::buildFolder() + "/lib/fernhop/fernhop-dialogs");
    program->open("showFeedbackDialog", "", "");
    EXPECT_TRUE(becomes([this] { return notOpened == 1; }));
    setenv("DISPLAY", ":4711", 1);
    setenv("WAYLAND_DISPLAY", "wayland-that-is-not-there", 1);
    program->open("showFeedbackDialog", "", "");
    EXPECT_TRUE(becomes([this] { return notOpened == 2; }));
    EXPECT_EQ(failures.size(), 2U);
}

TEST_F(DialogsProgramTest, TellsTheProgramWhatToShowAndDoesWhatItAsks) {
    const auto program = dialogs(script("appearance, request = said(), said()\n"
                                        "answer(request)\n"
                                        "later = said()\n"
                                        "resident.send(b'beep')\n"
                                        "resident.send('\\0'.join(['perform', request[1], "
                                        "'|'.join(request[2:-1] + appearance[1:] + later[1:])]).encode())\n"
                                        "resident.send(b'changed')\n"));
    program->setAppearance(ui::AppearanceName::darkAqua);
    program->open("editURLRule:", "rule", "token");
    program->setAppearance(std::nullopt);
    EXPECT_TRUE(becomes([this] { return changes == 1; }));
    EXPECT_EQ(beeps, 1);
    EXPECT_EQ(performed, std::vector<std::string>{"editURLRule: rule|token|dark|"});
    EXPECT_TRUE(failures.empty());
}

TEST_F(DialogsProgramTest, RequestThatComesWhileTheProgramEndsIsOpenedByTheNext) {
    const auto program = dialogs(script("said(), answer(said())\n"
                                        "resident.send(b'beep')\n"
                                        "time.sleep(0.2)\n"));
    program->open("showFeedbackDialog", "", "");
    ASSERT_TRUE(becomes([this] { return beeps == 1; }));
    program->open("showFeedbackDialog", "", "");
    EXPECT_TRUE(becomes([this] { return beeps == 2; }));
    EXPECT_EQ(starts(), 2U);
    EXPECT_TRUE(failures.empty());
}

TEST_F(DialogsProgramTest, AnswerToAnEarlierRequestDoesNotCountForTheNext) {
    const auto program = dialogs(script("said()\n"
                                        "first = said()\n"
                                        "resident.send(b'beep')\n"
                                        "said()\n"
                                        "answer(first)\n"));
    program->open("showFeedbackDialog", "", "");
    ASSERT_TRUE(becomes([this] { return beeps == 1; }));
    program->open("showFeedbackDialog", "", "");
    EXPECT_TRUE(becomes([this] { return beeps == 2; })) << "the next one opened it";
    EXPECT_EQ(starts(), 2U);
    EXPECT_TRUE(failures.empty());
}

TEST_F(DialogsProgramTest, OneThatCrashesBeforeItsDialogIsStartedOnceMore) {
    const auto program = dialogs(script("os.abort()\n"));
    program->open("showFeedbackDialog", "", "");
    EXPECT_TRUE(becomes([this] { return notOpened == 1; }));
    EXPECT_EQ(starts(), 2U);
    EXPECT_EQ(failures.size(), 2U);
}

TEST_F(DialogsProgramTest, OneThatCrashesLaterIsNotStartedAgain) {
    const auto program = dialogs(script("said(), answer(said())\n"
                                        "os.abort()\n"));
    program->open("showFeedbackDialog", "", "");
    EXPECT_TRUE(becomes([this] { return failures.size() == 1; }));
    EXPECT_EQ(notOpened, 0);
    EXPECT_EQ(starts(), 1U);
}

TEST_F(DialogsProgramTest, OneThatHangsIsEndedWhenItIsAskedAgain) {
    const auto program = dialogs(script("said(), answer(said())\n"
                                        "resident.send(b'beep')\n"
                                        "time.sleep(1000)\n"),
                                 std::chrono::milliseconds(50));
    program->open("showFeedbackDialog", "", "");
    ASSERT_TRUE(becomes([this] { return beeps == 1; }));
    program->open("showFeedbackDialog", "", "");
    EXPECT_TRUE(becomes([this] { return beeps == 2; })) << "a new one opened it";
    EXPECT_EQ(starts(), 2U);
    EXPECT_EQ(notOpened, 0);
}

} // namespace
} // namespace fernhop::freedesktop
