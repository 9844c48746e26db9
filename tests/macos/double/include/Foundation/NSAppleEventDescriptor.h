#pragma once
#import <Foundation/NSObject.h>

// GNUstep has a class of this name without any method.
#define NSAppleEventDescriptor FNAppleEventDescriptor

@class NSMutableDictionary;
@class NSString;
typedef unsigned int AEEventClass;
typedef unsigned int AEEventID;
typedef unsigned int AEKeyword;

@interface NSAppleEventDescriptor : NSObject {
    NSString *_stringValue;
    NSMutableDictionary *_parameters;
}
@property(readonly, copy) NSString *stringValue;
+ (NSAppleEventDescriptor *)descriptorWithString:(NSString *)string;
- (NSAppleEventDescriptor *)paramDescriptorForKeyword:(AEKeyword)keyword;
- (void)setParamDescriptor:(NSAppleEventDescriptor *)descriptor forKeyword:(AEKeyword)keyword;
@end
