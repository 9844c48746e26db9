#pragma once
#import <AppKit/NSAppearance.h>
#import <AppKit/NSLayoutConstraint.h>
#import <AppKit/NSResponder.h>
#import <AppKit/NSUserInterfaceItemIdentification.h>
#import <QuartzCore/CALayer.h>

@interface NSView : NSResponder {
    NSMutableArray *_subviews;
    NSMutableArray *_constraints;
    CALayer *_layer;
    BOOL _wantsLayer;
    NSView *_superview;
    NSLayoutPriority _hugging[2];
    NSLayoutPriority _compressionResistance[2];
    NSRect _frame;
    BOOL _translatesAutoresizingMaskIntoConstraints;
    NSUserInterfaceItemIdentifier _identifier;
    NSString *_toolTip;
    NSString *_accessibilityLabel;
    NSAppearance *_appearance;
}
- (instancetype)initWithFrame:(NSRect)frameRect;
@property NSRect frame;
@property(readonly, assign) NSView *superview;
@property(copy) NSArray<NSView *> *subviews;
- (void)addSubview:(NSView *)view;
- (void)removeFromSuperview;
@property BOOL wantsLayer;
@property(strong) CALayer *layer;
@property BOOL translatesAutoresizingMaskIntoConstraints;
@property(readonly) NSArray<NSLayoutConstraint *> *constraints;
- (NSLayoutPriority)contentHuggingPriorityForOrientation:(NSLayoutConstraintOrientation)orientation;
- (void)setContentHuggingPriority:(NSLayoutPriority)priority
                   forOrientation:(NSLayoutConstraintOrientation)orientation;
- (NSLayoutPriority)contentCompressionResistancePriorityForOrientation:
    (NSLayoutConstraintOrientation)orientation;
- (void)setContentCompressionResistancePriority:(NSLayoutPriority)priority
                                 forOrientation:(NSLayoutConstraintOrientation)orientation;
@property(copy) NSUserInterfaceItemIdentifier identifier;
@property(copy) NSString *toolTip;
@property(copy) NSString *accessibilityLabel;
@property(strong) NSAppearance *appearance;
@property(readonly, strong) NSAppearance *effectiveAppearance;
- (void)viewDidChangeEffectiveAppearance;
@end
