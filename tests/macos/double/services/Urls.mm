#import <Foundation/Foundation.h>

#pragma clang diagnostic ignored "-Wobjc-protocol-method-implementation"

/// A URL whose query or fragment follows its host, which GNUstep refuses: its path is empty.
@interface FNUrlWithoutPath : NSURL {
    NSString *_text;
}
- (instancetype)initWithText:(NSString *)text;
@end

@implementation FNUrlWithoutPath

- (instancetype)initWithText:(NSString *)text {
    self = [super initWithString:@"double:"];
    _text = [text copy];
    return self;
}

- (void)dealloc {
    [_text release];
    [super dealloc];
}

- (NSString *)absoluteString {
    return _text;
}

@end

@implementation NSURL (AsOnTheMac)

+ (instancetype)URLWithString:(NSString *)text {
    NSURL *url = [[[NSURL alloc] initWithString:text] autorelease];
    const NSRange query =
        [text rangeOfCharacterFromSet:[NSCharacterSet characterSetWithCharactersInString:@"?#"]];
    if (url || query.location == NSNotFound)
        return url;
    NSMutableString *withPath = [NSMutableString stringWithString:text];
    [withPath insertString:@"/" atIndex:query.location];
    return [[[NSURL alloc] initWithString:withPath] autorelease]
               ? [[[FNUrlWithoutPath alloc] initWithText:text] autorelease]
               : nil;
}

@end
