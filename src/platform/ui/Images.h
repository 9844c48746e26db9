#pragma once

#include "platform/Url.h"
#include "platform/ui/Image.h"

#include <string>

namespace fernhop::ui {

/// Where images come from. Main thread only.
class Images {
  public:
    virtual ~Images() = default;

    /// The image in a file, `side` points wide and high and not tinted; null when it cannot be read as an
    /// image.
    [[nodiscard]] virtual ImageReference imageWithContentsOfUrl(const Url &file, double side) const = 0;

    /// The system's symbol of this name, `side` points wide and high (0: natural size); null when it has
    /// none.
    [[nodiscard]] virtual ImageReference imageWithSystemSymbolName(const std::string &name,
                                                                   double side) const = 0;
};

} // namespace fernhop::ui
