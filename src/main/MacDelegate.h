#pragma once

#import <AppKit/AppKit.h>

namespace fernhop::macos {
class Controller;
}

/// The application's delegate and the target of every menu item and control: forwards each selector to the
/// controller. Main thread only.
@interface FernhopAppDelegate : NSObject <NSApplicationDelegate, NSTableViewDataSource, NSTableViewDelegate> {
    fernhop::macos::Controller *_controller;
}
/// Makes the controller, which receives links from now on.
- (instancetype)init;

/// Events of the system.
- (void)systemAppearanceDidChange;
- (void)activeApplicationDidChange:(NSNotification *)notification;
- (void)handleGetURLEvent:(NSAppleEventDescriptor *)event withReplyEvent:(NSAppleEventDescriptor *)replyEvent;

/// The actions of menus and dialogs: operations of the controller with the same names.
- (void)showAddURLRuleDialog;
- (void)showAddRuleDialog;
- (void)filterRuleDialogApplications:(id)sender;
- (void)updateRuleDialogHint;
- (void)enableAppRouting;
- (void)switchSystemDefaultBrowser:(id)sender;
- (void)setBrowserForSelectedApp:(id)sender;
- (void)clearRule:(id)sender;
- (void)setBrowserForURLRule:(id)sender;
- (void)editURLRule:(id)sender;
- (void)clearURLRule:(id)sender;
- (void)updateDefaultBrowserFromWindow:(id)sender;
- (void)toggleRestoreDefaultBrowserOnQuit:(id)sender;
- (void)showFeedbackDialog;
- (void)openContactFromButton:(id)sender;
- (void)editRuleFromWindow:(id)sender;
- (void)editURLRuleFromWindow:(id)sender;
- (void)clearURLRuleFromWindow:(id)sender;
- (void)clearRuleFromWindow:(id)sender;
- (void)refreshApplicationList;
- (void)quit;
@end
