#pragma once
#import <AppKit/NSControl.h>
#import <AppKit/NSTableColumn.h>
#import <AppKit/NSTableHeaderView.h>

@class NSTableView;

typedef NS_ENUM(NSInteger, NSTableViewSelectionHighlightStyle) {
    NSTableViewSelectionHighlightStyleNone = -1,
    NSTableViewSelectionHighlightStyleRegular = 0,
};

@protocol NSTableViewDataSource <NSObject>
@optional
- (NSInteger)numberOfRowsInTableView:(NSTableView *)tableView;
@end

@protocol NSTableViewDelegate <NSControlTextEditingDelegate>
@optional
- (NSView *)tableView:(NSTableView *)tableView
    viewForTableColumn:(NSTableColumn *)tableColumn
                   row:(NSInteger)row;
- (void)tableViewSelectionDidChange:(NSNotification *)notification;
@end

/// Requests its rows at each reload and keeps the remaining selected ones, as documented.
@interface NSTableView : NSControl {
    NSMutableArray *_tableColumns;
    NSMutableArray *_rowViews;
    NSMutableIndexSet *_selection;
    NSInteger _numberOfRows;
    NSTableHeaderView *_headerView;
    id<NSTableViewDataSource> _dataSource;
    id<NSTableViewDelegate> _delegate;
    CGFloat _rowHeight;
    BOOL _allowsMultipleSelection;
    BOOL _usesAlternatingRowBackgroundColors;
    NSTableViewSelectionHighlightStyle _selectionHighlightStyle;
}
@property(strong) NSTableHeaderView *headerView;
@property(assign) id<NSTableViewDataSource> dataSource;
@property(assign) id<NSTableViewDelegate> delegate;
@property CGFloat rowHeight;
@property BOOL allowsMultipleSelection;
@property BOOL usesAlternatingRowBackgroundColors;
@property NSTableViewSelectionHighlightStyle selectionHighlightStyle;
@property(readonly, copy) NSArray<NSTableColumn *> *tableColumns;
- (void)addTableColumn:(NSTableColumn *)tableColumn;
@property(readonly) NSInteger numberOfRows;
- (void)reloadData;
- (NSView *)viewAtColumn:(NSInteger)column row:(NSInteger)row makeIfNecessary:(BOOL)makeIfNecessary;
@property(readonly, copy) NSIndexSet *selectedRowIndexes;
- (void)deselectAll:(id)sender;
- (void)selectRowIndexes:(NSIndexSet *)indexes byExtendingSelection:(BOOL)extend;
@end
