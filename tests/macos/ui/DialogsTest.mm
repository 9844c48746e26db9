// The whole application on AppKit's views, with a fake desktop.

#include "app/Controller.h"
#include "dialogs/ContactChannel.h"
#include "macos/double/UserActions.h"
#include "macos/ui/ExpectShown.h"
#include "macos/ui/InterfaceTest.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/ui/SystemAlerts.h"
#include "platform/macos/ui/SystemImages.h"
#include "platform/macos/ui/SystemStatusBar.h"
#include "platform/ui/Button.h"

#import <AppKit/AppKit.h>

#include <initializer_list>

namespace fernhop::macos {
namespace {

using macos_double::describe;
using macos_double::originOf;

/// Shows alerts and has the open one.
class ComparedAlerts : public SystemAlerts {
  public:
    using SystemAlerts::SystemAlerts;

    int runModal(const ui::Alert &alert) override {
        open = &alert;
        const int response = SystemAlerts::runModal(alert);
        open = nullptr;
        return response;
    }

    const ui::Alert *open = nullptr;
};

/// The controller's objects are released before the last pool is drained.
class DialogsTest : public InterfaceTest {
  protected:
    static constexpr NSModalResponse confirm = 1000, cancel = 1001;

    DialogsTest() {
        desktop.installBrowser("browser.a");
        desktop.installBrowser("browser.b");
        desktop.installFourApplications();
        const Platform fake = desktop.platform();
        controller = std::make_unique<AppDelegate>(
            Platform{fake.application, fake.workspace, fake.workspaceNotifications,
                     fake.distributedNotifications, fake.launchServices, fake.defaults, fake.files,
                     fake.bundles, fake.links, fake.log, fake.sound, bar, images, alerts, fake.layout});
        target.perform = [this](std::string_view selector, const Object *sender) {
            EXPECT_TRUE(controller->perform(selector, {.sender = sender})) << selector;
        };
        controller->applicationDidFinishLaunching();
    }
    ~DialogsTest() override {
        target.sent.clear();
        controller.reset();
    }

    /// Performs a selector that opens a dialog, compares the dialog with its model, and lets `user` operate
    /// it and return the response.
    template <typename User>
    void open(std::string_view selector, User user, const std::string &identifier = "") {
        int opened = 0;
        macos_double::setUser([&](NSAlert *alert) {
            ++opened;
            expectShown([alert accessoryView], *alerts.open->accessoryView);
            desktop.sound.beeps = 0;
            return user(alert);
        });
        ui::Button sender;
        sender.identifier = identifier;
        controller->perform(selector, {.sender = &sender});
        EXPECT_EQ(opened, 1) << selector;
    }

    template <typename Shown>
    static Shown *part(NSAlert *alert, Class kind, unsigned place = 0) {
        return static_cast<Shown *>(find([alert accessoryView], kind, place));
    }
    static NSTextField *label(NSAlert *alert, unsigned place) {
        return part<NSTextField>(alert, [NSTextField class], place);
    }
    static NSTableView *table(NSAlert *alert) { return part<NSTableView>(alert, [NSTableView class]); }
    static NSPopUpButton *popUp(NSAlert *alert) { return part<NSPopUpButton>(alert, [NSPopUpButton class]); }
    static NSSearchField *search(NSAlert *alert) { return part<NSSearchField>(alert, [NSSearchField class]); }

    static void select(NSAlert *alert, std::initializer_list<NSUInteger> rows) {
        NSMutableIndexSet *set = [NSMutableIndexSet indexSet];
        for (const NSUInteger row : rows)
            [set addIndex:row];
        [table(alert) userSelectsRows:set];
    }
    static std::vector<NSUInteger> selected(NSAlert *alert) {
        std::vector<NSUInteger> rows;
        NSIndexSet *set = [table(alert) selectedRowIndexes];
        for (NSUInteger row = [set firstIndex]; row != NSNotFound; row = [set indexGreaterThanIndex:row])
            rows.push_back(row);
        return rows;
    }
    /// The last label, which is the add dialog's summary.
    static std::string hint(NSAlert *alert) {
        NSView *note = [[[alert accessoryView] subviews] lastObject];
        return fromNSString([static_cast<NSTextField *>([[note subviews] objectAtIndex:0]) stringValue]);
    }

