#pragma once

#include <string>
#include <vector>

namespace fernhop::cli {

/// A table for people: columns are aligned by their width in a terminal, with two spaces between them; cells
/// are made safe for the terminal.
class Table {
  public:
    explicit Table(std::vector<std::string> headings);

    /// Adds a row with as many cells as there are headings. Cells may be any bytes.
    void add(std::vector<std::string> cells);

    /// The headings and the rows, one line each.
    [[nodiscard]] std::string text() const;

  private:
    std::vector<std::vector<std::string>> rows;
};

} // namespace fernhop::cli
