#pragma once

#include "platform/linux/dialogs-qt/TrayMenu.h"

#include <QMenu>
#include <QSystemTrayIcon>

namespace fernhop::freedesktop {

/// An embedded icon by Qt, whose events come through the process's own main loop. The menu is built when it
/// opens.
class QtTrayIcon : public EmbeddedIcon {
  public:
    /// `host` outlives the icon.
    QtTrayIcon(const DialogHost &host, PerformAction perform);

    void setPicture(DrawIcon draw) override;
    void setToolTip(const std::string &text) override;
    void setMenu(std::shared_ptr<const ui::Menu> newMenu) override { source.menu = std::move(newMenu); }

  private:
    void refill();
    void activated(QSystemTrayIcon::ActivationReason reason);

    TrayMenuSource source;
    QMenu menu;
    QSystemTrayIcon icon;
};

} // namespace fernhop::freedesktop
