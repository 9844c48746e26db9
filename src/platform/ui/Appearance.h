#pragma once

#include <optional>
#include <vector>

namespace fernhop::ui {

/// The appearances that the application distinguishes.
enum class AppearanceName {
    aqua,     ///< light
    darkAqua, ///< dark
};

/// The current appearance of a part of the screen.
class Appearance {
  public:
    virtual ~Appearance() = default;

    /// The name in `names` that is nearest to this appearance, the first of equally near ones; nothing when
    /// none matches.
    [[nodiscard]] virtual std::optional<AppearanceName>
    bestMatchFromAppearancesWithNames(const std::vector<AppearanceName> &names) const = 0;
};

} // namespace fernhop::ui
