#pragma once

#include "platform/ui/Appearance.h"
#include "platform/ui/Color.h"

#include <QColor>
#include <QPalette>
#include <optional>

namespace fernhop::freedesktop {

/// Whether a palette has light text on dark ground.
[[nodiscard]] bool isDark(const QPalette &palette);

/// Gives the application the palette of the desktop's theme. Where that one is light and the user asked for
/// dark, or the other way round, because the toolkit does not know this desktop, it gives a palette of our
/// own with the theme's accent.
void adoptAppearance(std::optional<ui::AppearanceName> stated);

/// A role's colour in a palette, which is the user's.
[[nodiscard]] QColor colorIn(const QPalette &palette, ui::Color color);

} // namespace fernhop::freedesktop
