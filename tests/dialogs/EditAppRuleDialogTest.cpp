#include "dialogs/DialogTest.h"

#include <gtest/gtest.h>

namespace fernhop {
namespace {

using namespace ui;
using enum LayoutAttribute;

class EditAppRuleTest : public DialogTest {
  protected:
    EditAppRuleTest() {
        desktop.applications.installApplication("/Applications/Mail.app", "com.example.mail", "Mail");
        storeAppRule("com.example.mail", "browser.a");
        launch();
    }

    /// Opens the dialog of an application; `user` receives its pop-up and returns the response.
    template <typename User>
    void edit(const std::string &app, User user) {
        open(
            "editRuleFromWindow:",
            [&](const Alert &alert) {
                const auto stack = subview<StackView>(*alert.accessoryView, 0);
                return user(*subview<PopUpButton>(*stack, 1));
            },
            app);
    }

    AppRules rules() { return controller->settings().appRules(); }
};

TEST_F(EditAppRuleTest, AlertHasItsTexts) {
    edit("com.example.mail", [](const PopUpButton &) { return cancel; });
    EXPECT_EQ(lastShown().messageText, "修改浏览器规则");
    EXPECT_EQ(lastShown().informativeText, "为 Mail 指定新的默认浏览器。");
    EXPECT_EQ(lastShown().buttons, (std::vector<std::string>{"保存", "取消"}));
    edit("com.example.gone", [](const PopUpButton &) { return cancel; });
    EXPECT_EQ(lastShown().informativeText,
              "为 " + controller->browserCatalog().appDisplayName("com.example.gone") +
                  " 指定新的默认浏览器。");
}

TEST_F(EditAppRuleTest, ViewsAreStacked) {
    open(
        "editRuleFromWindow:",
        [](const Alert &alert) {
            const View &container = *alert.accessoryView;
            EXPECT_EQ(container.frameSize, (Size{360, 92}));
            EXPECT_EQ(container.subviews.size(), 1u);
            const auto stack = subview<StackView>(container, 0);
            expectStack(*stack, Orientation::vertical, StackAlignment::leading, 12, 3);
            EXPECT_FALSE(stack->translatesAutoresizingMask);
            EXPECT_EQ(container.constraints,
                      (std::vector{aligned(*stack, container, leading), aligned(*stack, container, trailing),
                                   aligned(*stack, container, top), atMost(*stack, container, bottom)}));
            expectLabel(*subview<TextField>(*stack, 0), "Mail", {13, FontWeight::medium}, ColorRole::label);
            const auto popup = subview<PopUpButton>(*stack, 1);
            EXPECT_EQ(popup->controlSize, ControlSize::large);
            EXPECT_EQ(popup->action, "");
            EXPECT_FALSE(popup->translatesAutoresizingMask);
            expectLabel(*subview<TextField>(*stack, 2), "选择这个 App 打开链接时使用的浏览器。",
                        {12, FontWeight::regular}, ColorRole::secondaryLabel, 2);
            return cancel;
        },
        "com.example.mail");
}

TEST_F(EditAppRuleTest, PreselectsTheRulesBrowser) {
    edit("com.example.mail", [](const PopUpButton &popup) {
        EXPECT_EQ(picked(popup), "browser.a");
        return cancel;
    });
    expectNothingWritten(0);
}

TEST_F(EditAppRuleTest, WithoutARuleTheDefaultBrowserIsPreselectedAndSavingAddsARule) {
    edit("com.example.other", [](const PopUpButton &popup) {
        EXPECT_EQ(picked(popup), "browser.b");
        return confirm;
    });
    EXPECT_EQ(rules(), (AppRules{{"com.example.mail", "browser.a"}, {"com.example.other", "browser.b"}}));
    desktop.defaults.stored.erase(std::string(settingsKey::appRules));
    edit("com.example.mail", [](const PopUpButton &popup) {
        EXPECT_EQ(picked(popup), "browser.b");
        return cancel;
    });
}

TEST_F(EditAppRuleTest, RuleWithAnUninstalledBrowserSelectsTheFirst) {
    storeAppRule("com.example.mail", "browser.gone");
    edit("com.example.mail", [](const PopUpButton &popup) {
        EXPECT_EQ(picked(popup), "browser.a");
        return cancel;
    });
}

TEST_F(EditAppRuleTest, UnreadableRulesCountAsNone) {
    store(settingsKey::appRules,
          {PropertyDictionary{{"com.example.mail", {"browser.a"}}, {"com.example.other", {true}}}});
    edit("com.example.mail", [](const PopUpButton &popup) {
        EXPECT_EQ(picked(popup), "browser.b");
        return confirm;
    });
    EXPECT_EQ(rules(), (AppRules{{"com.example.mail", "browser.b"}}));
}

TEST_F(EditAppRuleTest, SavingWritesTheRuleAndRebuildsTheMenu) {
    edit("com.example.mail", [this](PopUpButton &popup) {
        pick(popup, "browser.b");
        return confirm;
    });
    EXPECT_EQ(rules(), (AppRules{{"com.example.mail", "browser.b"}}));
    EXPECT_TRUE(desktop.launchServices.calls.empty());
    EXPECT_EQ(desktop.statusBar.menusSet, 1);
}

TEST_F(EditAppRuleTest, SavingTurnsRoutingOnWhenItIsOff) {
    setHandlers("browser.a");
    edit("com.example.mail", [](const PopUpButton &) { return confirm; });
    EXPECT_EQ(desktop.launchServices.calls, routingTurnedOn);
    EXPECT_EQ(desktop.statusBar.menusSet, 2);
}

TEST_F(EditAppRuleTest, RuleIsStoredBeforeAnythingElseChanges) {
    setHandlers("browser.a");
    edit("com.example.mail", [this](const PopUpButton &) {
        recordSteps();
        return confirm;
    });
    EXPECT_EQ(steps(), storedThenTurnedOn(settingsKey::appRules));
    edit("com.example.mail", [this](const PopUpButton &) {
        recordSteps();
        return confirm;
    });
    EXPECT_EQ(steps(), (Steps{"appRules", "menu"})) << "routing is on";
}

TEST_F(EditAppRuleTest, EveryOtherResponseWritesNothing) {
    for (const int response : {cancel, confirm + 2, 0}) {
        edit("com.example.mail", [&](PopUpButton &popup) {
            pick(popup, "browser.b");
            return response;
        });
        expectNothingWritten(0);
    }
}

TEST_F(EditAppRuleTest, WithoutABrowserNothingIsWritten) {
    edit("com.example.mail", [](PopUpButton &popup) {
        popup.setItems({});
        return confirm;
    });
    expectNothingWritten(0);
    edit("com.example.mail", [](PopUpButton &popup) {
        popup.setItems({MenuItem("no browser", "")});
        return confirm;
    });
    expectNothingWritten(0);
}

TEST_F(EditAppRuleTest, ClearingByButtonNeedsNoConfirmation) {
    setHandlers("browser.a");
    desktop.launchServices.calls.clear();
    desktop.statusBar.menusSet = 0;
    Button button;
    controller->perform("clearRuleFromWindow:", {.sender = &button});
    EXPECT_EQ(rules().size(), 1u);
    EXPECT_EQ(desktop.statusBar.menusSet, 0);
    button.identifier = "com.example.mail";
    controller->perform("clearRuleFromWindow:", {.sender = &button});
    EXPECT_TRUE(rules().empty());
    EXPECT_EQ(desktop.statusBar.menusSet, 1);
    EXPECT_TRUE(desktop.launchServices.calls.empty());
    EXPECT_TRUE(desktop.alerts.shown.empty());
    EXPECT_EQ(desktop.sound.beeps, 0);
}

TEST_F(EditAppRuleTest, ButtonWithoutIdentifierOpensNothing) {
    const Button button;
    controller->perform("editRuleFromWindow:", {.sender = &button});
    controller->perform("editURLRuleFromWindow:", {.sender = &button});
    EXPECT_TRUE(desktop.alerts.shown.empty());
}

} // namespace
} // namespace fernhop
