#pragma once

#include "platform/linux/dialogs-qt/Icons.h"
#include "platform/ui/TableView.h"

#include <QListView>
#include <cstddef>
#include <set>

namespace fernhop::freedesktop {

/// A list that shows a table and keeps its selection in step with it, both ways.
class RowList : public QListView {
  public:
    /// `table` and `context` outlive this widget.
    RowList(ui::TableView &shown, const ViewContext &viewContext, QWidget *parent);

    /// Shows what changed in the table.
    void update();

  private:
    void userSelected();
    [[nodiscard]] std::set<std::size_t> shownSelection() const;
    void showSelection();

    ui::TableView &table;
    const ViewContext &context;
    unsigned shownReload;
    bool isFollowingTable = false;
};

} // namespace fernhop::freedesktop
