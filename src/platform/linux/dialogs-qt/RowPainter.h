#pragma once

#include "platform/linux/dialogs-qt/DialogHost.h"
#include "platform/ui/TableView.h"

#include <QStyledItemDelegate>

namespace fernhop::freedesktop {

/// Paints the rows of a list from their views, each made when it is needed: a list of hundreds of rows opens
/// as fast as one of ten.
class RowPainter : public QStyledItemDelegate {
  public:
    /// `table` and `host` outlive this object.
    RowPainter(const ui::TableView &rowsOf, const DialogHost &dialogHost, QObject *parent)
        : QStyledItemDelegate(parent), table(rowsOf), host(dialogHost) {}

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    /// Shows the texts of a row whole while the pointer rests on it, when one of them is cut.
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;

  private:
    const ui::TableView &table;
    const DialogHost &host;
};

} // namespace fernhop::freedesktop
