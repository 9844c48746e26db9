#pragma once

#include "TrayHost.h"
#include "platform/linux/tray/TrayStatusBar.h"
#include "support/PrivateBus.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace fernhop::freedesktop {

inline std::shared_ptr<const ui::Menu> menuOf(std::vector<ui::MenuItem> items) {
    return std::make_shared<const ui::Menu>(ui::Menu{std::move(items)});
}

inline ui::MenuItem withSubmenu(std::string title, std::vector<ui::MenuItem> items) {
    ui::MenuItem item(std::move(title), "");
    item.submenu = ui::Menu{std::move(items)};
    return item;
}

inline ui::ImageReference glyph(ui::ColorRole ink) {
    return std::make_shared<const ui::Image>(ui::Drawing{{ink, 1}, {{{ui::Oval{{0, 0}, 18, 18}}}}}, 18,
                                             false);
}

/// The item in the tray of a private bus, and a host that shows it.
class TrayTest : public testing::Test {
  protected:
    [[nodiscard]] std::string ownName() const { return g_dbus_connection_get_unique_name(connection.get()); }
    [[nodiscard]] LayoutItem layout() { return LayoutItem(host.layout().first.get()); }
    /// What a host is told about the item, of all properties in one answer.
    [[nodiscard]] GVariantPointer allProperties(const char *interface, const char *path) {
        const auto reply = host.call(ownName().c_str(), path, "org.freedesktop.DBus.Properties", "GetAll",
                                     g_variant_new("(s)", interface));
        return GVariantPointer(reply.value ? g_variant_get_child_value(reply.value.get(), 0) : nullptr);
    }
    [[nodiscard]] Host::Reply click(gint32 id) {
        return host.menuCall("Event", "(" + std::to_string(id) + ", 'clicked', <0>, uint32 0)");
    }

    support::TemporaryHome home;
    support::PrivateBus bus{home};
    BusConnection connection = connectTo(bus.address());
    ListedEntries entries;
    IconFinder icons{entries, {}};
    int appearanceChanges = 0;
    std::vector<std::string> performed;
    TrayStatusBar bar{connection.get(), icons, {}, [this] { ++appearanceChanges; }};
    std::unique_ptr<ui::StatusItem> item = bar.statusItemWithLength(ui::squareStatusItemLength);
    Host host{bus.address(), ownName()};
};

} // namespace fernhop::freedesktop
