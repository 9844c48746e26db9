#pragma once

#include "platform/macos/ui/ActionTarget.h"
#include "platform/ui/StatusItem.h"

#include <memory>

namespace fernhop::macos {

/// The status items in the menu bar.
class SystemStatusBar : public ui::StatusBar {
  public:
    /// `actionTarget` receives the actions of the items' menus and must outlive them.
    explicit SystemStatusBar(const ActionTarget &actionTarget) : target(actionTarget) {}

    [[nodiscard]] std::unique_ptr<ui::StatusItem> statusItemWithLength(double length) override;

  private:
    const ActionTarget &target;
};

} // namespace fernhop::macos
