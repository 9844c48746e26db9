#pragma once

#include "platform/macos/ui/ActionTarget.h"
#include "platform/macos/ui/ViewLink.h"

#import <AppKit/AppKit.h>

#include <memory>

namespace fernhop::macos {

/// A link with the view that it owns and synchronises.
struct LinkedView {
    std::unique_ptr<ViewLink> link;
    NSView *shown; ///< configured for its kind
};

/// Each makes a link for a view of one kind; another kind is a programming error. `target` must outlive the
/// link.
[[nodiscard]] LinkedView linkLabel(const std::shared_ptr<ui::View> &view);
[[nodiscard]] LinkedView linkField(const std::shared_ptr<ui::View> &view, const ActionTarget &target);
[[nodiscard]] LinkedView linkPopUpButton(const std::shared_ptr<ui::View> &view, const ActionTarget &target);
[[nodiscard]] LinkedView linkButton(const std::shared_ptr<ui::View> &view, const ActionTarget &target);
[[nodiscard]] LinkedView linkTable(const std::shared_ptr<ui::View> &view, const ActionTarget &target);
/// `painted` repaints the layer of `view` whenever the appearance changes.
[[nodiscard]] LinkedView linkLayer(const std::shared_ptr<ui::View> &view, NSView *painted);

} // namespace fernhop::macos
