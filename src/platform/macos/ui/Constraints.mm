#include "platform/macos/ui/Constraints.h"

namespace fernhop::macos {

namespace {

NSLayoutAttribute toNSLayoutAttribute(ui::LayoutAttribute attribute) {
    switch (attribute) {
    case ui::LayoutAttribute::leading:
        return NSLayoutAttributeLeading;
    case ui::LayoutAttribute::trailing:
        return NSLayoutAttributeTrailing;
    case ui::LayoutAttribute::top:
        return NSLayoutAttributeTop;
    case ui::LayoutAttribute::bottom:
        return NSLayoutAttributeBottom;
    case ui::LayoutAttribute::centerX:
        return NSLayoutAttributeCenterX;
    case ui::LayoutAttribute::centerY:
        return NSLayoutAttributeCenterY;
    case ui::LayoutAttribute::width:
        return NSLayoutAttributeWidth;
    case ui::LayoutAttribute::height:
        return NSLayoutAttributeHeight;
    }
    return NSLayoutAttributeNotAnAttribute;
}

NSLayoutRelation toNSLayoutRelation(ui::LayoutRelation relation) {
    switch (relation) {
    case ui::LayoutRelation::equal:
        return NSLayoutRelationEqual;
    case ui::LayoutRelation::lessThanOrEqual:
        return NSLayoutRelationLessThanOrEqual;
    case ui::LayoutRelation::greaterThanOrEqual:
        return NSLayoutRelationGreaterThanOrEqual;
    }
    return NSLayoutRelationEqual;
}

} // namespace

NSLayoutConstraint *toNSLayoutConstraint(const ui::Constraint &constraint, const ShownViews &shown) {
    const bool isFixed = !constraint.second;
    return [NSLayoutConstraint constraintWithItem:shown.at(constraint.first)
                                        attribute:toNSLayoutAttribute(constraint.attribute)
                                        relatedBy:toNSLayoutRelation(constraint.relation)
                                           toItem:isFixed ? nil : shown.at(constraint.second)
                                        attribute:isFixed ? NSLayoutAttributeNotAnAttribute
                                                          : toNSLayoutAttribute(constraint.secondAttribute)
                                       multiplier:1
                                         constant:constraint.constant];
}

} // namespace fernhop::macos
