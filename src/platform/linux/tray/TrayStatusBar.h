#pragma once

#include "platform/SessionReport.h"
#include "platform/linux/tray/EmbeddedTray.h"
#include "platform/linux/tray/MenuService.h"
#include "platform/linux/tray/PortalAppearance.h"
#include "platform/ui/StatusItem.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace fernhop::freedesktop {

class TrayIcon;

/// The tray of a session with a bus. Main thread only.
class TrayStatusBar : public ui::StatusBar {
  public:
    /// `bus` and `icons`, which tells the icons of applications, outlive the bar, and the bar its items.
    /// `embedding` says how an item shows in an XEmbed tray. `appearanceChanged`
    /// is called when the user asks for another appearance.
    TrayStatusBar(GDBusConnection *bus, const IconFinder &icons, EmbeddedTrayPlace embedding,
                  std::function<void()> appearanceChanged);

    /// What the user asks all applications to look like; nothing where the user does not say.
    [[nodiscard]] std::optional<ui::AppearanceName> statedAppearance() const { return appearance.stated(); }

    /// Whom clicks go to from now on; without anyone they do nothing.
    void setPerform(PerformAction action) { perform = std::move(action); }

    /// Who gets the tokens that hosts send ahead of clicks, by which a window of ours may come to the front.
    void setTakeToken(std::function<void(const std::string &token)> take) { takeToken = std::move(take); }

    /// What shows the item now; nowhere without one.
    [[nodiscard]] IconPlace iconPlace() const;

    /// There is one place for an item on a connection, so one item at a time.
    [[nodiscard]] std::unique_ptr<ui::StatusItem> statusItemWithLength(double length) override;

  private:
    GDBusConnection *bus;
    const IconFinder &icons;
    const EmbeddedTrayPlace embedding;
    const PortalAppearance appearance;
    PerformAction perform;
    std::function<void(const std::string &token)> takeToken;
    std::weak_ptr<const TrayIcon> icon; ///< of the item
};

} // namespace fernhop::freedesktop
