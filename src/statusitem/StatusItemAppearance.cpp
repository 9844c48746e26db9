#include "statusitem/StatusItemAppearance.h"

#include "statusitem/FallbackGlyph.h"

#include <memory>

namespace fernhop {

using namespace ui;

namespace {

bool isDark(const Appearance &appearance) {
    return appearance.bestMatchFromAppearancesWithNames({AppearanceName::darkAqua, AppearanceName::aqua}) ==
           AppearanceName::darkAqua;
}

} // namespace

void StatusItemAppearance::updateStatusItemAppearance(StatusItem &item, bool routingEnabled) const {
    if (!item.hasButton())
        return;
    item.setToolTip(routingEnabled ? "Fernhop - App Routing On" : "Fernhop");
    item.setTitle("");
    item.setImagePosition(ImagePosition::imageOnly);
    const Appearance &appearance = item.effectiveAppearance();
    auto image = menuBarImage(appearance);
    item.setImage(image ? std::move(image) : makeFallbackMenuBarImage(appearance));
}

ImageReference StatusItemAppearance::menuBarImage(const Appearance &appearance) const {
    const auto resource =
        bundles.urlForResource(isDark(appearance) ? "MenuBarIconDark" : "MenuBarIconLight", "png");
    return resource ? images.imageWithContentsOfUrl(*resource, statusImageSide) : nullptr;
}

ImageReference StatusItemAppearance::makeFallbackMenuBarImage(const Appearance &appearance) {
    const Color ink{isDark(appearance) ? ColorRole::white : ColorRole::black, 1};
    return std::make_shared<const Image>(makeFallbackGlyph(ink), statusImageSide, false);
}

} // namespace fernhop
