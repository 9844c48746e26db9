#pragma once

#include "platform/ui/Alert.h"

#include <functional>
#include <vector>

namespace fernhop::fakes {

/// Shows alerts to a test: `user` operates the open alert and returns the response. Without it, alerts are
/// cancelled.
class FakeAlerts : public ui::AlertPresenter {
  public:
    std::function<int(const ui::Alert &)> user;
    std::vector<ui::Alert> shown; ///< without their views, which are released when the alert is closed
    bool alertIsOpen = false;     ///< set by a test: another alert is open already
    int broughtToFront = 0;

    bool bringToFront() override {
        broughtToFront += alertIsOpen;
        return alertIsOpen;
    }

    int runModal(const ui::Alert &alert) override {
        shown.push_back({alert.messageText, alert.informativeText, alert.buttons, nullptr});
        return user ? user(alert) : ui::alertFirstButtonReturn + static_cast<int>(alert.buttons.size()) - 1;
    }
};

} // namespace fernhop::fakes
