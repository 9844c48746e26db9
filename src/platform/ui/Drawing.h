#pragma once

#include "platform/ui/Color.h"

#include <variant>
#include <vector>

namespace fernhop::ui {

/// A point in points; the origin is at the lower left, y grows upwards.
struct Point {
    double x;
    double y;

    bool operator==(const Point &) const = default;
};

/// Begins a new part of the path.
struct MoveTo {
    Point to;

    bool operator==(const MoveTo &) const = default;
};

/// A straight line from the current point.
struct LineTo {
    Point to;

    bool operator==(const LineTo &) const = default;
};

/// A cubic Bézier curve.
struct CurveTo {
    Point to;
    Point control1;
    Point control2;

    bool operator==(const CurveTo &) const = default;
};

/// A straight line to the beginning of the current part.
struct ClosePath {
    bool operator==(const ClosePath &) const = default;
};

/// An ellipse inscribed in a rectangle.
struct Oval {
    Point origin; ///< lower left corner of the rectangle
    double width;
    double height;

    bool operator==(const Oval &) const = default;
};

/// One step of a path.
using PathElement = std::variant<MoveTo, LineTo, CurveTo, ClosePath, Oval>;

/// A path, either filled, or stroked with round caps and the default join and miter limit.
struct Path {
    std::vector<PathElement> elements;
    double strokeWidth = 0; ///< in points; 0: the path is filled

    bool operator==(const Path &) const = default;
};

/// Paths that are drawn in order, in one colour.
struct Drawing {
    Color ink;
    std::vector<Path> paths;

    bool operator==(const Drawing &) const = default;
};

} // namespace fernhop::ui
