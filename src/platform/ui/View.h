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

/// What is painted behind a view.
struct Layer {
    std::optional<Color> backgroundColor;
    double cornerRadius = 0; ///< in points
    double borderWidth = 0;  ///< in points
    std::optional<Color> borderColor;

    bool operator==(const Layer &) const = default;
};

/// The "low" priority of horizontal content hugging and compression resistance.
inline constexpr int lowPriority = 250;

/// A rectangle in a dialog, and the base class of all views. The tree of views holds the state: a renderer
/// shows it, writes the user's changes into it, and learns of the core's changes by `didChange`. Main thread
/// only.
class View : public Object {
  public:
    std::optional<Size> frameSize; ///< a fixed frame at the origin
    std::optional<Layer> layer;
    bool translatesAutoresizingMask = true; ///< false: only constraints position the view
    std::optional<int> horizontalContentHugging;
    std::optional<int> horizontalCompressionResistance;
    std::string identifier; ///< empty: none
    std::vector<std::shared_ptr<View>> subviews;
    std::vector<Constraint> constraints; ///< active constraints between this view and those below it

    /// Set by the renderer; called after each visible change.
    std::function<void()> didChange;

  protected:
    void changed() const {
        if (didChange)
            didChange();
    }
};

} // namespace fernhop::ui
