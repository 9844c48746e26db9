#include "cli/World.h"

#include <gtest/gtest.h>

namespace fernhop::cli {
namespace {

class DialogCommands : public testing::Test, protected World {
  protected:
    DialogCommands() {
        launch();
        preferences().setBrowser(beta, "org.example.Gone");
        preferences().addURLRule("docs.example", alpha);
    }

    /// The message of the dialog that a command asks for.
    std::string shownBy(const std::vector<std::string> &words) {
        EXPECT_EQ(run(words), CommandResult{});
        EXPECT_TRUE(alerts.shown.empty()); // answered before it opens
        for (const auto &request : std::exchange(dialogs, {}))
            openDialog(*delegate, request);
        return alerts.shown.empty() ? "" : std::exchange(alerts.shown, {}).front().messageText;
    }

    void expectFailure(const std::vector<std::string> &words, const std::string &reason) {
        const auto result = run(words);
        EXPECT_EQ(result.status, 1);
        EXPECT_NE(result.errors.find(reason), std::string::npos) << result.errors;
        EXPECT_TRUE(dialogs.empty());
    }
};

TEST_F(DialogCommands, ShowEachDialog) {
    EXPECT_EQ(shownBy({"dialog", "add-app-rules"}), "添加 App 浏览器规则");
    EXPECT_EQ(shownBy({"dialog", "add-url-rule"}), "添加 URL 浏览器规则");
    EXPECT_EQ(shownBy({"dialog", "feedback"}), "建议反馈");
    EXPECT_EQ(shownBy({"dialog", "edit-app-rule", "Editor"}), "修改浏览器规则");
    EXPECT_EQ(shownBy({"dialog", "edit-app-rule", "org.example.Gone"}), "修改浏览器规则");
    EXPECT_EQ(shownBy({"dialog", "edit-url-rule", preferences().urlRules().front().id}),
              "修改 URL 浏览器规则");
}

TEST_F(DialogCommands, ReportWhatCannotBeEdited) {
    expectFailure({"dialog", "edit-url-rule", "7"}, "no URL rule \"7\"");
    expectFailure({"dialog", "edit-app-rule", "org.example.Nobody"}, "org.example.Nobody");
}

TEST_F(DialogCommands, NeedTheirArguments) {
    for (const auto &words : std::vector<std::vector<std::string>>{
             {"dialog"}, {"dialog", "other"}, {"dialog", "edit-app-rule"}, {"dialog", "feedback", "more"}})
        EXPECT_EQ(run(words).status, 2);
}

TEST(DialogCommandsWithoutFernhop, Fail) {
    World world;
    world.report.runs = false;
    const auto result = world.run({"dialog", "feedback"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.errors.find("Fernhop is not running"), std::string::npos);
}

} // namespace
} // namespace fernhop::cli
