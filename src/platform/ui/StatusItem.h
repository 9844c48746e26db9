#pragma once

#include "platform/ui/Appearance.h"
#include "platform/ui/Button.h"
#include "platform/ui/Image.h"
#include "platform/ui/MenuItem.h"

#include <memory>
#include <string>

namespace fernhop::ui {

/// The application's item in the menu bar or tray: a button with a menu. Main thread only.
class StatusItem {
  public:
    virtual ~StatusItem() = default;

    /// Whether there is a button; without one the other calls do nothing.
    [[nodiscard]] virtual bool hasButton() const = 0;
    /// The appearance of the bar around the button; valid as long as the item.
    [[nodiscard]] virtual const Appearance &effectiveAppearance() const = 0;

    /// Sets the tooltip; empty: none.
    virtual void setToolTip(const std::string &text) = 0;
    /// Sets the text beside or instead of the image; empty: none.
    virtual void setTitle(const std::string &title) = 0;
    /// Sets the position of the image relative to the title.
    virtual void setImagePosition(ImagePosition position) = 0;
    /// Sets the button's image; null: only the title is shown.
    virtual void setImage(ImageReference image) = 0;
    /// Replaces the menu. If it looks the same as the previous one, the desktop is not notified.
    virtual void setMenu(std::shared_ptr<const Menu> menu) = 0;
};

/// The length of a square item, as wide as the bar is high.
inline constexpr double squareStatusItemLength = -2;

/// Makes status items. Main thread only.
class StatusBar {
  public:
    virtual ~StatusBar() = default;

    /// A new item, which the caller owns.
    [[nodiscard]] virtual std::unique_ptr<StatusItem> statusItemWithLength(double length) = 0;
};

} // namespace fernhop::ui
