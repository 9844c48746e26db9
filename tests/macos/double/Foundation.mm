#import <Foundation/Foundation.h>

// GNUstep takes a leading U+FEFF for a byte order mark, as the Mac does not.
@interface NSString (CharactersAsTheyStand)
@end

#pragma clang diagnostic ignored "-Wobjc-protocol-method-implementation"
@implementation NSString (CharactersAsTheyStand)
+ (instancetype)stringWithCharacters:(const unichar *)characters length:(NSUInteger)length {
    return [[[self alloc] initWithBytes:characters
                                 length:length * sizeof(unichar)
                               encoding:NSUTF16LittleEndianStringEncoding] autorelease];
}
@end
