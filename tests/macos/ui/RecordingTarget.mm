#include "macos/ui/RecordingTarget.h"

#include "platform/macos/Conversions.h"

/// A represented object of the core that is not a text.
@interface FernhopTestPayload : NSObject {
  @public
    std::shared_ptr<const fernhop::Object> *payload;
}
@end

@implementation FernhopTestPayload

- (void)dealloc {
    delete payload;
    [super dealloc];
}

@end

@implementation FernhopRecordingTarget

- (instancetype)initWithReport:(const std::function<void(SEL, id)> *)receiver {
    if ((self = [super init]))
        report = receiver;
    return self;
}

- (BOOL)respondsToSelector:(SEL)selector {
    return YES;
}

- (NSMethodSignature *)methodSignatureForSelector:(SEL)selector {
    return [NSMethodSignature signatureWithObjCTypes:"v@:@"];
}

- (void)forwardInvocation:(NSInvocation *)invocation {
    id sender = nil;
    [invocation getArgument:&sender atIndex:2];
    (*report)([invocation selector], sender);
}

@end

namespace fernhop::macos {

RecordingTarget::RecordingTarget()
    : report([this](SEL action, id sender) {
          const std::string selector = fromNSString(NSStringFromSelector(action));
          sent.push_back({selector, objectForSender(sender, *this)});
          if (perform)
              perform(selector, sent.back().sender.get());
      }),
      receiver(Reference<FernhopRecordingTarget>::adopting(
          [[FernhopRecordingTarget alloc] initWithReport:&report])) {}

id RecordingTarget::attachment(const ui::RepresentedObject &value) const {
    if (const auto *text = std::get_if<std::string>(&value))
        return toNSString(*text);
    const auto *object = std::get_if<std::shared_ptr<const Object>>(&value);
    if (!object)
        return nil;
    FernhopTestPayload *box = [[FernhopTestPayload new] autorelease];
    box->payload = new std::shared_ptr<const Object>(*object);
    return box;
}

ui::RepresentedObject RecordingTarget::representedObject(id attachment) const {
    if (const auto text = textOf(attachment))
        return *text;
    if ([attachment isKindOfClass:[FernhopTestPayload class]])
        return *static_cast<FernhopTestPayload *>(attachment)->payload;
    return {};
}

} // namespace fernhop::macos
