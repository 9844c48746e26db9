#pragma once

#include "platform/ui/StatusItem.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace fernhop::fakes {

/// An appearance that a test sets; without a value it matches no name.
class FakeAppearance : public ui::Appearance {
  public:
    std::optional<ui::AppearanceName> name = ui::AppearanceName::aqua;

    std::optional<ui::AppearanceName>
    bestMatchFromAppearancesWithNames(const std::vector<ui::AppearanceName> &names) const override {
        const bool known = name && std::ranges::find(names, *name) != names.end();
        return known ? name : std::nullopt;
    }
};

/// The bar with its only item: all values of the item can be read, even after the item is gone.
class FakeStatusBar : public ui::StatusBar {
  public:
    bool hasButton = true;
    FakeAppearance appearance;
    std::optional<double> length;
    std::string toolTip = "not set";
    std::string title = "not set";
    std::optional<ui::ImagePosition> imagePosition;
    ui::ImageReference image;
    std::shared_ptr<const ui::Menu> menu;
    int menusSet = 0;
    int imagesSet = 0;
    std::function<void()> atMenu; ///< called after a menu was set

    std::unique_ptr<ui::StatusItem> statusItemWithLength(double itemLength) override {
        length = itemLength;
        return std::make_unique<Item>(*this);
    }

  private:
    class Item : public ui::StatusItem {
      public:
        explicit Item(FakeStatusBar &owner) : bar(owner) {}

        bool hasButton() const override { return bar.hasButton; }
        const ui::Appearance &effectiveAppearance() const override { return bar.appearance; }
        void setToolTip(const std::string &text) override { bar.toolTip = text; }
        void setTitle(const std::string &text) override { bar.title = text; }
        void setImagePosition(ui::ImagePosition position) override { bar.imagePosition = position; }
        void setImage(ui::ImageReference newImage) override {
            bar.image = std::move(newImage);
            ++bar.imagesSet;
        }
        void setMenu(std::shared_ptr<const ui::Menu> newMenu) override {
            bar.menu = std::move(newMenu);
            ++bar.menusSet;
            if (bar.atMenu)
                bar.atMenu();
        }

      private:
        FakeStatusBar &bar;
    };
};

} // namespace fernhop::fakes
