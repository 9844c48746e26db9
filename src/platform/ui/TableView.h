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

/// A list of rows in one column, without a header. It asks its data source for rows and tells its delegate of
/// changes of the selection, as soon as they are made, by whomever.
class TableView : public View {
  public:
    double rowHeight = 0; ///< in points
    bool allowsMultipleSelection = false;
    std::string columnIdentifier;
    double columnWidth = 0; ///< in points
    Selector action;        ///< fired when the user clicks a row

    std::function<std::size_t()> numberOfRows;
    /// A new view for a row; null for an index out of range.
    std::function<std::shared_ptr<View>(std::ptrdiff_t row)> viewForRow;
    std::function<void()> selectionDidChange;

    /// Has the rows asked for again; a selection beyond them is dropped without telling the delegate.
    void reloadData() {
        std::erase_if(selection,
                      [rows = numberOfRows ? numberOfRows() : 0](std::size_t row) { return row >= rows; });
        ++generation;
        changed();
    }

    [[nodiscard]] const std::set<std::size_t> &selectedRowIndexes() const { return selection; }
    /// Counts the reloads, so that whoever shows the table sees when to ask for the rows again.
    [[nodiscard]] unsigned reloads() const { return generation; }

    void deselectAll() { select({}); }
    /// Selects these rows, beside those that are selected already or instead of them.
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

/// Shows a part of its document and scrolls it up and down.
class ScrollView : public View {
  public:
    std::shared_ptr<View> documentView;
    bool hasVerticalScroller = false;
    bool hasBorder = true;
};

} // namespace fernhop::ui
