#pragma once
// A plain reading of saved tables: what stands on the lines, nothing more.

#include <map>
#include <string>
#include <vector>

namespace golden {

using Fields = std::vector<std::string>;

Fields split_tabs(const std::string& line);
/// The lines of a file without their LF; empty when it can't be read.
std::vector<std::string> lines_of_file(const std::string& path);

struct SavedTable {
    Fields columns;
    std::vector<Fields> rows;

    explicit SavedTable(const std::string& path);

    /// A column by its name, or by its number where the name is a number; -1 when there is none.
    int column(const std::string& name) const;
    std::string field(const Fields& row, const std::string& name) const;
    /// The rows that a key means: "event:3" a shot by its number, "V2@240" one of an upper track by its first
    /// frame, "optical:2@240" an optical by its number and first frame.
    std::vector<Fields> rows_of(const std::string& key) const;
};

} // namespace golden
