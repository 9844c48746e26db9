#pragma once

#include "platform/macos/Reference.h"
#include "platform/macos/ui/ActionTarget.h"
#include "platform/macos/ui/LinkedControls.h"
#include "platform/ui/TableView.h"

#import <AppKit/AppKit.h>

@class FernhopTableObserver;

namespace fernhop::macos {

/// Shows a table's rows and synchronises the selection in both directions.
class TableLink : public ViewLink {
  public:
    /// `model` belongs to `view`; `actionTarget` outlives this object.
    TableLink(std::shared_ptr<ui::View> view, ui::TableView &model, FernhopTableView *control,
              const ActionTarget &actionTarget);
    ~TableLink() override;

    void show() override;
    void take() override;

    /// The number of rows, for the table on the screen.
    [[nodiscard]] NSInteger numberOfRows() const;
    /// A new view for a row, for the table on the screen; autoreleased, nil for none.
    [[nodiscard]] NSView *viewForRow(NSInteger row) const;
    /// The selection on the screen changed, by the user or by `show`.
    void selectionDidChange();

  private:
    void showSelection();

    ui::TableView &table;
    const Reference<FernhopTableView> shown;
    const ActionTarget &target;
    const Reference<FernhopTableObserver> observer;
    unsigned shownReload;
    bool isShowing = false; ///< the core, not the user, is changing the table
};

} // namespace fernhop::macos
