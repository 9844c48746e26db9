#pragma once

#include "platform/linux/base/GPointer.h"
#include "platform/linux/tray/PortalAppearance.h"

#include <QMenu>
#include <QSystemTrayIcon>
#include <cstdint>
#include <functional>
#include <string>

namespace fernhop::freedesktop {

/// Called with the number of an item that was clicked, from the main loop, once the menu is closed.
using ClickItem = std::function<void(std::int32_t id)>;

/// Fills `target`, which is empty, with the items of a menu: an (ia{sv}av) of com.canonical.dbusmenu, which
/// is kept. Submenus are filled when they open.
void fillMenu(QMenu &target, GVariant *layout, const ClickItem &click);

/// Shows the tray item of another process in an XEmbed tray, with Qt: reads icon, tooltip and menu over the
/// bus, and sends clicks there. Main thread only.
class XEmbedIcon {
  public:
    /// `owner` is the unique name of the item's process on `bus`, which outlives the icon.
    XEmbedIcon(GDBusConnection *bus, std::string owner);
    ~XEmbedIcon();
    XEmbedIcon(const XEmbedIcon &) = delete;
    XEmbedIcon &operator=(const XEmbedIcon &) = delete;

  private:
    [[nodiscard]] GVariantPointer call(const char *path, const char *interface, const char *method,
                                       GVariant *body, const char *replyType) const;
    /// The value of a property of the item; null when the item does not answer.
    [[nodiscard]] GVariantPointer property(const char *name) const;
    void showPicture();
    void showToolTip();
    void refillMenu();
    void click(std::int32_t id) const;

    GDBusConnection *bus;
    const std::string owner;
    const PortalAppearance appearance;
    guint subscription = 0;
    QMenu menu;
    QSystemTrayIcon icon;
};

} // namespace fernhop::freedesktop
