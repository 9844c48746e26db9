#include "statusitem/FallbackGlyph.h"

namespace fernhop {

using namespace ui;

Drawing makeFallbackGlyph(Color ink) {
    constexpr double minX = 0, maxX = statusImageSide, midX = statusImageSide / 2;
    constexpr double minY = 0, maxY = statusImageSide, midY = statusImageSide / 2;
    constexpr double lineWidth = 1.8;
    constexpr double dotRadius = 2.15;

    // The lower arrow is the upper one rotated by 180 degrees about the centre.
    const Path upperArc{
        {MoveTo{{minX + 4.0, midY + 0.6}},
         CurveTo{{maxX - 4.4, maxY - 5.2}, {minX + 4.8, maxY - 4.8}, {maxX - 7.2, maxY - 3.2}}},
        lineWidth};
    const Path upperHead{{MoveTo{{maxX - 5.0, maxY - 6.3}}, LineTo{{maxX - 2.4, maxY - 5.9}},
                          LineTo{{maxX - 3.9, maxY - 8.1}}, ClosePath{}}};
    const Path lowerArc{
        {MoveTo{{maxX - 4.0, midY - 0.6}},
         CurveTo{{minX + 4.4, minY + 5.2}, {maxX - 4.8, minY + 4.8}, {minX + 7.2, minY + 3.2}}},
        lineWidth};
    const Path lowerHead{{MoveTo{{minX + 5.0, minY + 6.3}}, LineTo{{minX + 2.4, minY + 5.9}},
                          LineTo{{minX + 3.9, minY + 8.1}}, ClosePath{}}};
    const Path dot{{Oval{{midX - dotRadius, midY - dotRadius}, 2 * dotRadius, 2 * dotRadius}}};
    return {ink, {upperArc, upperHead, lowerArc, lowerHead, dot}};
}

} // namespace fernhop
