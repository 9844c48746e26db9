#pragma once

#include <string>
#include <vector>

namespace fernhop::cli {

/// Rows for people: columns aligned by what a terminal shows, two spaces between them, every cell on its line
/// and harmless to the terminal.
class Table {
  public:
    explicit Table(std::vector<std::string> headings);

    /// Adds a row with as many cells as there are headings; cells may be any bytes.
    void add(std::vector<std::string> cells);

    /// The headings and rows, a line each.
    [[nodiscard]] std::string text() const;

  private:
    std::vector<std::vector<std::string>> rows;
};

} // namespace fernhop::cli
