#pragma once

#import <AppKit/NSMenuItem.h>
#import <AppKit/NSPopUpButton.h>
#import <AppKit/NSTableView.h>
#import <AppKit/NSTextField.h>

/// Actions of a user, with the reaction of the system. Each returns whether an action was sent.
@interface NSControl (UserActions)
- (BOOL)userClicks;
@end

@interface NSTextField (UserActions)
/// Replaces the text as by typing; a search field that sends immediately sends its action.
- (BOOL)userTypes:(NSString *)text;
@end

@interface NSPopUpButton (UserActions)
- (BOOL)userChoosesItemAtIndex:(NSInteger)index;
@end

@interface NSTableView (UserActions)
/// Clicks so that these rows are selected and no others.
- (BOOL)userSelectsRows:(NSIndexSet *)rows;
@end

@interface NSMenuItem (UserActions)
/// Chooses the item, unless it is disabled.
- (BOOL)userChooses;
@end
