#pragma once
#import <Foundation/Foundation.h>

typedef enum NSApplicationActivationPolicy : NSInteger {
    NSApplicationActivationPolicyRegular = 0,
    NSApplicationActivationPolicyAccessory = 1,
    NSApplicationActivationPolicyProhibited = 2,
} NSApplicationActivationPolicy;

@interface NSRunningApplication : NSObject {
    NSString *_bundleIdentifier;
}
@property(readonly, copy) NSString *bundleIdentifier;
/// An application of the double; nil: without an identifier.
+ (NSRunningApplication *)applicationWithIdentifier:(NSString *)identifier;
@end
