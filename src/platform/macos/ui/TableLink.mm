#include "platform/macos/ui/TableLink.h"

#include "platform/macos/Conversions.h"
#include "platform/macos/ui/ControlLinks.h"
#include "platform/macos/ui/Menus.h"

#include <utility>

/// The table's data source and delegate, which forward to its link.
@interface FernhopTableObserver : NSObject <NSTableViewDataSource, NSTableViewDelegate> {
    fernhop::macos::TableLink *link;
}
- (instancetype)initWithLink:(fernhop::macos::TableLink *)answering;
@end

@implementation FernhopTableObserver

- (instancetype)initWithLink:(fernhop::macos::TableLink *)answering {
    if ((self = [super init]))
        link = answering;
    return self;
}

- (NSInteger)numberOfRowsInTableView:(NSTableView *)tableView {
    return link->numberOfRows();
}

- (NSView *)tableView:(NSTableView *)tableView
    viewForTableColumn:(NSTableColumn *)tableColumn
                   row:(NSInteger)row {
    return link->viewForRow(row);
}

- (void)tableViewSelectionDidChange:(NSNotification *)notification {
    link->selectionDidChange();
}

@end

namespace fernhop::macos {

namespace {

NSIndexSet *toIndexSet(const std::set<std::size_t> &rows, NSInteger below) {
    NSMutableIndexSet *indexes = [NSMutableIndexSet indexSet];
    for (const std::size_t row : rows)
        if (std::cmp_less(row, below))
            [indexes addIndex:row];
    return indexes;
}

std::set<std::size_t> fromIndexSet(NSIndexSet *indexes) {
    std::set<std::size_t> rows;
    for (NSUInteger row = [indexes firstIndex]; row != NSNotFound; row = [indexes indexGreaterThanIndex:row])
        rows.insert(row);
    return rows;
}

FernhopTableView *makeTable(const ui::TableView &table) {
    FernhopTableView *shown = [[[FernhopTableView alloc] initWithFrame:NSZeroRect] autorelease];
    [shown setHeaderView:nil];
    [shown setRowHeight:table.rowHeight];
    [shown setAllowsMultipleSelection:table.allowsMultipleSelection];
    [shown setUsesAlternatingRowBackgroundColors:NO];
    [shown setSelectionHighlightStyle:NSTableViewSelectionHighlightStyleRegular];
    NSTableColumn *column =
        [[[NSTableColumn alloc] initWithIdentifier:toNSString(table.columnIdentifier)] autorelease];
    [column setWidth:table.columnWidth];
    [shown addTableColumn:column];
    return shown;
}

} // namespace

TableLink::TableLink(std::shared_ptr<ui::View> view, ui::TableView &model, FernhopTableView *control,
                     const ActionTarget &actionTarget)
    : ViewLink(std::move(view)), table(model), shown(control), target(actionTarget),
      observer(Reference<FernhopTableObserver>::adopting([[FernhopTableObserver alloc] initWithLink:this])),
      shownReload(model.reloads()) {
    [control setFernhopLink:this];
    [control setDataSource:observer.get()];
    [control setDelegate:observer.get()];
    showSelection();
}

TableLink::~TableLink() {
    [shown.get() setFernhopLink:nullptr];
    [shown.get() setDataSource:nil];
    [shown.get() setDelegate:nil];
    [shown.get() setTarget:nil];
}

void TableLink::show() {
    if (std::exchange(shownReload, table.reloads()) != table.reloads()) {
        const bool wasShowing = std::exchange(isShowing, true);
        [shown.get() reloadData];
        isShowing = wasShowing;
    }
    showSelection();
}

void TableLink::showSelection() {
    NSIndexSet *selection = toIndexSet(table.selectedRowIndexes(), numberOfRows());
    if ([selection isEqualToIndexSet:[shown.get() selectedRowIndexes]])
        return;
    const bool wasShowing = std::exchange(isShowing, true);
    if ([selection count] == 0)
        [shown.get() deselectAll:nil];
    else
        [shown.get() selectRowIndexes:selection byExtendingSelection:NO];
    isShowing = wasShowing;
}

void TableLink::take() {
    table.selectRowIndexes(fromIndexSet([shown.get() selectedRowIndexes]), false);
}

NSInteger TableLink::numberOfRows() const {
    return table.numberOfRows ? static_cast<NSInteger>(table.numberOfRows()) : 0;
}

NSView *TableLink::viewForRow(NSInteger row) const {
    return viewShowing(table.viewForRow ? table.viewForRow(row) : nullptr, target);
}

void TableLink::selectionDidChange() {
    if (!isShowing)
        take();
}

LinkedView linkTable(const std::shared_ptr<ui::View> &view, const ActionTarget &target) {
    auto &table = dynamic_cast<ui::TableView &>(*view);
    FernhopTableView *shown = makeTable(table);
    if (!table.action.empty()) {
        [shown setTarget:target.target()];
        [shown setAction:toSelector(table.action)];
    }
    return {std::make_unique<TableLink>(view, table, shown, target), shown};
}

} // namespace fernhop::macos
