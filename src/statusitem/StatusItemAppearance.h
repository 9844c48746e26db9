#pragma once

#include "platform/Bundle.h"
#include "platform/ui/Appearance.h"
#include "platform/ui/Images.h"
#include "platform/ui/StatusItem.h"

namespace fernhop {

/// Dresses the status item's button. Keeps no state: everything is chosen anew each time. Main thread only.
class StatusItemAppearance {
  public:
    /// Both must outlive this object.
    StatusItemAppearance(const Bundles &resources, const ui::Images &loader)
        : bundles(resources), images(loader) {}

    /// Gives the button its tooltip, which tells the routing state, and the image that suits the bar's
    /// appearance.
    void updateStatusItemAppearance(ui::StatusItem &item, bool routingEnabled) const;

    /// The resource image for an appearance; null when it is missing or cannot be read. A missing dark one is
    /// not replaced by the light one.
    [[nodiscard]] ui::ImageReference menuBarImage(const ui::Appearance &appearance) const;

    /// The drawn image for an appearance: white on dark, else black.
    [[nodiscard]] static ui::ImageReference makeFallbackMenuBarImage(const ui::Appearance &appearance);

  private:
    const Bundles &bundles;
    const ui::Images &images;
};

} // namespace fernhop
