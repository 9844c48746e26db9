#include "platform/macos/ui/ViewTree.h"

#include "platform/macos/Conversions.h"
#include "platform/macos/ui/Constraints.h"
#include "platform/macos/ui/ControlLinks.h"
#include "platform/macos/ui/LinkedControls.h"
#include "platform/macos/ui/NativeImage.h"
#include "platform/macos/ui/Styles.h"
#include "platform/ui/Button.h"
#include "platform/ui/ImageView.h"
#include "platform/ui/PopUpButton.h"
#include "platform/ui/StackView.h"
#include "platform/ui/TableView.h"
#include "platform/ui/TextField.h"

namespace fernhop::macos {

namespace {

NSView *makeImage(const ui::ImageView &view) {
    NSImageView *shown = [[[NSImageView alloc] initWithFrame:NSZeroRect] autorelease];
    [shown setImage:toNSImage(view.image)];
    [shown setImageScaling:NSImageScaleProportionallyUpOrDown];
    if (view.contentTintColor)
        [shown setContentTintColor:toNSColor(*view.contentTintColor)];
    return shown;
}

void setAttributes(NSView *shown, const ui::View &view) {
    constexpr auto across = NSLayoutConstraintOrientationHorizontal;
    if (view.frameSize)
        [shown setFrame:NSMakeRect(0, 0, view.frameSize->width, view.frameSize->height)];
    if (view.layer)
        paintLayer(shown, *view.layer);
    if (!view.translatesAutoresizingMask)
        [shown setTranslatesAutoresizingMaskIntoConstraints:NO];
    if (view.horizontalContentHugging)
        [shown setContentHuggingPriority:static_cast<NSLayoutPriority>(*view.horizontalContentHugging)
                          forOrientation:across];
    if (view.horizontalCompressionResistance)
        [shown setContentCompressionResistancePriority:static_cast<NSLayoutPriority>(
                                                           *view.horizontalCompressionResistance)
                                        forOrientation:across];
    if (!view.identifier.empty())
        [shown setIdentifier:toNSString(view.identifier)];
}

} // namespace

NSView *ViewTree::show(const std::shared_ptr<ui::View> &view) {
    NSView *shown = make(view);
    showIn(shown, view);
    return shown;
}

void ViewTree::showIn(NSView *shown, const std::shared_ptr<ui::View> &view) {
    shownViews[view.get()] = shown;
    setAttributes(shown, *view);
    // A stack has been made with its subviews, which are its arranged subviews too.
    if (!dynamic_cast<const ui::StackView *>(view.get()))
        for (const auto &subview : view->subviews)
            [shown addSubview:show(subview)];
    activateConstraints(*view);
}

void ViewTree::take() {
    for (const auto &link : links)
        link->take();
}

NSView *ViewTree::make(const std::shared_ptr<ui::View> &view) {
    const auto linked = [&](LinkedView made) {
        links.push_back(std::move(made.link));
        name(made.shown, *view);
        return made.shown;
    };
    const ui::View *kind = view.get();
    if (dynamic_cast<const ui::TextField *>(kind))
        return makeText(view);
    if (dynamic_cast<const ui::PopUpButton *>(kind))
        return linked(linkPopUpButton(view, target));
    if (dynamic_cast<const ui::Button *>(kind))
        return linked(linkButton(view, target));
    if (dynamic_cast<const ui::TableView *>(kind))
        return linked(linkTable(view, target));
    if (dynamic_cast<const ui::ScrollView *>(kind))
        return makeScroll(view);
    if (const auto *image = dynamic_cast<const ui::ImageView *>(kind))
        return makeImage(*image);
    if (dynamic_cast<const ui::StackView *>(kind))
        return makeStack(*view);
    return makePlain(view);
}

NSView *ViewTree::makeText(const std::shared_ptr<ui::View> &view) {
    const auto &text = static_cast<const ui::TextField &>(*view);
    LinkedView made = text.editable ? linkField(view, target) : linkLabel(view);
    links.push_back(std::move(made.link));
    if (!text.editable) {
        lastLabel = text.stringValue();
        return made.shown;
    }
    name(made.shown, text);
    if (!field)
        field = made.shown;
    return made.shown;
}

NSView *ViewTree::makeScroll(const std::shared_ptr<ui::View> &view) {
    const auto &scroll = static_cast<const ui::ScrollView &>(*view);
    FernhopScrollView *shown = [[[FernhopScrollView alloc] initWithFrame:NSZeroRect] autorelease];
    [shown setBorderType:scroll.hasBorder ? NSBezelBorder : NSNoBorder];
    [shown setHasVerticalScroller:scroll.hasVerticalScroller];
    if (scroll.documentView)
        [shown setDocumentView:show(scroll.documentView)];
    if (scroll.layer)
        links.push_back(linkLayer(view, shown).link);
    return shown;
}

NSView *ViewTree::makeStack(const ui::View &view) {
    const auto &stack = static_cast<const ui::StackView &>(view);
    NSMutableArray *arranged = [NSMutableArray arrayWithCapacity:stack.subviews.size()];
    for (const auto &subview : stack.subviews)
        [arranged addObject:show(subview)];
    NSStackView *shown = [NSStackView stackViewWithViews:arranged];
    [shown setOrientation:stack.orientation == ui::Orientation::vertical
                              ? NSUserInterfaceLayoutOrientationVertical
                              : NSUserInterfaceLayoutOrientationHorizontal];
    [shown setAlignment:stack.alignment == ui::StackAlignment::leading ? NSLayoutAttributeLeading
                                                                       : NSLayoutAttributeCenterY];
    [shown setSpacing:stack.spacing];
    return shown;
}

NSView *ViewTree::makePlain(const std::shared_ptr<ui::View> &view) {
    if (!view->layer)
        return [[[NSView alloc] initWithFrame:NSZeroRect] autorelease];
    FernhopLayerView *shown = [[[FernhopLayerView alloc] initWithFrame:NSZeroRect] autorelease];
    links.push_back(linkLayer(view, shown).link);
    return shown;
}

void ViewTree::name(NSView *control, const ui::View &view) const {
    if (dynamic_cast<const ui::Button *>(&view))
        return; // its title is its name
    const auto *search = dynamic_cast<const ui::SearchField *>(&view);
    const std::string &label = search ? search->placeholder : lastLabel;
    if (!label.empty())
        [control setAccessibilityLabel:toNSString(label)];
}

void ViewTree::activateConstraints(const ui::View &view) const {
    NSMutableArray *constraints = [NSMutableArray arrayWithCapacity:view.constraints.size()];
    for (const ui::Constraint &constraint : view.constraints)
        [constraints addObject:toNSLayoutConstraint(constraint, shownViews)];
    [NSLayoutConstraint activateConstraints:constraints];
}

} // namespace fernhop::macos
