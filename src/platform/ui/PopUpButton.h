#pragma once

#include "platform/ui/MenuItem.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace fernhop::ui {

/// A button that opens a list of items of which one is selected.
class PopUpButton : public Object {
  public:
    std::vector<MenuItem> items;
    std::optional<std::size_t> selectedIndex; ///< none in an empty pop-up

    /// The selected item, or null; it lives as long as `items` is unchanged.
    [[nodiscard]] const MenuItem *selectedItem() const {
        return selectedIndex && *selectedIndex < items.size() ? &items[*selectedIndex] : nullptr;
    }
};

} // namespace fernhop::ui
