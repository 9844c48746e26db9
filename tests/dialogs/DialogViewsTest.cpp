#include "dialogs/DialogViews.h"

#include "dialogs/ExpectViews.h"
#include "fakes/FakeImages.h"
#include "platform/ui/ImageView.h"

#include <gtest/gtest.h>

namespace fernhop {
namespace {

using namespace ui;
using enum LayoutAttribute;

const Color accent{ColorRole::controlAccent, 1};

TEST(SectionHeader, BadgeIsBesideTheTexts) {
    const auto header = sectionHeader("Title", "Subtitle", "paperplane", fakes::FakeImages());
    expectStack(*header, Orientation::horizontal, StackAlignment::centerY, 10, 2);
    const auto text = subview<StackView>(*header, 1);
    expectStack(*text, Orientation::vertical, StackAlignment::leading, 3, 2);
    expectLabel(*subview<TextField>(*text, 0), "Title", {17, FontWeight::semibold}, ColorRole::label);
    expectLabel(*subview<TextField>(*text, 1), "Subtitle", {12, FontWeight::regular},
                ColorRole::secondaryLabel, 2);
}

TEST(SectionHeader, BadgeHasTheTintedSymbolInItsCentre) {
    const auto header = sectionHeader("", "", "paperplane", fakes::FakeImages());
    const auto badge = subview<View>(*header, 0);
    ASSERT_TRUE(badge->layer);
    EXPECT_EQ(*badge->layer, (Layer{Color{ColorRole::controlAccent, 0.12}, 9, 0, std::nullopt}));
    EXPECT_FALSE(badge->translatesAutoresizingMask);
    const auto symbol = subview<ImageView>(*badge, 0);
    ASSERT_TRUE(symbol->image);
    EXPECT_EQ(*symbol->image, Image(SystemSymbol{"paperplane"}, 0, true));
    EXPECT_EQ(symbol->contentTintColor, accent);
    EXPECT_FALSE(symbol->translatesAutoresizingMask);
    EXPECT_EQ(badge->constraints,
              (std::vector{fixed(*badge, width, 30), fixed(*badge, height, 30),
                           aligned(*symbol, *badge, centerX), aligned(*symbol, *badge, centerY),
                           fixed(*symbol, width, 16), fixed(*symbol, height, 16)}));
}

TEST(SectionHeader, MissingSymbolLeavesTheBadgeEmpty) {
    fakes::FakeImages images;
    images.missingSymbols = {"paperplane"};
    const auto header = sectionHeader("", "", "paperplane", images);
    EXPECT_EQ(subview<ImageView>(*subview<View>(*header, 0), 0)->image, nullptr);
}

TEST(StackedRows, BeginAtTheTop) {
    const auto upper = std::make_shared<View>(), lower = std::make_shared<View>();
    for (const auto relation : {LayoutRelation::equal, LayoutRelation::lessThanOrEqual}) {
        const auto container = stackedRows({upper, lower}, 7, {300, 200}, relation);
        EXPECT_EQ(container->frameSize, (Size{300, 200}));
        ASSERT_EQ(container->subviews.size(), 1u);
        const auto stack = subview<StackView>(*container, 0);
        expectStack(*stack, Orientation::vertical, StackAlignment::leading, 7, 2);
        EXPECT_FALSE(stack->translatesAutoresizingMask);
        EXPECT_EQ(container->constraints,
                  (std::vector{aligned(*stack, *container, leading), aligned(*stack, *container, trailing),
                               aligned(*stack, *container, top),
                               Constraint{stack.get(), bottom, relation, container.get(), bottom, 0}}));
    }
}

TEST(NoteView, WrapsWithItsInsets) {
    const auto wrapped = std::make_shared<View>();
    const auto note = noteView(wrapped);
    ASSERT_TRUE(note->layer);
    EXPECT_EQ(*note->layer, (Layer{Color{ColorRole::controlAccent, 0.08}, 10, 0, std::nullopt}));
    EXPECT_FALSE(note->translatesAutoresizingMask);
    EXPECT_FALSE(wrapped->translatesAutoresizingMask);
    EXPECT_EQ(note->subviews, std::vector<std::shared_ptr<View>>{wrapped});
    EXPECT_EQ(note->constraints,
              (std::vector{aligned(*wrapped, *note, leading, 12), aligned(*wrapped, *note, trailing, -12),
                           aligned(*wrapped, *note, top, 10), aligned(*wrapped, *note, bottom, -10)}));
}

} // namespace
} // namespace fernhop
