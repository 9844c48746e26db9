#pragma once

#include "platform/ui/Constraint.h"

#include <cstddef>
#include <vector>

namespace fernhop::freedesktop {

/// Linear equations and inequalities over numbered variables, each with a priority: a weaker one holds as far
/// as the stronger ones leave it free. Made for dialogs: some dozens of variables, most of them settled by
/// equations.
class LinearSystem {
  public:
    struct Term {
        std::size_t variable;
        double factor;
    };

    explicit LinearSystem(std::size_t variables) : count(variables) {}

    /// The sum of `terms` stands in `relation` to `constant`. Among equal priorities the earlier one counts
    /// more.
    void add(std::vector<Term> terms, ui::LayoutRelation relation, double constant, double priority);

    /// A value for each variable; one that nothing settles is 0. An inequality that cannot hold together with
    /// what is stronger is given up, as is a contradicting equation.
    [[nodiscard]] std::vector<double> solve() const;

  private:
    struct Statement {
        std::vector<Term> terms;
        ui::LayoutRelation relation;
        double constant;
        double priority;
        bool holdsExactly; ///< an equation, or an inequality at its limit
    };

    [[nodiscard]] std::vector<double> solveEquations(const std::vector<Statement> &ordered) const;
    [[nodiscard]] static double violation(const Statement &statement, const std::vector<double> &values);

    std::size_t count;
    std::vector<Statement> statements;
};

} // namespace fernhop::freedesktop
