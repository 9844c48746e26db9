#pragma once

#include "platform/linux/tray/EmbeddedIcon.h"
#include "platform/linux/tray/NotifierHosts.h"
#include "platform/linux/tray/XTray.h"

#include <chrono>
#include <memory>
#include <string>

namespace fernhop::freedesktop {

/// What an embedded icon is made with.
struct EmbeddedTrayPlace {
    std::string display;                ///< of the X session, ":0" say; empty: there is no tray of this kind
    MakeEmbeddedIcon makeIcon;          ///< may load a toolkit
    std::chrono::milliseconds patience; ///< how long no host must be seen before an icon is made
};

/// The icon where only an X11 tray of the System Tray Protocol shows icons: there while there is such a tray
/// and nobody shows StatusNotifier items, so that there are never two. Main thread only.
class EmbeddedTray {
  public:
    /// `bus` outlives the object; clicks go to `perform`.
    EmbeddedTray(GDBusConnection *bus, EmbeddedTrayPlace place, PerformAction perform);
    ~EmbeddedTray();
    EmbeddedTray(const EmbeddedTray &) = delete;
    EmbeddedTray &operator=(const EmbeddedTray &) = delete;

    /// Kept for the icon, whenever there is one. `withRim` is for an image that need not stand out by itself.
    void setImage(ui::ImageReference newImage, bool withRim);
    void setToolTip(const std::string &text);
    void setMenu(std::shared_ptr<const ui::Menu> newMenu);

    /// Whether a tray of windows was given an icon.
    [[nodiscard]] bool isShown() const { return icon != nullptr; }
    /// Whether somebody is known to show StatusNotifier items.
    [[nodiscard]] bool givesWay() const { return hosts.areThere().value_or(false); }

  private:
    void look();
    void stopWaiting();
    void show();
    void drawIcon();
    static gboolean waited(gpointer self);

    const EmbeddedTrayPlace place;
    const PerformAction perform;
    ui::ImageReference image;
    bool hasRim = false;
    std::string toolTip;
    std::shared_ptr<const ui::Menu> menu = std::make_shared<const ui::Menu>();
    std::unique_ptr<XTray> tray; ///< while nobody shows StatusNotifier items
    std::unique_ptr<EmbeddedIcon> icon;
    guint waiting = 0;
    NotifierHosts hosts;
};

} // namespace fernhop::freedesktop
