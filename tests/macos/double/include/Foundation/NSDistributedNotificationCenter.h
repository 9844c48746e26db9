#pragma once
#import <Foundation/NSNotification.h>

// GNUstep's centre would start a server.
#define NSDistributedNotificationCenter FNDistributedNotificationCenter

@interface NSDistributedNotificationCenter : NSNotificationCenter
+ (NSDistributedNotificationCenter *)defaultCenter;
@end
