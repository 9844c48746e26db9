#pragma once

#include "platform/linux/dialogs-qt/DialogImages.h"
#include "platform/ui/TableView.h"

#include <QAbstractListModel>
#include <QListView>
#include <QStyledItemDelegate>
#include <cstddef>
#include <set>

namespace fernhop::freedesktop {

/// Paints the rows of a list from their views, each made when it is needed: a list of hundreds of rows opens
/// as fast as one of ten.
class RowPainter : public QStyledItemDelegate {
  public:
    /// `table` and `context` outlive this object.
    RowPainter(const ui::TableView &rowsOf, const ViewContext &viewContext, QObject *parent)
        : QStyledItemDelegate(parent), table(rowsOf), context(viewContext) {}

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    /// Shows the texts of a row whole while the pointer rests on it, when one of them is cut.
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

  private:
    const ui::TableView &table;
    const ViewContext &context;
};

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
