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

std::optional<Axis> axisOf(LayoutAttribute attribute) {
    using enum LayoutAttribute;
    switch (attribute) {
    case leading:
    case trailing:
    case centerX:
    case width:
        return Axis::across;
    case top:
    case bottom:
    case centerY:
    case height:
        return Axis::down;
    }
    return std::nullopt;
}

/// One direction of the layout: each view has a start and a length.
class AxisLayout {
  public:
    AxisLayout(Axis direction, const View &root, double length) : axis(direction) {
        collect(root);
        system.emplace(2 * views.size());
        add({{start(root), 1}}, LayoutRelation::equal, 0, required);
        add({{lengthOf(root), 1}}, LayoutRelation::equal, length, required);
        for (const View *view : views) {
            add({{lengthOf(*view), 1}}, LayoutRelation::greaterThanOrEqual, 0, required);
            addStatements(*view);
        }
    }

    /// The content of `view` is as wide as this.
    void addWidth(const View &view, double width) {
        add({{lengthOf(view), 1}}, LayoutRelation::greaterThanOrEqual, width,
            view.horizontalCompressionResistance.value_or(resistance));
        add({{lengthOf(view), 1}}, LayoutRelation::equal, width,
            view.horizontalContentHugging.value_or(hugging));
    }

    /// The content of `view` is as high as this, and of no use when it is lower than its least.
    void addHeight(const View &view, const ContentHeight &height) {
        add({{lengthOf(view), 1}}, LayoutRelation::greaterThanOrEqual, height.least, resistance);
        add({{lengthOf(view), 1}}, LayoutRelation::greaterThanOrEqual, height.whole, resistance - 1);
        add({{lengthOf(view), 1}}, LayoutRelation::equal, height.whole, hugging);
    }

    /// Solves, and tells each view's start and length.
    template <typename Tell>
    void solve(Tell tell) const {
        const auto values = system->solve();
        for (const View *view : views)
            tell(*view, values[start(*view)], values[lengthOf(*view)]);
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
    [[nodiscard]] std::size_t lengthOf(const View &view) const { return start(view) + 1; }

    void add(Terms terms, LayoutRelation relation, double constant, double priority) {
        system->add(std::move(terms), relation, constant, priority);
    }

    void addStatements(const View &view) {
        for (const Constraint &constraint : view.constraints)
            addConstraint(constraint);
        if (const auto *stack = dynamic_cast<const StackView *>(&view)) {
            const bool isAlong = (stack->orientation == Orientation::horizontal) == (axis == Axis::across);
            isAlong ? addAlong(*stack) : addAcross(*stack);
            add({{lengthOf(view), 1}}, LayoutRelation::equal, 0, smallestStack);
        }
    }

    void addConstraint(const Constraint &constraint) {
        if (axisOf(constraint.attribute) != axis || !places.contains(constraint.first))
            return;
        Terms terms = termsOf(*constraint.first, constraint.attribute, 1);
        if (constraint.second) {
            if (!places.contains(constraint.second))
                return;
            for (const auto &term : termsOf(*constraint.second, constraint.secondAttribute, -1))
                terms.push_back(term);
        }
        add(std::move(terms), constraint.relation, constraint.constant, required);
    }

    [[nodiscard]] Terms termsOf(const View &view, LayoutAttribute attribute, double sign) const {
        using enum LayoutAttribute;
        switch (attribute) {
        case leading:
        case top:
            return {{start(view), sign}};
        case trailing:
        case bottom:
            return {{start(view), sign}, {lengthOf(view), sign}};
        case centerX:
        case centerY:
            return {{start(view), sign}, {lengthOf(view), sign / 2}};
        case width:
        case height:
            return {{lengthOf(view), sign}};
        }
        return {};
    }

    /// The views one after the other.
    void addAlong(const StackView &stack) {
        const View *previous = nullptr;
        for (const auto &child : stack.subviews) {
            if (previous)
                add({{start(*child), 1}, {start(*previous), -1}, {lengthOf(*previous), -1}},
                    LayoutRelation::equal, stack.spacing, required);
            else
                add({{start(*child), 1}, {start(stack), -1}}, LayoutRelation::equal, 0, required);
            previous = child.get();
        }
        if (!previous)
            return;
        const Terms beyond = endBeyond(*previous, stack);
        add(beyond, LayoutRelation::lessThanOrEqual, 0, required);
        add(beyond, LayoutRelation::equal, 0, filling);
    }

    /// The views beside each other's direction, aligned.
    void addAcross(const StackView &stack) {
        for (const auto &child : stack.subviews) {
            if (stack.alignment == StackAlignment::leading)
                add({{start(*child), 1}, {start(stack), -1}}, LayoutRelation::equal, 0, required);
            else
                add({{start(*child), 1},
                     {lengthOf(*child), 0.5},
                     {start(stack), -1},
                     {lengthOf(stack), -0.5}},
                    LayoutRelation::equal, 0, required);
            add({{lengthOf(*child), 1}, {lengthOf(stack), -1}}, LayoutRelation::lessThanOrEqual, 0, required);
        }
    }

    /// How far `child` reaches beyond the end of `stack`.
    [[nodiscard]] Terms endBeyond(const View &child, const View &stack) const {
        return {{start(child), 1}, {lengthOf(child), 1}, {start(stack), -1}, {lengthOf(stack), -1}};
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
