#pragma once
#import <AppKit/NSMenu.h>
#import <AppKit/NSStatusBarButton.h>
#import <double/CountedObject.h>

@interface NSStatusItem : FNCountedObject {
    CGFloat _length;
    NSMenu *_menu;
    NSStatusBarButton *_button;
}
@property CGFloat length;
@property(strong) NSMenu *menu;
@property(readonly, strong) NSStatusBarButton *button;
@end
