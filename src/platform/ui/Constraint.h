#pragma once

namespace fernhop::ui {

class View;

/// An edge, centre line or dimension of a view.
enum class LayoutAttribute { leading, trailing, top, bottom, centerX, centerY, width, height };

/// How the two sides of a constraint compare.
enum class LayoutRelation { equal, lessThanOrEqual, greaterThanOrEqual };

/// `first.attribute` is in `relation` to `second.secondAttribute + constant` or, without a second view, to
/// `constant`. Vertical positions grow downwards. The views belong to the tree that has the constraint.
struct Constraint {
    const View *first;
    LayoutAttribute attribute;
    LayoutRelation relation;
    const View *second; ///< null: the constant alone
    LayoutAttribute secondAttribute;
    double constant; ///< in points

    bool operator==(const Constraint &) const = default;
};

/// `first.attribute == second.secondAttribute + constant`
[[nodiscard]] constexpr Constraint pinned(const View &first, LayoutAttribute attribute, const View &second,
                                          LayoutAttribute secondAttribute, double constant = 0) {
    return {&first, attribute, LayoutRelation::equal, &second, secondAttribute, constant};
}

/// `first.attribute == second.attribute + constant`
[[nodiscard]] constexpr Constraint aligned(const View &first, const View &second, LayoutAttribute attribute,
                                           double constant = 0) {
    return pinned(first, attribute, second, attribute, constant);
}

/// `first.attribute <= second.attribute`
[[nodiscard]] constexpr Constraint atMost(const View &first, const View &second, LayoutAttribute attribute) {
    return {&first, attribute, LayoutRelation::lessThanOrEqual, &second, attribute, 0};
}

/// `first.attribute == constant`
[[nodiscard]] constexpr Constraint fixed(const View &first, LayoutAttribute attribute, double constant) {
    return {&first, attribute, LayoutRelation::equal, nullptr, attribute, constant};
}

/// `first.attribute >= constant`
[[nodiscard]] constexpr Constraint atLeast(const View &first, LayoutAttribute attribute, double constant) {
    return {&first, attribute, LayoutRelation::greaterThanOrEqual, nullptr, attribute, constant};
}

} // namespace fernhop::ui
