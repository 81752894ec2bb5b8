#pragma once
// The names that columns of logs go by.

#include "formats/logs/log_row.h"

#include <vector>

namespace formats {

/// The columns of a file from left to right. Where several hold one field, the name that comes first in the list
/// of names counts, and the others where that one is empty. Names are told apart without regard to case, blanks, "_",
/// "-" and ".".
class LogColumns {
public:
    explicit LogColumns(const std::vector<std::string_view>& names);

    bool has(LogField field) const;
    /// Sets the fields of a row from its cells.
    void fill(const std::vector<LogCell>& cells, LogCells& row) const;
    /// Names that stand twice, each once.
    const std::vector<std::string>& doubled() const { return doubled_; }

private:
    struct Column {
        std::size_t index;
        LogField field;
        std::size_t rank;
    };

    std::vector<Column> columns_; ///< by rank
    std::vector<std::string> doubled_;
};

} // namespace formats
