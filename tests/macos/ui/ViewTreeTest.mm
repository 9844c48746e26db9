#include "platform/macos/ui/ViewTree.h"

#include "macos/double/UserActions.h"
#include "macos/ui/ExpectShown.h"
#include "macos/ui/InterfaceTest.h"
#include "platform/macos/Conversions.h"
#include "platform/ui/Button.h"
#include "platform/ui/ImageView.h"
#include "platform/ui/PopUpButton.h"
#include "platform/ui/StackView.h"
#include "platform/ui/TableView.h"
#include "platform/ui/TextField.h"

#import <AppKit/AppKit.h>

namespace fernhop::macos {
namespace {

using namespace ui;
using macos_double::describe;

class ViewTreeTest : public InterfaceTest {
  protected:
    /// Shows a view, compares it and returns it as `Shown`, which it must be.
    template <typename Shown, typename Model>
    Shown *show(const std::shared_ptr<Model> &view) {
        NSView *shown = tree->show(view);
        expectShown(shown, *view);
        return static_cast<Shown *>(shown);
    }

    static std::shared_ptr<PopUpButton> popUp(std::vector<std::string> titles) {
        auto button = std::make_shared<PopUpButton>();
        std::vector<MenuItem> items;
        for (const std::string &title : titles) {
            items.emplace_back(title, "");
            items.back().representedObject = "id." + title;
        }
        button->setItems(std::move(items));
        button->action = "updateRuleDialogHint";
        return button;
    }

