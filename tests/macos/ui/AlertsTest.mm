#include "macos/double/UserActions.h"
#include "macos/ui/ExpectShown.h"
#include "macos/ui/InterfaceTest.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/ui/SystemAlerts.h"
#include "platform/ui/PopUpButton.h"
#include "platform/ui/TextField.h"

#import <AppKit/AppKit.h>

namespace fernhop::macos {
namespace {

using namespace ui;
using macos_double::describe;

class AlertsTest : public InterfaceTest {
  protected:
    static Alert alert(std::vector<std::string> buttons = {"添加", "取消"}) {
        return {"添加 App 浏览器规则", "选择一个或多个 App。", std::move(buttons), nullptr};
    }

    /// Shows an alert; `user` operates it and returns the response.
    int run(const Alert &shown, macos_double::User user) {
        macos_double::setUser(std::move(user));
        return alerts.runModal(shown);
    }

    RecordingTarget target;
    SystemAlerts alerts{target};
};

TEST_F(AlertsTest, AlertShowsItsTextsAndButtons) {
    run(alert(), [](NSAlert *shown) {
        EXPECT_EQ(fromNSString([shown messageText]), "添加 App 浏览器规则");
        EXPECT_EQ(fromNSString([shown informativeText]), "选择一个或多个 App。");
        EXPECT_EQ([shown alertStyle], 1u);
        EXPECT_EQ([[shown buttons] count], 2u);
        EXPECT_EQ(fromNSString([[[shown buttons] objectAtIndex:0] title]), "添加");
        EXPECT_EQ(fromNSString([[[shown buttons] objectAtIndex:1] title]), "取消");
        EXPECT_FALSE([shown accessoryView]);
        return NSAlertFirstButtonReturn;
    });
}

TEST_F(AlertsTest, EscapeIsTheLastOfSeveralButtons) {
    run(alert(), [](NSAlert *shown) {
        EXPECT_EQ(fromNSString([[[shown buttons] objectAtIndex:0] keyEquivalent]), "\r");
        EXPECT_EQ(fromNSString([[[shown buttons] objectAtIndex:1] keyEquivalent]), "\033");
        return NSAlertFirstButtonReturn;
    });
    run(alert({"关闭"}), [](NSAlert *shown) {
        EXPECT_EQ(fromNSString([[[shown buttons] objectAtIndex:0] keyEquivalent]), "\r");
        return NSAlertFirstButtonReturn;
    });
}

TEST_F(AlertsTest, ResponseIsThatOfTheButton) {
    for (const int response : {1000, 1001})
        EXPECT_EQ(run(alert(), [=](NSAlert *) { return response; }), response);
}

TEST_F(AlertsTest, OtherWaysToCloseReturnTheLastButton) {
    for (const int response : {-1001, -1000, 0, 1, 999, 1002})
        EXPECT_EQ(run(alert(), [=](NSAlert *) { return response; }), 1001);
    EXPECT_EQ(run(alert({"关闭"}), [](NSAlert *) { return -1000; }), 1000);
}

TEST_F(AlertsTest, ApplicationIsActivatedWithIt) {
    run(alert(), [](NSAlert *) {
        EXPECT_EQ(macos_double::recorder().activations, 1);
        return NSAlertFirstButtonReturn;
    });
}

TEST_F(AlertsTest, OpenAlertIsBroughtToTheFront) {
    EXPECT_FALSE(alerts.bringToFront());
    run(alert(), [this](NSAlert *shown) {
        EXPECT_TRUE(alerts.bringToFront());
        EXPECT_EQ([[shown window] timesOrderedFront], 1);
        EXPECT_EQ(macos_double::recorder().activations, 2);
        return NSAlertFirstButtonReturn;
    });
    EXPECT_FALSE(alerts.bringToFront());
}

TEST_F(AlertsTest, AlertOverAnotherRestoresTheFront) {
    run(alert(), [this](NSAlert *outer) {
        run(alert({"关闭"}), [](NSAlert *) { return NSAlertFirstButtonReturn; });
        EXPECT_TRUE(alerts.bringToFront());
        EXPECT_EQ([[outer window] timesOrderedFront], 1);
        return NSAlertFirstButtonReturn;
    });
}

TEST_F(AlertsTest, FirstFieldHasTheKeyboard) {
    auto field = std::make_shared<TextField>();
    field->editable = true;
    auto container = std::make_shared<View>();
    container->subviews = {makeWrappingLabel("label", {}, ColorRole::label), field};
    Alert shown = alert();
    shown.accessoryView = container;
    run(shown, [&](NSAlert *open) {
        expectShown([open accessoryView], *container);
        EXPECT_EQ([[open window] initialFirstResponder], [[[open accessoryView] subviews] objectAtIndex:1]);
        return NSAlertFirstButtonReturn;
    });
}

TEST_F(AlertsTest, UserChangesAreReadWithoutAnAction) {
    auto popUp = std::make_shared<PopUpButton>();
    popUp->setItems({MenuItem("a", ""), MenuItem("b", "")});
    Alert shown = alert();
    shown.accessoryView = popUp;
    run(shown, [](NSAlert *open) {
        [static_cast<NSPopUpButton *>([open accessoryView]) userChoosesItemAtIndex:1];
        return NSAlertFirstButtonReturn;
    });
    EXPECT_EQ(popUp->selectedIndex(), 1u);
}

TEST_F(AlertsTest, ViewsAreReleasedWhenItIsClosed) {
    Alert shown = alert();
    shown.accessoryView = makeWrappingLabel("label", {}, ColorRole::label);
    run(shown, [](NSAlert *) { return NSAlertFirstButtonReturn; });
    EXPECT_TRUE(macos_double::liveObjects().empty());
    std::weak_ptr<View> view = shown.accessoryView;
    shown.accessoryView.reset();
    EXPECT_TRUE(view.expired());
}

TEST_F(AlertsTest, LayersFollowTheAppearanceWhileItIsOpen) {
    auto box = std::make_shared<View>();
    box->layer = Layer{Color{ColorRole::controlAccent, 0.08}, 10, 0, std::nullopt};
    auto container = std::make_shared<View>();
    container->subviews = {box};
    Alert shown = alert();
    shown.accessoryView = container;
    run(shown, [&](NSAlert *open) {
        CALayer *layer = [[[[open accessoryView] subviews] objectAtIndex:0] layer];
        EXPECT_EQ(describe([layer backgroundColor]), "controlAccent 0.08 in NSAppearanceNameAqua");
        macos_double::setSystemAppearance(NSAppearanceNameDarkAqua);
        EXPECT_EQ(describe([layer backgroundColor]), "controlAccent 0.08 in NSAppearanceNameDarkAqua");
        expectShown([open accessoryView], *container);
        return NSAlertFirstButtonReturn;
    });
}

} // namespace
} // namespace fernhop::macos
