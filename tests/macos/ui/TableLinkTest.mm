#include "macos/double/UserActions.h"
#include "macos/ui/ExpectShown.h"
#include "macos/ui/InterfaceTest.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/ui/ViewTree.h"
#include "platform/ui/Button.h"
#include "platform/ui/TableView.h"
#include "platform/ui/TextField.h"

#import <AppKit/AppKit.h>

#include <initializer_list>

namespace fernhop::macos {
namespace {

using namespace ui;

using Rows = std::set<std::size_t>;

NSIndexSet *indexes(std::initializer_list<NSUInteger> rows) {
    NSMutableIndexSet *set = [NSMutableIndexSet indexSet];
    for (const NSUInteger row : rows)
        [set addIndex:row];
    return set;
}

/// A list of names that is shown in a scroll view.
class TableLinkTest : public InterfaceTest {
  protected:
    TableLinkTest() {
        table->rowHeight = 40;
        table->allowsMultipleSelection = true;
        table->columnIdentifier = "app";
        table->columnWidth = 468;
        table->action = "updateRuleDialogHint";
        table->numberOfRows = [this] { return names.size(); };
        table->viewForRow = [this](std::ptrdiff_t row) { return makeRow(row); };
        table->selectionDidChange = [this] {
            ++changes;
            if (atChange)
                atChange();
        };
        scroll->documentView = table;
        scroll->hasVerticalScroller = true;
        scroll->hasBorder = false;
        scroll->layer = Layer{std::nullopt, 12, 1, Color{ColorRole::separator, 0.45}};
        NSView *view = tree->show(scroll);
        expectShown(view, *scroll);
        shown = static_cast<NSTableView *>([static_cast<NSScrollView *>(view) documentView]);
    }

    std::shared_ptr<View> makeRow(std::ptrdiff_t row) {
        if (row < 0 || row >= std::ssize(names))
            return nullptr;
        auto cell = std::make_shared<View>();
        cell->identifier = "appCell";
        auto label = makeWrappingLabel(names[static_cast<std::size_t>(row)], {}, ColorRole::label);
        auto button = std::make_shared<Button>();
        button->action = "editRuleFromWindow:";
        label->translatesAutoresizingMask = false;
        cell->subviews = {label, button};
        cell->constraints = {aligned(*label, *cell, LayoutAttribute::leading, 6)};
        lastRow = cell;
        return cell;
    }

    NSView *cell(NSInteger row) { return [shown viewAtColumn:0 row:row makeIfNecessary:YES]; }

