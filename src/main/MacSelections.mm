#include "main/MacSelections.h"

#include "platform/macos/Conversions.h"
#include "rules/RuleSelection.h"

#include <objc/runtime.h>

#include <cstdio>
#include <cstdlib>

namespace fernhop::macos {
namespace {

[[noreturn]] void unimplementedInitializer(const char *className) {
    std::fprintf(stderr, "Fatal error: Use of unimplemented initializer 'init()' for class '%s'\n",
                 className);
    std::abort();
}

/// The subclass of `base` with this name: a name with a dot cannot be declared in the source.
Class registered(Class base, const char *name) {
    if (Class known = objc_getClass(name))
        return known;
    Class made = objc_allocateClassPair(base, name, 0);
    objc_registerClassPair(made);
    return made;
}

} // namespace
} // namespace fernhop::macos

@implementation FernhopRuleSelection

@synthesize sourceBundleID = _sourceBundleID;
@synthesize browserBundleID = _browserBundleID;

- (instancetype)initWithSourceBundleID:(NSString *)source browserBundleID:(NSString *)browser {
    self = [super init];
    if (self) {
        _sourceBundleID = [source copy];
        _browserBundleID = [browser copy];
    }
    return self;
}

- (instancetype)init {
    fernhop::macos::unimplementedInitializer("Fernhop.RuleSelection");
}

- (void)dealloc {
    [_sourceBundleID release];
    [_browserBundleID release];
    [super dealloc];
}

@end

@implementation FernhopURLRuleSelection

@synthesize ruleID = _ruleID;
@synthesize browserBundleID = _browserBundleID;

- (instancetype)initWithRuleID:(NSString *)rule browserBundleID:(NSString *)browser {
    self = [super init];
    if (self) {
        _ruleID = [rule copy];
        _browserBundleID = [browser copy];
    }
    return self;
}

- (instancetype)init {
    fernhop::macos::unimplementedInitializer("Fernhop.URLRuleSelection");
}

- (void)dealloc {
    [_ruleID release];
    [_browserBundleID release];
    [super dealloc];
}

@end

namespace fernhop::macos {

namespace {

id attachmentFor(const RuleSelection &selection) {
    Class type = registered([FernhopRuleSelection class], "Fernhop.RuleSelection");
    FernhopRuleSelection *object = [type alloc];
    return [[object initWithSourceBundleID:toNSString(selection.sourceBundleID)
                           browserBundleID:toNSString(selection.browserBundleID)] autorelease];
}

id attachmentFor(const URLRuleSelection &selection) {
    Class type = registered([FernhopURLRuleSelection class], "Fernhop.URLRuleSelection");
    FernhopURLRuleSelection *object = [type alloc];
    return [[object initWithRuleID:toNSString(selection.ruleID)
                   browserBundleID:toNSString(selection.browserBundleID)] autorelease];
}

} // namespace

id attachmentFor(const ui::RepresentedObject &value) {
    if (const auto *text = std::get_if<std::string>(&value))
        return toNSString(*text);
    const auto *object = std::get_if<std::shared_ptr<const Object>>(&value);
    if (!object)
        return nil;
    if (const auto *selection = dynamic_cast<const RuleSelection *>(object->get()))
        return attachmentFor(*selection);
    if (const auto *selection = dynamic_cast<const URLRuleSelection *>(object->get()))
        return attachmentFor(*selection);
    return nil;
}

ui::RepresentedObject valueOfAttachment(id attachment) {
    if (auto text = textOf(attachment))
        return std::move(*text);
    if ([attachment isKindOfClass:[FernhopRuleSelection class]]) {
        FernhopRuleSelection *selection = attachment;
        return std::make_shared<const RuleSelection>(fromNSString([selection sourceBundleID]),
                                                     fromNSString([selection browserBundleID]));
    }
    if ([attachment isKindOfClass:[FernhopURLRuleSelection class]]) {
        FernhopURLRuleSelection *selection = attachment;
        return std::make_shared<const URLRuleSelection>(fromNSString([selection ruleID]),
                                                        fromNSString([selection browserBundleID]));
    }
    return {};
}

} // namespace fernhop::macos
