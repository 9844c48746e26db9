#include "macos/double/ui/System.h"

#import <AppKit/NSColor.h>
#import <AppKit/NSFont.h>
#import <QuartzCore/CALayer.h>

const NSFontWeight NSFontWeightRegular = 0;
const NSFontWeight NSFontWeightMedium = 0.23;
const NSFontWeight NSFontWeightSemibold = 0.3;

using fernhop::macos_double::describe;

namespace fernhop::macos_double {

std::string describe(NSColor *color) {
    return color ? [[color description] UTF8String] : "nil";
}

std::string describe(CGColorRef color) {
    return color ? color->description : "none";
}

std::string describe(NSFont *font) {
    return font ? [[font description] UTF8String] : "nil";
}

} // namespace fernhop::macos_double

@implementation NSColor

+ (NSColor *)colorOfRole:(NSString *)role alpha:(CGFloat)alpha {
    NSColor *color = [[self new] autorelease];
    color->_role = [role copy];
    color->_alpha = alpha;
    return color;
}

+ (NSColor *)labelColor {
    return [self colorOfRole:@"label" alpha:1];
}

+ (NSColor *)secondaryLabelColor {
    return [self colorOfRole:@"secondaryLabel" alpha:1];
}

+ (NSColor *)tertiaryLabelColor {
    return [self colorOfRole:@"tertiaryLabel" alpha:1];
}

+ (NSColor *)controlAccentColor {
    return [self colorOfRole:@"controlAccent" alpha:1];
}

+ (NSColor *)separatorColor {
    return [self colorOfRole:@"separator" alpha:1];
}

+ (NSColor *)whiteColor {
    return [self colorOfRole:@"white" alpha:1];
}

+ (NSColor *)blackColor {
    return [self colorOfRole:@"black" alpha:1];
}

- (NSColor *)colorWithAlphaComponent:(CGFloat)alpha {
    return [NSColor colorOfRole:_role alpha:alpha];
}

- (void)set {
    fernhop::macos_double::system().drawingLog.push_back("set " + describe(self));
}

- (CGColorRef)CGColor {
    delete _resolved;
    NSString *appearance = [[NSAppearance currentDrawingAppearance] name];
    _resolved = new CGColor{describe(self) + " in " + [appearance UTF8String]};
    return _resolved;
}

- (NSString *)description {
    return [NSString stringWithFormat:@"%@ %g", _role, _alpha];
}

- (id)copyWithZone:(NSZone *)zone {
    return [self retain];
}

- (void)dealloc {
    delete _resolved;
    [_role release];
    [super dealloc];
}

@end

@implementation CALayer

@synthesize cornerRadius = _cornerRadius;
@synthesize borderWidth = _borderWidth;

- (CGColorRef)backgroundColor {
    return _backgroundColor;
}

- (void)setBackgroundColor:(CGColorRef)color {
    CGColorRef former = _backgroundColor;
    _backgroundColor = color ? new CGColor(*color) : nullptr;
    delete former;
}

- (CGColorRef)borderColor {
    return _borderColor;
}

- (void)setBorderColor:(CGColorRef)color {
    CGColorRef former = _borderColor;
    _borderColor = color ? new CGColor(*color) : nullptr;
    delete former;
}

- (void)dealloc {
    delete _backgroundColor;
    delete _borderColor;
    [super dealloc];
}

@end

@implementation NSFont

@synthesize pointSize = _pointSize;

+ (NSFont *)systemFontOfSize:(CGFloat)fontSize weight:(NSFontWeight)weight {
    NSFont *font = [[self new] autorelease];
    font->_pointSize = fontSize;
    font->_weight = weight;
    return font;
}

- (NSString *)description {
    return [NSString stringWithFormat:@"%g %g", _pointSize, _weight];
}

@end