    std::vector<std::string> names{"Alpha", "Beta", "Chat", "Delta"};
    std::shared_ptr<TableView> table = std::make_shared<TableView>();
    std::shared_ptr<ScrollView> scroll = std::make_shared<ScrollView>();
    std::shared_ptr<View> lastRow;
    int changes = 0; ///< that were reported to the core
    std::function<void()> atChange;
    RecordingTarget target;
    std::unique_ptr<ViewTree> tree = std::make_unique<ViewTree>(target);
    NSTableView *shown = nil;
};

TEST_F(TableLinkTest, TableIsConfigured) {
    EXPECT_FALSE([shown headerView]);
    EXPECT_EQ([shown rowHeight], 40);
    EXPECT_EQ([shown numberOfRows], 4);
    EXPECT_EQ([[[shown tableColumns] objectAtIndex:0] width], 468);
    EXPECT_EQ([shown target], target.target());
}

TEST_F(TableLinkTest, ScrollViewCanHaveTheSystemsBorder) {
    scroll->hasBorder = true;
    scroll->layer.reset();
    NSView *view = tree->show(scroll);
    expectShown(view, *scroll);
}

TEST_F(TableLinkTest, RowsShowViewsOfTheCore) {
    NSView *row = cell(1);
    EXPECT_TRUE([row isKindOfClass:[NSTableCellView class]]);
    EXPECT_EQ(fromNSString([row identifier]), "appCell");
    expectShown(row, *lastRow);
    EXPECT_EQ(fromNSString([static_cast<NSTextField *>(find(row, [NSTextField class])) stringValue]), "Beta");
    EXPECT_EQ(cell(1), row);
}

TEST_F(TableLinkTest, RowOutOfRangeHasNoView) {
    id<NSTableViewDelegate> delegate = [shown delegate];
    NSTableColumn *column = [[shown tableColumns] objectAtIndex:0];
    EXPECT_FALSE([delegate tableView:shown viewForTableColumn:column row:4]);
    EXPECT_FALSE([delegate tableView:shown viewForTableColumn:column row:-1]);
}

TEST_F(TableLinkTest, RowsLiveAsLongAsTheyAreShown) {
    @autoreleasepool {
        cell(0);
    }
    const std::weak_ptr<View> button = std::exchange(lastRow, nullptr)->subviews[1];
    EXPECT_FALSE(button.expired());
    @autoreleasepool {
        [static_cast<NSControl *>(find(cell(0), [NSButton class])) userClicks];
    }
    ASSERT_EQ(target.sent.size(), 1u);
    EXPECT_EQ(target.sent[0].sender, button.lock());
    target.sent.clear();
    @autoreleasepool {
        table->reloadData();
    }
    EXPECT_TRUE(button.expired());
}

TEST_F(TableLinkTest, UsersSelectionReachesTheCore) {
    EXPECT_TRUE([shown userSelectsRows:indexes({0, 2})]);
    EXPECT_EQ(table->selectedRowIndexes(), (Rows{0, 2}));
    EXPECT_EQ(changes, 1);
    ASSERT_EQ(target.sent.size(), 1u); // the click's own action
    EXPECT_EQ(target.sent[0].selector, "updateRuleDialogHint");
    [shown userSelectsRows:indexes({})];
    EXPECT_TRUE(table->selectedRowIndexes().empty());
    EXPECT_EQ(changes, 2);
}

TEST_F(TableLinkTest, CoresSelectionIsShownWithoutANotification) {
    table->selectRowIndexes({1}, false);
    table->selectRowIndexes({3}, true);
    EXPECT_TRUE([[shown selectedRowIndexes] isEqualToIndexSet:indexes({1, 3})]);
    EXPECT_EQ(changes, 2);
    table->deselectAll();
    EXPECT_EQ([[shown selectedRowIndexes] count], 0u);
    EXPECT_EQ(changes, 3);
    EXPECT_TRUE(target.sent.empty());
}

TEST_F(TableLinkTest, CoreMayCorrectTheSelectionAtOnce) {
    atChange = [this] { table->selectRowIndexes({0}, false); };
    [shown userSelectsRows:indexes({1, 2})];
    EXPECT_EQ(table->selectedRowIndexes(), Rows{0});
    EXPECT_TRUE([[shown selectedRowIndexes] isEqualToIndexSet:indexes({0})]);
}

TEST_F(TableLinkTest, ReloadRequestsRowsAndKeepsTheRemainingSelection) {
    table->selectRowIndexes({0, 3}, false);
    NSView *before = [[cell(0) retain] autorelease];
    names = {"Only"};
    changes = 0;
    table->reloadData();
    EXPECT_EQ([shown numberOfRows], 1);
    EXPECT_NE(cell(0), before);
    EXPECT_TRUE([[shown selectedRowIndexes] isEqualToIndexSet:indexes({0})]);
    EXPECT_EQ(table->selectedRowIndexes(), Rows{0});
    EXPECT_EQ(changes, 0);
    names.clear();
    table->reloadData();
    EXPECT_EQ([shown numberOfRows], 0);
    EXPECT_EQ([[shown selectedRowIndexes] count], 0u);
}

TEST_F(TableLinkTest, MissingRowsAreNotSelected) {
    table->selectRowIndexes({2, 7}, false);
    EXPECT_TRUE([[shown selectedRowIndexes] isEqualToIndexSet:indexes({2})]);
    EXPECT_EQ(table->selectedRowIndexes(), (Rows{2, 7})); // what is shown is not treated as the user's choice
    EXPECT_EQ(changes, 1);
}

TEST_F(TableLinkTest, InitialSelectionIsShown) {
    table->selectRowIndexes({2}, false);
    tree = std::make_unique<ViewTree>(target);
    auto *again = static_cast<NSTableView *>(tree->show(table));
    EXPECT_TRUE([[again selectedRowIndexes] isEqualToIndexSet:indexes({2})]);
}

TEST_F(TableLinkTest, TableMayOutliveItsTree) {
    tree.reset();
    EXPECT_FALSE([shown delegate]);
    EXPECT_FALSE([shown dataSource]);
    [shown userSelectsRows:indexes({})];
    EXPECT_FALSE([shown userClicks]);
    table->selectRowIndexes({1}, false);
    EXPECT_EQ([[shown selectedRowIndexes] count], 0u);
}

} // namespace
} // namespace fernhop::macos
