#pragma once

#include "platform/linux/dialogs-qt/ViewContext.h"
#include "platform/ui/TableView.h"

#include <QAbstractListModel>
#include <QListView>
#include <cstddef>
#include <set>

namespace fernhop::freedesktop {

/// A table's rows as the toolkit asks for them. What a row says is its text for screen readers and for
/// finding it by typing.
class RowModel : public QAbstractListModel {
  public:
    RowModel(const ui::TableView &rowsOf, QObject *parent) : QAbstractListModel(parent), table(rowsOf) {}

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;

    void reload() {
        beginResetModel();
        endResetModel();
    }

  private:
    const ui::TableView &table;
};

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
    RowModel *model;
    unsigned shownReload;
    bool isFollowingTable = false;
};

} // namespace fernhop::freedesktop
