#include "platform/linux/dialogs-qt/ViewLayout.h"

#include "platform/linux/dialogs-qt/LinearSystem.h"
#include "platform/ui/StackView.h"

#include <string>
#include <vector>

namespace fernhop::freedesktop {

using namespace ui;

namespace {

// Stronger statements first; the numbers between are those of the views themselves.
constexpr double required = 1000;
constexpr double resistance = 750;  ///< to be smaller than the content
constexpr double hugging = 251;     ///< against being larger than the content
constexpr double filling = 250.5;   ///< a stack's views fill it, by those that hug least
constexpr double smallestStack = 1; ///< a stack is no larger than its views

enum class Axis { across, down };

Axis axisOf(LayoutAttribute attribute) {
    using enum LayoutAttribute;
    const bool isAcross =
        attribute == leading || attribute == trailing || attribute == centerX || attribute == width;
    return isAcross ? Axis::across : Axis::down;
}

/// One direction of the layout: each view has a start and a length. Where it states something itself it uses
/// the attributes of the direction across for either.
class AxisLayout {
    using enum LayoutAttribute;

  public:
    AxisLayout(Axis direction, const View &root, double length) : axis(direction) {
        collect(root);
        system.emplace(2 * views.size());
        add(fixed(root, leading, 0));
        add(fixed(root, width, length));
        for (const View *view : views) {
            add(atLeast(*view, width, 0));
            addStatements(*view);
        }
    }

    /// The content of `view` is as wide as this.
    void addWidth(const View &view, double content) {
        add(atLeast(view, width, content), view.horizontalCompressionResistance.value_or(resistance));
        add(fixed(view, width, content), view.horizontalContentHugging.value_or(hugging));
    }

    /// The content of `view` is as high as this, and of no use when it is lower than its least.
    void addHeight(const View &view, const ContentHeight &content) {
        add(atLeast(view, width, content.least), resistance);
        add(atLeast(view, width, content.whole), resistance - 1);
        add(fixed(view, width, content.whole), hugging);
    }

    /// Solves, and tells each view's start and length.
    template <typename Tell>
    void solve(Tell tell) const {
        const auto values = system->solve();
        for (const View *view : views)
            tell(*view, values[start(*view)], values[start(*view) + 1]);
    }

    [[nodiscard]] const std::vector<const View *> &allViews() const { return views; }

  private:
    using Terms = std::vector<LinearSystem::Term>;

    void collect(const View &view) {
        places.emplace(&view, views.size());
        views.push_back(&view);
        for (const auto &child : view.subviews)
            collect(*child);
    }

    [[nodiscard]] std::size_t start(const View &view) const { return 2 * places.at(&view); }

    void addStatements(const View &view) {
        for (const Constraint &constraint : view.constraints)
            if (axisOf(constraint.attribute) == axis)
                add(constraint);
        if (const auto *stack = dynamic_cast<const StackView *>(&view)) {
            const bool isAlong = (stack->orientation == Orientation::horizontal) == (axis == Axis::across);
            isAlong ? addAlong(*stack) : addAcross(*stack);
            add(fixed(view, width, 0), smallestStack);
        }
    }

    void add(const Constraint &constraint, double priority = required) {
        if (!places.contains(constraint.first) || (constraint.second && !places.contains(constraint.second)))
            return;
        Terms terms = termsOf(*constraint.first, constraint.attribute, 1);
        if (constraint.second)
            for (const auto &term : termsOf(*constraint.second, constraint.secondAttribute, -1))
                terms.push_back(term);
        system->add(std::move(terms), constraint.relation, constraint.constant, priority);
    }

    [[nodiscard]] Terms termsOf(const View &view, LayoutAttribute attribute, double sign) const {
        const std::size_t length = start(view) + 1;
        switch (attribute) {
        case leading:
        case top:
            return {{start(view), sign}};
        case trailing:
        case bottom:
            return {{start(view), sign}, {length, sign}};
        case centerX:
        case centerY:
            return {{start(view), sign}, {length, sign / 2}};
        case width:
        case height:
            return {{length, sign}};
        }
        return {};
    }

    /// The views one after the other.
    void addAlong(const StackView &stack) {
        const View *previous = nullptr;
        for (const auto &child : stack.subviews) {
            add(previous ? pinned(*child, leading, *previous, trailing, stack.spacing)
                         : aligned(*child, stack, leading));
            previous = child.get();
        }
        if (!previous)
            return;
        add(atMost(*previous, stack, trailing));
        add(aligned(*previous, stack, trailing), filling);
    }

    /// The views beside each other's direction, aligned.
    void addAcross(const StackView &stack) {
        for (const auto &child : stack.subviews) {
            add(aligned(*child, stack, stack.alignment == StackAlignment::leading ? leading : centerX));
            add(atMost(*child, stack, width));
        }
    }

    Axis axis;
    std::vector<const View *> views;
    std::unordered_map<const View *, std::size_t> places;
    std::optional<LinearSystem> system;
};

} // namespace

Frames layOut(const View &root, Size size, const ContentMeasures &measures) {
    Frames frames;
    AxisLayout across(Axis::across, root, size.width);
    for (const View *view : across.allViews())
        if (const auto width = measures.width(*view))
            across.addWidth(*view, *width);
    across.solve([&](const View &view, double x, double width) {
        frames[&view].x = x;
        frames[&view].width = width;
    });
    AxisLayout down(Axis::down, root, size.height);
    for (const View *view : down.allViews())
        if (const auto height = measures.height(*view, frames[view].width))
            down.addHeight(*view, *height);
    down.solve([&](const View &view, double y, double height) {
        frames[&view].y = y;
        frames[&view].height = height;
    });
    return frames;
}

} // namespace fernhop::freedesktop
