#pragma once

#include "platform/macos/Reference.h"
#include "platform/macos/ui/ActionTarget.h"
#include "platform/macos/ui/LinkedControls.h"
#include "platform/ui/TableView.h"

#import <AppKit/AppKit.h>

@class FernhopTableObserver;

namespace fernhop::macos {

/// Shows a table's rows and keeps the selection in step with it, both ways.
class TableLink : public ViewLink {
  public:
    /// `model` belongs to `view`; `actionTarget` outlives this object.
    TableLink(std::shared_ptr<ui::View> view, ui::TableView &model, FernhopTableView *control,
              const ActionTarget &actionTarget);
    ~TableLink() override;

    void show() override;
    void take() override;

    /// For the table on the screen: how many rows there are.
    [[nodiscard]] NSInteger numberOfRows() const;
    /// For the table on the screen: a new view for a row; autoreleased, nil for none.
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
    bool isShowing = false; ///< the changes on the screen are the core's
};

} // namespace fernhop::macos
