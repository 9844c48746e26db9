#pragma once

namespace fernhop::ui {

/// Colours by role; the desktop chooses the actual colours for its current appearance.
enum class ColorRole {
    label,
    secondaryLabel,
    tertiaryLabel,
    controlAccent,
    separator,
    white,
    black,
};

/// The colour of a role with an opacity.
struct Color {
    ColorRole role = ColorRole::label;
    double alpha = 1; ///< 0 to 1, multiplied with the opacity of the role's colour

    bool operator==(const Color &) const = default;
};

} // namespace fernhop::ui
