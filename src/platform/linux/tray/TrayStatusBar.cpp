#include "platform/linux/tray/TrayStatusBar.h"

#include "platform/linux/tray/NotifierItem.h"

#include <utility>

namespace fernhop::freedesktop {
namespace {

class TrayStatusItem : public ui::StatusItem {
  public:
    TrayStatusItem(GDBusConnection *bus, const IconFinder &icons, const EmbeddedTrayPlace &embedding,
                   const ui::Appearance &barAppearance, const PerformAction &perform,
                   std::function<void(const std::string &token)> takeToken)
        : appearance(barAppearance), menu(bus, icons, perform),
          item(bus, MenuService::path, std::move(takeToken)), embedded(bus, embedding, perform) {}

    // Whether a tray shows it can change at any time; what it is dressed with is kept for the next one.
    [[nodiscard]] bool hasButton() const override { return true; }
    [[nodiscard]] const ui::Appearance &effectiveAppearance() const override { return appearance; }
    void setToolTip(const std::string &text) override {
        item.setToolTip(text);
        embedded.setToolTip(text);
    }
    void setTitle(const std::string &title) override { item.setTitle(title); }
    // A tray shows nothing but the image.
    void setImagePosition(ui::ImagePosition) override {}
    void setImage(ui::ImageReference image) override {
        item.setImage(image);
        embedded.setImage(std::move(image));
    }
    void setMenu(std::shared_ptr<const ui::Menu> newMenu) override {
        menu.setMenu(newMenu);
        embedded.setMenu(std::move(newMenu));
    }

  private:
    const ui::Appearance &appearance;
    MenuService menu;
    NotifierItem item;
    EmbeddedTray embedded;
};

} // namespace

TrayStatusBar::TrayStatusBar(GDBusConnection *connection, const IconFinder &iconFinder,
                             EmbeddedTrayPlace embeddedPlace, std::function<void()> appearanceChanged)
    : bus(connection), icons(iconFinder), embedding(std::move(embeddedPlace)),
      appearance(bus, std::move(appearanceChanged)) {}

std::unique_ptr<ui::StatusItem> TrayStatusBar::statusItemWithLength(double) {
    return std::make_unique<TrayStatusItem>(
        bus, icons, embedding, appearance,
        [this](ui::Selector selector, const ui::MenuItem &sender) {
            if (perform)
                perform(selector, sender);
        },
        [this](const std::string &token) {
            if (takeToken)
                takeToken(token);
        });
}

} // namespace fernhop::freedesktop
