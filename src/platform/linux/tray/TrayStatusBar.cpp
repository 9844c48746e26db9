#include "platform/linux/tray/TrayStatusBar.h"

#include "platform/linux/tray/NotifierItem.h"

#include <utility>

namespace fernhop::freedesktop {

/// The icon as a StatusNotifierItem and in XEmbed trays.
class TrayIcon {
  public:
    TrayIcon(GDBusConnection *bus, const EmbeddedTrayPlace &embedding,
             std::function<void(const std::string &token)> takeToken)
        : item(bus, MenuService::path, std::move(takeToken)), watcher(bus), embedded(watcher, embedding) {}

    [[nodiscard]] IconPlace place() const {
        if (embedded.isShown())
            return IconPlace::xembedTray;
        return watcher.hasHost().value_or(false) && watcher.hasItem() ? IconPlace::panel : IconPlace::nowhere;
    }

    NotifierItem item;
    NotifierWatcher watcher;
    EmbeddedTray embedded;
};

namespace {

class TrayStatusItem : public ui::StatusItem {
  public:
    TrayStatusItem(const PortalAppearance &barAppearance, std::unique_ptr<MenuService> menuService,
                   std::shared_ptr<TrayIcon> trayIcon)
        : appearance(barAppearance), menu(std::move(menuService)), icon(std::move(trayIcon)) {}

    // Trays come and go at any time; image, tooltip and menu are kept for the next one.
    [[nodiscard]] bool hasButton() const override { return true; }
    [[nodiscard]] const ui::Appearance &effectiveAppearance() const override { return appearance; }
    void setToolTip(const std::string &text) override { icon->item.setToolTip(text); }
    void setTitle(const std::string &title) override { icon->item.setTitle(title); }
    // Trays show only the image.
    void setImagePosition(ui::ImagePosition) override {}
    void setImage(ui::ImageReference image) override {
        // The colour of a panel is unknown; many are dark where the user states no appearance.
        icon->item.setImage(std::move(image), !appearance.stated());
    }
    void setMenu(std::shared_ptr<const ui::Menu> newMenu) override { menu->setMenu(std::move(newMenu)); }

  private:
    const PortalAppearance &appearance;
    const std::unique_ptr<MenuService> menu;
    const std::shared_ptr<TrayIcon> icon;
};

} // namespace

TrayStatusBar::TrayStatusBar(GDBusConnection *connection, const IconFinder &iconFinder,
                             EmbeddedTrayPlace embeddedPlace, std::function<void()> appearanceChanged)
    : bus(connection), icons(iconFinder), embedding(std::move(embeddedPlace)),
      appearance(bus, std::move(appearanceChanged)) {}

std::unique_ptr<ui::StatusItem> TrayStatusBar::statusItemWithLength(double) {
    const auto click = [this](ui::Selector selector, const ui::MenuItem &sender) {
        if (perform)
            perform(selector, sender);
    };
    // The menu first: hosts may read it as soon as the item is registered.
    auto menu = std::make_unique<MenuService>(bus, icons, click);
    auto newIcon = std::make_shared<TrayIcon>(bus, embedding, [this](const std::string &token) {
        if (takeToken)
            takeToken(token);
    });
    icon = newIcon;
    return std::make_unique<TrayStatusItem>(appearance, std::move(menu), std::move(newIcon));
}

IconPlace TrayStatusBar::iconPlace() const {
    const auto shown = icon.lock();
    return shown ? shown->place() : IconPlace::nowhere;
}

} // namespace fernhop::freedesktop
