#pragma once

#include "platform/ui/StatusItem.h"

#include <memory>

namespace fernhop::freedesktop {

/// For a process without a bus: the status item has no button.
class NoStatusBar : public ui::StatusBar {
  public:
    [[nodiscard]] std::unique_ptr<ui::StatusItem> statusItemWithLength(double) override {
        return std::make_unique<Item>();
    }

  private:
    class Item : public ui::StatusItem, private ui::Appearance {
      public:
        [[nodiscard]] bool hasButton() const override { return false; }
        [[nodiscard]] const ui::Appearance &effectiveAppearance() const override { return *this; }
        void setToolTip(const std::string &) override {}
        void setTitle(const std::string &) override {}
        void setImagePosition(ui::ImagePosition) override {}
        void setImage(ui::ImageReference) override {}
        void setMenu(std::shared_ptr<const ui::Menu>) override {}

      private:
        [[nodiscard]] std::optional<ui::AppearanceName>
        bestMatchFromAppearancesWithNames(const std::vector<ui::AppearanceName> &) const override {
            return std::nullopt;
        }
    };
};

} // namespace fernhop::freedesktop
