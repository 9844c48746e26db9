#pragma once

#include "platform/ui/MenuItem.h"

#import <Foundation/Foundation.h>

/// The represented object of a browser item in an application's submenu. Its class is registered as
/// "Fernhop.RuleSelection".
@interface FernhopRuleSelection : NSObject {
    NSString *_sourceBundleID;
    NSString *_browserBundleID;
}
@property(nonatomic, readonly, copy) NSString *sourceBundleID;
@property(nonatomic, readonly, copy) NSString *browserBundleID;
- (instancetype)initWithSourceBundleID:(NSString *)source browserBundleID:(NSString *)browser;
/// Ends the process: a selection always has values.
- (instancetype)init;
@end

/// The represented object of a browser item in a URL rule's submenu. Its class is registered as
/// "Fernhop.URLRuleSelection".
@interface FernhopURLRuleSelection : NSObject {
    NSString *_ruleID;
    NSString *_browserBundleID;
}
@property(nonatomic, readonly, copy) NSString *ruleID;
@property(nonatomic, readonly, copy) NSString *browserBundleID;
- (instancetype)initWithRuleID:(NSString *)rule browserBundleID:(NSString *)browser;
/// Ends the process: a selection always has values.
- (instancetype)init;
@end

namespace fernhop::macos {

/// The system's represented object for a value, autoreleased; nil for none, and for an object of another
/// type.
[[nodiscard]] id attachmentFor(const ui::RepresentedObject &value);

/// The value of a represented object; none for nil and for an object of another class.
[[nodiscard]] ui::RepresentedObject valueOfAttachment(id attachment);

} // namespace fernhop::macos
