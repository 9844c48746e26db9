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

/// What shows the views of a tree. What the user does is written into them and their actions are sent; what
/// the core changes shows. Once this object is gone, what it made sends nothing any more. Main thread only.
class ViewTree {
  public:
    /// `actionTarget` outlives this object.
    explicit ViewTree(const ActionTarget &actionTarget) : target(actionTarget) {}

    /// What shows `view` and what is beneath it, with its constraints active; autoreleased.
    NSView *show(const std::shared_ptr<ui::View> &view);

    /// Has `shown` show a plain `view` and what is beneath it. It must outlive this object.
    void showIn(NSView *shown, const std::shared_ptr<ui::View> &view);

    /// Writes what the user did into all views, what sent no action yet included.
    void take();

    /// The first field that one types in; nil when there is none.
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
    ShownViews shownViews; ///< kept alive by the tree on the screen
    NSView *field = nil;
    std::string lastLabel; ///< what is read last before a control, and so names it
};

} // namespace fernhop::macos
