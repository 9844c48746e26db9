#pragma once

#include "platform/Url.h"
#include "platform/ui/Image.h"

#include <string>

namespace fernhop::ui {

/// Loads images. Main thread only.
class Images {
  public:
    virtual ~Images() = default;

    /// The image in a file, `side` points wide and high, not tinted; null when the file is not a readable
    /// image.
    [[nodiscard]] virtual ImageReference imageWithContentsOfUrl(const Url &file, double side) const = 0;

    /// The system's symbol with this name, `side` points wide and high (0: natural size); null when there is
    /// none.
    [[nodiscard]] virtual ImageReference imageWithSystemSymbolName(const std::string &name,
                                                                   double side) const = 0;
};

} // namespace fernhop::ui
