#pragma once

#include "platform/ui/MenuItem.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace fernhop::freedesktop {

/// Called with the selector of an item that was clicked, and the item, which lives until the call is over.
using PerformAction = std::function<void(ui::Selector selector, const ui::MenuItem &sender)>;

/// Draws the icon as `side` by `side` pixels, in the form of networkPixels(); empty where there is nothing to
/// show.
using DrawIcon = std::function<std::vector<std::uint8_t>(int side)>;

/// An icon with a tooltip and a menu in an X11 tray that takes windows, by the System Tray Protocol
/// ("XEmbed"). It shows from its first picture to its destruction. Main thread only.
class EmbeddedIcon {
  public:
    virtual ~EmbeddedIcon() = default;

    virtual void setPicture(DrawIcon draw) = 0;
    virtual void setToolTip(const std::string &text) = 0;
    /// The menu, not null, that shows when it is opened next.
    virtual void setMenu(std::shared_ptr<const ui::Menu> menu) = 0;
};

/// Shows a new icon that sends clicks to `perform`; null where that cannot be.
using MakeEmbeddedIcon = std::function<std::unique_ptr<EmbeddedIcon>(PerformAction perform)>;

} // namespace fernhop::freedesktop
