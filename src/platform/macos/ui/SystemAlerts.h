#pragma once

#include "platform/macos/Reference.h"
#include "platform/macos/ui/ActionTarget.h"
#include "platform/ui/Alert.h"

#import <AppKit/AppKit.h>

namespace fernhop::macos {

/// The system's alerts. While one is open, its modal loop handles all other events.
class SystemAlerts : public ui::AlertPresenter {
  public:
    /// `actionTarget` receives the actions of the alerts' controls and must outlive this object.
    explicit SystemAlerts(const ActionTarget &actionTarget) : target(actionTarget) {}

    [[nodiscard]] bool bringToFront() override;
    [[nodiscard]] int runModal(const ui::Alert &alert) override;

  private:
    [[nodiscard]] NSInteger show(NSAlert *alert);

    const ActionTarget &target;
    Reference<NSAlert> open;
};

} // namespace fernhop::macos
