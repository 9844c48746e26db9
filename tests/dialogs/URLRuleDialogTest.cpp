#include "dialogs/URLRuleDialog.h"

#include "dialogs/DialogTest.h"

#include <gtest/gtest.h>

#include <regex>
#include <string>

namespace fernhop {
namespace {

using namespace ui;
using enum LayoutAttribute;

/// The open dialog with its parts.
struct Dialog {
    explicit Dialog(const Alert &alert)
        : container(alert.accessoryView), stack(subview<StackView>(*container, 0)),
          pattern(subview<TextField>(*stack, 1)), popup(subview<PopUpButton>(*stack, 3)) {}

    std::shared_ptr<View> container;
    std::shared_ptr<StackView> stack;
    std::shared_ptr<TextField> pattern;
    std::shared_ptr<PopUpButton> popup;
};

class URLRuleDialogTest : public DialogTest {
  protected:
    URLRuleDialogTest() {
        storeURLRules({{"1", "one.example", "browser.a"}, {"2", "two.example", "browser.gone"}});
        launch();
    }

    template <typename User>
    void add(User user) {
        open("showAddURLRuleDialog", [&](const Alert &alert) { return user(Dialog(alert)); });
    }

    template <typename User>
    void edit(const std::string &id, User user) {
        open(
            "editURLRuleFromWindow:", [&](const Alert &alert) { return user(Dialog(alert)); }, id);
    }

