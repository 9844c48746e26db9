#pragma once

#include "platform/ui/Appearance.h"
#include "platform/ui/Button.h"
#include "platform/ui/Image.h"
#include "platform/ui/MenuItem.h"

#include <memory>
#include <string>

namespace fernhop::ui {

/// The application's place in the menu bar or tray: a button with a menu. Main thread only.
class StatusItem {
  public:
    virtual ~StatusItem() = default;

    /// Whether there is a button to dress; without one the other calls do nothing.
    [[nodiscard]] virtual bool hasButton() const = 0;
    /// How the bar looks around the button; it lives as long as the item.
    [[nodiscard]] virtual const Appearance &effectiveAppearance() const = 0;

    /// The text that shows while the pointer rests on the button; empty: none.
    virtual void setToolTip(const std::string &text) = 0;
    /// The text beside or instead of the image; empty: none.
    virtual void setTitle(const std::string &title) = 0;
    /// Where the image stands beside the title.
    virtual void setImagePosition(ImagePosition position) = 0;
    /// The button's image; none leaves the title alone.
    virtual void setImage(ImageReference image) = 0;
    /// Replaces the menu. The item keeps it, and sends nothing when it looks as the former did.
    virtual void setMenu(std::shared_ptr<const Menu> menu) = 0;
};

/// The length of an item that is as wide as the bar is high.
inline constexpr double squareStatusItemLength = -2;

/// Where status items come from. Main thread only.
class StatusBar {
  public:
    virtual ~StatusBar() = default;

    /// A new item, which the caller owns.
    [[nodiscard]] virtual std::unique_ptr<StatusItem> statusItemWithLength(double length) = 0;
};

} // namespace fernhop::ui
