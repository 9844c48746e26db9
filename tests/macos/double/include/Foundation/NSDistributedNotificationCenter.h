#pragma once
#import <Foundation/NSNotification.h>

// GNUstep's would start a server.
#define NSDistributedNotificationCenter FNDistributedNotificationCenter

@interface NSDistributedNotificationCenter : NSNotificationCenter
+ (NSDistributedNotificationCenter *)defaultCenter;
@end
