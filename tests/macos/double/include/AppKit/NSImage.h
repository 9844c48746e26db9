#pragma once
#import <double/CountedObject.h>

@interface NSImage : FNCountedObject {
    NSString *_origin;
    NSSize _size;
    BOOL _isTemplate;
    BOOL (^_drawingHandler)(NSRect);
}
+ (NSImage *)imageWithSystemSymbolName:(NSString *)symbolName
              accessibilityDescription:(NSString *)description;
+ (NSImage *)imageWithSize:(NSSize)size
                   flipped:(BOOL)drawingHandlerShouldBeCalledWithFlippedContext
            drawingHandler:(BOOL (^)(NSRect dstRect))drawingHandler;
- (instancetype)initWithSize:(NSSize)size;
- (instancetype)initWithContentsOfURL:(NSURL *)url;
@property NSSize size;
- (BOOL)isTemplate;
- (void)setTemplate:(BOOL)flag;
@end
