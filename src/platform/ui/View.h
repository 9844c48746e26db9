#pragma once

#include "platform/Object.h"
#include "platform/ui/Color.h"
#include "platform/ui/Constraint.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace fernhop::ui {

/// A size in points.
struct Size {
    double width;
    double height;

    bool operator==(const Size &) const = default;
};

/// What a layer paints behind a view.
struct Layer {
    std::optional<Color> backgroundColor;
    double cornerRadius = 0; ///< in points
    double borderWidth = 0;  ///< in points
    std::optional<Color> borderColor;

    bool operator==(const Layer &) const = default;
};

/// Priority at which a view keeps close to its content, or gives way, across: "low".
inline constexpr int lowPriority = 250;

/// A rectangle in a dialog and the root of all others. The tree holds the state; a desktop shows it, writes
/// what the user does into it, and is told through `didChange` of what the core changes. Main thread only.
class View : public Object {
  public:
    std::optional<Size> frameSize; ///< a fixed frame at the origin
    std::optional<Layer> layer;
    bool translatesAutoresizingMask = true; ///< false: constraints alone place the view
    std::optional<int> horizontalContentHugging;
    std::optional<int> horizontalCompressionResistance;
    std::string identifier; ///< empty: none
    std::vector<std::shared_ptr<View>> subviews;
    std::vector<Constraint> constraints; ///< active between this view and those beneath it

    /// Set by whoever shows the view, called after each change that shows.
    std::function<void()> didChange;

  protected:
    void changed() const {
        if (didChange)
            didChange();
    }
};

} // namespace fernhop::ui
