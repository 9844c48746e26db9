#include "platform/macos/AppleEventLinks.h"

#include "platform/macos/AppleEventConversions.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/Reference.h"

/// Receives events for a handler of the core.
@interface FernhopEventReceiver : NSObject {
    fernhop::LinkEventHandler _handler;
}
- (instancetype)initWithHandler:(fernhop::LinkEventHandler)handler;
- (void)handleGetURLEvent:(NSAppleEventDescriptor *)event withReplyEvent:(NSAppleEventDescriptor *)replyEvent;
@end

@implementation FernhopEventReceiver

- (instancetype)initWithHandler:(fernhop::LinkEventHandler)handler {
    self = [super init];
    if (self)
        _handler = std::move(handler);
    return self;
}

// The reply is not changed: the sender of a link receives no information.
- (void)handleGetURLEvent:(NSAppleEventDescriptor *)event
           withReplyEvent:(NSAppleEventDescriptor *)replyEvent {
    (void)replyEvent;
    fernhop::LinkEventDescriptor reply;
    _handler(fernhop::macos::fromAppleEvent(event), reply);
}

@end

namespace fernhop::macos {

struct AppleEventLinks::Registration {
    Reference<FernhopEventReceiver> receiver;
    FourCharCode eventClass;
    FourCharCode eventID;
};

LinkEventDescriptor fromAppleEvent(NSAppleEventDescriptor *event) {
    LinkEventDescriptor result;
    result.stringValue = textOf([event stringValue]);
    if (NSAppleEventDescriptor *directObject = [event paramDescriptorForKeyword:directObjectKeyword])
        result.parameters[directObjectKeyword] = {textOf([directObject stringValue]), {}};
    return result;
}

AppleEventLinks::AppleEventLinks() = default;

AppleEventLinks::~AppleEventLinks() {
    for (const auto &registration : registrations)
        [[NSAppleEventManager sharedAppleEventManager]
            removeEventHandlerForEventClass:registration->eventClass
                                 andEventID:registration->eventID];
}

void AppleEventLinks::setEventHandler(LinkEventHandler handler, FourCharCode eventClass,
                                      FourCharCode eventID) {
    @autoreleasepool {
        auto receiver = Reference<FernhopEventReceiver>::adopting(
            [[FernhopEventReceiver alloc] initWithHandler:std::move(handler)]);
        [[NSAppleEventManager sharedAppleEventManager] setEventHandler:receiver.get()
                                                           andSelector:@selector(handleGetURLEvent:
                                                                                    withReplyEvent:)
                                                         forEventClass:eventClass
                                                            andEventID:eventID];
        registrations.push_back(
            std::make_unique<Registration>(Registration{std::move(receiver), eventClass, eventID}));
    }
}

} // namespace fernhop::macos