    RecordingTarget target;
    std::unique_ptr<ViewTree> tree = std::make_unique<ViewTree>(target);
};

TEST_F(ViewTreeTest, PlainViewShowsItsAttributes) {
    auto view = std::make_shared<View>();
    NSView *bare = show<NSView>(view);
    EXPECT_TRUE([bare isMemberOfClass:[NSView class]]);
    view->frameSize = Size{500, 468};
    view->translatesAutoresizingMask = false;
    view->horizontalContentHugging = 250;
    view->horizontalCompressionResistance = 251;
    view->identifier = "appCell";
    NSView *shown = show<NSView>(view);
    EXPECT_EQ([shown frame].size.height, 468);
    EXPECT_FALSE([shown translatesAutoresizingMaskIntoConstraints]);
}

TEST_F(ViewTreeTest, LayerIsPaintedInTheColoursOfTheAppearance) {
    auto view = std::make_shared<View>();
    view->layer = Layer{Color{ColorRole::controlAccent, 0.12}, 9, 1, Color{ColorRole::separator, 0.45}};
    CALayer *layer = [show<NSView>(view) layer];
    EXPECT_EQ(describe([layer backgroundColor]), "controlAccent 0.12 in NSAppearanceNameAqua");
    EXPECT_EQ(describe([layer borderColor]), "separator 0.45 in NSAppearanceNameAqua");
    EXPECT_EQ([layer cornerRadius], 9);
    EXPECT_EQ([layer borderWidth], 1);
}

TEST_F(ViewTreeTest, EveryKindCanHaveALayer) {
    auto stack = std::make_shared<StackView>(Orientation::vertical, StackAlignment::leading, 3,
                                             std::vector<std::shared_ptr<View>>{popUp({"a"})});
    stack->layer = Layer{std::nullopt, 4, 0, std::nullopt};
    EXPECT_EQ(describe([[show<NSView>(stack) layer] backgroundColor]), "none");
}

TEST_F(ViewTreeTest, LabelWrapsAndLimitsItsLines) {
    const auto label = makeWrappingLabel("添加 App", {12, FontWeight::medium}, ColorRole::secondaryLabel, 2);
    auto *shown = show<NSTextField>(label);
    EXPECT_TRUE([shown isMemberOfClass:[NSTextField class]]);
    EXPECT_EQ(fromNSString([shown stringValue]), "添加 App");
    EXPECT_EQ(describe([shown font]), describe([NSFont systemFontOfSize:12 weight:NSFontWeightMedium]));
    EXPECT_EQ([shown lineBreakMode], NSLineBreakByWordWrapping);
    EXPECT_EQ([shown maximumNumberOfLines], 2);
    EXPECT_EQ(
        [shown contentCompressionResistancePriorityForOrientation:NSLayoutConstraintOrientationHorizontal],
        250);
    show<NSTextField>(std::make_shared<TextField>()); // one line that is cut off
}

TEST_F(ViewTreeTest, LabelFollowsTheCore) {
    const auto label = makeWrappingLabel("before", {12, FontWeight::regular}, ColorRole::label);
    auto *shown = show<NSTextField>(label);
    label->setStringValue("after");
    EXPECT_EQ(fromNSString([shown stringValue]), "after");
}

TEST_F(ViewTreeTest, FieldShowsItsAttributes) {
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

TEST_F(ViewTreeTest, FieldWithoutAnActionHasNoTarget) {
    auto field = std::make_shared<TextField>();
    field->editable = true;
    auto *shown = show<NSTextField>(field);
    EXPECT_FALSE([shown target]);
    EXPECT_FALSE([shown userTypes:@"text"]);
    EXPECT_EQ(field->stringValue(), "text");
}

TEST_F(ViewTreeTest, TypedTextReachesTheCoreBeforeTheAction) {
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

TEST_F(ViewTreeTest, ActionBringsTextThatNobodyToldOf) {
    auto field = std::make_shared<TextField>();
    field->editable = true;
    field->action = "doIt:";
    auto *shown = show<NSTextField>(field);
    [shown setStringValue:@"set elsewhere"];
    EXPECT_TRUE([shown userClicks]);
    EXPECT_EQ(dynamic_cast<const TextField &>(*target.sent.at(0).sender).stringValue(), "set elsewhere");
}

TEST_F(ViewTreeTest, FieldFollowsTheCoreAndSendsNothing) {
    auto field = std::make_shared<SearchField>();
    field->editable = true;
    field->action = "filterRuleDialogApplications:";
    auto *shown = show<NSSearchField>(field);
    field->setStringValue("from the core");
    EXPECT_EQ(fromNSString([shown stringValue]), "from the core");
    EXPECT_TRUE(target.sent.empty());
}

TEST_F(ViewTreeTest, TextThatIsNoTextIsLeftAsItIs) {
    auto field = std::make_shared<TextField>();
    field->editable = true;
    field->setStringValue("a\xff");
    auto *shown = static_cast<NSTextField *>(tree->show(field));
    tree->take();
    EXPECT_EQ(field->stringValue(), "a\xff");
    [shown userTypes:@"b"];
    EXPECT_EQ(field->stringValue(), "b");
}

TEST_F(ViewTreeTest, PopUpShowsItsItems) {
    const auto button = popUp({"Safari", "Safari", "Chrome"});
    button->controlSize = ControlSize::large;
    button->selectItem(1);
    auto *shown = show<NSPopUpButton>(button);
    EXPECT_EQ([shown numberOfItems], 3); // two of the same name, too
    EXPECT_EQ([shown indexOfSelectedItem], 1);
    EXPECT_EQ([shown target], target.target());
}

TEST_F(ViewTreeTest, EmptyPopUpIsDisabled) {
    const auto button = popUp({});
    button->enabled = false;
    auto *shown = show<NSPopUpButton>(button);
    EXPECT_FALSE([shown isEnabled]);
    EXPECT_FALSE([shown selectedItem]);
}

TEST_F(ViewTreeTest, ChosenItemReachesTheCoreBeforeTheAction) {
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
    EXPECT_EQ([[shown menu] itemAtIndex:1], second); // the items were left as they are
}

TEST_F(ViewTreeTest, PopUpFollowsTheCore) {
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

TEST_F(ViewTreeTest, ChoiceWithoutAnActionIsTakenAtTheEnd) {
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

TEST_F(ViewTreeTest, ButtonShowsItsAttributes) {
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

TEST_F(ViewTreeTest, CheckBoxBringsItsState) {
    auto box = std::make_shared<Button>();
    box->state = ControlState::on;
    box->action = "toggleRestoreDefaultBrowserOnQuit:";
    auto *shown = show<NSButton>(box);
    EXPECT_EQ([shown state], NSControlStateValueOn);
    [shown setState:NSControlStateValueOff];
    EXPECT_TRUE([shown userClicks]);
    EXPECT_EQ(box->state, ControlState::off);
}

TEST_F(ViewTreeTest, ImageIsScaledAndTinted) {
    auto view = std::make_shared<ImageView>();
    show<NSImageView>(view);
    view->image = std::make_shared<const Image>(ApplicationIcon{"/A.app"}, 24, false);
    view->contentTintColor = Color{ColorRole::controlAccent, 1};
    auto *shown = show<NSImageView>(view);
    EXPECT_EQ([shown imageScaling], 3u);
    EXPECT_EQ(describe([shown contentTintColor]), "controlAccent 1");
}

TEST_F(ViewTreeTest, StackArrangesItsViews) {
    const auto first = makeWrappingLabel("a", {13, FontWeight::regular}, ColorRole::label);
    const auto second = std::make_shared<View>();
    for (const auto orientation : {Orientation::horizontal, Orientation::vertical})
        for (const auto alignment : {StackAlignment::leading, StackAlignment::centerY}) {
            const auto stack = std::make_shared<StackView>(orientation, alignment, 10,
                                                           std::vector<std::shared_ptr<View>>{first, second});
            auto *shown = show<NSStackView>(stack);
            EXPECT_EQ([[shown arrangedSubviews] count], 2u);
        }
}

TEST_F(ViewTreeTest, ControlsAreNamedForScreenReaders) {
    auto search = std::make_shared<SearchField>();
    search->editable = true;
    search->placeholder = "搜索";
    auto field = std::make_shared<TextField>();
    field->editable = true;
    auto button = std::make_shared<Button>();
    auto container = std::make_shared<View>();
    container->subviews = {field,
                           makeWrappingLabel("目标浏览器", {}, ColorRole::label),
                           popUp({"a"}),
                           search,
                           std::make_shared<TableView>(),
                           button};
    std::vector<std::string> names;
    for (NSView *view in [tree->show(container) subviews])
        names.push_back(fromNSString([view accessibilityLabel]));
    EXPECT_EQ(names, (std::vector<std::string>{"", "", "目标浏览器", "搜索", "目标浏览器", ""}));
}

TEST_F(ViewTreeTest, EveryKindOfConstraintBecomesActive) {
    using enum LayoutAttribute;
    const auto inner = std::make_shared<View>();
    const auto stack = std::make_shared<StackView>(Orientation::vertical, StackAlignment::leading, 0,
                                                   std::vector<std::shared_ptr<View>>{inner});
    const auto container = std::make_shared<View>();
    container->subviews = {stack};
    for (const auto attribute : {leading, trailing, top, bottom, centerX, centerY, width, height})
        container->constraints.push_back(aligned(*inner, *container, attribute, -12));
    container->constraints.push_back(atMost(*stack, *container, bottom));
    container->constraints.push_back(pinned(*stack, top, *inner, bottom, 14));
    container->constraints.push_back(fixed(*stack, height, 250));
    stack->constraints.push_back(atLeast(*inner, width, 320));
    NSView *shown = show<NSView>(container);
    EXPECT_EQ(countConstraints(shown), 12u);
    EXPECT_EQ([[shown constraints] count], 9u);
}

TEST_F(ViewTreeTest, NothingIsSentOnceTheTreeIsGone) {
    auto search = std::make_shared<SearchField>();
    search->editable = true;
    search->action = "filterRuleDialogApplications:";
    const auto popUpButton = popUp({"a"});
    auto button = std::make_shared<Button>();
    button->action = "openContactFromButton:";
    auto container = std::make_shared<View>();
    container->layer = Layer{};
    container->subviews = {search, popUpButton, button};
    NSView *shown = tree->show(container);
    tree.reset();
    for (NSControl *control in [shown subviews]) {
        EXPECT_FALSE([control userClicks]);
        EXPECT_FALSE(objectForSender(control, target) == nullptr); // a copy of what shows
    }
    [static_cast<NSTextField *>(find(shown, [NSSearchField class])) userTypes:@"late"];
    [shown viewDidChangeEffectiveAppearance];
    EXPECT_TRUE(target.sent.empty());
    EXPECT_EQ(search->stringValue(), "");
    search->setStringValue("nobody shows this");
    popUpButton->selectItem(0);
}

TEST_F(ViewTreeTest, SendersThatAreNobodysAreCopied) {
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
