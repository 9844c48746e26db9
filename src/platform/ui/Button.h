#pragma once

#include "platform/ui/ControlSize.h"
#include "platform/ui/MenuItem.h"
#include "platform/ui/View.h"

namespace fernhop::ui {

/// The position of a button's image; the values are those of AppKit.
enum class ImagePosition { none = 0, imageOnly = 1, leading = 7 };

/// The alignment of a button's title: by the direction of the language, or to the left.
enum class TextAlignment { natural, left };

/// A push button with a rounded bezel, or a check box. Its action reads its identifier. A check box has
/// already changed its state when its action runs.
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
