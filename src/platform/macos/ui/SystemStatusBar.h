#pragma once

#include "platform/macos/ui/ActionTarget.h"
#include "platform/ui/StatusItem.h"

#include <memory>

namespace fernhop::macos {

/// The right end of the menu bar.
class SystemStatusBar : public ui::StatusBar {
  public:
    /// `actionTarget` receives the actions of the items' menus and outlives them.
    explicit SystemStatusBar(const ActionTarget &actionTarget) : target(actionTarget) {}

    [[nodiscard]] std::unique_ptr<ui::StatusItem> statusItemWithLength(double length) override;

  private:
    const ActionTarget &target;
};

} // namespace fernhop::macos
