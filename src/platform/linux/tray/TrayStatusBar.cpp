#include "platform/linux/tray/TrayStatusBar.h"

#include "platform/linux/tray/NotifierItem.h"

#include <utility>

namespace fernhop::freedesktop {
namespace {

class TrayStatusItem : public ui::StatusItem {
  public:
    TrayStatusItem(GDBusConnection *bus, const IconFinder &icons, const ui::Appearance &barAppearance,
                   PerformAction perform)
        : appearance(barAppearance), menu(bus, icons, std::move(perform)), item(bus, MenuService::path) {}

    // Whether a tray shows it can change at any time; what it is dressed with is kept for the next one.
    [[nodiscard]] bool hasButton() const override { return true; }
    [[nodiscard]] const ui::Appearance &effectiveAppearance() const override { return appearance; }
    void setToolTip(const std::string &text) override { item.setToolTip(text); }
    void setTitle(const std::string &title) override { item.setTitle(title); }
    // A tray shows nothing but the image.
    void setImagePosition(ui::ImagePosition) override {}
    void setImage(ui::ImageReference image) override { item.setImage(std::move(image)); }
    void setMenu(std::shared_ptr<const ui::Menu> newMenu) override { menu.setMenu(std::move(newMenu)); }

  private:
    const ui::Appearance &appearance;
    MenuService menu;
    NotifierItem item;
};

} // namespace

TrayStatusBar::TrayStatusBar(GDBusConnection *connection, const IconFinder &iconFinder,
                             std::function<void()> appearanceChanged)
    : bus(connection), icons(iconFinder), appearance(bus, std::move(appearanceChanged)) {}

std::unique_ptr<ui::StatusItem> TrayStatusBar::statusItemWithLength(double) {
    return std::make_unique<TrayStatusItem>(bus, icons, appearance,
                                            [this](ui::Selector selector, const ui::MenuItem &sender) {
                                                if (perform)
                                                    perform(selector, sender);
                                            });
}

} // namespace fernhop::freedesktop
