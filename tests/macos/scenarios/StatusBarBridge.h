#pragma once

#include "fakes/FakeStatusBar.h"
#include "platform/macos/ui/SystemStatusBar.h"

namespace fernhop::macos {

/// What is in memory gets the menu as the system's status item has it, read back item by item. It outlives
/// the bridge, as does the target of the menu's actions.
class StatusBarBridge : public ui::StatusBar {
  public:
    StatusBarBridge(fakes::FakeStatusBar &inMemory, const ActionTarget &actionTarget)
        : memory(inMemory), target(actionTarget), system(actionTarget) {}

    std::unique_ptr<ui::StatusItem> statusItemWithLength(double length) override;

  private:
    fakes::FakeStatusBar &memory;
    const ActionTarget &target;
    SystemStatusBar system;
};

} // namespace fernhop::macos
