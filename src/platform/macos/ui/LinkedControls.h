#pragma once

#include "platform/macos/ui/ViewLink.h"

#import <AppKit/AppKit.h>

/// What is linked knows its link, so that the core's view is found when it sends an action.
@interface NSView (FernhopLinked)
/// Not owned; null before the link is made, once it is gone, and for everything but the classes below.
- (fernhop::macos::ViewLink *)fernhopLink;
- (void)setFernhopLink:(fernhop::macos::ViewLink *)link;
@end

@interface FernhopTextField : NSTextField {
    fernhop::macos::ViewLink *fernhopLink;
}
@property fernhop::macos::ViewLink *fernhopLink;
@end

@interface FernhopSearchField : NSSearchField {
    fernhop::macos::ViewLink *fernhopLink;
}
@property fernhop::macos::ViewLink *fernhopLink;
@end

@interface FernhopPopUpButton : NSPopUpButton {
    fernhop::macos::ViewLink *fernhopLink;
}
@property fernhop::macos::ViewLink *fernhopLink;
@end

@interface FernhopButton : NSButton {
    fernhop::macos::ViewLink *fernhopLink;
}
@property fernhop::macos::ViewLink *fernhopLink;
@end

@interface FernhopTableView : NSTableView {
    fernhop::macos::ViewLink *fernhopLink;
}
@property fernhop::macos::ViewLink *fernhopLink;
@end

/// Has its link show its layer again when the appearance changes.
@interface FernhopLayerView : NSView {
    fernhop::macos::ViewLink *fernhopLink;
}
@property fernhop::macos::ViewLink *fernhopLink;
@end

/// Has its link show its layer again when the appearance changes.
@interface FernhopScrollView : NSScrollView {
    fernhop::macos::ViewLink *fernhopLink;
}
@property fernhop::macos::ViewLink *fernhopLink;
@end
