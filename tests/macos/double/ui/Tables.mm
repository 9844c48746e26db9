#include "macos/double/UserActions.h"

#import <AppKit/NSTableView.h>

@implementation NSTableColumn

@synthesize identifier = _identifier;
@synthesize width = _width;

- (instancetype)initWithIdentifier:(NSUserInterfaceItemIdentifier)identifier {
    if ((self = [super init]))
        _identifier = [identifier copy];
    return self;
}

- (void)dealloc {
    [_identifier release];
    [super dealloc];
}

@end

@implementation NSTableView

@synthesize headerView = _headerView;
@synthesize dataSource = _dataSource;
@synthesize delegate = _delegate;
@synthesize rowHeight = _rowHeight;
@synthesize allowsMultipleSelection = _allowsMultipleSelection;
@synthesize usesAlternatingRowBackgroundColors = _usesAlternatingRowBackgroundColors;
@synthesize selectionHighlightStyle = _selectionHighlightStyle;

- (instancetype)initWithFrame:(NSRect)frameRect {
    if ((self = [super initWithFrame:frameRect])) {
        _tableColumns = [NSMutableArray new];
        _rowViews = [NSMutableArray new];
        _selection = [NSMutableIndexSet new];
        _headerView = [NSTableHeaderView new];
        _numberOfRows = NSNotFound;
    }
    return self;
}

- (NSArray *)tableColumns {
    return [[_tableColumns copy] autorelease];
}

- (void)addTableColumn:(NSTableColumn *)tableColumn {
    [_tableColumns addObject:tableColumn];
}

- (NSInteger)numberOfRows {
    if (_numberOfRows == NSNotFound) {
        _numberOfRows = [_dataSource numberOfRowsInTableView:self];
        for (NSInteger row = 0; row < _numberOfRows; ++row)
            [_rowViews addObject:[NSNull null]];
    }
    return _numberOfRows;
}

- (void)reloadData {
    for (id view in _rowViews)
        if (view != [NSNull null])
            [view removeFromSuperview];
    [_rowViews removeAllObjects];
    _numberOfRows = NSNotFound;
    const auto rows = static_cast<NSUInteger>([self numberOfRows]);
    NSMutableIndexSet *left = [[_selection mutableCopy] autorelease];
    [left removeIndexesInRange:NSMakeRange(rows, NSNotFound - rows)];
    [self select:left];
}

- (NSView *)viewAtColumn:(NSInteger)column row:(NSInteger)row makeIfNecessary:(BOOL)makeIfNecessary {
    [self numberOfRows];
    const auto index = static_cast<NSUInteger>(row);
    id view = [_rowViews objectAtIndex:index];
    if (view != [NSNull null])
        return view;
    if (!makeIfNecessary)
        return nil;
    NSTableColumn *tableColumn = [_tableColumns objectAtIndex:static_cast<NSUInteger>(column)];
    NSView *made = [_delegate tableView:self viewForTableColumn:tableColumn row:row];
    if (made) {
        [_rowViews replaceObjectAtIndex:index withObject:made];
        [self addSubview:made];
    }
    return made;
}

- (NSIndexSet *)selectedRowIndexes {
    return [[_selection copy] autorelease];
}

- (void)deselectAll:(id)sender {
    [self select:[NSIndexSet indexSet]];
}

- (void)selectRowIndexes:(NSIndexSet *)indexes byExtendingSelection:(BOOL)extend {
    if ([indexes count] > 0 && [indexes lastIndex] >= static_cast<NSUInteger>([self numberOfRows]))
        [NSException raise:NSRangeException format:@"there is no such row"];
    NSMutableIndexSet *next = [[indexes mutableCopy] autorelease];
    if (extend)
        [next addIndexes:_selection];
    if ([next count] > 1 && !_allowsMultipleSelection)
        [NSException raise:NSInvalidArgumentException format:@"one row at most can be selected"];
    [self select:next];
}

- (void)select:(NSIndexSet *)rows {
    if ([rows isEqualToIndexSet:_selection])
        return;
    [_selection removeAllIndexes];
    [_selection addIndexes:rows];
    if ([_delegate respondsToSelector:@selector(tableViewSelectionDidChange:)])
        [_delegate
            tableViewSelectionDidChange:[NSNotification
                                            notificationWithName:@"NSTableViewSelectionDidChangeNotification"
                                                          object:self]];
}

- (void)dealloc {
    [_headerView release];
    [_tableColumns release];
    [_rowViews release];
    [_selection release];
    [super dealloc];
}

@end

@implementation NSTableView (UserActions)

- (BOOL)userSelectsRows:(NSIndexSet *)rows {
    [self selectRowIndexes:rows byExtendingSelection:NO];
    return [self userClicks];
}

@end
