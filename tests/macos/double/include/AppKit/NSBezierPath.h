#pragma once
#import <double/CountedObject.h>

typedef NS_ENUM(NSUInteger, NSLineCapStyle) {
    NSLineCapStyleButt = 0,
    NSLineCapStyleRound = 1,
    NSLineCapStyleSquare = 2,
};

/// Records strokes and fills in the drawing log.
@interface NSBezierPath : FNCountedObject {
    NSMutableString *_steps;
    CGFloat _lineWidth;
    NSLineCapStyle _lineCapStyle;
}
+ (NSBezierPath *)bezierPath;
@property CGFloat lineWidth;
@property NSLineCapStyle lineCapStyle;
- (void)moveToPoint:(NSPoint)point;
- (void)lineToPoint:(NSPoint)point;
- (void)curveToPoint:(NSPoint)endPoint
       controlPoint1:(NSPoint)controlPoint1
       controlPoint2:(NSPoint)controlPoint2;
- (void)closePath;
- (void)appendBezierPathWithOvalInRect:(NSRect)rect;
- (void)stroke;
- (void)fill;
@end
