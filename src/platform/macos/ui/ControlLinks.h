#pragma once

#include "platform/macos/ui/ActionTarget.h"
#include "platform/macos/ui/ViewLink.h"

#import <AppKit/AppKit.h>

#include <memory>

namespace fernhop::macos {

/// A link, and what it keeps in step, which it keeps alive.
struct LinkedView {
    std::unique_ptr<ViewLink> link;
    NSView *shown; ///< has all that is particular to its kind
};

/// Each makes what shows a view of one kind; another kind is a programming error. `target` outlives the link.
[[nodiscard]] LinkedView linkLabel(const std::shared_ptr<ui::View> &view);
[[nodiscard]] LinkedView linkField(const std::shared_ptr<ui::View> &view, const ActionTarget &target);
[[nodiscard]] LinkedView linkPopUpButton(const std::shared_ptr<ui::View> &view, const ActionTarget &target);
[[nodiscard]] LinkedView linkButton(const std::shared_ptr<ui::View> &view, const ActionTarget &target);
[[nodiscard]] LinkedView linkTable(const std::shared_ptr<ui::View> &view, const ActionTarget &target);
/// `painted` paints the layer of `view` again in the colours of each appearance that comes.
[[nodiscard]] LinkedView linkLayer(const std::shared_ptr<ui::View> &view, NSView *painted);

} // namespace fernhop::macos
