#include "macos/double/AppleEvents.h"
#include "macos/double/Inspection.h"
#include "macos/double/Recorder.h"
#include "macos/double/UserActions.h"
#include "main/MacApplication.h"
#include "main/MacDelegate.h"
#include "platform/macos/Conversions.h"
#include "support/TemporaryHome.h"

#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace fernhop::macos {
namespace {

using Texts = std::vector<std::string>;

constexpr const char *own = "org.fernhop.Fernhop";

/// The whole application on a Mac with two browsers and a mail program, from launch to termination.
class ApplicationTest : public testing::Test {
  protected:
    ApplicationTest() {
        macos_double::reset();
        services().homePath = home.home();
        install("org.example.A", "<key>CFBundleURLTypes</key><array><dict><key>CFBundleURLSchemes</key>"
                                 "<array><string>HTTP</string><string>https</string></array></dict></array>");
        install("org.example.B", "<key>CFBundleURLTypes</key><array><dict><key>CFBundleURLSchemes</key>"
                                 "<array><string>https</string></array></dict></array>");
        install("org.example.Mail", "");
    }
    ~ApplicationTest() override { [pool release]; }

    static macos_double::Services &services() { return macos_double::recorder().services; }
    static NSUserDefaults *defaults() { return [NSUserDefaults standardUserDefaults]; }
    [[nodiscard]] std::string pathOf(const std::string &id) const {
        return home.home() + "/Applications/" + id + ".app";
    }

    void install(const std::string &id, const std::string &keys) {
        home.write(
            pathOf(id) + "/Contents/Info.plist",
            "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>CFBundleIdentifier</key><string>" + id +
                "</string><key>CFBundleName</key><string>" + id + "</string>" + keys + "</dict></plist>");
        services().applications[id] = pathOf(id);
    }

    /// Runs the application with this function as its main loop.
    void run(std::function<void()> loop = {}) {
        services().mainLoop = std::move(loop);
        EXPECT_EQ(runApplication(), 0);
    }

    static void bringToFront(NSString *identifier) {
        [[[NSWorkspace sharedWorkspace] notificationCenter]
            postNotificationName:NSWorkspaceDidActivateApplicationNotification
                          object:nil
                        userInfo:[NSDictionary dictionaryWithObject:[NSRunningApplication
                                                                        applicationWithIdentifier:identifier]
                                                             forKey:NSWorkspaceApplicationKey]];
    }

    /// The opened links, each with the folder of its browser.
    static Texts opened() {
        Texts result;
        for (const auto &call : services().opened) {
            EXPECT_TRUE(call.activates);
            const std::string folder = call.applicationUrl.substr(0, call.applicationUrl.size() - 1);
            result.push_back(call.urls.at(0) + " in " + folder.substr(folder.rfind('/') + 1));
        }
        return result;
    }

    static FernhopAppDelegate *delegate() { return static_cast<id>([NSApp delegate]); }
    static NSStatusItem *statusItem() { return macos_double::statusItems().at(0); }
    static std::string toolTip() { return fromNSString([[statusItem() button] toolTip]); }

    /// The item with this title in the status menu or its submenus; nil when there is none.
    static NSMenuItem *item(NSString *title, NSMenu *menu = [statusItem() menu]) {
        for (NSMenuItem *candidate in [menu itemArray]) {
            if ([[candidate title] isEqualToString:title])
                return candidate;
            if (NSMenuItem *below = [candidate submenu] ? item(title, [candidate submenu]) : nil)
                return below;
        }
        return nil;
    }

    /// The first represented object of this class in the menu.
    static id carried(NSString *className, NSMenu *menu = [statusItem() menu]) {
        for (NSMenuItem *candidate in [menu itemArray]) {
            if ([NSStringFromClass([[candidate representedObject] class]) isEqualToString:className])
                return candidate;
            if (id below = [candidate submenu] ? carried(className, [candidate submenu]) : nil)
                return below;
        }
        return nil;
    }

