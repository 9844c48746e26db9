#include "macos/double/AppleEvents.h"
#include "macos/double/Recorder.h"
#include "platform/macos/AppleEventLinks.h"
#include "platform/macos/SystemApplication.h"
#include "platform/macos/SystemBundles.h"
#include "platform/macos/SystemLog.h"
#include "platform/macos/SystemNotifications.h"
#include "platform/macos/SystemWorkspace.h"
#include "platform/macos/ui/NativeImage.h"

#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <thread>

namespace fernhop::macos {
namespace {

using macos_double::recorder;

class ServicesTest : public testing::Test {
  protected:
    NSAutoreleasePool *pool = [[NSAutoreleasePool alloc] init];
    ServicesTest() { macos_double::reset(); }
    ~ServicesTest() override { [pool release]; }
    static macos_double::Services &services() { return recorder().services; }
};

using Links = ServicesTest;

TEST_F(Links, ArriveAsGetURLEventsWithTheirText) {
    AppleEventLinks links;
    std::vector<std::string> delivered;
    links.setEventHandler(
        [&](const LinkEventDescriptor &event, LinkEventDescriptor &) {
            const auto *directObject = event.paramDescriptorForKeyword(directObjectKeyword);
            delivered.push_back(directObject ? directObject->stringValue.value_or("no text") : "no object");
        },
        getUrlEventCode, getUrlEventCode);
    EXPECT_TRUE(macos_double::deliverLink("https://docs.example/%F0?a=%s 链接"));
    NSAppleEventDescriptor *event = [[[NSAppleEventDescriptor alloc] init] autorelease];
    EXPECT_TRUE(macos_double::deliverAppleEvent(getUrlEventCode, getUrlEventCode, event));
    [event setParamDescriptor:[NSAppleEventDescriptor descriptorWithString:nil]
                   forKeyword:directObjectKeyword];
    EXPECT_TRUE(macos_double::deliverAppleEvent(getUrlEventCode, getUrlEventCode, event));
    EXPECT_EQ(delivered,
              (std::vector<std::string>{"https://docs.example/%F0?a=%s 链接", "no object", "no text"}));
}

TEST_F(Links, AreNotHandledAfterTheirEnd) {
    {
        AppleEventLinks links;
        links.setEventHandler([](const auto &, auto &) {}, getUrlEventCode, getUrlEventCode);
        EXPECT_FALSE(macos_double::deliverAppleEvent(getUrlEventCode, 1, nil)) << "of this kind only";
    }
    EXPECT_FALSE(macos_double::deliverLink("https://docs.example/"));
}

class NotificationsTest : public ServicesTest {
  protected:
    void post(NSDictionary *userInfo) {
        [[[NSWorkspace sharedWorkspace] notificationCenter]
            postNotificationName:NSWorkspaceDidActivateApplicationNotification
                          object:nil
                        userInfo:userInfo];
    }
};

TEST_F(NotificationsTest, ContainTheActivatedApplication) {
    auto centre = SystemNotifications::ofWorkspace();
    std::vector<Notification> seen;
    centre.addObserver(didActivateApplicationNotification,
                       [&](const Notification &notification) { seen.push_back(notification); });
    post(nil);
    post([NSDictionary dictionaryWithObject:@"no application" forKey:NSWorkspaceApplicationKey]);
    post([NSDictionary
        dictionaryWithObject:[NSRunningApplication applicationWithIdentifier:@"org.example.Mail"]
                      forKey:NSWorkspaceApplicationKey]);
    ASSERT_EQ(seen.size(), 3U);
    EXPECT_EQ(seen[0].name, didActivateApplicationNotification);
    EXPECT_FALSE(seen[0].userInfo);
    EXPECT_TRUE(seen[1].userInfo && seen[1].userInfo->empty());
    ASSERT_TRUE(seen[2].userInfo && seen[2].userInfo->contains(workspaceApplicationKey));
    const auto application = std::dynamic_pointer_cast<RunningApplication>(
        seen[2].userInfo->find(workspaceApplicationKey)->second);
    ASSERT_TRUE(application);
    EXPECT_EQ(application->bundleIdentifier(), "org.example.Mail");
}

TEST_F(NotificationsTest, OfTheThemeComeFromTheDistributedCentre) {
    auto centre = SystemNotifications::distributed();
    int changes = 0;
    centre.addObserver(themeChangedNotification, [&](const Notification &) { ++changes; });
    NSNotificationCenter *distributed = [NSDistributedNotificationCenter defaultCenter];
    [distributed postNotificationName:@"AppleInterfaceThemeChangedNotification" object:nil];
    [distributed postNotificationName:@"AnotherNotification" object:nil];
    [[NSNotificationCenter defaultCenter] postNotificationName:@"AppleInterfaceThemeChangedNotification"
                                                        object:nil];
    EXPECT_EQ(changes, 1);
}

TEST_F(NotificationsTest, AreNotDeliveredAfterTheObserversEnd) {
    int seen = 0;
    {
        auto centre = SystemNotifications::ofWorkspace();
        centre.addObserver(didActivateApplicationNotification, [&](const Notification &) { ++seen; });
    }
    post(nil);
    EXPECT_EQ(seen, 0);
}

using WorkspaceCalls = ServicesTest;

TEST_F(WorkspaceCalls, ActivateTheApplicationOnRequest) {
    SystemWorkspace workspace;
    const Url application = Url::fileUrl("/Applications/A.app");
    for (const bool activates : {true, false})
        workspace.openUrls({*Url::parse("https://a/")}, application, {.activates = activates},
                           [](const auto &, const auto &) {});
    const macos_double::OpenCall call{{"https://a/"}, "file:///Applications/A.app", true};
    EXPECT_EQ(services().opened, (std::vector{call, {call.urls, call.applicationUrl, false}}));
}

TEST_F(WorkspaceCalls, ReportTheOutcomeOnAnotherThread) {
    SystemWorkspace workspace;
    services().openError = "Es ging nicht.";
    std::optional<std::string> reason;
    std::thread::id thread;
    workspace.openUrls({*Url::parse("https://a/")}, Url::fileUrl("/Applications/A.app"), {},
                       [&](const auto &application, const auto &error) {
                           EXPECT_FALSE(application);
                           reason = error->localizedDescription;
                           thread = std::this_thread::get_id();
                       });
    EXPECT_EQ(reason, "Es ging nicht.");
    EXPECT_NE(thread, std::this_thread::get_id());
}

TEST_F(WorkspaceCalls, OpenALinkWithTheSystemsHandler) {
    SystemWorkspace workspace;
    EXPECT_TRUE(workspace.openUrl(*Url::parse("mailto:someone@docs.example")));
    EXPECT_EQ(services().openedByDefault, (std::vector<std::string>{"mailto:someone@docs.example"}));
    services().openError = "no";
    EXPECT_FALSE(workspace.openUrl(*Url::parse("mailto:someone@docs.example")));
}

TEST_F(WorkspaceCalls, TheFrontmostApplicationMayHaveNoIdentifier) {
    services().frontmost.emplace(std::nullopt);
    const auto application = SystemWorkspace().frontmostApplication();
    ASSERT_TRUE(application);
    EXPECT_EQ(application->bundleIdentifier(), std::nullopt);
}

TEST_F(WorkspaceCalls, AnIconIsLoadedOnce) {
    const auto icon = SystemWorkspace().iconForFile("/Applications/A.app", 16);
    EXPECT_EQ(*icon, ui::Image(ui::ApplicationIcon{"/Applications/A.app"}, 16, false));
    EXPECT_EQ(toNSImage(icon), toNSImage(icon));
    EXPECT_EQ([toNSImage(icon) size].height, 16);
    EXPECT_EQ(recorder().iconsAsked, 1);
}

using LogTest = ServicesTest;

TEST_F(LogTest, PassesTheLineAsTheFormatStringAndReadsNoArgument) {
    SystemLog().log("Fernhop: https://a/%20%s%n%@%d%1$s%%25%");
    ASSERT_EQ(services().logLines.size(), 1U);
    EXPECT_EQ(services().logLines[0], "Fernhop: https://a/%20%s%n%@%d%1$s%25%");
    EXPECT_EQ(services().logFormats[0], "Fernhop: https://a/%%20%%s%%n%%@%%d%%1$s%%25%%");
}

TEST_F(LogTest, ContainsNoRawControlCharacters) {
    SystemLog().log("a\nb\x1B[31m\xFF");
    EXPECT_EQ(services().logLines, (std::vector<std::string>{"a\\u000Ab\\u001B[31m\\xFF"}));
}

using MainBundle = ServicesTest;

TEST_F(MainBundle, HasNeitherIdentifierNorResourcesOutsideOfABundle) {
    EXPECT_EQ(SystemBundles().mainBundleIdentifier(), std::nullopt);
    EXPECT_EQ(SystemBundles().urlForResource("MenuBarIconDark", "png"), std::nullopt);
}

using ApplicationObject = ServicesTest;

TEST_F(ApplicationObject, SetsThePolicyAndTerminates) {
    SystemApplication application;
    application.setActivationPolicy(ActivationPolicy::accessory);
    application.terminate();
    EXPECT_EQ([[NSApplication sharedApplication] activationPolicy], NSApplicationActivationPolicyAccessory);
    EXPECT_EQ(services().lifecycle[0], "setActivationPolicy: 1");
    EXPECT_EQ(services().lifecycle[1], "terminate: nil");
}

} // namespace
} // namespace fernhop::macos
