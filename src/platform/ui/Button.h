#pragma once

#include "platform/ui/MenuItem.h"

namespace fernhop::ui {

/// A push button or check box. A check box has changed its own state before its action runs.
class Button : public Object {
  public:
    std::string title;
    std::string action;     ///< selector that the button fires; empty: none
    std::string identifier; ///< data that the button carries for its action; empty: none
    ControlState state = ControlState::off;
};

} // namespace fernhop::ui
