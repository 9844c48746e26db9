#import <Foundation/Foundation.h>

@implementation NSDistributedNotificationCenter
+ (NSDistributedNotificationCenter *)defaultCenter {
    static NSDistributedNotificationCenter *shared = [[NSDistributedNotificationCenter alloc] init];
    return shared;
}
@end
