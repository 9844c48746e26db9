#pragma once

#include "platform/ui/StackView.h"
#include "platform/ui/TextField.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>

namespace fernhop {

/// A subview of the expected type; otherwise the test ends.
template <typename Type>
std::shared_ptr<Type> subview(const ui::View &parent, std::size_t index) {
    auto child = index < parent.subviews.size() ? std::dynamic_pointer_cast<Type>(parent.subviews[index])
                                                : std::shared_ptr<Type>();
    if (!child)
        throw std::runtime_error("no such subview " + std::to_string(index));
    return child;
}

/// Expects a label that wraps by word and may be compressed horizontally.
inline void expectLabel(const ui::TextField &label, const std::string &text, const ui::Font &font,
                        ui::ColorRole color, int maximumLines = 0) {
    EXPECT_EQ(label.stringValue(), text);
    EXPECT_EQ(label.font, font) << text;
    EXPECT_EQ(label.textColor, (ui::Color{color, 1})) << text;
    EXPECT_EQ(label.maximumLines, maximumLines) << text;
    EXPECT_TRUE(label.wrapsByWord) << text;
    EXPECT_FALSE(label.editable) << text;
    EXPECT_EQ(label.horizontalCompressionResistance, 250) << text;
}

inline void expectStack(const ui::StackView &stack, ui::Orientation orientation, ui::StackAlignment alignment,
                        double spacing, std::size_t count) {
    EXPECT_EQ(stack.orientation, orientation);
    EXPECT_EQ(stack.alignment, alignment);
    EXPECT_EQ(stack.spacing, spacing);
    EXPECT_EQ(stack.subviews.size(), count);
}

} // namespace fernhop
