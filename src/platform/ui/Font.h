#pragma once

namespace fernhop::ui {

/// The weight of a font.
enum class FontWeight { regular, medium, semibold };

/// The system's font.
struct Font {
    double size = 13; ///< in points
    FontWeight weight = FontWeight::regular;

    bool operator==(const Font &) const = default;
};

} // namespace fernhop::ui
