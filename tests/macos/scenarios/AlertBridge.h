#pragma once

#include "fakes/FakeAlerts.h"
#include "platform/macos/ui/SystemAlerts.h"

namespace fernhop::macos {

/// Alerts open in the system, where the user in memory finds them. What is in memory outlives the bridge, as
/// does the target of the controls' actions.
class AlertBridge : public ui::AlertPresenter {
  public:
    AlertBridge(fakes::FakeAlerts &inMemory, const ActionTarget &actionTarget)
        : memory(inMemory), system(actionTarget) {}

    bool bringToFront() override { return memory.bringToFront(); }
    int runModal(const ui::Alert &alert) override;

  private:
    fakes::FakeAlerts &memory;
    SystemAlerts system;
};

} // namespace fernhop::macos
