#include "macos/double/ui/System.h"

#import <AppKit/NSScrollView.h>
#import <AppKit/NSStackView.h>
#import <AppKit/NSTableCellView.h>
#import <AppKit/NSTableHeaderView.h>
#import <AppKit/NSView.h>

@interface NSView (Double)
- (void)hold:(NSLayoutConstraint *)constraint;
@end

@implementation NSView

@synthesize frame = _frame;
@synthesize superview = _superview;
@synthesize translatesAutoresizingMaskIntoConstraints = _translatesAutoresizingMaskIntoConstraints;
@synthesize identifier = _identifier;
@synthesize toolTip = _toolTip;
@synthesize accessibilityLabel = _accessibilityLabel;
@synthesize appearance = _appearance;

- (instancetype)init {
    return [self initWithFrame:NSZeroRect];
}

- (instancetype)initWithFrame:(NSRect)frameRect {
    if ((self = [super init])) {
        _frame = frameRect;
        _subviews = [NSMutableArray new];
        _constraints = [NSMutableArray new];
        _translatesAutoresizingMaskIntoConstraints = YES;
        _hugging[0] = _hugging[1] = 250;
        _compressionResistance[0] = _compressionResistance[1] = 750;
    }
    return self;
}

- (NSArray *)subviews {
    return [[_subviews copy] autorelease];
}

- (void)setSubviews:(NSArray *)subviews {
    for (NSView *former in [self subviews])
        [former removeFromSuperview];
    for (NSView *view in subviews)
        [self addSubview:view];
}

- (void)addSubview:(NSView *)view {
    [view retain];
    [view removeFromSuperview];
    [_subviews addObject:view];
    view->_superview = self;
    [view release];
}

- (void)removeFromSuperview {
    NSView *parent = _superview;
    _superview = nil;
    if (parent)
        [parent->_subviews removeObjectIdenticalTo:self];
}

- (BOOL)wantsLayer {
    return _wantsLayer;
}

- (void)setWantsLayer:(BOOL)wantsLayer {
    _wantsLayer = wantsLayer;
    if (wantsLayer && !_layer)
        _layer = [CALayer new];
}

- (CALayer *)layer {
    return _layer;
}

- (void)setLayer:(CALayer *)layer {
    [layer retain];
    [_layer release];
    _layer = layer;
}

- (NSArray *)constraints {
    return [[_constraints copy] autorelease];
}

- (void)hold:(NSLayoutConstraint *)constraint {
    [_constraints addObject:constraint];
}

- (NSLayoutPriority)contentHuggingPriorityForOrientation:(NSLayoutConstraintOrientation)orientation {
    return _hugging[orientation];
}

- (void)setContentHuggingPriority:(NSLayoutPriority)priority
                   forOrientation:(NSLayoutConstraintOrientation)orientation {
    _hugging[orientation] = priority;
}

- (NSLayoutPriority)contentCompressionResistancePriorityForOrientation:
    (NSLayoutConstraintOrientation)orientation {
    return _compressionResistance[orientation];
}

- (void)setContentCompressionResistancePriority:(NSLayoutPriority)priority
                                 forOrientation:(NSLayoutConstraintOrientation)orientation {
    _compressionResistance[orientation] = priority;
}

- (NSAppearance *)effectiveAppearance {
    if (_appearance)
        return _appearance;
    return _superview ? [_superview effectiveAppearance]
                      : [NSAppearance appearanceNamed:fernhop::macos_double::system().appearance];
}

- (void)viewDidChangeEffectiveAppearance {
}

- (void)dealloc {
    for (NSView *view in _subviews)
        view->_superview = nil;
    [_identifier release];
    [_toolTip release];
    [_accessibilityLabel release];
    [_appearance release];
    [_subviews release];
    [_constraints release];
    [_layer release];
    [super dealloc];
}

@end

@implementation NSLayoutConstraint

@synthesize firstItem = _firstItem;
@synthesize firstAttribute = _firstAttribute;
@synthesize relation = _relation;
@synthesize secondItem = _secondItem;
@synthesize secondAttribute = _secondAttribute;
@synthesize multiplier = _multiplier;
@synthesize constant = _constant;

+ (instancetype)constraintWithItem:(id)view1
                         attribute:(NSLayoutAttribute)attr1
                         relatedBy:(NSLayoutRelation)relation
                            toItem:(id)view2
                         attribute:(NSLayoutAttribute)attr2
                        multiplier:(CGFloat)multiplier
                          constant:(CGFloat)c {
    if (!view1 || (view2 == nil) != (attr2 == NSLayoutAttributeNotAnAttribute))
        [NSException raise:NSInvalidArgumentException format:@"a constraint needs its items"];
    NSLayoutConstraint *constraint = [[self new] autorelease];
    constraint.firstItem = view1;
    constraint.firstAttribute = attr1;
    constraint.relation = relation;
    constraint.secondItem = view2;
    constraint.secondAttribute = attr2;
    constraint.multiplier = multiplier;
    constraint.constant = c;
    return constraint;
}

+ (void)activateConstraints:(NSArray<NSLayoutConstraint *> *)constraints {
    for (NSLayoutConstraint *constraint in constraints)
        [[constraint holder] hold:constraint];
}

- (NSView *)holder {
    if (!_secondItem)
        return _firstItem;
    NSMutableArray *above = [NSMutableArray array];
    for (NSView *view = _firstItem; view; view = [view superview])
        [above addObject:view];
    for (NSView *view = _secondItem; view; view = [view superview])
        if ([above indexOfObjectIdenticalTo:view] != NSNotFound)
            return view;
    [NSException raise:NSGenericException format:@"the views of a constraint have no common ancestor"];
    return nil;
}

@end

@implementation NSStackView

@synthesize orientation = _orientation;
@synthesize alignment = _alignment;
@synthesize spacing = _spacing;

+ (instancetype)stackViewWithViews:(NSArray<NSView *> *)views {
    NSStackView *stack = [[self new] autorelease];
    for (NSView *view in views) {
        view.translatesAutoresizingMaskIntoConstraints = NO;
        [stack addSubview:view];
    }
    return stack;
}

- (instancetype)initWithFrame:(NSRect)frameRect {
    if ((self = [super initWithFrame:frameRect])) {
        _alignment = NSLayoutAttributeCenterY;
        _spacing = 8;
    }
    return self;
}

- (NSArray *)arrangedSubviews {
    return [self subviews];
}

@end

@implementation NSScrollView

@synthesize borderType = _borderType;
@synthesize hasVerticalScroller = _hasVerticalScroller;

- (NSView *)documentView {
    return _documentView;
}

- (void)setDocumentView:(NSView *)documentView {
    [_documentView removeFromSuperview];
    _documentView = documentView;
    if (documentView)
        [self addSubview:documentView];
}

@end

@implementation NSTableCellView
@end

@implementation NSTableHeaderView
@end
