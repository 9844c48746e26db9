#pragma once

#include "platform/ui/Images.h"

#include <memory>
#include <optional>
#include <set>
#include <string>

namespace fernhop::fakes {

/// Has an image for every file and symbol, unless a test removes it.
class FakeImages : public ui::Images {
  public:
    std::set<std::string> unreadableFiles;
    std::set<std::string> missingSymbols;

    ui::ImageReference imageWithContentsOfUrl(const Url &file, double side) const override {
        if (unreadableFiles.contains(file.path()))
            return nullptr;
        return std::make_shared<const ui::Image>(ui::ImageFile{file.path()}, side, false);
    }

    ui::ImageReference imageWithSystemSymbolName(const std::string &name, double side) const override {
        if (missingSymbols.contains(name))
            return nullptr;
        return std::make_shared<const ui::Image>(ui::SystemSymbol{name}, side, true);
    }
};

} // namespace fernhop::fakes
