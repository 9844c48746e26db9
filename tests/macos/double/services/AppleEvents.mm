#include "macos/double/AppleEvents.h"

#include "macos/double/services/Doubles.h"

#include <map>
#include <utility>

namespace {

struct Handler {
    id object;
    SEL selector;
};

std::map<std::pair<AEEventClass, AEEventID>, Handler> handlers;

} // namespace

namespace fernhop::macos_double {

void resetAppleEvents() {
    handlers.clear();
}

bool deliverAppleEvent(AEEventClass eventClass, AEEventID eventID, NSAppleEventDescriptor *event) {
    const auto found = handlers.find({eventClass, eventID});
    if (found == handlers.end())
        return false;
    [found->second.object performSelector:found->second.selector
                               withObject:event
                               withObject:[[[NSAppleEventDescriptor alloc] init] autorelease]];
    return true;
}

bool deliverLink(const std::string &link) {
    NSAppleEventDescriptor *event = [[[NSAppleEventDescriptor alloc] init] autorelease];
    [event setParamDescriptor:[NSAppleEventDescriptor
                                  descriptorWithString:[NSString stringWithUTF8String:link.c_str()]]
                   forKeyword:0x2D2D2D2D];
    return deliverAppleEvent(0x4755524C, 0x4755524C, event);
}

} // namespace fernhop::macos_double

@implementation NSAppleEventDescriptor

@synthesize stringValue = _stringValue;

+ (NSAppleEventDescriptor *)descriptorWithString:(NSString *)string {
    NSAppleEventDescriptor *descriptor = [[[self alloc] init] autorelease];
    descriptor->_stringValue = [string copy];
    return descriptor;
}

- (NSAppleEventDescriptor *)paramDescriptorForKeyword:(AEKeyword)keyword {
    return [_parameters objectForKey:[NSNumber numberWithUnsignedInt:keyword]];
}

- (void)setParamDescriptor:(NSAppleEventDescriptor *)descriptor forKeyword:(AEKeyword)keyword {
    if (!_parameters)
        _parameters = [[NSMutableDictionary alloc] init];
    [_parameters setObject:descriptor forKey:[NSNumber numberWithUnsignedInt:keyword]];
}

- (void)dealloc {
    [_stringValue release];
    [_parameters release];
    [super dealloc];
}

@end

@implementation NSAppleEventManager

+ (NSAppleEventManager *)sharedAppleEventManager {
    static NSAppleEventManager *shared = [[NSAppleEventManager alloc] init];
    return shared;
}

// Handlers are not retained, as on the Mac.
- (void)setEventHandler:(id)handler
            andSelector:(SEL)handleEventSelector
          forEventClass:(AEEventClass)eventClass
             andEventID:(AEEventID)eventID {
    handlers[{eventClass, eventID}] = {handler, handleEventSelector};
}

- (void)removeEventHandlerForEventClass:(AEEventClass)eventClass andEventID:(AEEventID)eventID {
    handlers.erase({eventClass, eventID});
}

@end
