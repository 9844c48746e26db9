#pragma once

#include "platform/ui/ControlSize.h"
#include "platform/ui/MenuItem.h"
#include "platform/ui/View.h"

namespace fernhop::ui {

/// Where a button's image stands; the values are the desktop's.
enum class ImagePosition { none = 0, imageOnly = 1, leading = 7 };

/// How a title stands in its button: as the language reads, or to the left.
enum class TextAlignment { natural, left };

/// A push button with a rounded bezel, or a check box. What it carries for its action is its identifier. A
/// check box has changed its own state before its action runs.
class Button : public View {
  public:
    std::string title;
    Selector action;
    ControlState state = ControlState::off;
    ControlSize controlSize = ControlSize::regular;
    ImageReference image;
    ImagePosition imagePosition = ImagePosition::none;
    TextAlignment alignment = TextAlignment::natural;
};

} // namespace fernhop::ui
