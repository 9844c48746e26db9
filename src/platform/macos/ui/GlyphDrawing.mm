#include "platform/macos/ui/GlyphDrawing.h"

#include "platform/macos/ui/Styles.h"

#include <variant>

namespace fernhop::macos {

namespace {

/// Adds one step to a path in the rectangle whose lower left corner is `origin`.
struct AddTo {
    NSBezierPath *path;
    NSPoint origin;

    [[nodiscard]] NSPoint at(const ui::Point &point) const {
        return NSMakePoint(origin.x + point.x, origin.y + point.y);
    }
    void operator()(const ui::MoveTo &move) const { [path moveToPoint:at(move.to)]; }
    void operator()(const ui::LineTo &line) const { [path lineToPoint:at(line.to)]; }
    void operator()(const ui::CurveTo &curve) const {
        [path curveToPoint:at(curve.to) controlPoint1:at(curve.control1) controlPoint2:at(curve.control2)];
    }
    void operator()(const ui::ClosePath &) const { [path closePath]; }
    void operator()(const ui::Oval &oval) const {
        const NSPoint corner = at(oval.origin);
        [path appendBezierPathWithOvalInRect:NSMakeRect(corner.x, corner.y, oval.width, oval.height)];
    }
};

void draw(const ui::Path &path, NSPoint origin) {
    NSBezierPath *outline = [NSBezierPath bezierPath];
    for (const ui::PathElement &element : path.elements)
        std::visit(AddTo{outline, origin}, element);
    if (path.strokeWidth > 0) {
        [outline setLineWidth:path.strokeWidth];
        [outline setLineCapStyle:NSLineCapStyleRound];
        [outline stroke];
    } else {
        [outline fill];
    }
}

} // namespace

NSImage *imageOfDrawing(const ui::Drawing &drawing, NSSize size) {
    const ui::Drawing paths = drawing; // a copy for the handler, which runs long after this call
    return [NSImage imageWithSize:size
                          flipped:NO
                   drawingHandler:^BOOL(NSRect rectangle) {
                     [toNSColor(paths.ink) set];
                     for (const ui::Path &path : paths.paths)
                         draw(path, rectangle.origin);
                     return YES;
                   }];
}

} // namespace fernhop::macos
