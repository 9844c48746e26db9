#pragma once

#include "platform/macos/ui/ViewLink.h"

#import <AppKit/NSButton.h>
#import <AppKit/NSPopUpButton.h>
#import <AppKit/NSScrollView.h>
#import <AppKit/NSSearchField.h>
#import <AppKit/NSTableView.h>
#import <AppKit/NSTextField.h>

@interface FernhopTextField : NSTextField <FernhopLinked> {
    fernhop::macos::ViewLink *fernhopLink;
}
@end

@interface FernhopSearchField : NSSearchField <FernhopLinked> {
    fernhop::macos::ViewLink *fernhopLink;
}
@end

@interface FernhopPopUpButton : NSPopUpButton <FernhopLinked> {
    fernhop::macos::ViewLink *fernhopLink;
}
@end

@interface FernhopButton : NSButton <FernhopLinked> {
    fernhop::macos::ViewLink *fernhopLink;
}
@end

@interface FernhopTableView : NSTableView <FernhopLinked> {
    fernhop::macos::ViewLink *fernhopLink;
}
@end

/// Has its link show its layer again when the appearance changes.
@interface FernhopLayerView : NSView <FernhopLinked> {
    fernhop::macos::ViewLink *fernhopLink;
}
@end

/// Has its link show its layer again when the appearance changes.
@interface FernhopScrollView : NSScrollView <FernhopLinked> {
    fernhop::macos::ViewLink *fernhopLink;
}
@end
