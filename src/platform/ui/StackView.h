#pragma once

#include "platform/ui/View.h"

#include <initializer_list>
#include <utility>

namespace fernhop::ui {

/// The direction in which a stack lays out its views.
enum class Orientation { horizontal, vertical };

/// The alignment of views across the direction of a stack.
enum class StackAlignment { leading, centerY };

/// Arranges its subviews in a row or column.
class StackView : public View {
  public:
    StackView(Orientation direction, StackAlignment across, double gap,
              std::vector<std::shared_ptr<View>> arranged)
        : orientation(direction), alignment(across), spacing(gap) {
        subviews = std::move(arranged);
    }

    const Orientation orientation;
    const StackAlignment alignment;
    const double spacing; ///< between two views, in points
};

} // namespace fernhop::ui
