#pragma once
#import <CoreGraphics/CGColor.h>
#import <double/CountedObject.h>

@interface NSColor : FNCountedObject <NSCopying> {
    NSString *_role;
    CGFloat _alpha;
    CGColorRef _resolved;
}
@property(class, readonly, strong) NSColor *labelColor;
@property(class, readonly, strong) NSColor *secondaryLabelColor;
@property(class, readonly, strong) NSColor *tertiaryLabelColor;
@property(class, readonly, strong) NSColor *controlAccentColor;
@property(class, readonly, strong) NSColor *separatorColor;
@property(class, readonly, strong) NSColor *whiteColor;
@property(class, readonly, strong) NSColor *blackColor;
- (NSColor *)colorWithAlphaComponent:(CGFloat)alpha;
- (void)set;
/// Lives as long as the colour; its components are those of the current appearance at the call.
@property(readonly) CGColorRef CGColor;
@end
