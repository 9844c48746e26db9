#pragma once

#include "platform/ui/Image.h"
#include "platform/ui/View.h"

#include <optional>

namespace fernhop::ui {

/// Shows an image, scaled up or down in proportion to fit.
class ImageView : public View {
  public:
    ImageReference image; ///< null: nothing shows
    std::optional<Color> contentTintColor;
};

} // namespace fernhop::ui