    support::TemporaryHome home;
    NSAutoreleasePool *pool = [[NSAutoreleasePool alloc] init];
};

TEST_F(ApplicationTest, StartsInOrder) {
    services().beforeLaunch = [&] {
        EXPECT_EQ(macos_double::statusItems().size(), 1U) << "made with the controller";
        EXPECT_FALSE([statusItem() menu]) << "not before launching has finished";
        EXPECT_TRUE(macos_double::deliverLink("https://early/"));
    };
    run([&] { EXPECT_TRUE([statusItem() menu]); });
    EXPECT_EQ(services().lifecycle,
              (Texts{"setDelegate:", "run", "setActivationPolicy: 1", "finished launching"}));
}

TEST_F(ApplicationTest, RoutesTheLinksFromBeforeLaunchInOrder) {
    services().beforeLaunch = [&] {
        for (const auto *link : {"https://one/", "not a url", "https://two/%s%n", "https://three/"})
            EXPECT_TRUE(macos_double::deliverLink(link));
        EXPECT_TRUE(opened().empty());
    };
    run([&] {
        EXPECT_EQ(opened(),
                  (Texts{"https://one/ in org.example.A.app", "https://two/%25s%25n in org.example.A.app",
                         "https://three/ in org.example.A.app"}));
        macos_double::deliverLink("https://later/");
        EXPECT_EQ(opened().size(), 4U);
    });
    EXPECT_TRUE(services().logLines.empty());
}

TEST_F(ApplicationTest, OpensDocumentsInABrowser) {
    services().beforeLaunch = [&] {
        [delegate() application:NSApp openFiles:[NSArray arrayWithObjects:@"/a b.html", @"/ä.xhtml", nil]];
        EXPECT_TRUE(opened().empty());
        EXPECT_EQ(services().lifecycle.back(), "opened 0");
    };
    run([&] { [delegate() application:NSApp openFiles:[NSArray arrayWithObject:@"/c.html"]]; });
    EXPECT_EQ(opened(),
              (Texts{"file:///a%20b.html in org.example.A.app", "file:///%C3%A4.xhtml in org.example.A.app",
                     "file:///c.html in org.example.A.app"}));
}

TEST_F(ApplicationTest, KnowsTheApplicationThatALinkComesFrom) {
    [defaults() setObject:[NSDictionary dictionaryWithObject:@"org.example.B" forKey:@"org.example.Mail"]
                   forKey:@"appRules"];
    services().frontmost.emplace("org.example.Mail");
    run([&] {
        macos_double::deliverLink("https://front/");
        bringToFront(@"org.example.Editor");
        macos_double::deliverLink("https://editor/");
        bringToFront(@"org.example.Mail");
        bringToFront(nil);
        bringToFront(@"org.fernhop.Fernhop");
        macos_double::deliverLink("https://mail/");
    });
    EXPECT_EQ(opened(), (Texts{"https://front/ in org.example.B.app", "https://editor/ in org.example.A.app",
                               "https://mail/ in org.example.B.app"}));
}

TEST_F(ApplicationTest, LogsAndBeepsWhenNoBrowserCanOpenALink) {
    services().homePath = home.home() + "/none";
    run([&] { macos_double::deliverLink("https://a/%20%s"); });
    EXPECT_EQ(
        services().logLines,
        (Texts{"Fernhop: No valid target browser for URL https://a/%20%25s. source=unknown urlRule=none "
               "appRule=none fallback=none"}));
    EXPECT_EQ(macos_double::recorder().beeps, 1);
}

TEST_F(ApplicationTest, LogsAndBeepsOnceWhenABrowserFails) {
    services().openError = "It is broken.";
    run([&] { macos_double::deliverLink("https://a/"); });
    EXPECT_EQ(services().logLines,
              (Texts{"Fernhop: Failed to open https://a/ with org.example.A: It is broken."}));
    EXPECT_EQ(macos_double::recorder().beeps, 1);
}

TEST_F(ApplicationTest, UpdatesItsIconWhenTheThemeChanges) {
    services().handlers["https"] = own;
    run([&] {
        EXPECT_EQ(toolTip(), "Fernhop - App Routing On");
        services().handlers["https"] = "org.example.A";
        [[NSDistributedNotificationCenter defaultCenter]
            postNotificationName:@"AppleInterfaceThemeChangedNotification"
                          object:nil];
        EXPECT_EQ(toolTip(), "Fernhop");
    });
}

TEST_F(ApplicationTest, PerformsTheActionsOfItsMenu) {
    services().handlers = {{"http", "org.example.B"}, {"https", "org.example.B"}};
    run([&] {
        EXPECT_TRUE([item(@"Enable App Routing") userChooses]);
        EXPECT_EQ(services().handlersSet,
                  (std::vector<std::pair<std::string, std::string>>{{"http", own}, {"https", own}}));
        EXPECT_EQ(textOf([defaults() stringForKey:@"routingFallbackBrowserID"]), "org.example.B");
        NSMenuItem *browser = carried(@"Fernhop.RuleSelection");
        ASSERT_TRUE(browser);
        EXPECT_TRUE([browser userChooses]);
        EXPECT_EQ([[defaults() dictionaryForKey:@"appRules"] count], 1U);
        EXPECT_TRUE([item(@"退出时恢复默认浏览器") userChooses]);
        EXPECT_TRUE([defaults() boolForKey:@"restoresDefaultBrowserOnQuit"]);
        install("org.example.C", "<key>CFBundleURLTypes</key><array><dict><key>CFBundleURLSchemes</key>"
                                 "<array><string>http</string></array></dict></array>");
        EXPECT_FALSE(item(@"org.example.C"));
        EXPECT_TRUE([item(@"刷新 App 列表") userChooses]);
        EXPECT_TRUE(item(@"org.example.C"));
    });
}

TEST_F(ApplicationTest, RestoresTheDefaultBrowserWhenItQuits) {
    services().handlers = {{"http", own}, {"https", own}};
    [defaults() setBool:YES forKey:@"restoresDefaultBrowserOnQuit"];
    [defaults() setObject:@"org.example.B" forKey:@"routingFallbackBrowserID"];
    run([&] {
        [delegate() quit];
        EXPECT_EQ(services().handlers["http"], "org.example.B");
        EXPECT_EQ(services().handlers["https"], "org.example.B");
    });
    const Texts end(services().lifecycle.end() - 2, services().lifecycle.end());
    EXPECT_EQ(end, (Texts{"terminate: nil", "reply 1"}));
}

TEST_F(ApplicationTest, DoesNotChangeTheDefaultBrowserOtherwise) {
    services().handlers = {{"http", own}, {"https", own}};
    run([&] { [NSApp terminate:nil]; });
    EXPECT_TRUE(services().handlersSet.empty());
    EXPECT_EQ(services().lifecycle.back(), "reply 1");
}

TEST_F(ApplicationTest, DoesNothingWhenItIsOpenedAgain) {
    run([&] {
        EXPECT_FALSE([delegate() applicationShouldHandleReopen:NSApp hasVisibleWindows:NO]);
        EXPECT_FALSE([delegate() applicationShouldTerminateAfterLastWindowClosed:NSApp]);
    });
}

TEST_F(ApplicationTest, RespondsToEverySelectorOfTheController) {
    run([&] {
        for (NSString *selector in
             [@"init applicationDidFinishLaunching: applicationShouldHandleReopen:hasVisibleWindows: "
              @"applicationShouldTerminateAfterLastWindowClosed: applicationShouldTerminate: "
              @"systemAppearanceDidChange "
              @"activeApplicationDidChange: showAddURLRuleDialog showAddRuleDialog "
              @"filterRuleDialogApplications: "
              @"numberOfRowsInTableView: tableView:viewForTableColumn:row: tableViewSelectionDidChange: "
              @"updateRuleDialogHint enableAppRouting switchSystemDefaultBrowser: setBrowserForSelectedApp: "
              @"clearRule: "
              @"setBrowserForURLRule: editURLRule: clearURLRule: updateDefaultBrowserFromWindow: "
              @"toggleRestoreDefaultBrowserOnQuit: showFeedbackDialog openContactFromButton: "
              @"editRuleFromWindow: "
              @"editURLRuleFromWindow: clearURLRuleFromWindow: clearRuleFromWindow: refreshApplicationList "
              @"quit "
              @"handleGetURLEvent:withReplyEvent:" componentsSeparatedByString:@" "])
            EXPECT_TRUE([delegate() respondsToSelector:NSSelectorFromString(selector)])
                << fromNSString(selector);
    });
}

TEST_F(ApplicationTest, ProvidesKeysForCopyingAndPastingInDialogs) {
    std::string keys;
    run([&] {
        for (NSMenuItem *command in [[[[NSApp mainMenu] itemArray] objectAtIndex:0] submenu].itemArray) {
            EXPECT_FALSE([command target]) << "whoever has the keyboard answers";
            keys += fromNSString(NSStringFromSelector([command action])) +
                    fromNSString([command keyEquivalent]) + " ";
        }
    });
    EXPECT_EQ(keys, "cut:x copy:c paste:v selectAll:a ");
}

TEST_F(ApplicationTest, LetsTheSystemEnableItems) {
    run([&] { EXPECT_FALSE([delegate() respondsToSelector:NSSelectorFromString(@"validateMenuItem:")]); });
}

TEST_F(ApplicationTest, HandlesMessagesOfTheSystemToItsDelegate) {
    [defaults() setObject:[NSDictionary dictionaryWithObject:@"org.example.B" forKey:@"org.example.Mail"]
                   forKey:@"appRules"];
    run([&] {
        NSRunningApplication *mail = [NSRunningApplication applicationWithIdentifier:@"org.example.Mail"];
        [delegate()
            activeApplicationDidChange:
                [NSNotification
                    notificationWithName:NSWorkspaceDidActivateApplicationNotification
                                  object:nil
                                userInfo:[NSDictionary dictionaryWithObject:mail
                                                                     forKey:NSWorkspaceApplicationKey]]];
        NSAppleEventDescriptor *event = [[[NSAppleEventDescriptor alloc] init] autorelease];
        [event setParamDescriptor:[NSAppleEventDescriptor descriptorWithString:@"https://a/"]
                       forKeyword:0x2D2D2D2D];
        [delegate() handleGetURLEvent:event withReplyEvent:event];
        [delegate() systemAppearanceDidChange];
        EXPECT_EQ([delegate() numberOfRowsInTableView:nil], 0);
        EXPECT_FALSE([delegate() tableView:nil viewForTableColumn:nil row:0]);
    });
    EXPECT_EQ(opened(), (Texts{"https://a/ in org.example.B.app"}));
}

} // namespace
} // namespace fernhop::macos
