#pragma once

#include "platform/ui/Images.h"

namespace fernhop::macos {

/// Images from files and the system's own symbols, each loaded once.
class SystemImages : public ui::Images {
  public:
    [[nodiscard]] ui::ImageReference imageWithContentsOfUrl(const Url &file, double side) const override;
    [[nodiscard]] ui::ImageReference imageWithSystemSymbolName(const std::string &name,
                                                               double side) const override;
};

} // namespace fernhop::macos
