#include "statusitem/FallbackGlyph.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace fernhop {
namespace {

using namespace ui;

void expectNear(Point actual, Point expected) {
    EXPECT_NEAR(actual.x, expected.x, 1e-9);
    EXPECT_NEAR(actual.y, expected.y, 1e-9);
}

void expectArc(const Path &path, Point from, Point to, Point control1, Point control2) {
    EXPECT_EQ(path.strokeWidth, 1.8);
    ASSERT_EQ(path.elements.size(), 2u);
    expectNear(std::get<MoveTo>(path.elements[0]).to, from);
    const auto &curve = std::get<CurveTo>(path.elements[1]);
    expectNear(curve.to, to);
    expectNear(curve.control1, control1);
    expectNear(curve.control2, control2);
}

void expectHead(const Path &path, Point first, Point second, Point third) {
    EXPECT_EQ(path.strokeWidth, 0);
    ASSERT_EQ(path.elements.size(), 4u);
    expectNear(std::get<MoveTo>(path.elements[0]).to, first);
    expectNear(std::get<LineTo>(path.elements[1]).to, second);
    expectNear(std::get<LineTo>(path.elements[2]).to, third);
    EXPECT_TRUE(std::holds_alternative<ClosePath>(path.elements[3]));
}

TEST(FallbackGlyph, IsTwoArrowsAroundADotInOneColour) {
    const Color ink{ColorRole::white, 1};
    const Drawing glyph = makeFallbackGlyph(ink);
    EXPECT_EQ(glyph.ink, ink);
    ASSERT_EQ(glyph.paths.size(), 5u);
    expectArc(glyph.paths[0], {4.0, 9.6}, {13.6, 12.8}, {4.8, 13.2}, {10.8, 14.8});
    expectHead(glyph.paths[1], {13.0, 11.7}, {15.6, 12.1}, {14.1, 9.9});
    expectArc(glyph.paths[2], {14.0, 8.4}, {4.4, 5.2}, {13.2, 4.8}, {7.2, 3.2});
    expectHead(glyph.paths[3], {5.0, 6.3}, {2.4, 5.9}, {3.9, 8.1});

    EXPECT_EQ(glyph.paths[4].strokeWidth, 0);
    ASSERT_EQ(glyph.paths[4].elements.size(), 1u);
    const auto &dot = std::get<Oval>(glyph.paths[4].elements[0]);
    expectNear(dot.origin, {6.85, 6.85});
    EXPECT_NEAR(dot.width, 4.3, 1e-9);
    EXPECT_NEAR(dot.height, 4.3, 1e-9);
}

} // namespace
} // namespace fernhop
