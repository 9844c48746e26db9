#pragma once

#include "platform/Object.h"

#include <memory>
#include <string>
#include <variant>

namespace fernhop::ui {

/// The data that an item or control carries for its action: none, a text, or an object.
using RepresentedObject = std::variant<std::monostate, std::string, std::shared_ptr<const Object>>;

/// Whether a check mark shows; the values are the desktop's.
enum class ControlState { off = 0, on = 1 };

/// One row of a menu. It is the sender of the action it names.
class MenuItem : public Object {
  public:
    std::string title;
    std::string action; ///< selector that the item fires; empty: none
    RepresentedObject representedObject;
    ControlState state = ControlState::off;
};

} // namespace fernhop::ui
