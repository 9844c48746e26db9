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

/// The tray of a session with a bus. Main thread only.
class TrayStatusBar : public ui::StatusBar {
  public:
    /// `bus` and `icons`, which tells the icons of applications, outlive the bar, and the bar its items.
    /// `embedding` says how an item shows in an XEmbed tray. `appearanceChanged`
    /// is called when the user asks for another appearance.
    TrayStatusBar(GDBusConnection *bus, const IconFinder &icons, EmbeddedTrayPlace embedding,
                  std::function<void()> appearanceChanged);

    /// The appearance that the user wants of all applications; nothing where none is stated.
    [[nodiscard]] std::optional<ui::AppearanceName> statedAppearance() const { return appearance.stated(); }

    /// Sets the handler of clicks; without one they do nothing.
    void setPerform(PerformAction action) { perform = std::move(action); }

    /// Sets the receiver of the activation tokens that hosts send ahead of clicks.
    void setTakeToken(std::function<void(const std::string &token)> take) { takeToken = std::move(take); }

    /// Where the item is shown now; nowhere without an item.
    [[nodiscard]] IconPlace iconPlace() const;

    /// One item at a time: a connection has one object path for it.
    [[nodiscard]] std::unique_ptr<ui::StatusItem> statusItemWithLength(double length) override;

  private:
    class Item;

    GDBusConnection *bus;
    const IconFinder &icons;
    const EmbeddedTrayPlace embedding;
    const PortalAppearance appearance;
    PerformAction perform;
    std::function<void(const std::string &token)> takeToken;
    const Item *item = nullptr; ///< null: there is none
};

} // namespace fernhop::freedesktop
