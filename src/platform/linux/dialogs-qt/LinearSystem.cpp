#include "platform/linux/dialogs-qt/LinearSystem.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <valarray>

namespace fernhop::freedesktop {

namespace {

constexpr double nearlyZero = 1e-9;
constexpr double noticeable = 1e-6; ///< in points

/// The factor of each variable, and the constant last.
using Row = std::valarray<double>;

/// Equations in reduced form: each settles one variable by those that are free.
class ReducedRows {
  public:
    /// Adds an equation; what says nothing new, or contradicts, is dropped.
    void add(Row row) {
        for (const auto &[pivot, known] : rows)
            if (const double factor = row[pivot]; factor != 0)
                row -= factor * known;
        const Row sizes = std::abs(row);
        const auto pivot = static_cast<std::size_t>(
            std::distance(std::begin(sizes), std::max_element(std::begin(sizes), std::end(sizes) - 1)));
        if (pivot + 1 == row.size() || sizes[pivot] < nearlyZero)
            return;
        const double divisor = row[pivot];
        row /= divisor;
        for (auto &[otherPivot, known] : rows)
            if (const double factor = known[pivot]; factor != 0)
                known -= factor * row;
        rows.emplace_back(pivot, std::move(row));
    }

    [[nodiscard]] std::vector<double> values(std::size_t count) const {
        std::vector<double> all(count, 0);
        for (const auto &[pivot, row] : rows)
            all[pivot] = row[count];
        return all;
    }

  private:
    std::vector<std::pair<std::size_t, Row>> rows;
};

} // namespace

void LinearSystem::add(std::vector<Term> terms, ui::LayoutRelation relation, double constant,
                       double priority) {
    statements.push_back(
        {std::move(terms), relation, constant, priority, relation == ui::LayoutRelation::equal});
}

std::vector<double> LinearSystem::solve() const {
    auto ordered = statements;
    std::ranges::stable_sort(ordered, std::ranges::greater{}, &Statement::priority);
    // Inequalities that do not hold by themselves are put to their limits, the least important first: what it
    // moves may be all that a more important one needs. None is taken back; a limit that a stronger one
    // contradicts is given up by its priority.
    for (std::size_t round = 0; round <= ordered.size(); ++round) {
        const auto values = solveEquations(ordered);
        Statement *worst = nullptr;
        for (Statement &statement : ordered) {
            if (statement.holdsExactly || violation(statement, values) < noticeable)
                continue;
            if (!worst || statement.priority < worst->priority ||
                (statement.priority == worst->priority &&
                 violation(statement, values) > violation(*worst, values)))
                worst = &statement;
        }
        if (!worst)
            return values;
        worst->holdsExactly = true;
    }
    return solveEquations(ordered);
}

std::vector<double> LinearSystem::solveEquations(const std::vector<Statement> &ordered) const {
    ReducedRows rows;
    for (const Statement &statement : ordered) {
        if (!statement.holdsExactly)
            continue;
        Row row(0.0, count + 1);
        for (const Term &term : statement.terms)
            row[term.variable] += term.factor;
        row[count] = statement.constant;
        rows.add(std::move(row));
    }
    return rows.values(count);
}

double LinearSystem::violation(const Statement &statement, const std::vector<double> &values) {
    double sum = -statement.constant;
    for (const Term &term : statement.terms)
        sum += term.factor * values[term.variable];
    return statement.relation == ui::LayoutRelation::lessThanOrEqual ? sum : -sum;
}

} // namespace fernhop::freedesktop
