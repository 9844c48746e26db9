#include "platform/linux/dialogs-qt/LinearSystem.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace fernhop::freedesktop {

namespace {

constexpr double nearlyZero = 1e-9;
constexpr double noticeable = 1e-6; ///< in points

/// Equations in reduced form: each settles one variable by those that are free.
class ReducedRows {
  public:
    explicit ReducedRows(std::size_t variables) : count(variables) {}

    /// Adds an equation, its constant last; what says nothing new, or contradicts, is dropped.
    void add(std::vector<double> row) {
        for (const auto &[pivot, known] : rows)
            subtract(row, known, row[pivot]);
        const auto largest = std::max_element(row.begin(), row.end() - 1, [](double left, double right) {
            return std::abs(left) < std::abs(right);
        });
        if (largest == row.end() - 1 || std::abs(*largest) < nearlyZero)
            return;
        const auto pivot = static_cast<std::size_t>(largest - row.begin());
        const double factor = *largest;
        for (double &value : row)
            value /= factor;
        for (auto &[otherPivot, known] : rows)
            subtract(known, row, known[pivot]);
        rows.emplace_back(pivot, std::move(row));
    }

    [[nodiscard]] std::vector<double> values() const {
        std::vector<double> all(count, 0);
        for (const auto &[pivot, row] : rows)
            all[pivot] = row.back();
        return all;
    }

  private:
    static void subtract(std::vector<double> &row, const std::vector<double> &other, double factor) {
        if (factor == 0)
            return;
        for (std::size_t index = 0; index < row.size(); ++index)
            row[index] -= factor * other[index];
    }

    std::size_t count;
    std::vector<std::pair<std::size_t, std::vector<double>>> rows;
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
    ReducedRows rows(count);
    for (const Statement &statement : ordered) {
        if (!statement.holdsExactly)
            continue;
        std::vector<double> row(count + 1, 0);
        for (const Term &term : statement.terms)
            row[term.variable] += term.factor;
        row.back() = statement.constant;
        rows.add(std::move(row));
    }
    return rows.values();
}

double LinearSystem::violation(const Statement &statement, const std::vector<double> &values) {
    double sum = -statement.constant;
    for (const Term &term : statement.terms)
        sum += term.factor * values[term.variable];
    return statement.relation == ui::LayoutRelation::lessThanOrEqual ? sum : -sum;
}

} // namespace fernhop::freedesktop
