#pragma once

#include "platform/linux/dialogs-qt/ViewContext.h"
#include "platform/ui/TableView.h"

#include <QStyledItemDelegate>

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

} // namespace fernhop::freedesktop
