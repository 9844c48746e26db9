#include "platform/macos/ui/Styles.h"

#import <QuartzCore/QuartzCore.h>

namespace fernhop::macos {

namespace {

NSColor *colorOf(ui::ColorRole role) {
    switch (role) {
    case ui::ColorRole::label:
        return [NSColor labelColor];
    case ui::ColorRole::secondaryLabel:
        return [NSColor secondaryLabelColor];
    case ui::ColorRole::tertiaryLabel:
        return [NSColor tertiaryLabelColor];
    case ui::ColorRole::controlAccent:
        return [NSColor controlAccentColor];
    case ui::ColorRole::separator:
        return [NSColor separatorColor];
    case ui::ColorRole::white:
        return [NSColor whiteColor];
    case ui::ColorRole::black:
        return [NSColor blackColor];
    }
    return [NSColor labelColor];
}

NSFontWeight weightOf(ui::FontWeight weight) {
    switch (weight) {
    case ui::FontWeight::regular:
        return NSFontWeightRegular;
    case ui::FontWeight::medium:
        return NSFontWeightMedium;
    case ui::FontWeight::semibold:
        return NSFontWeightSemibold;
    }
    return NSFontWeightRegular;
}

CGColorRef layerColor(const std::optional<ui::Color> &color) {
    return color ? [toNSColor(*color) CGColor] : nullptr;
}

} // namespace

NSColor *toNSColor(const ui::Color &color) {
    NSColor *role = colorOf(color.role);
    return color.alpha < 1 ? [role colorWithAlphaComponent:color.alpha] : role;
}

NSFont *toNSFont(const ui::Font &font) {
    return [NSFont systemFontOfSize:font.size weight:weightOf(font.weight)];
}

void paintLayer(NSView *view, const ui::Layer &layer) {
    [view setWantsLayer:YES];
    const ui::Layer *description = &layer;
    // A layer's colours are fixed: those of the current appearance when they are requested.
    [[view effectiveAppearance] performAsCurrentDrawingAppearance:^{
      CALayer *painted = [view layer];
      [painted setBackgroundColor:layerColor(description->backgroundColor)];
      [painted setBorderColor:layerColor(description->borderColor)];
      [painted setBorderWidth:description->borderWidth];
      [painted setCornerRadius:description->cornerRadius];
    }];
}

} // namespace fernhop::macos
