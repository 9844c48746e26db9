#pragma once

#include "platform/ui/Appearance.h"

#include <QPalette>
#include <optional>

namespace fernhop::freedesktop {

/// Whether a palette has light text on dark ground.
[[nodiscard]] bool isDark(const QPalette &palette);

/// Gives the application the palette of the desktop's theme. Where that one is light and the user asked for
/// dark, or the other way round, because the toolkit does not know this desktop, it gives a palette of our
/// own with the theme's accent.
void adoptAppearance(std::optional<ui::AppearanceName> stated);

} // namespace fernhop::freedesktop
