#pragma once

#include <optional>
#include <vector>

namespace fernhop::ui {

/// The two appearances that the application knows.
enum class AppearanceName {
    aqua,     ///< light
    darkAqua, ///< dark
};

/// How a part of the screen looks at present.
class Appearance {
  public:
    virtual ~Appearance() = default;

    /// The name among `names` that is nearest to this appearance, the earlier one in doubt; nothing when none
    /// is.
    [[nodiscard]] virtual std::optional<AppearanceName>
    bestMatchFromAppearancesWithNames(const std::vector<AppearanceName> &names) const = 0;
};

} // namespace fernhop::ui
