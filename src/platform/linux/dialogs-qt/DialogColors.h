#pragma once

#include "platform/ui/Color.h"

#include <QColor>
#include <QPalette>

namespace fernhop::freedesktop {

/// A role's colour in a palette, which is the user's.
[[nodiscard]] QColor colorIn(const QPalette &palette, ui::Color color);

} // namespace fernhop::freedesktop
