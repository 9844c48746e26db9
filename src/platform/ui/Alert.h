#pragma once

#include "platform/ui/View.h"

#include <memory>
#include <string>
#include <vector>

namespace fernhop::ui {

/// A modal dialog with an icon, two texts, an accessory view and buttons.
struct Alert {
    std::string messageText;
    std::string informativeText;
    std::vector<std::string> buttons; ///< the confirming one first
    std::shared_ptr<View> accessoryView;
};

/// The response of the first button; the others follow in order.
inline constexpr int alertFirstButtonReturn = 1000;

/// Shows alerts. Main thread only.
class AlertPresenter {
  public:
    virtual ~AlertPresenter() = default;

    /// Brings the open alert to the front; false when none is open.
    [[nodiscard]] virtual bool bringToFront() = 0;

    /// Shows `alert` until it is closed, and returns `alertFirstButtonReturn` plus the index of the pressed
    /// button. If the dialog is closed in another way or cannot be shown, returns the response of the last
    /// button. Other events are handled meanwhile.
    [[nodiscard]] virtual int runModal(const Alert &alert) = 0;
};

} // namespace fernhop::ui
