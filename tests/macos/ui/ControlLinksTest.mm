#include "macos/double/UserActions.h"
#include "macos/ui/ViewTest.h"
#include "platform/macos/Conversions.h"
#include "platform/ui/Button.h"
#include "platform/ui/TextField.h"

#import <AppKit/AppKit.h>

namespace fernhop::macos {
namespace {

using namespace ui;

class ControlLinksTest : public ViewTest {};

TEST_F(ControlLinksTest, FieldShowsItsAttributes) {
    auto field = std::make_shared<TextField>();
    field->editable = true;
    field->placeholder = "例如";
    field->setStringValue("*.example.org");
    field->controlSize = ControlSize::large;
    field->action = "doIt:";
    auto *shown = show<NSTextField>(field);
    EXPECT_EQ([shown target], target.target());
    EXPECT_EQ([shown controlSize], 3u);
    EXPECT_TRUE([[shown cell] isScrollable]);
    EXPECT_EQ(tree->firstField(), shown);
}

TEST_F(ControlLinksTest, FieldWithoutAnActionHasNoTarget) {
    auto field = std::make_shared<TextField>();
    field->editable = true;
    auto *shown = show<NSTextField>(field);
    EXPECT_FALSE([shown target]);
    EXPECT_FALSE([shown userTypes:@"text"]);
    EXPECT_EQ(field->stringValue(), "text");
}

TEST_F(ControlLinksTest, TypedTextReachesTheCoreBeforeTheAction) {
    auto field = std::make_shared<SearchField>();
    field->editable = true;
    field->action = "filterRuleDialogApplications:";
    field->sendsSearchStringImmediately = true;
    field->sendsWholeSearchString = false;
    auto *shown = show<NSSearchField>(field);
    std::string seen;
    target.perform = [&](std::string_view, const Object *sender) {
        seen = dynamic_cast<const SearchField &>(*sender).stringValue();
    };
    EXPECT_TRUE([shown userTypes:@"bräu"]);
    EXPECT_EQ(seen, "bräu");
    ASSERT_EQ(target.sent.size(), 1u);
    EXPECT_EQ(target.sent[0].sender, field);
}

TEST_F(ControlLinksTest, ActionReadsTextThatWasNotReported) {
    auto field = std::make_shared<TextField>();
    field->editable = true;
    field->action = "doIt:";
    auto *shown = show<NSTextField>(field);
    [shown setStringValue:@"set elsewhere"];
    EXPECT_TRUE([shown userClicks]);
    EXPECT_EQ(dynamic_cast<const TextField &>(*target.sent.at(0).sender).stringValue(), "set elsewhere");
}

TEST_F(ControlLinksTest, FieldShowsTheCoresChangesAndSendsNothing) {
    auto field = std::make_shared<SearchField>();
    field->editable = true;
    field->action = "filterRuleDialogApplications:";
    auto *shown = show<NSSearchField>(field);
    field->setStringValue("from the core");
    EXPECT_EQ(fromNSString([shown stringValue]), "from the core");
    EXPECT_TRUE(target.sent.empty());
}

TEST_F(ControlLinksTest, InvalidTextIsKept) {
    auto field = std::make_shared<TextField>();
    field->editable = true;
    field->setStringValue("a\xff");
    auto *shown = static_cast<NSTextField *>(tree->show(field));
    tree->take();
    EXPECT_EQ(field->stringValue(), "a\xff");
    [shown userTypes:@"b"];
    EXPECT_EQ(field->stringValue(), "b");
}

TEST_F(ControlLinksTest, PopUpShowsItsItems) {
    const auto button = popUp({"Safari", "Safari", "Chrome"});
    button->controlSize = ControlSize::large;
    button->selectItem(1);
    auto *shown = show<NSPopUpButton>(button);
    EXPECT_EQ([shown numberOfItems], 3); // including two with the same name
    EXPECT_EQ([shown indexOfSelectedItem], 1);
    EXPECT_EQ([shown target], target.target());
}

TEST_F(ControlLinksTest, EmptyPopUpIsDisabled) {
    const auto button = popUp({});
    button->enabled = false;
    auto *shown = show<NSPopUpButton>(button);
    EXPECT_FALSE([shown isEnabled]);
    EXPECT_FALSE([shown selectedItem]);
}

TEST_F(ControlLinksTest, ChosenItemReachesTheCoreBeforeTheAction) {
    const auto button = popUp({"a", "b"});
    auto *shown = show<NSPopUpButton>(button);
    NSMenuItem *second = [[shown menu] itemAtIndex:1];
    std::string seen;
    target.perform = [&](std::string_view selector, const Object *) {
        EXPECT_EQ(selector, "updateRuleDialogHint");
        seen = "called";
    };
    EXPECT_TRUE([shown userChoosesItemAtIndex:1]);
    EXPECT_EQ(seen, "called");
    EXPECT_EQ(target.sent.at(0).sender, button);
    EXPECT_EQ(button->selectedIndex(), 1u);
    EXPECT_EQ([[shown menu] itemAtIndex:1], second); // the items were not replaced
}

TEST_F(ControlLinksTest, PopUpShowsTheCoresChanges) {
    const auto button = popUp({"a", "b"});
    auto *shown = show<NSPopUpButton>(button);
    button->selectItem(1);
    EXPECT_EQ([shown indexOfSelectedItem], 1);
    button->selectItem(9);
    EXPECT_EQ([shown indexOfSelectedItem], -1);
    button->setItems({MenuItem("c", "")});
    expectShown(shown, *button);
    EXPECT_EQ(fromNSString([[shown selectedItem] title]), "c");
    EXPECT_TRUE(target.sent.empty());
}

TEST_F(ControlLinksTest, ChoiceWithoutAnActionIsReadAtTheEnd) {
    const auto button = popUp({"a", "b"});
    button->action = "";
    auto *shown = show<NSPopUpButton>(button);
    EXPECT_FALSE([shown userChoosesItemAtIndex:1]);
    tree->take();
    EXPECT_EQ(button->selectedIndex(), 1u);
    [shown selectItemAtIndex:-1];
    tree->take();
    EXPECT_FALSE(button->selectedIndex());
}

TEST_F(ControlLinksTest, ButtonShowsItsAttributes) {
    auto button = std::make_shared<Button>();
    button->title = "Email  someone@example.org";
    button->action = "openContactFromButton:";
    button->controlSize = ControlSize::large;
    button->image = std::make_shared<const Image>(SystemSymbol{"envelope"}, 18, true);
    button->imagePosition = ImagePosition::leading;
    button->identifier = "mailto:someone@example.org";
    button->alignment = TextAlignment::left;
    button->horizontalContentHugging = lowPriority;
    button->constraints = {atLeast(*button, LayoutAttribute::width, 320)};
    auto *shown = show<NSButton>(button);
    EXPECT_EQ([shown bezelStyle], NSBezelStyleRounded);
    EXPECT_EQ([shown imagePosition], NSImageLeading);
    EXPECT_TRUE([shown userClicks]);
    EXPECT_EQ(target.sent.at(0).selector, "openContactFromButton:");
    EXPECT_EQ(target.sent.at(0).sender, button);
}

TEST_F(ControlLinksTest, CheckBoxReportsItsState) {
    auto box = std::make_shared<Button>();
    box->state = ControlState::on;
    box->action = "toggleRestoreDefaultBrowserOnQuit:";
    auto *shown = show<NSButton>(box);
    EXPECT_EQ([shown state], NSControlStateValueOn);
    [shown setState:NSControlStateValueOff];
    EXPECT_TRUE([shown userClicks]);
    EXPECT_EQ(box->state, ControlState::off);
}

TEST_F(ControlLinksTest, SendersWithoutALinkAreCopied) {
    NSButton *button = [NSButton buttonWithTitle:@"Edit" target:nil action:nullptr];
    [button setIdentifier:@"app.a"];
    [button setState:NSControlStateValueOn];
    const auto copiedButton = std::dynamic_pointer_cast<const Button>(objectForSender(button, target));
    ASSERT_TRUE(copiedButton);
    EXPECT_EQ(copiedButton->identifier, "app.a");
    EXPECT_EQ(copiedButton->title, "Edit");
    EXPECT_EQ(copiedButton->state, ControlState::on);

    NSPopUpButton *chooser = [[[NSPopUpButton alloc] initWithFrame:NSZeroRect pullsDown:NO] autorelease];
    EXPECT_FALSE(dynamic_cast<const PopUpButton &>(*objectForSender(chooser, target)).selectedItem());
    for (NSString *title in @[ @"a", @"b" ]) {
        NSMenuItem *item = [[[NSMenuItem alloc] initWithTitle:title action:nullptr
                                                keyEquivalent:@""] autorelease];
        [item setRepresentedObject:[@"id." stringByAppendingString:title]];
        [[chooser menu] addItem:item];
    }
    [chooser selectItemAtIndex:1];
    const auto copiedPopUp = std::dynamic_pointer_cast<const PopUpButton>(objectForSender(chooser, target));
    ASSERT_TRUE(copiedPopUp && copiedPopUp->selectedItem());
    EXPECT_EQ(copiedPopUp->selectedItem()->representedObject, RepresentedObject("id.b"));

    NSTextField *field = [NSTextField labelWithString:@"text"];
    EXPECT_EQ(dynamic_cast<const TextField &>(*objectForSender(field, target)).stringValue(), "text");
    EXPECT_FALSE(objectForSender(@"no sender", target));
    EXPECT_FALSE(objectForSender(nil, target));
    EXPECT_FALSE(objectForSender([[NSView new] autorelease], target));
}

} // namespace
} // namespace fernhop::macos
