#pragma once

#include "platform/linux/base/GPointer.h"
#include "platform/ui/Appearance.h"

#include <functional>
#include <optional>

namespace fernhop::freedesktop {

/// Light or dark, by the settings portal's color-scheme. Where the user does not say, or there is no portal,
/// it is light. Main thread only.
class PortalAppearance : public ui::Appearance {
  public:
    /// Asks the portal, whose answer comes later, and asks again whenever a portal starts; `changed` is
    /// called whenever what the user asks for has become another. `bus` outlives the object.
    PortalAppearance(GDBusConnection *bus, std::function<void()> changed);
    ~PortalAppearance() override;
    PortalAppearance(const PortalAppearance &) = delete;
    PortalAppearance &operator=(const PortalAppearance &) = delete;

    [[nodiscard]] std::optional<ui::AppearanceName>
    bestMatchFromAppearancesWithNames(const std::vector<ui::AppearanceName> &names) const override;

    /// What the user asks all applications to look like; nothing where the user does not say.
    [[nodiscard]] std::optional<ui::AppearanceName> stated() const { return asked; }

  private:
    void take(GVariant *value);
    void ask();

    GDBusConnection *bus;
    std::function<void()> changed;
    GObjectPointer<GCancellable> question;
    guint subscription = 0;
    guint watch = 0;
    std::optional<ui::AppearanceName> asked;
};

} // namespace fernhop::freedesktop
