#pragma once

#include "platform/ui/ControlSize.h"
#include "platform/ui/MenuItem.h"
#include "platform/ui/View.h"

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace fernhop::ui {

/// A button that opens a list of items of which one is selected. The first is unless another was chosen; none
/// is in an empty list.
class PopUpButton : public View {
  public:
    [[nodiscard]] const std::vector<MenuItem> &items() const { return entries; }

    /// The selected item, or null; it lives until the items are replaced.
    [[nodiscard]] const MenuItem *selectedItem() const { return selected ? &entries[*selected] : nullptr; }
    [[nodiscard]] std::optional<std::size_t> selectedIndex() const { return selected; }

    /// Replaces all items and selects the first.
    void setItems(std::vector<MenuItem> newItems) {
        entries = std::move(newItems);
        selected = entries.empty() ? std::nullopt : std::optional<std::size_t>(0);
        changed();
    }

    /// Selects an item, as the user does; an index out of range leaves nothing selected.
    void selectItem(std::size_t index) {
        selected = index < entries.size() ? std::optional(index) : std::nullopt;
        changed();
    }

    bool enabled = true;
    ControlSize controlSize = ControlSize::regular;
    Selector action; ///< fired when the user chose an item

  private:
    std::vector<MenuItem> entries;
    std::optional<std::size_t> selected;
};

} // namespace fernhop::ui
