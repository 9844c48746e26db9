#include "platform/linux/dialogs-qt/RowList.h"

#include "platform/linux/dialogs-qt/RowPainter.h"
#include "platform/linux/dialogs-qt/ViewText.h"

#include <QItemSelectionModel>
#include <utility>

namespace fernhop::freedesktop {

namespace {

void collectTexts(const ui::View &view, QStringList &texts) {
    if (const auto *label = dynamic_cast<const ui::TextField *>(&view))
        texts << toText(label->stringValue());
    for (const auto &child : view.subviews)
        collectTexts(*child, texts);
}

} // namespace

int RowModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() || !table.numberOfRows ? 0 : static_cast<int>(table.numberOfRows());
}

QVariant RowModel::data(const QModelIndex &index, int role) const {
    if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)
        return {};
    const auto row = table.viewForRow ? table.viewForRow(index.row()) : nullptr;
    QStringList texts;
    if (row)
        collectTexts(*row, texts);
    return texts.join(QStringLiteral(", "));
}

RowList::RowList(ui::TableView &shown, const ViewContext &viewContext, QWidget *parent)
    : QListView(parent), table(shown), context(viewContext), model(new RowModel(table, this)),
      shownReload(table.reloads()) {
    setModel(model);
    setItemDelegate(new RowPainter(table, context, this));
    setSelectionMode(table.allowsMultipleSelection ? ExtendedSelection : SingleSelection);
    setUniformItemSizes(true);
    setEditTriggers(NoEditTriggers);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { userSelected(); });
    connect(this, &QListView::clicked, this, [this] { context.perform(table.action, table); });
    showSelection();
}

void RowList::update() {
    if (std::exchange(shownReload, table.reloads()) != table.reloads()) {
        isFollowingTable = true;
        model->reload();
        isFollowingTable = false;
    }
    showSelection();
}

void RowList::userSelected() {
    if (!isFollowingTable)
        table.selectRowIndexes(shownSelection(), false);
}

std::set<std::size_t> RowList::shownSelection() const {
    std::set<std::size_t> rows;
    for (const QModelIndex &index : selectionModel()->selectedIndexes())
        rows.insert(static_cast<std::size_t>(index.row()));
    return rows;
}

void RowList::showSelection() {
    // To select again what is selected would make it one piece to the toolkit: a Ctrl+click whose pointer
    // moves by a pixel replaces the piece that was added last, and with it all the others.
    if (shownSelection() == table.selectedRowIndexes())
        return;
    QItemSelection selection;
    for (const std::size_t row : table.selectedRowIndexes()) {
        const QModelIndex index = model->index(static_cast<int>(row));
        selection.select(index, index);
    }
    isFollowingTable = true;
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    isFollowingTable = false;
}

} // namespace fernhop::freedesktop
