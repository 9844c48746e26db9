#include "platform/linux/tray/Symbols.h"

#include <array>
#include <utility>

namespace fernhop::freedesktop {
namespace {

using namespace ui;

constexpr double pen = 1.2;

// What a quarter of a circle takes as a cubic curve, by the radius.
constexpr double roundness = 0.5523;

struct Box {
    double left, bottom, right, top, radius;
};

/// The outline of a box with round corners, clockwise from the left end of its upper edge.
std::vector<PathElement> outline(const Box &box) {
    const auto [left, bottom, right, top, radius] = box;
    const double bend = radius * (1 - roundness);
    return {MoveTo{{left + radius, top}},
            LineTo{{right - radius, top}},
            CurveTo{{right, top - radius}, {right - bend, top}, {right, top - bend}},
            LineTo{{right, bottom + radius}},
            CurveTo{{right - radius, bottom}, {right, bottom + bend}, {right - bend, bottom}},
            LineTo{{left + radius, bottom}},
            CurveTo{{left, bottom + radius}, {left + bend, bottom}, {left, bottom + bend}},
            LineTo{{left, top - radius}},
            CurveTo{{left + radius, top}, {left, top - bend}, {left + bend, top}},
            ClosePath{}};
}

Path stroke(std::vector<PathElement> elements) {
    return {std::move(elements), pen};
}

std::vector<Path> linkCircle() {
    // Two links that lie end to end, with the bar that joins them.
    return {stroke({Oval{{1, 1}, 14, 14}}),
            stroke({MoveTo{{7, 5.6}}, LineTo{{5.9, 5.6}}, CurveTo{{5.9, 10.4}, {2.7, 5.6}, {2.7, 10.4}},
                    LineTo{{7, 10.4}}}),
            stroke({MoveTo{{9, 5.6}}, LineTo{{10.1, 5.6}}, CurveTo{{10.1, 10.4}, {13.3, 5.6}, {13.3, 10.4}},
                    LineTo{{9, 10.4}}}),
            stroke({MoveTo{{6.2, 8}}, LineTo{{9.8, 8}}})};
}

std::vector<Path> appBadge() {
    return {stroke(outline({1.5, 1.5, 12.5, 12.5, 2.6})), {{Oval{{9.6, 9.6}, 5.6, 5.6}}}};
}

std::vector<Path> paperPlane() {
    return {stroke({MoveTo{{13.6, 13.6}}, LineTo{{2, 9}}, LineTo{{6.6, 7}}, LineTo{{9, 2.4}}, ClosePath{}}),
            stroke({MoveTo{{6.6, 7}}, LineTo{{13, 13}}})};
}

std::vector<Path> envelope() {
    return {stroke(outline({1.2, 3, 14.8, 13, 1.6})),
            stroke({MoveTo{{2, 12}}, LineTo{{8, 7}}, LineTo{{14, 12}}})};
}

std::vector<Path> bubble() {
    return {stroke({MoveTo{{4, 4.2}}, CurveTo{{8, 13.6}, {-0.6, 7.2}, {1.4, 13.6}},
                    CurveTo{{8, 3.4}, {16.6, 13.6}, {16.6, 3.4}}, CurveTo{{6.4, 3.6}, {7.5, 3.4}, {7, 3.4}},
                    LineTo{{3.2, 2}}, ClosePath{}})};
}

std::vector<Path> twoPersons() {
    return {stroke({Oval{{3.2, 8.6}, 4.6, 4.6}}),
            stroke({MoveTo{{1, 2.6}}, CurveTo{{10, 2.6}, {1.4, 8.6}, {9.6, 8.6}}, ClosePath{}}),
            stroke({MoveTo{{10, 13}}, CurveTo{{10, 8.8}, {13, 13}, {13, 8.8}}}),
            stroke({MoveTo{{11, 7}}, CurveTo{{15, 2.6}, {13.4, 6.6}, {14.8, 5}}, LineTo{{12.2, 2.6}}})};
}

std::vector<Path> closedBook() {
    return {stroke({MoveTo{{13, 5}}, LineTo{{13, 14.6}}, LineTo{{5, 14.6}},
                    CurveTo{{3, 12.6}, {3.9, 14.6}, {3, 13.7}}, LineTo{{3, 3.2}},
                    CurveTo{{5, 5}, {3, 4.2}, {3.9, 5}}, ClosePath{}}),
            stroke({MoveTo{{3, 3.2}}, CurveTo{{5, 1.4}, {3, 2.2}, {3.9, 1.4}}, LineTo{{13, 1.4}}})};
}

using Maker = std::vector<Path> (*)();

constexpr std::array<std::pair<std::string_view, Maker>, 7> makers{{
    {"link.circle", linkCircle},
    {"app.badge", appBadge},
    {"paperplane", paperPlane},
    {"envelope", envelope},
    {"bubble.left", bubble},
    {"person.2", twoPersons},
    {"book.closed", closedBook},
}};

} // namespace

std::optional<Drawing> symbolNamed(std::string_view name, Color ink) {
    for (const auto &[known, make] : makers)
        if (known == name)
            return Drawing{ink, make()};
    return std::nullopt;
}

} // namespace fernhop::freedesktop
