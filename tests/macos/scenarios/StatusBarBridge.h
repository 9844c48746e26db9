#pragma once

#include "fakes/FakeStatusBar.h"
#include "platform/macos/ui/SystemStatusBar.h"

namespace fernhop::macos {

/// Gives the fake the menu of the system's status item, read back item by item. The fake and the target of
/// the menu's actions must outlive the bridge.
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
