#pragma once

#include "platform/ui/View.h"

#include <functional>
#include <optional>
#include <unordered_map>

namespace fernhop::freedesktop {

/// Where a view stands, seen from the upper left corner of the tree's root, in points.
struct Frame {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    bool operator==(const Frame &) const = default;
};

using Frames = std::unordered_map<const ui::View *, Frame>;

/// How high a content is, and how high it must be at the least: a text may lose lines, but not the first one.
struct ContentHeight {
    double whole;
    double least;
};

/// What a view's content needs; nothing where any measure suits it.
struct ContentMeasures {
    std::function<std::optional<double>(const ui::View &)> width;
    std::function<std::optional<ContentHeight>(const ui::View &, double width)> height;
};

/// The frame of every view in the tree of `root`, which is `size` large: from the tree's constraints, its
/// stacks and the measures of its contents, whose height may depend on their width.
[[nodiscard]] Frames layOut(const ui::View &root, ui::Size size, const ContentMeasures &measures);

} // namespace fernhop::freedesktop
