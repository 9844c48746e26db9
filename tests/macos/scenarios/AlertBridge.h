#pragma once

#include "fakes/FakeAlerts.h"
#include "platform/macos/ui/SystemAlerts.h"

namespace fernhop::macos {

/// Opens the alerts in the system, where the fake's user operates them. The fake and the target of the
/// controls' actions must outlive the bridge.
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
