#include "macos/ui/ExpectShown.h"

#include "macos/double/Inspection.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/ui/NativeImage.h"
#include "platform/ui/Button.h"
#include "platform/ui/ImageView.h"
#include "platform/ui/PopUpButton.h"
#include "platform/ui/StackView.h"
#include "platform/ui/TableView.h"
#include "platform/ui/TextField.h"

#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <stdexcept>
#include <tuple>
#include <vector>

namespace fernhop::macos {

namespace {

using macos_double::describe;
using macos_double::originOf;

/// A constraint as values: both items, attributes, relation and constant.
using Plain = std::tuple<id, NSInteger, NSInteger, id, NSInteger, double>;

/// Compares both trees in parallel and records which view shows which.
class Comparison {
  public:
    void compare(NSView *shown, const ui::View &view, bool isArranged);
    void compareConstraints(NSView *root) const;

  private:
    void compareKinds(NSView *shown, const ui::View &view);
    void compareBeneath(NSView *shown, const ui::View &view);
    void compareText(NSTextField *shown, const ui::TextField &view);
    void comparePopUp(NSPopUpButton *shown, const ui::PopUpButton &view);
    void compareButton(NSButton *shown, const ui::Button &view);
    void compareTable(NSTableView *shown, const ui::TableView &view);

