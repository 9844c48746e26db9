#pragma once
#import <CoreGraphics/CGColor.h>
#import <double/CountedObject.h>

/// Keeps its colours as descriptions that can be compared.
@interface CALayer : FNCountedObject {
    CGColorRef _backgroundColor;
    CGColorRef _borderColor;
    CGFloat _cornerRadius;
    CGFloat _borderWidth;
}
@property CGColorRef backgroundColor;
@property CGColorRef borderColor;
@property CGFloat cornerRadius;
@property CGFloat borderWidth;
@end
