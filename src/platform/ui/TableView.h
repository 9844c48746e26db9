#pragma once

#include "platform/ui/Selector.h"
#include "platform/ui/View.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <utility>

namespace fernhop::ui {

/// A list of rows in one column, without a header. Requests rows from `numberOfRows` and `viewForRow`, and
/// calls `selectionDidChange` for each change of the selection, by the user or by a call.
class TableView : public View {
  public:
    double rowHeight = 0; ///< in points
    bool allowsMultipleSelection = false;
    std::string columnIdentifier;
    double columnWidth = 0; ///< in points
    Selector action;        ///< sent when the user clicks a row

    std::function<std::size_t()> numberOfRows;
    /// A new view for a row; null for an index out of range.
    std::function<std::shared_ptr<View>(std::ptrdiff_t row)> viewForRow;
    std::function<void()> selectionDidChange;

    /// Makes the renderer request the rows again. Selected rows beyond the end are deselected without calling
    /// `selectionDidChange`.
    void reloadData() {
        std::erase_if(selection,
                      [rows = numberOfRows ? numberOfRows() : 0](std::size_t row) { return row >= rows; });
        ++generation;
        changed();
    }

    [[nodiscard]] const std::set<std::size_t> &selectedRowIndexes() const { return selection; }
    /// The number of reloads, by which the renderer knows when to request the rows again.
    [[nodiscard]] unsigned reloads() const { return generation; }

    void deselectAll() { select({}); }
    /// Selects these rows in addition to the selected ones, or instead of them.
    void selectRowIndexes(const std::set<std::size_t> &rows, bool byExtendingSelection) {
        std::set<std::size_t> next = rows;
        if (byExtendingSelection)
            next.insert(selection.begin(), selection.end());
        select(std::move(next));
    }

  private:
    void select(std::set<std::size_t> rows) {
        if (rows == selection)
            return;
        selection = std::move(rows);
        changed();
        if (selectionDidChange)
            selectionDidChange();
    }

    std::set<std::size_t> selection;
    unsigned generation = 0;
};

/// Shows a part of its document view, scrolled vertically.
class ScrollView : public View {
  public:
    std::shared_ptr<View> documentView;
    bool hasVerticalScroller = false;
    bool hasBorder = true;
};

} // namespace fernhop::ui