    std::map<const ui::View *, NSView *> shownViews;
};

void compareAttributes(NSView *shown, const ui::View &view, bool isArranged) {
    constexpr auto across = NSLayoutConstraintOrientationHorizontal;
    constexpr auto down = NSLayoutConstraintOrientationVertical;
    const ui::Size size = view.frameSize.value_or(ui::Size{0, 0});
    EXPECT_TRUE(NSEqualRects([shown frame], NSMakeRect(0, 0, size.width, size.height)));
    EXPECT_EQ([shown translatesAutoresizingMaskIntoConstraints],
              view.translatesAutoresizingMask && !isArranged);
    EXPECT_EQ([shown contentHuggingPriorityForOrientation:across],
              static_cast<float>(view.horizontalContentHugging.value_or(250)));
    EXPECT_EQ([shown contentCompressionResistancePriorityForOrientation:across],
              static_cast<float>(view.horizontalCompressionResistance.value_or(750)));
    EXPECT_EQ([shown contentHuggingPriorityForOrientation:down], 250);
    EXPECT_EQ([shown contentCompressionResistancePriorityForOrientation:down], 750);
    EXPECT_EQ(fromNSString([shown identifier]), view.identifier);
}

std::string expectedColor(const ui::Color &color) {
    static const std::map<ui::ColorRole, std::string> names{{ui::ColorRole::label, "label"},
                                                            {ui::ColorRole::secondaryLabel, "secondaryLabel"},
                                                            {ui::ColorRole::tertiaryLabel, "tertiaryLabel"},
                                                            {ui::ColorRole::controlAccent, "controlAccent"},
                                                            {ui::ColorRole::separator, "separator"},
                                                            {ui::ColorRole::white, "white"},
                                                            {ui::ColorRole::black, "black"}};
    return fromNSString([NSString stringWithFormat:@"%s %g", names.at(color.role).c_str(), color.alpha]);
}

std::string expectedFont(const ui::Font &font) {
    static const std::map<ui::FontWeight, NSFontWeight> weights{
        {ui::FontWeight::regular, NSFontWeightRegular},
        {ui::FontWeight::medium, NSFontWeightMedium},
        {ui::FontWeight::semibold, NSFontWeightSemibold}};
    return describe([NSFont systemFontOfSize:font.size weight:weights.at(font.weight)]);
}

std::string expectedLayerColor(NSView *shown, const std::optional<ui::Color> &color) {
    if (!color)
        return "none";
    return expectedColor(*color) + " in " + fromNSString([[shown effectiveAppearance] name]);
}

void compareLayers(NSView *shown, const std::optional<ui::Layer> &layer) {
    EXPECT_EQ([shown wantsLayer], layer.has_value());
    if (!layer)
        return;
    CALayer *painted = [shown layer];
    EXPECT_EQ(describe([painted backgroundColor]), expectedLayerColor(shown, layer->backgroundColor));
    EXPECT_EQ(describe([painted borderColor]), expectedLayerColor(shown, layer->borderColor));
    EXPECT_EQ([painted borderWidth], layer -> borderWidth);
    EXPECT_EQ([painted cornerRadius], layer -> cornerRadius);
}

void compareImages(NSImage *shown, const ui::ImageReference &image) {
    EXPECT_EQ(originOf(shown), originOf(toNSImage(image)));
    if (image)
        EXPECT_EQ([shown size].width, image->side);
}

std::string actionOf(NSControl *control) {
    return [control action] ? fromNSString(NSStringFromSelector([control action])) : "";
}

void Comparison::compare(NSView *shown, const ui::View &view, bool isArranged) {
    SCOPED_TRACE(fromNSString(NSStringFromClass([shown class])));
    shownViews[&view] = shown;
    compareAttributes(shown, view, isArranged);
    compareLayers(shown, view.layer);
    compareKinds(shown, view);
    compareBeneath(shown, view);
}

void Comparison::compareKinds(NSView *shown, const ui::View &view) {
    id any = shown;
    if (const auto *text = dynamic_cast<const ui::TextField *>(&view)) {
        ASSERT_TRUE([any isKindOfClass:[NSTextField class]]);
        compareText(any, *text);
    } else if (const auto *popUp = dynamic_cast<const ui::PopUpButton *>(&view)) {
        ASSERT_TRUE([any isKindOfClass:[NSPopUpButton class]]);
        comparePopUp(any, *popUp);
    } else if (const auto *button = dynamic_cast<const ui::Button *>(&view)) {
        ASSERT_TRUE([any isKindOfClass:[NSButton class]]);
        compareButton(any, *button);
    } else if (const auto *table = dynamic_cast<const ui::TableView *>(&view)) {
        ASSERT_TRUE([any isKindOfClass:[NSTableView class]]);
        compareTable(any, *table);
    } else if (const auto *image = dynamic_cast<const ui::ImageView *>(&view)) {
        ASSERT_TRUE([any isKindOfClass:[NSImageView class]]);
        EXPECT_EQ([static_cast<NSImageView *>(any) imageScaling], NSImageScaleProportionallyUpOrDown);
        EXPECT_EQ(describe([static_cast<NSImageView *>(any) contentTintColor]),
                  image->contentTintColor ? expectedColor(*image->contentTintColor) : "nil");
        compareImages([static_cast<NSImageView *>(any) image], image -> image);
    } else if (const auto *stack = dynamic_cast<const ui::StackView *>(&view)) {
        ASSERT_TRUE([any isKindOfClass:[NSStackView class]]);
        NSStackView *shownStack = any;
        EXPECT_EQ([shownStack orientation], stack -> orientation == ui::Orientation::vertical ? 1 : 0);
        EXPECT_EQ([shownStack alignment], stack -> alignment == ui::StackAlignment::leading ? 5 : 10);
        EXPECT_EQ([shownStack spacing], stack -> spacing);
    }
}

void Comparison::compareBeneath(NSView *shown, const ui::View &view) {
    if (const auto *scroll = dynamic_cast<const ui::ScrollView *>(&view)) {
        ASSERT_TRUE([shown isKindOfClass:[NSScrollView class]]);
        auto *shownScroll = static_cast<NSScrollView *>(shown);
        EXPECT_EQ([shownScroll borderType] != NSNoBorder, scroll->hasBorder);
        EXPECT_EQ([shownScroll hasVerticalScroller], scroll -> hasVerticalScroller);
        compare([shownScroll documentView], *scroll -> documentView, false);
    } else if (!dynamic_cast<const ui::TableView *>(&view)) { // its rows are made on request
        const bool isStack = dynamic_cast<const ui::StackView *>(&view);
        ASSERT_EQ([[shown subviews] count], view.subviews.size());
        for (std::size_t index = 0; index < view.subviews.size(); ++index)
            compare([[shown subviews] objectAtIndex:index], *view.subviews[index], isStack);
    }
}

void Comparison::compareText(NSTextField *shown, const ui::TextField &view) {
    EXPECT_EQ(fromNSString([shown stringValue]), view.stringValue());
    EXPECT_EQ([shown isEditable], view.editable);
    EXPECT_EQ(fromNSString([shown placeholderString]), view.placeholder);
    EXPECT_EQ(actionOf(shown), view.action);
    EXPECT_EQ([shown controlSize], static_cast<NSControlSize>(view.controlSize));
    if (!view.editable) {
        EXPECT_EQ(describe([shown font]), expectedFont(view.font));
        EXPECT_EQ(describe([shown textColor]), expectedColor(view.textColor));
        EXPECT_EQ([shown lineBreakMode] == NSLineBreakByWordWrapping, view.wrapsByWord);
        EXPECT_EQ([shown maximumNumberOfLines], view.maximumLines);
    }
    const auto *search = dynamic_cast<const ui::SearchField *>(&view);
    ASSERT_EQ([shown isKindOfClass:[NSSearchField class]], search != nullptr);
    if (search) {
        auto *cell = static_cast<NSSearchFieldCell *>([shown cell]);
        EXPECT_EQ([cell sendsSearchStringImmediately], search -> sendsSearchStringImmediately);
        EXPECT_EQ([cell sendsWholeSearchString], search -> sendsWholeSearchString);
    }
}

void Comparison::comparePopUp(NSPopUpButton *shown, const ui::PopUpButton &view) {
    ASSERT_EQ([shown numberOfItems], std::ssize(view.items()));
    for (std::size_t index = 0; index < view.items().size(); ++index) {
        NSMenuItem *item = [[shown menu] itemAtIndex:static_cast<NSInteger>(index)];
        EXPECT_EQ(fromNSString([item title]), view.items()[index].title);
        if (const auto *text = std::get_if<std::string>(&view.items()[index].representedObject))
            EXPECT_EQ(textOf([item representedObject]), *text);
        compareImages([item image], view.items()[index].image);
    }
    const auto selected = view.selectedIndex();
    EXPECT_EQ([shown indexOfSelectedItem], selected ? static_cast<NSInteger>(*selected) : -1);
    EXPECT_EQ([shown isEnabled], view.enabled);
    EXPECT_EQ([shown controlSize], static_cast<NSControlSize>(view.controlSize));
    EXPECT_EQ(actionOf(shown), view.action);
}

void Comparison::compareButton(NSButton *shown, const ui::Button &view) {
    EXPECT_EQ(fromNSString([shown title]), view.title);
    EXPECT_EQ(actionOf(shown), view.action);
    EXPECT_EQ([shown state], static_cast<NSControlStateValue>(view.state));
    EXPECT_EQ([shown bezelStyle], 1);
    EXPECT_EQ([shown controlSize], static_cast<NSControlSize>(view.controlSize));
    EXPECT_EQ([shown imagePosition], static_cast<NSCellImagePosition>(view.imagePosition));
    EXPECT_EQ([shown alignment] == NSTextAlignmentLeft, view.alignment == ui::TextAlignment::left);
    compareImages([shown image], view.image);
}

void Comparison::compareTable(NSTableView *shown, const ui::TableView &view) {
    EXPECT_FALSE([shown headerView]);
    EXPECT_EQ([shown rowHeight], view.rowHeight);
    EXPECT_EQ([shown allowsMultipleSelection], view.allowsMultipleSelection);
    EXPECT_FALSE([shown usesAlternatingRowBackgroundColors]);
    EXPECT_EQ([shown selectionHighlightStyle], 0);
    ASSERT_EQ([[shown tableColumns] count], 1u);
    NSTableColumn *column = [[shown tableColumns] objectAtIndex:0];
    EXPECT_EQ(fromNSString([column identifier]), view.columnIdentifier);
    EXPECT_EQ([column width], view.columnWidth);
    EXPECT_EQ(actionOf(shown), view.action);
    EXPECT_EQ([shown numberOfRows], static_cast<NSInteger>(view.numberOfRows()));
}

void collect(NSView *view, std::vector<Plain> &constraints) {
    for (NSLayoutConstraint *constraint in [view constraints]) {
        EXPECT_EQ([constraint multiplier], 1);
        constraints.emplace_back([constraint firstItem], [constraint firstAttribute], [constraint relation],
                                 [constraint secondItem], [constraint secondAttribute],
                                 [constraint constant]);
    }
    if (![view isKindOfClass:[NSTableView class]]) // its rows are made on request
        for (NSView *subview in [view subviews])
            collect(subview, constraints);
}

NSInteger number(ui::LayoutAttribute attribute) {
    static const std::map<ui::LayoutAttribute, NSInteger> numbers{
        {ui::LayoutAttribute::top, 3},     {ui::LayoutAttribute::bottom, 4},
        {ui::LayoutAttribute::leading, 5}, {ui::LayoutAttribute::trailing, 6},
        {ui::LayoutAttribute::width, 7},   {ui::LayoutAttribute::height, 8},
        {ui::LayoutAttribute::centerX, 9}, {ui::LayoutAttribute::centerY, 10}};
    return numbers.at(attribute);
}

NSInteger number(ui::LayoutRelation relation) {
    if (relation == ui::LayoutRelation::equal)
        return 0;
    return relation == ui::LayoutRelation::lessThanOrEqual ? -1 : 1;
}

void Comparison::compareConstraints(NSView *root) const {
    std::vector<Plain> expected;
    for (const auto &[view, shown] : shownViews)
        for (const ui::Constraint &each : view->constraints)
            expected.emplace_back(shownViews.at(each.first), number(each.attribute), number(each.relation),
                                  each.second ? shownViews.at(each.second) : nil,
                                  each.second ? number(each.secondAttribute) : 0, each.constant);
    std::vector<Plain> active;
    collect(root, active);
    std::ranges::sort(expected);
    std::ranges::sort(active);
    EXPECT_TRUE(active == expected) << active.size() << " constraints, expected " << expected.size();
}

void collectKind(NSView *view, Class kind, std::vector<NSView *> &found) {
    for (NSView *subview in [view subviews]) {
        if ([subview isKindOfClass:kind])
            found.push_back(subview);
        collectKind(subview, kind, found);
    }
}

} // namespace

void expectShown(NSView *shown, const ui::View &view) {
    Comparison comparison;
    comparison.compare(shown, view, false);
    comparison.compareConstraints(shown);
}

unsigned countConstraints(NSView *view) {
    std::vector<Plain> constraints;
    collect(view, constraints);
    return static_cast<unsigned>(constraints.size());
}

NSView *find(NSView *root, Class kind, unsigned place) {
    std::vector<NSView *> found;
    collectKind(root, kind, found);
    if (place >= found.size())
        throw std::runtime_error("no such view");
    return found[place];
}

} // namespace fernhop::macos
