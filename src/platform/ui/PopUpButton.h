#pragma once

#include "platform/ui/ControlSize.h"
#include "platform/ui/MenuItem.h"
#include "platform/ui/View.h"

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace fernhop::ui {

/// A button that opens a list of items, one of which is selected: the first unless another was chosen. An
/// empty list has no selection.
class PopUpButton : public View {
  public:
    [[nodiscard]] const std::vector<MenuItem> &items() const { return entries; }

    /// The selected item, valid until the items are replaced; null when there is none.
    [[nodiscard]] const MenuItem *selectedItem() const { return selected ? &entries[*selected] : nullptr; }
    [[nodiscard]] std::optional<std::size_t> selectedIndex() const { return selected; }

    /// Replaces all items and selects the first.
    void setItems(std::vector<MenuItem> newItems) {
        entries = std::move(newItems);
        selected = entries.empty() ? std::nullopt : std::optional<std::size_t>(0);
        changed();
    }

    /// Selects an item, as the user does; an index out of range clears the selection.
    void selectItem(std::size_t index) {
        selected = index < entries.size() ? std::optional(index) : std::nullopt;
        changed();
    }

    bool enabled = true;
    ControlSize controlSize = ControlSize::regular;
    Selector action; ///< sent when the user has chosen an item

  private:
    std::vector<MenuItem> entries;
    std::optional<std::size_t> selected;
};

} // namespace fernhop::ui
