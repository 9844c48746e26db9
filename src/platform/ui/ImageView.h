#pragma once

#include "platform/ui/Image.h"
#include "platform/ui/View.h"

#include <optional>

namespace fernhop::ui {

/// Shows an image, scaled proportionally to fit.
class ImageView : public View {
  public:
    ImageReference image; ///< null: none
    std::optional<Color> contentTintColor;
};

} // namespace fernhop::ui
