#pragma once

#include "platform/macos/ui/ViewLink.h"

#import <AppKit/AppKit.h>

/// A linked view knows its link, by which the core's view is found when it sends an action.
@interface NSView (FernhopLinked)
/// Not owned. Null before the link is made, after it is destroyed, and for all classes except those below.
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

/// Makes its link update its layer when the appearance changes.
@interface FernhopLayerView : NSView {
    fernhop::macos::ViewLink *fernhopLink;
}
@property fernhop::macos::ViewLink *fernhopLink;
@end

/// Makes its link update its layer when the appearance changes.
@interface FernhopScrollView : NSScrollView {
    fernhop::macos::ViewLink *fernhopLink;
}
@property fernhop::macos::ViewLink *fernhopLink;
@end
