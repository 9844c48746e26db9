#pragma once

#include "platform/ui/MenuItem.h"

#import <Foundation/Foundation.h>

/// What a browser item in an application's submenu carries. Its class is registered as
/// "Fernhop.RuleSelection".
@interface FernhopRuleSelection : NSObject {
    NSString *_sourceBundleID;
    NSString *_browserBundleID;
}
@property(nonatomic, readonly, copy) NSString *sourceBundleID;
@property(nonatomic, readonly, copy) NSString *browserBundleID;
- (instancetype)initWithSourceBundleID:(NSString *)source browserBundleID:(NSString *)browser;
/// Ends the process: there is no selection of nothing.
- (instancetype)init;
@end

/// What a browser item in a URL rule's submenu carries. Its class is registered as
/// "Fernhop.URLRuleSelection".
@interface FernhopURLRuleSelection : NSObject {
    NSString *_ruleID;
    NSString *_browserBundleID;
}
@property(nonatomic, readonly, copy) NSString *ruleID;
@property(nonatomic, readonly, copy) NSString *browserBundleID;
- (instancetype)initWithRuleID:(NSString *)rule browserBundleID:(NSString *)browser;
/// Ends the process: there is no selection of nothing.
- (instancetype)init;
@end

namespace fernhop::macos {

/// The object to attach to a menu item for a value, autoreleased; nil for none, and for an object of a type
/// that no item carries.
[[nodiscard]] id attachmentFor(const ui::RepresentedObject &value);

/// The value that an attached object stands for; none for nil and for an object of another class.
[[nodiscard]] ui::RepresentedObject valueOfAttachment(id attachment);

} // namespace fernhop::macos
