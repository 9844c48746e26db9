#include "macos/double/services/Doubles.h"

#import <Foundation/Foundation.h>

#pragma clang diagnostic ignored "-Wobjc-protocol-method-implementation"

/// The defaults of this process only: the user's files are neither read nor written. Values are stored as
/// property lists, so other values are refused as on the Mac.
@interface FNUserDefaults : NSUserDefaults {
    NSMutableDictionary *_values;
}
- (void)forgetAll;
@end

@implementation FNUserDefaults

- (void)forgetAll {
    [_values removeAllObjects];
}

- (id)objectForKey:(NSString *)key {
    NSData *stored = [_values objectForKey:key];
    return stored ? [[NSPropertyListSerialization propertyListWithData:stored
                                                               options:0
                                                                format:NULL
                                                                 error:NULL] objectForKey:@"value"]
                  : nil;
}

- (void)setObject:(id)value forKey:(NSString *)key {
    NSData *stored = [NSPropertyListSerialization
        dataWithPropertyList:[NSDictionary dictionaryWithObject:value forKey:@"value"]
                      format:NSPropertyListBinaryFormat_v1_0
                     options:0
                       error:NULL];
    if (!stored)
        [NSException raise:NSInvalidArgumentException format:@"no property list: %@", value];
    if (!_values)
        _values = [[NSMutableDictionary alloc] init];
    [_values setObject:stored forKey:key];
}

- (void)setBool:(BOOL)value forKey:(NSString *)key {
    [self setObject:[NSNumber numberWithBool:value] forKey:key];
}

- (void)removeObjectForKey:(NSString *)key {
    [_values removeObjectForKey:key];
}

- (NSString *)stringForKey:(NSString *)key {
    id value = [self objectForKey:key];
    if ([value isKindOfClass:[NSNumber class]])
        return [value stringValue];
    return [value isKindOfClass:[NSString class]] ? value : nil;
}

- (BOOL)boolForKey:(NSString *)key {
    id value = [self objectForKey:key];
    if ([value isKindOfClass:[NSNumber class]])
        return [value doubleValue] != 0;
    return [value isKindOfClass:[NSString class]] ? [value boolValue] : NO;
}

- (NSData *)dataForKey:(NSString *)key {
    id value = [self objectForKey:key];
    return [value isKindOfClass:[NSData class]] ? value : nil;
}

- (NSArray *)arrayForKey:(NSString *)key {
    id value = [self objectForKey:key];
    return [value isKindOfClass:[NSArray class]] ? value : nil;
}

- (NSDictionary *)dictionaryForKey:(NSString *)key {
    id value = [self objectForKey:key];
    return [value isKindOfClass:[NSDictionary class]] ? value : nil;
}

// GNUstep requests it as the locale of property lists.
- (NSDictionary *)dictionaryRepresentation {
    return [NSDictionary dictionary];
}

- (BOOL)synchronize {
    return YES;
}

@end

@implementation NSUserDefaults (OfThisProcess)
+ (NSUserDefaults *)standardUserDefaults {
    // Not initialised: that would read the user's files.
    static FNUserDefaults *shared = [FNUserDefaults alloc];
    return shared;
}
@end

void fernhop::macos_double::resetUserDefaults() {
    [static_cast<FNUserDefaults *>([NSUserDefaults standardUserDefaults]) forgetAll];
}
