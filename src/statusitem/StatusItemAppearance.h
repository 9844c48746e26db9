#pragma once

#include "platform/Bundle.h"
#include "platform/ui/Appearance.h"
#include "platform/ui/Images.h"
#include "platform/ui/StatusItem.h"

namespace fernhop {

/// Sets the tooltip and image of the status item's button. Keeps no state. Main thread only.
class StatusItemAppearance {
  public:
    /// Both must outlive this object.
    StatusItemAppearance(const Bundles &resources, const ui::Images &loader)
        : bundles(resources), images(loader) {}

    /// Sets the tooltip, which shows the routing state, and the image for the bar's appearance. Does nothing
    /// without a button.
    void updateStatusItemAppearance(ui::StatusItem &item, bool routingEnabled) const;

    /// The resource image for an appearance; null when it is missing or unreadable. The light image does not
    /// replace a missing dark one.
    [[nodiscard]] ui::ImageReference menuBarImage(const ui::Appearance &appearance) const;

    /// The drawn image for an appearance: white for a dark one, else black.
    [[nodiscard]] static ui::ImageReference makeFallbackMenuBarImage(const ui::Appearance &appearance);

  private:
    const Bundles &bundles;
    const ui::Images &images;
};

} // namespace fernhop
