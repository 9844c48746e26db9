#include "platform/macos/ui/ViewTree.h"

#import <AppKit/AppKit.h>

/// The view of a table's row. It owns the links between its parts and the core's view, since the table
/// decides when it is released.
@interface FernhopRowView : NSTableCellView {
    fernhop::macos::ViewTree *tree;
}
- (instancetype)initWithView:(const std::shared_ptr<fernhop::ui::View> &)view
                      target:(const fernhop::macos::ActionTarget &)target;
@end

@implementation FernhopRowView

- (instancetype)initWithView:(const std::shared_ptr<fernhop::ui::View> &)view
                      target:(const fernhop::macos::ActionTarget &)target {
    if ((self = [super initWithFrame:NSZeroRect])) {
        tree = new fernhop::macos::ViewTree(target);
        tree->showIn(self, view);
    }
    return self;
}

- (void)dealloc {
    delete tree;
    [super dealloc];
}

@end

namespace fernhop::macos {

NSView *viewShowing(const std::shared_ptr<ui::View> &view, const ActionTarget &target) {
    return view ? [[[FernhopRowView alloc] initWithView:view target:target] autorelease] : nil;
}

} // namespace fernhop::macos
