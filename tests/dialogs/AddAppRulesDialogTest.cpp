#include "dialogs/AddAppRulesDialog.h"

#include "dialogs/DialogTest.h"
#include "platform/ui/ImageView.h"

#include <gtest/gtest.h>

namespace fernhop {
namespace {

using namespace ui;
using enum LayoutAttribute;

using Names = std::vector<std::string>;
using Rows = std::set<std::size_t>;

constexpr const char *emptyHint = "选择一个或多个 App，然后指定目标浏览器。";

/// The open dialog with its parts.
struct Dialog {
    explicit Dialog(const Alert &alert)
        : container(alert.accessoryView), header(subview<StackView>(*container, 0)),
          search(subview<SearchField>(*container, 1)), scroll(subview<ScrollView>(*container, 2)),
          table(std::dynamic_pointer_cast<TableView>(scroll->documentView)),
          label(subview<TextField>(*container, 3)), popup(subview<PopUpButton>(*container, 4)),
          note(subview<View>(*container, 5)), hint(subview<TextField>(*note, 0)) {}

    std::shared_ptr<View> container;
    std::shared_ptr<StackView> header;
    std::shared_ptr<SearchField> search;
    std::shared_ptr<ScrollView> scroll;
    std::shared_ptr<TableView> table;
    std::shared_ptr<TextField> label;
    std::shared_ptr<PopUpButton> popup;
    std::shared_ptr<View> note;
    std::shared_ptr<TextField> hint;

    std::string text() const { return hint->stringValue(); }
    Rows selected() const { return table->selectedRowIndexes(); }

    /// The names that the list shows.
    Names names() const {
        Names shown;
        for (std::size_t row = 0; row < table->numberOfRows(); ++row) {
            const auto cell = table->viewForRow(static_cast<std::ptrdiff_t>(row));
            const auto line = subview<StackView>(*cell, 0);
            shown.push_back(subview<TextField>(*subview<StackView>(*line, 1), 0)->stringValue());
        }
        return shown;
    }
};

class AddAppRulesTest : public DialogTest {
  protected:
    AddAppRulesTest() {
        for (const auto &[name, id] : {std::pair{"Alpha", "com.example.a"},
                                       {"Beta", "org.sample.b"},
                                       {"Chat", "com.example.c"},
                                       {"Delta", "org.sample.d"}})
            desktop.applications.installApplication("/Applications/" + std::string(name) + ".app", id, name);
        launch();
    }

    /// Opens the dialog; `user` works in it and answers.
    template <typename User>
    void openDialog(User user) {
        open("showAddRuleDialog", [&](const Alert &alert) {
            const Dialog dialog(alert);
            return user(dialog);
        });
    }

    /// Opens the dialog, works in it and cancels.
    template <typename Work>
    void lookAt(Work work) {
        openDialog([&](const Dialog &dialog) {
            work(dialog);
            return cancel;
        });
    }

    void type(const Dialog &dialog, const std::string &query) {
        dialog.search->setStringValue(query);
        fire(dialog.search->action, *dialog.search);
    }

    void select(const Dialog &dialog, const Rows &rows) {
        dialog.table->selectRowIndexes(rows, false);
        fire(dialog.table->action, *dialog.table);
    }

