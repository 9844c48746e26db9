#include "dialogs/AddAppRulesTest.h"

#include <gtest/gtest.h>

#include <utility>

namespace fernhop {
namespace {

using namespace ui;

TEST_F(AddAppRulesTest, ControllerServesTheListBySelector) {
    lookAt([this](const Dialog &) {
        EXPECT_EQ(std::get<std::size_t>(*controller->perform("numberOfRowsInTableView:")), 4u);
        const auto cell = controller->perform("tableView:viewForTableColumn:row:", {.row = 4});
        EXPECT_FALSE(std::get<std::shared_ptr<Object>>(*cell));
        const auto last = controller->perform("tableView:viewForTableColumn:row:", {.row = 3});
        EXPECT_TRUE(std::get<std::shared_ptr<Object>>(*last));
    });
}

TEST_F(AddAppRulesTest, SelectorsKeepTheSelectionAndUpdateTheHint) {
    lookAt([this](const Dialog &d) {
        d.table->selectionDidChange = nullptr; // the selectors are called instead
        d.table->selectRowIndexes({1}, false);
        controller->perform("updateRuleDialogHint");
        EXPECT_EQ(d.text(), emptyHint) << "it tells what is kept";
        controller->perform("tableViewSelectionDidChange:");
        EXPECT_EQ(d.text(), "将已选择的 Beta 浏览器改成：browser.b");
    });
}

TEST_F(AddAppRulesTest, SearchFindsNamesAndIdentifiersInAnyCase) {
    lookAt([this](const Dialog &d) {
        type(d, "BET");
        EXPECT_EQ(d.names(), Names{"Beta"});
        type(d, "ORG.sample");
        EXPECT_EQ(d.names(), (Names{"Beta", "Delta"}));
        type(d, "nothing like it");
        EXPECT_TRUE(d.names().empty());
        type(d, "  chat\n");
        EXPECT_EQ(d.names(), Names{"Chat"});
        type(d, " \n\t ");
        EXPECT_EQ(d.names().size(), 4u);
    });
}

TEST_F(AddAppRulesTest, ListIsReloadedAfterEachSearch) {
    lookAt([this](const Dialog &d) {
        const unsigned before = d.table->reloads();
        type(d, "a");
        type(d, "al");
        EXPECT_EQ(d.table->reloads(), before + 2);
    });
}

TEST_F(AddAppRulesTest, HiddenRowsStaySelected) {
    lookAt([this](const Dialog &d) {
        select(d, {0, 1}); // Alpha, Beta
        type(d, "com.example");
        EXPECT_EQ(d.selected(), Rows{0});
        select(d, {0, 1}); // Alpha, Chat
        EXPECT_EQ(d.text(), "将已选择的 Alpha、Beta 等 3 个 App 浏览器改成：browser.b");
        type(d, "");
        EXPECT_EQ(d.selected(), (Rows{0, 1, 2}));
    });
}

TEST_F(AddAppRulesTest, SearchKeepsASelectionWithoutANotification) {
    lookAt([this](const Dialog &d) {
        const auto told = std::exchange(d.table->selectionDidChange, nullptr);
        d.table->selectRowIndexes({1, 2}, false); // Beta, Chat
        d.table->selectionDidChange = told;
        type(d, "beta");
        EXPECT_EQ(d.selected(), Rows{0});
        EXPECT_EQ(d.text(), "将已选择的 Beta、Chat 浏览器改成：browser.b");
    });
    lookAt([this](const Dialog &d) {
        d.table->selectionDidChange = nullptr;
        d.table->selectRowIndexes({3}, false);
        type(d, "nothing like it"); // no row is left
        EXPECT_EQ(d.text(), "将已选择的 Delta 浏览器改成：browser.b");
    });
}

TEST_F(AddAppRulesTest, DeselectingAVisibleRowDropsOnlyThatRow) {
    lookAt([this](const Dialog &d) {
        select(d, {0, 1});
        type(d, "alpha");
        select(d, {});
        EXPECT_EQ(d.text(), "将已选择的 Beta 浏览器改成：browser.b");
        type(d, "");
        EXPECT_EQ(d.selected(), Rows{1});
    });
}

TEST_F(AddAppRulesTest, SearchingTwiceKeepsTheSelection) {
    lookAt([this](const Dialog &d) {
        select(d, {3});
        type(d, "alpha");
        type(d, "beta");
        EXPECT_TRUE(d.selected().empty());
        EXPECT_EQ(d.text(), "将已选择的 Delta 浏览器改成：browser.b");
        type(d, "d");
        EXPECT_EQ(d.names(), Names{"Delta"});
        EXPECT_EQ(d.selected(), Rows{0});
    });
}

TEST_F(AddAppRulesTest, SelectionIsKeptByExactIdentifiers) {
    desktop.applications.installApplication("/Applications/Beta2.app", "ORG.sample.b", "Beta 2");
    controller->refreshBrowsers();
    lookAt([this](const Dialog &d) {
        EXPECT_EQ(d.names(), (Names{"Alpha", "Beta", "Beta 2", "Chat", "Delta"}));
        select(d, {1});
        type(d, "beta");
        EXPECT_EQ(d.selected(), Rows{0});
        EXPECT_EQ(d.text(), "将已选择的 Beta 浏览器改成：browser.b");
    });
}

TEST_F(AddAppRulesTest, HintFollowsSelectionAndBrowser) {
    lookAt([this](const Dialog &d) {
        EXPECT_EQ(d.text(), emptyHint);
        select(d, {0});
        EXPECT_EQ(d.text(), "将已选择的 Alpha 浏览器改成：browser.b");
        select(d, {0, 2});
        EXPECT_EQ(d.text(), "将已选择的 Alpha、Chat 浏览器改成：browser.b");
        pick(*d.popup, "browser.a");
        EXPECT_EQ(d.text(), "将已选择的 Alpha、Chat 浏览器改成：browser.a");
        select(d, {0, 1, 2});
        EXPECT_EQ(d.text(), "将已选择的 Alpha、Beta 等 3 个 App 浏览器改成：browser.a");
        select(d, {3, 0, 2, 1});
        EXPECT_EQ(d.text(), "将已选择的 Alpha、Beta 等 4 个 App 浏览器改成：browser.a");
        select(d, {});
        EXPECT_EQ(d.text(), emptyHint);
    });
}

TEST_F(AddAppRulesTest, HintNamesNoBrowserWithoutASelectedItem) {
    lookAt([this](const Dialog &d) {
        select(d, {0});
        d.popup->selectItem(99);
        fire("updateRuleDialogHint", *d.table);
        EXPECT_EQ(d.text(), "将已选择的 Alpha 浏览器改成：目标浏览器");
    });
}

TEST_F(AddAppRulesTest, HintWorksWithoutThePopup) {
    open("showAddRuleDialog", [&](const Alert &alert) {
        const std::shared_ptr<TextField> hint = Dialog(alert).hint;
        Dialog(alert).table->selectRowIndexes({0}, false);
        alert.accessoryView->subviews.erase(alert.accessoryView->subviews.begin() + 4);
        controller->perform("updateRuleDialogHint");
        EXPECT_EQ(hint->stringValue(), "将已选择的 Alpha 浏览器改成：目标浏览器");
        return confirm;
    });
    expectNothingWritten(0);
}

} // namespace
} // namespace fernhop
