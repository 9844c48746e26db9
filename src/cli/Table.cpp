#include "cli/Table.h"

#include "cli/PlainText.h"
#include "platform/TerminalWidth.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace fernhop::cli {

Table::Table(std::vector<std::string> headings) {
    rows.push_back(std::move(headings));
}

void Table::add(std::vector<std::string> cells) {
    for (auto &cell : cells)
        cell = plain(cell);
    rows.push_back(std::move(cells));
}

std::string Table::text() const {
    std::vector<std::size_t> widths(rows.front().size());
    for (const auto &row : rows)
        for (std::size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], text::terminalColumns(row[column]));

    std::string result;
    for (const auto &row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            result += row[column];
            if (column + 1 < row.size())
                result.append(widths[column] - text::terminalColumns(row[column]) + 2, ' ');
        }
        result.erase(result.find_last_not_of(' ') + 1);
        result += '\n';
    }
    return result;
}

} // namespace fernhop::cli
