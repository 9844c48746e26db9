#pragma once

namespace fernhop::ui {

/// Colours by their role; the desktop decides what they look like under its present appearance.
enum class ColorRole {
    label,
    secondaryLabel,
    tertiaryLabel,
    controlAccent,
    separator,
    white,
    black,
};

/// A role's colour at a strength.
struct Color {
    ColorRole role = ColorRole::label;
    double alpha = 1; ///< 0 to 1; 1: as strong as the desktop has it

    bool operator==(const Color &) const = default;
};

} // namespace fernhop::ui
