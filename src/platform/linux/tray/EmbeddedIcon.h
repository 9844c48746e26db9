#pragma once

#include "platform/ui/Image.h"
#include "platform/ui/MenuItem.h"

#include <functional>
#include <memory>
#include <string>

namespace fernhop::freedesktop {

/// Called with the selector of an item that was clicked, and the item, which lives until the call is over.
using PerformAction = std::function<void(ui::Selector selector, const ui::MenuItem &sender)>;

/// An icon with a tooltip and a menu in an X11 tray that takes windows, by the System Tray Protocol
/// ("XEmbed"). It shows from its first image to its destruction. Main thread only.
class EmbeddedIcon {
  public:
    virtual ~EmbeddedIcon() = default;

    virtual void setImage(const ui::ImageReference &image) = 0;
    virtual void setToolTip(const std::string &text) = 0;
    /// The menu, not null, that shows when it is opened next.
    virtual void setMenu(std::shared_ptr<const ui::Menu> menu) = 0;
};

/// Shows a new icon that sends clicks to `perform`; null where that cannot be.
using MakeEmbeddedIcon = std::function<std::unique_ptr<EmbeddedIcon>(PerformAction perform)>;

} // namespace fernhop::freedesktop