    AppRules rules() { return controller->settings().appRules(); }
};

TEST_F(AddAppRulesTest, AlertHasItsTexts) {
    lookAt([](const Dialog &) {});
    EXPECT_EQ(lastShown().messageText, "添加 App 浏览器规则");
    EXPECT_EQ(lastShown().informativeText, "选择一个或多个 App，然后为它们指定打开链接时使用的浏览器。");
    EXPECT_EQ(lastShown().buttons, (Names{"添加", "取消"}));
}

TEST_F(AddAppRulesTest, PartsStandUnderEachOther) {
    lookAt([](const Dialog &d) {
        EXPECT_EQ(d.container->frameSize, (Size{500, 468}));
        EXPECT_EQ(d.container->subviews.size(), 6u);
        const View &c = *d.container;
        std::vector<Constraint> expected;
        for (const auto &part : c.subviews) {
            EXPECT_FALSE(part->translatesAutoresizingMask);
            expected.push_back(aligned(*part, c, leading));
            expected.push_back(aligned(*part, c, trailing));
        }
        for (const auto &constraint :
             {aligned(*d.header, c, top), pinned(*d.search, top, *d.header, bottom, 14),
              pinned(*d.scroll, top, *d.search, bottom, 10), fixed(*d.scroll, height, 250),
              pinned(*d.label, top, *d.scroll, bottom, 14), pinned(*d.popup, top, *d.label, bottom, 6),
              pinned(*d.note, top, *d.popup, bottom, 12), atMost(*d.note, c, bottom)})
            expected.push_back(constraint);
        EXPECT_EQ(expected.size(), 20u);
        EXPECT_EQ(c.constraints, expected);
    });
}

TEST_F(AddAppRulesTest, HeaderLabelAndNoteHaveTheirTexts) {
    lookAt([](const Dialog &d) {
        const auto text = subview<StackView>(*d.header, 1);
        EXPECT_EQ(subview<TextField>(*text, 0)->stringValue(), "选择 App");
        EXPECT_EQ(subview<TextField>(*text, 1)->stringValue(),
                  "浏览器 App 已自动排除，可按住 Command 选择多个。");
        const auto badge = subview<View>(*d.header, 0);
        EXPECT_EQ(subview<ImageView>(*badge, 0)->image->source, Image::Source(SystemSymbol{"app.badge"}));
        expectLabel(*d.label, "目标浏览器", {12, FontWeight::medium}, ColorRole::secondaryLabel);
        expectLabel(*d.hint, emptyHint, {12, FontWeight::regular}, ColorRole::secondaryLabel, 2);
        ASSERT_TRUE(d.note->layer);
        EXPECT_EQ(d.note->layer->cornerRadius, 10);
    });
}

TEST_F(AddAppRulesTest, SearchFieldSendsEveryKeystroke) {
    lookAt([](const Dialog &d) {
        EXPECT_EQ(d.search->placeholder, "搜索 App 名称或 Bundle ID");
        EXPECT_EQ(d.search->action, "filterRuleDialogApplications:");
        EXPECT_TRUE(d.search->editable);
        EXPECT_TRUE(d.search->sendsSearchStringImmediately);
        EXPECT_FALSE(d.search->sendsWholeSearchString);
    });
}

TEST_F(AddAppRulesTest, ListIsSetUp) {
    lookAt([](const Dialog &d) {
        EXPECT_EQ(d.table->rowHeight, 40);
        EXPECT_TRUE(d.table->allowsMultipleSelection);
        EXPECT_EQ(d.table->columnIdentifier, "app");
        EXPECT_EQ(d.table->columnWidth, 468);
        EXPECT_EQ(d.table->action, "updateRuleDialogHint");
        EXPECT_FALSE(d.scroll->hasBorder);
        EXPECT_TRUE(d.scroll->hasVerticalScroller);
        ASSERT_TRUE(d.scroll->layer);
        EXPECT_EQ(*d.scroll->layer, (Layer{std::nullopt, 12, 1, Color{ColorRole::separator, 0.45}}));
    });
}

TEST_F(AddAppRulesTest, PopupSelectsTheEffectiveDefaultBrowser) {
    lookAt([](const Dialog &d) {
        EXPECT_EQ(picked(*d.popup), "browser.b");
        EXPECT_EQ(d.popup->controlSize, ControlSize::large);
        EXPECT_EQ(d.popup->action, "updateRuleDialogHint");
    });
    setHandlers("browser.a");
    lookAt([](const Dialog &d) { EXPECT_EQ(picked(*d.popup), "browser.a"); });
}

TEST_F(AddAppRulesTest, WithoutADefaultBrowserThePopupStartsWithTheFirst) {
    desktop.defaults.stored.clear();
    desktop.launchServices.handlers.clear();
    lookAt([](const Dialog &d) { EXPECT_EQ(picked(*d.popup), "browser.a"); });
}

TEST_F(AddAppRulesTest, BrowsersAreNotOffered) {
    lookAt([](const Dialog &d) { EXPECT_EQ(d.names(), (Names{"Alpha", "Beta", "Chat", "Delta"})); });
}

TEST_F(AddAppRulesTest, RowShowsIconNameAndIdentifier) {
    lookAt([](const Dialog &d) {
        const auto cell = d.table->viewForRow(1);
        EXPECT_EQ(cell->identifier, "appCell");
        ASSERT_EQ(cell->subviews.size(), 1u);
        const auto row = subview<StackView>(*cell, 0);
        expectStack(*row, Orientation::horizontal, StackAlignment::centerY, 10, 3);
        EXPECT_FALSE(row->translatesAutoresizingMask);
        EXPECT_EQ(cell->constraints,
                  (std::vector{aligned(*row, *cell, leading, 6), aligned(*row, *cell, trailing, -6),
                               aligned(*row, *cell, centerY)}));

        const auto icon = subview<ImageView>(*row, 0);
        EXPECT_EQ(*icon->image, Image(ApplicationIcon{"/Applications/Beta.app"}, 24, false));
        EXPECT_EQ(icon->constraints, (std::vector{fixed(*icon, width, 22), fixed(*icon, height, 22)}));
        const auto text = subview<StackView>(*row, 1);
        expectStack(*text, Orientation::vertical, StackAlignment::leading, 1, 2);
        expectLabel(*subview<TextField>(*text, 0), "Beta", {13, FontWeight::regular}, ColorRole::label);
        expectLabel(*subview<TextField>(*text, 1), "org.sample.b", {11, FontWeight::regular},
                    ColorRole::tertiaryLabel);
        EXPECT_EQ(subview<View>(*row, 2)->horizontalContentHugging, 250);
    });
}

TEST_F(AddAppRulesTest, RowsOutOfRangeHaveNoCell) {
    lookAt([](const Dialog &d) {
        EXPECT_EQ(d.table->numberOfRows(), 4u);
        EXPECT_TRUE(d.table->viewForRow(3));
        EXPECT_FALSE(d.table->viewForRow(4));
        EXPECT_FALSE(d.table->viewForRow(-1));
        EXPECT_NE(d.table->viewForRow(0), d.table->viewForRow(0));
    });
}

TEST_F(AddAppRulesTest, ControllerAnswersForTheListBySelector) {
    lookAt([this](const Dialog &) {
        EXPECT_EQ(std::get<std::size_t>(*controller->perform("numberOfRowsInTableView:")), 4u);
        const auto cell = controller->perform("tableView:viewForTableColumn:row:", {.row = 4});
        EXPECT_FALSE(std::get<std::shared_ptr<Object>>(*cell));
        const auto last = controller->perform("tableView:viewForTableColumn:row:", {.row = 3});
        EXPECT_TRUE(std::get<std::shared_ptr<Object>>(*last));
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

TEST_F(AddAppRulesTest, ListIsAskedAgainAfterEachSearch) {
    lookAt([this](const Dialog &d) {
        const unsigned before = d.table->reloads();
        type(d, "a");
        type(d, "al");
        EXPECT_EQ(d.table->reloads(), before + 2);
    });
}

TEST_F(AddAppRulesTest, WhatTheSearchHidesStaysSelected) {
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

TEST_F(AddAppRulesTest, DeselectingAVisibleRowDropsItAlone) {
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

TEST_F(AddAppRulesTest, HintDoesWithoutThePopup) {
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

TEST_F(AddAppRulesTest, ClosedDialogLeavesNothingToUpdate) {
    std::shared_ptr<SearchField> search;
    std::weak_ptr<View> container;
    lookAt([&](const Dialog &d) {
        search = d.search;
        container = d.container;
        select(d, {0});
    });
    EXPECT_TRUE(container.expired());
    search->setStringValue("alpha");
    controller->perform("filterRuleDialogApplications:", {.sender = search.get()});
    controller->perform("updateRuleDialogHint");
    controller->perform("tableViewSelectionDidChange:");
    EXPECT_EQ(std::get<std::size_t>(*controller->perform("numberOfRowsInTableView:")), 1u);
}

TEST_F(AddAppRulesTest, EachOpeningStartsAnew) {
    lookAt([this](const Dialog &d) {
        type(d, "alpha");
        select(d, {0});
    });
    lookAt([](const Dialog &d) {
        EXPECT_EQ(d.names().size(), 4u);
        EXPECT_TRUE(d.selected().empty());
        EXPECT_EQ(d.text(), emptyHint);
    });
}

TEST_F(AddAppRulesTest, RulesAreWrittenInTheOrderOfTheList) {
    storeAppRule("com.example.a", "browser.b");
    openDialog([this](const Dialog &d) {
        select(d, {2});
        select(d, {1, 2});
        select(d, {0, 1, 2});
        type(d, "delta"); // the selection is hidden
        pick(*d.popup, "browser.a");
        return confirm;
    });
    ASSERT_EQ(desktop.defaults.history.size(), 3u);
    const auto after = [&](std::size_t write) {
        return desktop.defaults.history[write].find(settingsKey::appRules)->second;
    };
    EXPECT_EQ(after(0), (PropertyValue{PropertyDictionary{{"com.example.a", {"browser.a"}}}}));
    EXPECT_EQ(after(1), (PropertyValue{PropertyDictionary{{"com.example.a", {"browser.a"}},
                                                          {"org.sample.b", {"browser.a"}}}}));
    EXPECT_EQ(rules(), (AppRules{{"com.example.a", "browser.a"},
                                 {"com.example.c", "browser.a"},
                                 {"org.sample.b", "browser.a"}}));
    EXPECT_TRUE(desktop.launchServices.calls.empty());
    EXPECT_EQ(desktop.statusBar.menusSet, 1);
    EXPECT_EQ(desktop.sound.beeps, 0);
}

TEST_F(AddAppRulesTest, WhatTheListHasSelectedAtTheEndCounts) {
    openDialog([](const Dialog &d) {
        d.table->selectionDidChange = nullptr; // nobody was told
        d.table->selectRowIndexes({1, 3, 99}, false);
        return confirm;
    });
    EXPECT_EQ(rules(), (AppRules{{"org.sample.b", "browser.b"}, {"org.sample.d", "browser.b"}}));
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

TEST_F(AddAppRulesTest, AddingTurnsRoutingOnWhenItIsOff) {
    for (const auto &handlers : {std::map<std::string, std::string>{}, {{"https", "browser.a"}}}) {
        desktop.launchServices.handlers = handlers;
        openDialog([this](const Dialog &d) {
            select(d, {0});
            return confirm;
        });
        EXPECT_EQ(desktop.launchServices.calls, routingTurnedOn);
        EXPECT_EQ(desktop.statusBar.menusSet, 2);
        EXPECT_TRUE(desktop.defaults.history.front().contains(std::string(settingsKey::appRules)));
    }
}

TEST_F(AddAppRulesTest, AddingNothingBeeps) {
    openDialog([](const Dialog &) { return confirm; });
    expectNothingWritten(1);
    EXPECT_EQ(desktop.alerts.shown.size(), 1u);
}

TEST_F(AddAppRulesTest, EveryOtherAnswerWritesNothing) {
    for (const int response : {cancel, confirm + 2, confirm - 1, 0}) {
        openDialog([&](const Dialog &d) {
            select(d, {0});
            return response;
        });
        expectNothingWritten(0);
    }
}

TEST_F(AddAppRulesTest, WithoutABrowserNothingIsWrittenAndNothingBeeps) {
    for (const Rows &rows : {Rows{}, Rows{0}}) {
        openDialog([&](const Dialog &d) {
            select(d, rows);
            d.popup->setItems({});
            return confirm;
        });
        expectNothingWritten(0);
        openDialog([&](const Dialog &d) {
            select(d, rows);
            d.popup->setItems({MenuItem("no browser", "")});
            return confirm;
        });
        expectNothingWritten(0);
    }
}

TEST_F(AddAppRulesTest, NoApplicationsGiveAnEmptyListThatBeeps) {
    for (const char *name : {"Alpha", "Beta", "Chat", "Delta"})
        desktop.applications.remove("/Applications/" + std::string(name) + ".app");
    controller->refreshBrowsers();
    openDialog([](const Dialog &d) {
        EXPECT_EQ(d.table->numberOfRows(), 0u);
        return confirm;
    });
    expectNothingWritten(1);
}

} // namespace
} // namespace fernhop
