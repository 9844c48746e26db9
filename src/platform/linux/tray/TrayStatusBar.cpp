#include "platform/linux/tray/TrayStatusBar.h"

#include "platform/linux/tray/NotifierItem.h"

#include <utility>

namespace fernhop::freedesktop {

/// The item as a StatusNotifierItem and in XEmbed trays.
class TrayStatusBar::Item : public ui::StatusItem {
  public:
    explicit Item(TrayStatusBar &statusBar)
        : bar(statusBar), menu(bar.bus, bar.icons,
                               [this](ui::Selector selector, const ui::MenuItem &sender) {
                                   if (bar.perform)
                                       bar.perform(selector, sender);
                               }),
          icon(bar.bus, MenuService::path,
               [this](const std::string &token) {
                   if (bar.takeToken)
                       bar.takeToken(token);
               }),
          watcher(bar.bus), embedded(watcher, bar.embedding) {
        bar.item = this;
    }
    ~Item() override { bar.item = nullptr; }
    Item(const Item &) = delete;
    Item &operator=(const Item &) = delete;

    [[nodiscard]] IconPlace place() const {
        if (embedded.isShown())
            return IconPlace::xembedTray;
        return watcher.hasHost().value_or(false) && watcher.hasItem() ? IconPlace::panel : IconPlace::nowhere;
    }

    // Trays come and go at any time; image, tooltip and menu are kept for the next one.
    [[nodiscard]] bool hasButton() const override { return true; }
    [[nodiscard]] const ui::Appearance &effectiveAppearance() const override { return bar.appearance; }
    void setToolTip(const std::string &text) override { icon.setToolTip(text); }
    void setTitle(const std::string &title) override { icon.setTitle(title); }
    // Trays show only the image.
    void setImagePosition(ui::ImagePosition) override {}
    void setImage(ui::ImageReference image) override {
        // The colour of a panel is unknown; many are dark where the user states no appearance.
        icon.setImage(std::move(image), !bar.appearance.stated());
    }
    void setMenu(std::shared_ptr<const ui::Menu> newMenu) override { menu.setMenu(std::move(newMenu)); }

  private:
    TrayStatusBar &bar;
    MenuService menu; // before the icon: hosts may read it as soon as that is registered
    NotifierItem icon;
    NotifierWatcher watcher;
    const EmbeddedTray embedded;
};

TrayStatusBar::TrayStatusBar(GDBusConnection *connection, const IconFinder &iconFinder,
                             EmbeddedTrayPlace embeddedPlace, std::function<void()> appearanceChanged)
    : bus(connection), icons(iconFinder), embedding(std::move(embeddedPlace)),
      appearance(bus, std::move(appearanceChanged)) {}

std::unique_ptr<ui::StatusItem> TrayStatusBar::statusItemWithLength(double) {
    return std::make_unique<Item>(*this);
}

IconPlace TrayStatusBar::iconPlace() const {
    return item ? item->place() : IconPlace::nowhere;
}

} // namespace fernhop::freedesktop
