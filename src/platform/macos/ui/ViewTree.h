#pragma once

#include "platform/macos/ui/ActionTarget.h"
#include "platform/macos/ui/Constraints.h"
#include "platform/macos/ui/ViewLink.h"
#include "platform/ui/View.h"

#import <AppKit/AppKit.h>

#include <memory>
#include <string>
#include <vector>

namespace fernhop::macos {

/// Shows a tree of views: writes the user's changes into the core's views, sends their actions, and shows the
/// core's changes. After its destruction, the views that it made send nothing. Main thread only.
class ViewTree {
  public:
    /// `actionTarget` must outlive this object.
    explicit ViewTree(const ActionTarget &actionTarget) : target(actionTarget) {}

    /// A view that shows `view` and its subviews, with active constraints; autoreleased.
    NSView *show(const std::shared_ptr<ui::View> &view);

    /// Makes `shown` show a plain `view` and its subviews. It must outlive this object.
    void showIn(NSView *shown, const std::shared_ptr<ui::View> &view);

    /// Writes the user's changes into all views, including those that have not sent an action yet.
    void take();

    /// The first editable field; nil when there is none.
    [[nodiscard]] NSView *firstField() const { return field; }

  private:
    [[nodiscard]] NSView *make(const std::shared_ptr<ui::View> &view);
    [[nodiscard]] NSView *makeText(const std::shared_ptr<ui::View> &view);
    [[nodiscard]] NSView *makeScroll(const std::shared_ptr<ui::View> &view);
    [[nodiscard]] NSView *makeStack(const ui::View &view);
    [[nodiscard]] NSView *makePlain(const std::shared_ptr<ui::View> &view);
    void name(NSView *control, const ui::View &view) const;
    void activateConstraints(const ui::View &view) const;

    const ActionTarget &target;
    std::vector<std::unique_ptr<ViewLink>> links;
    ShownViews shownViews; ///< retained by the view tree on the screen
    NSView *field = nil;
    std::string lastLabel; ///< the label before a control, which is its accessible name
};

} // namespace fernhop::macos
