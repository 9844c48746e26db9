#include "platform/macos/ui/Menus.h"

#include "macos/double/UserActions.h"
#include "macos/ui/InterfaceTest.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/ui/NativeImage.h"
#include "rules/RuleSelection.h"

namespace fernhop::macos {
namespace {

using ui::Menu;
using ui::MenuItem;

class MenusTest : public InterfaceTest {
  protected:
    NSMenu *shown(std::vector<MenuItem> items) { return toNSMenu(Menu{std::move(items)}, target); }

    RecordingTarget target;
};

TEST_F(MenusTest, ItemHasAllAttributes) {
    MenuItem item("Föhn „1“", "clearRule:");
    item.state = ui::ControlState::on;
    item.keyEquivalent = "q";
    item.image = iconOfFile("/Applications/A.app", 16);
    NSMenuItem *shownItem = [shown({item}) itemAtIndex:0];
    EXPECT_EQ(fromNSString([shownItem title]), "Föhn „1“");
    EXPECT_EQ(fromNSString(NSStringFromSelector([shownItem action])), "clearRule:");
    EXPECT_EQ([shownItem target], target.target());
    EXPECT_EQ([shownItem state], NSControlStateValueOn);
    EXPECT_EQ(fromNSString([shownItem keyEquivalent]), "q");
    EXPECT_TRUE([shownItem isEnabled]);
    EXPECT_FALSE([shownItem isSeparatorItem]);
    EXPECT_EQ(macos_double::originOf([shownItem image]), "icon /Applications/A.app");
    EXPECT_EQ([[shownItem image] size].width, 16);
}

TEST_F(MenusTest, EmptyItemHasNoAttributes) {
    MenuItem item("Fernhop", "");
    item.enabled = false;
    NSMenuItem *shownItem = [shown({item}) itemAtIndex:0];
    EXPECT_FALSE([shownItem action]);
    EXPECT_FALSE([shownItem target]);
    EXPECT_EQ([shownItem state], NSControlStateValueOff);
    EXPECT_EQ(fromNSString([shownItem keyEquivalent]), "");
    EXPECT_FALSE([shownItem isEnabled]);
    EXPECT_FALSE([shownItem representedObject]);
    EXPECT_FALSE([shownItem submenu]);
    EXPECT_FALSE([shownItem image]);
}

TEST_F(MenusTest, ItemsKeepTheirOrderAndSeparators) {
    NSMenu *menu = shown({MenuItem("a", ""), MenuItem::separator(), MenuItem("a", ""), MenuItem("c", "")});
    ASSERT_EQ([menu numberOfItems], 4);
    EXPECT_TRUE([[menu itemAtIndex:1] isSeparatorItem]);
    EXPECT_EQ(fromNSString([[menu itemAtIndex:2] title]), "a");
    EXPECT_EQ(fromNSString([[menu itemAtIndex:3] title]), "c");
}

TEST_F(MenusTest, SubmenusBelongToTheirItems) {
    MenuItem inner("inner", "");
    inner.submenu = Menu{{MenuItem("innermost", "clearRule:")}};
    MenuItem outer("outer", "");
    outer.submenu = Menu{{inner}};
    NSMenuItem *shownItem = [shown({outer}) itemAtIndex:0];
    NSMenuItem *innermost = [[[[shownItem submenu] itemAtIndex:0] submenu] itemAtIndex:0];
    EXPECT_EQ(fromNSString([innermost title]), "innermost");
    EXPECT_EQ([innermost target], target.target());
    MenuItem empty("empty", "");
    empty.submenu = Menu{};
    EXPECT_EQ([[[shown({empty}) itemAtIndex:0] submenu] numberOfItems], 0);
}

TEST_F(MenusTest, MenusAreEnabledAutomatically) {
    MenuItem withSubmenu("rules", "");
    withSubmenu.enabled = false;
    withSubmenu.submenu = Menu{};
    MenuItem header("header", "");
    header.enabled = false;
    NSMenu *menu = shown({header, MenuItem("quit", "quit"), withSubmenu});
    EXPECT_TRUE([menu autoenablesItems]);
    EXPECT_TRUE([[[menu itemAtIndex:2] submenu] autoenablesItems]);
    EXPECT_FALSE([[menu itemAtIndex:2] isEnabled]);
    [menu update];
    EXPECT_FALSE([[menu itemAtIndex:0] isEnabled]);
    EXPECT_TRUE([[menu itemAtIndex:1] isEnabled]);
}

TEST_F(MenusTest, ChosenItemPassesItsText) {
    MenuItem item("Remove Rule", "clearURLRule:");
    item.representedObject = "rule-1";
    EXPECT_TRUE([[shown({item}) itemAtIndex:0] userChooses]);
    ASSERT_EQ(target.sent.size(), 1u);
    EXPECT_EQ(target.sent[0].selector, "clearURLRule:");
    const auto *sender = dynamic_cast<const MenuItem *>(target.sent[0].sender.get());
    ASSERT_TRUE(sender);
    EXPECT_EQ(sender->title, "Remove Rule");
    EXPECT_EQ(sender->representedObject, ui::RepresentedObject("rule-1"));
}

TEST_F(MenusTest, ChosenItemPassesItsObject) {
    const auto payload = std::make_shared<const RuleSelection>("app.a", "browser.b");
    MenuItem item("B", "setBrowserForSelectedApp:");
    item.representedObject = payload;
    item.state = ui::ControlState::on;
    EXPECT_TRUE([[shown({item}) itemAtIndex:0] userChooses]);
    const auto *sender = dynamic_cast<const MenuItem *>(target.sent.at(0).sender.get());
    ASSERT_TRUE(sender);
    EXPECT_EQ(std::get<std::shared_ptr<const Object>>(sender->representedObject), payload);
    EXPECT_EQ(sender->state, ui::ControlState::on);
}

TEST_F(MenusTest, ItemsWithoutAnActionSendNothing) {
    EXPECT_FALSE([[shown({MenuItem("Fernhop", "")}) itemAtIndex:0] userChooses]);
    EXPECT_TRUE(target.sent.empty());
}

TEST_F(MenusTest, InvalidTextIsShownWithReplacementCharacters) {
    EXPECT_EQ(fromNSString([[shown({MenuItem("a\xff", "")}) itemAtIndex:0] title]), "a\xEF\xBF\xBD");
}

} // namespace
} // namespace fernhop::macos
