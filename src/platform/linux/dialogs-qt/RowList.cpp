#include "platform/linux/dialogs-qt/RowList.h"

#include "platform/linux/dialogs-qt/DialogPalette.h"
#include "platform/linux/dialogs-qt/Icons.h"
#include "platform/linux/dialogs-qt/ViewLayout.h"
#include "platform/linux/dialogs-qt/ViewText.h"
#include "platform/ui/ImageView.h"

#include <QAbstractItemView>
#include <QAbstractListModel>
#include <QApplication>
#include <QHelpEvent>
#include <QItemSelectionModel>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <algorithm>
#include <cmath>
#include <utility>

namespace fernhop::freedesktop {

namespace {

const ContentMeasures &rowMeasures() {
    static const ContentMeasures measures{
        [](const ui::View &view) -> std::optional<double> {
            const auto *label = dynamic_cast<const ui::TextField *>(&view);
            return label ? std::optional(labelWidth(*label)) : std::nullopt;
        },
        [](const ui::View &view, double width) -> std::optional<ContentHeight> {
            const auto *label = dynamic_cast<const ui::TextField *>(&view);
            if (!label)
                return std::nullopt;
            const double line = labelHeight(*label, width).least; // a row has no place for more
            return ContentHeight{line, line};
        }};
    return measures;
}

/// Where the parts of a row stand in its area.
Frames framesIn(const QRect &area, const ui::View &row) {
    return layOut(row, {static_cast<double>(area.width()), static_cast<double>(area.height())},
                  rowMeasures());
}

/// What a label of a row shows in its frame.
TextLines linesOf(const ui::TextField &label, const Frame &frame) {
    return {toText(label.stringValue()), toFont(label.font), {frame.width, frame.height, 1}};
}

/// Whether a text of a row has not room enough.
bool isCut(const ui::View &view, const Frames &frames) {
    const auto *label = dynamic_cast<const ui::TextField *>(&view);
    return (label && linesOf(*label, frames.at(label)).isCut()) ||
           std::ranges::any_of(view.subviews, [&](const auto &child) { return isCut(*child, frames); });
}

/// Paints a tree of labels and images.
class TreePainter {
  public:
    TreePainter(QPainter &target, const QStyleOptionViewItem &item, const ViewContext &viewContext)
        : painter(target), option(item), context(viewContext) {
        if (option.state.testFlag(QStyle::State_Selected))
            palette.setColor(QPalette::WindowText, palette.color(QPalette::HighlightedText));
        else
            palette.setColor(QPalette::WindowText, palette.color(QPalette::Text));
    }

    void paint(const ui::View &view, const Frames &frames) {
        const Frame &frame = frames.at(&view);
        const QRectF area(option.rect.x() + frame.x, option.rect.y() + frame.y, frame.width, frame.height);
        if (const auto *label = dynamic_cast<const ui::TextField *>(&view))
            paintLabel(*label, frame, area);
        else if (const auto *image = dynamic_cast<const ui::ImageView *>(&view))
            paintPicture(*image, area);
        for (const auto &child : view.subviews)
            paint(*child, frames);
    }

  private:
    void paintLabel(const ui::TextField &label, const Frame &frame, const QRectF &area) {
        painter.setPen(colorIn(palette, label.textColor));
        linesOf(label, frame).draw(painter, area.topLeft());
    }

    void paintPicture(const ui::ImageView &image, const QRectF &area) {
        const QColor tint = colorIn(palette, image.contentTintColor.value_or(ui::Color{}));
        paintImage(painter, image.image, area, tint, context);
    }

    QPainter &painter;
    const QStyleOptionViewItem &option;
    const ViewContext &context;
    QPalette palette = option.palette;
};

/// Shows which row the keyboard is at, on selected rows too, where the styles' own marks can hardly be seen.
void paintKeyboardMark(QPainter &painter, const QStyleOptionViewItem &option) {
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    constexpr double inset = 1.5;
    painter.setPen(option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Highlight));
    painter.setBrush(Qt::NoBrush);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.drawRect(QRectF(option.rect).adjusted(inset, inset, -inset, -inset));
}

/// Paints the rows of a list from their views, each made when it is needed: a list of hundreds of rows opens
/// as fast as one of ten.
class RowPainter : public QStyledItemDelegate {
  public:
    RowPainter(const ui::TableView &rowsOf, const ViewContext &viewContext, QObject *parent)
        : QStyledItemDelegate(parent), table(rowsOf), context(viewContext) {}

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override {
        QStyle *style = option.widget ? option.widget->style() : QApplication::style();
        style->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
        const auto row = table.viewForRow ? table.viewForRow(index.row()) : nullptr;
        if (!row)
            return;
        painter->save();
        TreePainter(*painter, option, context).paint(*row, framesIn(option.rect, *row));
        if (option.state.testFlag(QStyle::State_HasFocus))
            paintKeyboardMark(*painter, option);
        painter->restore();
    }

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const override {
        return {0, static_cast<int>(std::lround(table.rowHeight))};
    }

    /// Shows the texts of a row whole while the pointer rests on it, when one of them is cut.
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override {
        if (event->type() != QEvent::ToolTip)
            return QStyledItemDelegate::helpEvent(event, view, option, index);
        const auto row = table.viewForRow ? table.viewForRow(index.row()) : nullptr;
        const bool needsHelp = row && isCut(*row, framesIn(option.rect, *row));
        const QString text = needsHelp ? toToolTip(index.data(Qt::AccessibleTextRole).toString()) : QString();
        // An empty text hides the tooltip of another row.
        QToolTip::showText(event->globalPos(), text, view->viewport(), option.rect);
        return true;
    }

  private:
    const ui::TableView &table;
    const ViewContext &context;
};

void collectTexts(const ui::View &view, QStringList &texts) {
    if (const auto *label = dynamic_cast<const ui::TextField *>(&view))
        texts << toText(label->stringValue());
    for (const auto &child : view.subviews)
        collectTexts(*child, texts);
}

/// A table's rows as the toolkit asks for them. What a row says is its text for screen readers and for
/// finding it by typing.
class RowModel : public QAbstractListModel {
  public:
    RowModel(const ui::TableView &rowsOf, QObject *parent) : QAbstractListModel(parent), table(rowsOf) {}

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override {
        return parent.isValid() || !table.numberOfRows ? 0 : static_cast<int>(table.numberOfRows());
    }

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override {
        if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)
            return {};
        const auto row = table.viewForRow ? table.viewForRow(index.row()) : nullptr;
        QStringList texts;
        if (row)
            collectTexts(*row, texts);
        return texts.join(QStringLiteral(", "));
    }

    /// Has the list fetch all rows again.
    void reload() {
        beginResetModel();
        endResetModel();
    }

  private:
    const ui::TableView &table;
};

} // namespace

RowList::RowList(ui::TableView &shown, const ViewContext &viewContext, QWidget *parent)
    : QListView(parent), table(shown), context(viewContext), shownReload(table.reloads()) {
    setModel(new RowModel(table, this));
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
        static_cast<RowModel *>(model())->reload();
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
        const QModelIndex index = model()->index(static_cast<int>(row), 0);
        selection.select(index, index);
    }
    isFollowingTable = true;
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    isFollowingTable = false;
}

} // namespace fernhop::freedesktop
