#include "dialogs/AddAppRulesTest.h"

#include <gtest/gtest.h>

namespace fernhop {
namespace {

using namespace ui;

TEST_F(AddAppRulesTest, BrowsersAreNotOffered) {
    lookAt([](const Dialog &d) { EXPECT_EQ(d.names(), (Names{"Alpha", "Beta", "Chat", "Delta"})); });
}

TEST_F(AddAppRulesTest, ApplicationWithAnIdentifierSimilarToABrowsersIsOffered) {
    desktop.applications.installApplication("/Applications/Almost.app", "Browser.A", "Almost");
    controller->refreshBrowsers();
    lookAt([](const Dialog &d) {
        EXPECT_EQ(d.names(), (Names{"Almost", "Alpha", "Beta", "Chat", "Delta"}));
    });
}

TEST_F(AddAppRulesTest, NothingIsUpdatedAfterTheDialogIsClosed) {
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

TEST_F(AddAppRulesTest, FinalSelectionOfTheListIsUsed) {
    openDialog([](const Dialog &d) {
        d.table->selectionDidChange = nullptr; // the change is not reported
        d.table->selectRowIndexes({1, 3, 99}, false);
        return confirm;
    });
    EXPECT_EQ(rules(), (AppRules{{"org.sample.b", "browser.b"}, {"org.sample.d", "browser.b"}}));
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

TEST_F(AddAppRulesTest, RulesAreStoredBeforeAnythingElseChanges) {
    const auto confirmed = [this](const Dialog &d) {
        select(d, {0, 1});
        recordSteps();
        return confirm;
    };
    setHandlers("browser.a");
    openDialog(confirmed);
    Steps turningOn = storedThenTurnedOn(settingsKey::appRules);
    turningOn.insert(turningOn.begin(), "appRules"); // two rules
    EXPECT_EQ(steps(), turningOn);
    openDialog(confirmed);
    EXPECT_EQ(steps(), (Steps{"appRules", "appRules", "menu"})) << "routing is on";
}

TEST_F(AddAppRulesTest, HandlerWithANameSimilarToFernhopsIsAnotherOne) {
    setHandlers("ORG.fernhop.Fernhop");
    openDialog([this](const Dialog &d) {
        select(d, {0});
        return confirm;
    });
    EXPECT_EQ(desktop.launchServices.calls, routingTurnedOn);
}

TEST_F(AddAppRulesTest, AddingNothingBeeps) {
    openDialog([](const Dialog &) { return confirm; });
    expectNothingWritten(1);
    EXPECT_EQ(desktop.alerts.shown.size(), 1u);
}

TEST_F(AddAppRulesTest, EveryOtherResponseWritesNothing) {
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
