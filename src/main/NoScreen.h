#pragma once

#include "platform/ui/Alert.h"
#include "platform/ui/StatusItem.h"

#include <functional>
#include <memory>
#include <utility>

namespace fernhop::freedesktop {

/// The status bar of a process that shows no icon: its item has no button.
class NoStatusBar : public ui::StatusBar {
  public:
    /// `menuSet`, which may be empty, is called when the item is given a menu.
    explicit NoStatusBar(std::function<void()> menuSet = {}) : onMenuSet(std::move(menuSet)) {}

    [[nodiscard]] std::unique_ptr<ui::StatusItem> statusItemWithLength(double) override {
        return std::make_unique<Item>(onMenuSet);
    }

  private:
    class Item : public ui::StatusItem, private ui::Appearance {
      public:
        explicit Item(std::function<void()> menuSet) : onMenuSet(std::move(menuSet)) {}

        [[nodiscard]] bool hasButton() const override { return false; }
        [[nodiscard]] const ui::Appearance &effectiveAppearance() const override { return *this; }
        void setToolTip(const std::string &) override {}
        void setTitle(const std::string &) override {}
        void setImagePosition(ui::ImagePosition) override {}
        void setImage(ui::ImageReference) override {}
        void setMenu(std::shared_ptr<const ui::Menu>) override {
            if (onMenuSet)
                onMenuSet();
        }

      private:
        [[nodiscard]] std::optional<ui::AppearanceName>
        bestMatchFromAppearancesWithNames(const std::vector<ui::AppearanceName> &) const override {
            return std::nullopt;
        }

        const std::function<void()> onMenuSet;
    };

    const std::function<void()> onMenuSet;
};

/// The alerts of a process that shows no dialogs itself: each counts as cancelled.
class NoAlerts : public ui::AlertPresenter {
  public:
    [[nodiscard]] bool bringToFront() override { return false; }
    [[nodiscard]] int runModal(const ui::Alert &alert) override {
        return ui::alertFirstButtonReturn + static_cast<int>(alert.buttons.size()) - 1;
    }
};

} // namespace fernhop::freedesktop