    std::vector<URLRule> rules() { return controller->settings().urlRules(); }
};

TEST_F(URLRuleDialogTest, AlertDistinguishesAddingFromEditing) {
    add([](const Dialog &) { return cancel; });
    EXPECT_EQ(lastShown().messageText, "添加 URL 浏览器规则");
    EXPECT_EQ(lastShown().informativeText, "指定匹配某类 URL 时使用的浏览器。");
    EXPECT_EQ(lastShown().buttons, (std::vector<std::string>{"保存", "取消"}));
    edit("1", [](const Dialog &) { return cancel; });
    EXPECT_EQ(lastShown().messageText, "修改 URL 浏览器规则");
    EXPECT_EQ(lastShown().informativeText, "指定匹配某类 URL 时使用的浏览器。");
    EXPECT_EQ(lastShown().buttons, (std::vector<std::string>{"保存", "取消"}));
}

TEST_F(URLRuleDialogTest, ViewsAreStacked) {
    add([](const Dialog &d) {
        const View &container = *d.container;
        EXPECT_EQ(container.frameSize, (Size{420, 190}));
        EXPECT_EQ(container.subviews.size(), 1u);
        expectStack(*d.stack, Orientation::vertical, StackAlignment::leading, 10, 5);
        EXPECT_FALSE(d.stack->translatesAutoresizingMask);
        EXPECT_EQ(container.constraints,
                  (std::vector{aligned(*d.stack, container, leading), aligned(*d.stack, container, trailing),
                               aligned(*d.stack, container, top), aligned(*d.stack, container, bottom),
                               aligned(*d.pattern, container, width), aligned(*d.popup, container, width)}));
        expectLabel(*subview<TextField>(*d.stack, 0), "URL 匹配规则", {12, FontWeight::medium},
                    ColorRole::secondaryLabel);
        expectLabel(*subview<TextField>(*d.stack, 2), "目标浏览器", {12, FontWeight::medium},
                    ColorRole::secondaryLabel);
        const auto note = subview<View>(*d.stack, 4);
        EXPECT_EQ(note->layer.value().cornerRadius, 10);
        expectLabel(*subview<TextField>(*note, 0),
                    "默认按完整 URL 做包含匹配；包含 * 时按通配符匹配。URL 规则优先于 App 规则。",
                    {12, FontWeight::regular}, ColorRole::secondaryLabel, 2);
        return cancel;
    });
}

TEST_F(URLRuleDialogTest, FieldAndPopupAreConfigured) {
    add([](const Dialog &d) {
        EXPECT_TRUE(d.pattern->editable);
        EXPECT_EQ(d.pattern->stringValue(), "");
        EXPECT_EQ(d.pattern->action, "");
        EXPECT_EQ(d.pattern->controlSize, ControlSize::large);
        EXPECT_FALSE(d.pattern->translatesAutoresizingMask);
        EXPECT_EQ(d.popup->controlSize, ControlSize::large);
        EXPECT_FALSE(d.popup->translatesAutoresizingMask);
        EXPECT_EQ(d.popup->action, "");
        EXPECT_EQ(picked(*d.popup), "browser.b"); // the effective default
        return cancel;
    });
}

TEST_F(URLRuleDialogTest, PlaceholderShowsAHostAndAPattern) {
    add([](const Dialog &d) {
        std::smatch example;
        const std::regex form("例如 ([a-z.-]+)、https://([a-z.-]+)/\\*");
        EXPECT_TRUE(std::regex_match(d.pattern->placeholder, example, form)) << d.pattern->placeholder;
        EXPECT_NE(example[1], example[2]);
        return cancel;
    });
}

TEST_F(URLRuleDialogTest, EditingStartsFromTheRule) {
    edit("1", [](const Dialog &d) {
        EXPECT_EQ(d.pattern->stringValue(), "one.example");
        EXPECT_EQ(picked(*d.popup), "browser.a");
        return cancel;
    });
    edit("2", [](const Dialog &d) {
        EXPECT_EQ(picked(*d.popup), "browser.a"); // its own is not installed: the first
        return cancel;
    });
    expectNothingWritten(0);
}

TEST_F(URLRuleDialogTest, PatternIsStoredTrimmed) {
    add([this](const Dialog &d) {
        d.pattern->setStringValue("  new.example/A b \n");
        pick(*d.popup, "browser.a");
        return confirm;
    });
    ASSERT_EQ(rules().size(), 3u);
    const auto stored = rules();
    const auto added = std::ranges::find(stored, "new.example/A b", &URLRule::pattern);
    ASSERT_NE(added, stored.end());
    EXPECT_EQ(added->browserBundleID, "browser.a");
    EXPECT_FALSE(added->id.empty());
    EXPECT_EQ(desktop.statusBar.menusSet, 1);
    EXPECT_TRUE(desktop.launchServices.calls.empty());
}

TEST_F(URLRuleDialogTest, AnyPatternIsAccepted) {
    for (const char *pattern :
         {"**", "[a-", "A B", "http://%zz/", "一", "two.example" /* another rule's */}) {
        edit("1", [&](const Dialog &d) {
            d.pattern->setStringValue(pattern);
            return confirm;
        });
        EXPECT_EQ(rules().front(), (URLRule{"1", pattern, "browser.a"}));
        EXPECT_EQ(desktop.sound.beeps, 0) << pattern;
    }
}

TEST_F(URLRuleDialogTest, AddingAKnownPatternChangesItsBrowser) {
    add([](const Dialog &d) {
        d.pattern->setStringValue(" TWO.example");
        return confirm;
    });
    EXPECT_EQ(rules(),
              (std::vector<URLRule>{{"1", "one.example", "browser.a"}, {"2", "two.example", "browser.b"}}));
    EXPECT_EQ(desktop.statusBar.menusSet, 1);
}

TEST_F(URLRuleDialogTest, EditingKeepsTheIdentifierAndThePosition) {
    edit("1", [this](const Dialog &d) {
        d.pattern->setStringValue("other.example");
        pick(*d.popup, "browser.b");
        return confirm;
    });
    EXPECT_EQ(rules(), (std::vector<URLRule>{{"1", "other.example", "browser.b"},
                                             {"2", "two.example", "browser.gone"}}));
}

TEST_F(URLRuleDialogTest, SavingWithoutChangeWritesAndRebuilds) {
    edit("1", [](const Dialog &) { return confirm; });
    EXPECT_EQ(desktop.defaults.history.size(), 1u);
    EXPECT_EQ(rules().front(), (URLRule{"1", "one.example", "browser.a"}));
    EXPECT_EQ(desktop.statusBar.menusSet, 1);
}

TEST_F(URLRuleDialogTest, SavingTurnsRoutingOnWhenItIsOff) {
    setHandlers("browser.a");
    edit("1", [](const Dialog &) { return confirm; });
    EXPECT_EQ(desktop.launchServices.calls, routingTurnedOn);
    EXPECT_EQ(desktop.statusBar.menusSet, 2);
}

TEST_F(URLRuleDialogTest, RuleIsStoredBeforeAnythingElseChanges) {
    const auto confirmed = [this](const Dialog &d) {
        d.pattern->setStringValue("new.example");
        recordSteps();
        return confirm;
    };
    setHandlers("browser.a");
    add(confirmed);
    EXPECT_EQ(steps(), storedThenTurnedOn(settingsKey::urlRules));
    add(confirmed);
    EXPECT_EQ(steps(), (Steps{"urlRules", "menu"})) << "routing is on";
    setHandlers("browser.a");
    edit("1", confirmed);
    EXPECT_EQ(steps(), storedThenTurnedOn(settingsKey::urlRules));
    edit("1", confirmed);
    EXPECT_EQ(steps(), (Steps{"urlRules", "menu"})) << "routing is on";
}

TEST_F(URLRuleDialogTest, BlankPatternBeeps) {
    for (const char *blank : {"", "   ", "\n \t\n"}) {
        add([&](const Dialog &d) {
            d.pattern->setStringValue(blank);
            return confirm;
        });
        expectNothingWritten(1);
    }
    edit("1", [](const Dialog &d) {
        d.pattern->setStringValue(" ");
        return confirm;
    });
    expectNothingWritten(1);
    EXPECT_EQ(desktop.alerts.shown.size(), 4u);
}

TEST_F(URLRuleDialogTest, WithoutABrowserNothingBeepsEvenForABlankPattern) {
    for (const char *pattern : {"", "new.example"}) {
        add([&](const Dialog &d) {
            d.pattern->setStringValue(pattern);
            d.popup->setItems({});
            return confirm;
        });
        expectNothingWritten(0);
        add([&](const Dialog &d) {
            d.pattern->setStringValue(pattern);
            d.popup->setItems({MenuItem("no browser", "")});
            return confirm;
        });
        expectNothingWritten(0);
    }
}

TEST_F(URLRuleDialogTest, EveryOtherResponseWritesNothing) {
    for (const int response : {cancel, confirm + 2, 0}) {
        add([&](const Dialog &d) {
            d.pattern->setStringValue("new.example");
            return response;
        });
        expectNothingWritten(0);
    }
}

TEST_F(URLRuleDialogTest, ButtonOpensTheFirstRuleWithItsIdentifier) {
    storeURLRules({{"1", "first.example", "browser.a"}, {"1", "second.example", "browser.a"}});
    edit("1", [](const Dialog &d) {
        EXPECT_EQ(d.pattern->stringValue(), "first.example");
        return cancel;
    });
    Button button;
    button.identifier = "unknown";
    controller->perform("editURLRuleFromWindow:", {.sender = &button});
    EXPECT_EQ(desktop.alerts.shown.size(), 1u);
}

TEST_F(URLRuleDialogTest, ClearingByButtonRemovesEveryRuleWithItsIdentifier) {
    setHandlers("browser.a");
    storeURLRules({{"1", "a", "x"}, {"2", "b", "x"}, {"1", "c", "x"}});
    desktop.defaults.history.clear();
    desktop.statusBar.menusSet = 0;
    Button button;
    controller->perform("clearURLRuleFromWindow:", {.sender = &button});
    EXPECT_TRUE(desktop.defaults.history.empty());
    EXPECT_EQ(desktop.statusBar.menusSet, 0);
    button.identifier = "1";
    controller->perform("clearURLRuleFromWindow:", {.sender = &button});
    EXPECT_EQ(rules(), (std::vector<URLRule>{{"2", "b", "x"}}));
    button.identifier = "unknown";
    controller->perform("clearURLRuleFromWindow:", {.sender = &button});
    EXPECT_EQ(rules(), (std::vector<URLRule>{{"2", "b", "x"}}));
    EXPECT_EQ(desktop.defaults.history.size(), 2u);
    EXPECT_EQ(desktop.statusBar.menusSet, 2);
    EXPECT_TRUE(desktop.launchServices.calls.empty());
    EXPECT_EQ(desktop.sound.beeps, 0);
}

} // namespace
} // namespace fernhop
