#pragma once
// Lines in aligned columns.

#include <cstddef>
#include <string>
#include <vector>

namespace tool {

/// Collects rows of cells; each column becomes as wide as its widest cell, and a column that is empty below its
/// heading is left out. Widths count characters, not bytes.
class TextTable {
public:
    enum class Align { left, right };

    void add_column(std::string heading, Align align = Align::left);
    /// Missing cells are empty.
    void add_row(std::vector<std::string> cells);
    bool empty() const { return rows_.empty(); }
    /// One line a row behind the headings, each indented by two blanks and without blanks at its end.
    std::string text() const;

private:
    struct Column {
        std::string heading;
        Align align;
        std::size_t width = 0;
    };

    std::string line(const std::vector<std::string>& cells) const;

    std::vector<Column> columns_;
    std::vector<std::vector<std::string>> rows_;
};

} // namespace tool
