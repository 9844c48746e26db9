#pragma once
#import <double/CountedObject.h>

typedef float NSLayoutPriority;

typedef NS_ENUM(NSInteger, NSLayoutRelation) {
    NSLayoutRelationLessThanOrEqual = -1,
    NSLayoutRelationEqual = 0,
    NSLayoutRelationGreaterThanOrEqual = 1,
};

typedef NS_ENUM(NSInteger, NSLayoutAttribute) {
    NSLayoutAttributeNotAnAttribute = 0,
    NSLayoutAttributeTop = 3,
    NSLayoutAttributeBottom = 4,
    NSLayoutAttributeLeading = 5,
    NSLayoutAttributeTrailing = 6,
    NSLayoutAttributeWidth = 7,
    NSLayoutAttributeHeight = 8,
    NSLayoutAttributeCenterX = 9,
    NSLayoutAttributeCenterY = 10,
};

typedef NS_ENUM(NSInteger, NSLayoutConstraintOrientation) {
    NSLayoutConstraintOrientationHorizontal = 0,
    NSLayoutConstraintOrientationVertical = 1,
};

/// Activated constraints belong to the nearest common ancestor of both items.
@interface NSLayoutConstraint : FNCountedObject {
    id _firstItem;
    NSLayoutAttribute _firstAttribute;
    NSLayoutRelation _relation;
    id _secondItem;
    NSLayoutAttribute _secondAttribute;
    CGFloat _multiplier;
    CGFloat _constant;
}
+ (instancetype)constraintWithItem:(id)view1
                         attribute:(NSLayoutAttribute)attr1
                         relatedBy:(NSLayoutRelation)relation
                            toItem:(id)view2
                         attribute:(NSLayoutAttribute)attr2
                        multiplier:(CGFloat)multiplier
                          constant:(CGFloat)c;
+ (void)activateConstraints:(NSArray<NSLayoutConstraint *> *)constraints;
@property(assign) id firstItem;
@property NSLayoutAttribute firstAttribute;
@property NSLayoutRelation relation;
@property(assign) id secondItem;
@property NSLayoutAttribute secondAttribute;
@property CGFloat multiplier;
@property CGFloat constant;
@end