    fakes::FakeDesktop desktop;
    RecordingTarget target;
    SystemStatusBar bar{target};
    SystemImages images;
    ComparedAlerts alerts{target};
    std::unique_ptr<AppDelegate> controller;
};

TEST_F(DialogsTest, AddDialogHasItsConstraintsAndNumbers) {
    open("showAddRuleDialog", [](NSAlert *alert) {
        NSView *container = [alert accessoryView];
        EXPECT_TRUE(NSEqualRects([container frame], NSMakeRect(0, 0, 500, 468)));
        EXPECT_EQ([[container subviews] count], 6u);
        EXPECT_EQ(countConstraints(container), 20u + 6u + 4u); // with the header's badge and the note
        NSView *badge = [[[[container subviews] objectAtIndex:0] subviews] objectAtIndex:0];
        EXPECT_EQ(countConstraints(badge), 6u);
        EXPECT_EQ(describe([[badge layer] backgroundColor]), "controlAccent 0.12 in NSAppearanceNameAqua");
        EXPECT_EQ([[badge layer] cornerRadius], 9);
        NSView *note = [[container subviews] lastObject];
        EXPECT_EQ(describe([[note layer] backgroundColor]), "controlAccent 0.08 in NSAppearanceNameAqua");
        EXPECT_EQ([[note layer] cornerRadius], 10);
        NSView *scroll = [[container subviews] objectAtIndex:2];
        EXPECT_EQ([[scroll layer] cornerRadius], 12);
        EXPECT_EQ([[scroll layer] borderWidth], 1);
        EXPECT_EQ(describe([[scroll layer] borderColor]), "separator 0.45 in NSAppearanceNameAqua");
        EXPECT_EQ([[alert window] initialFirstResponder], search(alert));
        return cancel;
    });
}

TEST_F(DialogsTest, ListShowsItsRows) {
    open("showAddRuleDialog", [](NSAlert *alert) {
        EXPECT_EQ([table(alert) numberOfRows], 4);
        NSView *row = [table(alert) viewAtColumn:0 row:1 makeIfNecessary:YES];
        EXPECT_EQ(fromNSString([row identifier]), "appCell");
        EXPECT_EQ(countConstraints(row), 3u + 2u);
        auto *name = static_cast<NSTextField *>(find(row, [NSTextField class]));
        EXPECT_EQ(fromNSString([name stringValue]), "Beta");
        auto *icon = static_cast<NSImageView *>(find(row, [NSImageView class]));
        EXPECT_EQ(originOf([icon image]), "icon /Applications/Beta.app");
        EXPECT_EQ([[icon image] size].width, 24);
        return cancel;
    });
}

TEST_F(DialogsTest, SelectionIsKeptDuringTheSearch) {
    open("showAddRuleDialog", [this](NSAlert *alert) {
        select(alert, {0, 1});
        EXPECT_EQ(hint(alert), "将已选择的 Alpha、Beta 浏览器改成：browser.a");
        [search(alert) userTypes:@"EXAMPLE"];
        EXPECT_EQ([table(alert) numberOfRows], 2);
        EXPECT_EQ(selected(alert), std::vector<NSUInteger>{0});
        select(alert, {0, 1});
        EXPECT_EQ(hint(alert), "将已选择的 Alpha、Beta 等 3 个 App 浏览器改成：browser.a");
        [search(alert) userTypes:@""];
        EXPECT_EQ(selected(alert), (std::vector<NSUInteger>{0, 1, 2}));
        [popUp(alert) userChoosesItemAtIndex:1];
        EXPECT_EQ(hint(alert), "将已选择的 Alpha、Beta 等 3 个 App 浏览器改成：browser.b");
        expectShown([alert accessoryView], *alerts.open->accessoryView);
        return confirm;
    });
    EXPECT_EQ(controller->settings().appRules(), (AppRules{{"com.example.a", "browser.b"},
                                                           {"com.example.c", "browser.b"},
                                                           {"org.sample.b", "browser.b"}}));
    EXPECT_EQ(desktop.sound.beeps, 0);
}

TEST_F(DialogsTest, DeselectedRowsAreDroppedAndHiddenOnesKept) {
    open("showAddRuleDialog", [](NSAlert *alert) {
        select(alert, {0, 3});
        [search(alert) userTypes:@"alpha"];
        select(alert, {});
        [search(alert) userTypes:@"no such name"];
        EXPECT_EQ([table(alert) numberOfRows], 0);
        [search(alert) userTypes:@"  \n"];
        EXPECT_EQ(selected(alert), std::vector<NSUInteger>{3});
        return confirm;
    });
    EXPECT_EQ(controller->settings().appRules(), (AppRules{{"org.sample.d", "browser.a"}}));
}

TEST_F(DialogsTest, AddingNothingBeepsAndCancellingDoesNot) {
    open("showAddRuleDialog", [](NSAlert *) { return confirm; });
    EXPECT_EQ(desktop.sound.beeps, 1);
    open("showAddRuleDialog", [](NSAlert *alert) {
        select(alert, {0});
        return cancel;
    });
    EXPECT_EQ(desktop.sound.beeps, 0);
    EXPECT_TRUE(controller->settings().appRules().empty());
}

TEST_F(DialogsTest, EditDialogSavesAnotherBrowser) {
    controller->settings().setBrowser("browser.a", "com.example.a");
    open(
        "editRuleFromWindow:",
        [](NSAlert *alert) {
            EXPECT_EQ(fromNSString([alert informativeText]), "为 Alpha 指定新的默认浏览器。");
            EXPECT_TRUE(NSEqualRects([[alert accessoryView] frame], NSMakeRect(0, 0, 360, 92)));
            EXPECT_EQ(countConstraints([alert accessoryView]), 4u);
            EXPECT_EQ([popUp(alert) controlSize], 3u);
            EXPECT_FALSE([popUp(alert) target]);
            [popUp(alert) userChoosesItemAtIndex:1];
            return confirm;
        },
        "com.example.a");
    EXPECT_EQ(controller->settings().appRules(), (AppRules{{"com.example.a", "browser.b"}}));
}

TEST_F(DialogsTest, URLRuleDialogAddsTheTypedPattern) {
    open("showAddURLRuleDialog", [](NSAlert *alert) {
        EXPECT_EQ(fromNSString([alert messageText]), "添加 URL 浏览器规则");
        EXPECT_TRUE(NSEqualRects([[alert accessoryView] frame], NSMakeRect(0, 0, 420, 190)));
        EXPECT_EQ(countConstraints([alert accessoryView]), 6u + 4u); // with the note
        auto *field = label(alert, 1);
        EXPECT_TRUE([field isEditable]);
        EXPECT_EQ([field controlSize], 3u);
        [field userTypes:@"  *.example.org/*\n"];
        [popUp(alert) userChoosesItemAtIndex:1];
        return confirm;
    });
    const auto rules = controller->settings().urlRules();
    ASSERT_EQ(rules.size(), 1u);
    EXPECT_EQ(rules[0].pattern, "*.example.org/*");
    EXPECT_EQ(rules[0].browserBundleID, "browser.b");
    open(
        "editURLRuleFromWindow:",
        [](NSAlert *alert) {
            EXPECT_EQ(fromNSString([alert messageText]), "修改 URL 浏览器规则");
            EXPECT_EQ(fromNSString([label(alert, 1) stringValue]), "*.example.org/*");
            EXPECT_EQ(fromNSString([[popUp(alert) selectedItem] title]), "browser.b");
            [label(alert, 1) setStringValue:@"docs"]; // without a notification, like an input method
            return confirm;
        },
        rules[0].id);
    EXPECT_EQ(controller->settings().urlRules().at(0).pattern, "docs");
}

TEST_F(DialogsTest, FeedbackButtonsOpenTheirLinksAndLeaveTheAlertOpen) {
    open("showFeedbackDialog", [this](NSAlert *alert) {
        EXPECT_TRUE(NSEqualRects([[alert accessoryView] frame], NSMakeRect(0, 0, 440, 250)));
        EXPECT_EQ(countConstraints([alert accessoryView]), 4u + 6u + 4u); // with the badge, one for each row
        EXPECT_EQ([[alert buttons] count], 1u);
        unsigned place = 0;
        for (const ContactChannel &channel : contactChannels()) {
            auto *button = part<NSButton>(alert, [NSButton class], place++);
            EXPECT_EQ(fromNSString([button title]), channel.title + "  " + channel.detail);
            EXPECT_EQ(fromNSString([button identifier]), channel.urlString);
            EXPECT_EQ(originOf([button image]), "symbol " + channel.fallbackSymbolName);
            EXPECT_EQ([[button image] size].height, 18);
            EXPECT_EQ([button imagePosition], 7u);
            EXPECT_EQ([button alignment], NSTextAlignmentLeft);
            EXPECT_TRUE([button userClicks]);
        }
        EXPECT_EQ(target.sent.size(), 4u);
        return confirm;
    });
    EXPECT_EQ(desktop.sound.beeps, 0);
}

TEST_F(DialogsTest, SecondDialogBringsTheOpenOneToTheFront) {
    open("showFeedbackDialog", [this](NSAlert *alert) {
        controller->perform("showAddURLRuleDialog");
        EXPECT_EQ([[alert window] timesOrderedFront], 1);
        return confirm;
    });
}

TEST_F(DialogsTest, MenuItemsPerformTheControllersActions) {
    NSMenu *menu = [macos_double::statusItems().at(0) menu];
    NSMenuItem *apps = nil;
    for (NSMenuItem *item in [menu itemArray])
        if ([[item title] isEqualToString:@"Set Browser for Apps"])
            apps = item;
    NSMenuItem *browser = [[[[apps submenu] itemAtIndex:0] submenu] itemAtIndex:1];
    EXPECT_EQ(fromNSString([browser title]), "browser.b");
    EXPECT_TRUE([browser userChooses]);
    EXPECT_EQ(controller->settings().appRules().size(), 1u);
    EXPECT_NE([macos_double::statusItems().at(0) menu], menu);
}

} // namespace
} // namespace fernhop::macos
