#include "macos/double/ui/System.h"

#import <AppKit/NSBezierPath.h>
#import <AppKit/NSImage.h>

#include <sstream>

namespace {

using fernhop::macos_double::system;

template <typename... Parts>
std::string composed(const Parts &...parts) {
    std::ostringstream text;
    (text << ... << parts);
    return text.str();
}

std::string words(NSPoint point) {
    return composed(" ", point.x, " ", point.y);
}

} // namespace

@implementation NSBezierPath

@synthesize lineWidth = _lineWidth;
@synthesize lineCapStyle = _lineCapStyle;

+ (NSBezierPath *)bezierPath {
    return [[self new] autorelease];
}

- (instancetype)init {
    if ((self = [super init])) {
        _steps = [NSMutableString new];
        _lineWidth = 1;
    }
    return self;
}

- (void)add:(const std::string &)step {
    if ([_steps length] > 0)
        [_steps appendString:@","];
    [_steps appendFormat:@" %s", step.c_str()];
}

- (void)moveToPoint:(NSPoint)point {
    [self add:"move" + words(point)];
}

- (void)lineToPoint:(NSPoint)point {
    [self add:"line" + words(point)];
}

- (void)curveToPoint:(NSPoint)endPoint
       controlPoint1:(NSPoint)controlPoint1
       controlPoint2:(NSPoint)controlPoint2 {
    [self add:"curve" + words(endPoint) + words(controlPoint1) + words(controlPoint2)];
}

- (void)closePath {
    [self add:"close"];
}

- (void)appendBezierPathWithOvalInRect:(NSRect)rect {
    [self add:composed("oval", words(rect.origin), " ", rect.size.width, " ", rect.size.height)];
}

- (void)stroke {
    system().drawingLog.push_back(
        composed("stroke ", _lineWidth, " cap ", unsigned(_lineCapStyle), ":", [_steps UTF8String]));
}

- (void)fill {
    system().drawingLog.push_back(composed("fill:", [_steps UTF8String]));
}

- (void)dealloc {
    [_steps release];
    [super dealloc];
}

@end

@implementation NSImage

@synthesize size = _size;

+ (NSImage *)imageWithSystemSymbolName:(NSString *)symbolName
              accessibilityDescription:(NSString *)description {
    static NSArray *const known = [@[
        @"link.circle", @"app.badge", @"envelope", @"bubble.left", @"person.2", @"book.closed", @"paperplane"
    ] retain];
    if (![known containsObject:symbolName])
        return nil;
    NSImage *image = [self imageOfOrigin:[@"symbol " stringByAppendingString:symbolName]];
    image->_isTemplate = YES;
    return image;
}

+ (NSImage *)imageOfOrigin:(NSString *)origin {
    NSImage *image = [[self new] autorelease];
    image->_origin = [origin copy];
    return image;
}

+ (NSImage *)imageWithSize:(NSSize)size
                   flipped:(BOOL)flipped
            drawingHandler:(BOOL (^)(NSRect dstRect))drawingHandler {
    NSImage *image = [[self new] autorelease];
    image->_origin = flipped ? @"flipped drawing" : @"drawing";
    image->_size = size;
    image->_drawingHandler = Block_copy(drawingHandler);
    return image;
}

- (instancetype)initWithSize:(NSSize)size {
    if ((self = [super init]))
        _size = size;
    return self;
}

- (instancetype)initWithContentsOfURL:(NSURL *)url {
    if (!(self = [super init]))
        return nil;
    NSData *contents = [NSData dataWithContentsOfFile:[url path]];
    constexpr unsigned char signature[] = {0x89, 'P', 'N', 'G'};
    if ([contents length] < sizeof signature || memcmp([contents bytes], signature, sizeof signature) != 0) {
        [self release];
        return nil;
    }
    _origin = [[@"file " stringByAppendingString:[url path]] copy];
    return self;
}

- (BOOL)isTemplate {
    return _isTemplate;
}

- (void)setTemplate:(BOOL)flag {
    _isTemplate = flag;
}

- (fernhop::macos_double::Drawn)draw {
    system().drawingLog.clear();
    const BOOL answer = _drawingHandler && _drawingHandler(NSMakeRect(0, 0, _size.width, _size.height));
    return {answer == YES, system().drawingLog};
}

- (NSString *)description {
    return _origin;
}

- (void)dealloc {
    if (_drawingHandler)
        Block_release(_drawingHandler);
    [_origin release];
    [super dealloc];
}

@end

namespace fernhop::macos_double {

std::string originOf(NSImage *image) {
    return image ? [[image description] UTF8String] : "nil";
}

NSImage *imageOfOrigin(NSString *origin) {
    return [NSImage imageOfOrigin:origin];
}

Drawn draw(NSImage *image) {
    return [image draw];
}

} // namespace fernhop::macos_double
