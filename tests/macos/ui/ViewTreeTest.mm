#include "platform/macos/ui/ViewTree.h"

#include "macos/double/UserActions.h"
#include "macos/ui/ViewTest.h"
#include "platform/macos/Conversions.h"
#include "platform/ui/Button.h"
#include "platform/ui/ImageView.h"
#include "platform/ui/StackView.h"
#include "platform/ui/TableView.h"
#include "platform/ui/TextField.h"

#import <AppKit/AppKit.h>

namespace fernhop::macos {
namespace {

using namespace ui;
using macos_double::describe;

class ViewTreeTest : public ViewTest {};

TEST_F(ViewTreeTest, PlainViewHasItsAttributes) {
    auto view = std::make_shared<View>();
    NSView *bare = show<NSView>(view);
    EXPECT_TRUE([bare isMemberOfClass:[NSView class]]);
    view->frameSize = Size{500, 468};
    view->translatesAutoresizingMask = false;
    view->horizontalContentHugging = 249;
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
    show<NSTextField>(std::make_shared<TextField>()); // one truncated line
}

TEST_F(ViewTreeTest, LabelShowsTheCoresChanges) {
    const auto label = makeWrappingLabel("before", {12, FontWeight::regular}, ColorRole::label);
    auto *shown = show<NSTextField>(label);
    label->setStringValue("after");
    EXPECT_EQ(fromNSString([shown stringValue]), "after");
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

TEST_F(ViewTreeTest, ControlsHaveNamesForScreenReaders) {
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

TEST_F(ViewTreeTest, NothingIsSentAfterTheTreeIsDestroyed) {
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
        EXPECT_FALSE(objectForSender(control, target) == nullptr); // a copy of the attributes
    }
    [static_cast<NSTextField *>(find(shown, [NSSearchField class])) userTypes:@"late"];
    [shown viewDidChangeEffectiveAppearance];
    EXPECT_TRUE(target.sent.empty());
    EXPECT_EQ(search->stringValue(), "");
    search->setStringValue("nobody shows this");
    popUpButton->selectItem(0);
}

} // namespace
} // namespace fernhop::macos
