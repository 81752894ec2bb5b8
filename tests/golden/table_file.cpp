#include "table_file.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <utility>

namespace golden {
namespace {

using Wanted = std::vector<std::pair<std::string, std::string>>;

/// "optical:2@240" as {"optical", "2", "240"}; parts that aren't there are empty.
struct KeyParts {
    std::string kind, number, frame;

    explicit KeyParts(const std::string& key) {
        const std::size_t at = key.find('@');
        const std::string head = key.substr(0, at);
        if (at != std::string::npos) frame = key.substr(at + 1);
        const std::size_t colon = head.find(':');
        kind = head.substr(0, colon);
        if (colon != std::string::npos) number = head.substr(colon + 1);
    }
};

Wanted wanted_fields(const std::string& key) {
    const KeyParts parts(key);
    if (parts.kind == "event") return {{"optical_record", "0"}, {"event", parts.number}};
    if (parts.kind == "optical")
        return {{"optical_record", "1"}, {"optical_ref", parts.number}, {"edit_in", parts.frame}};
    return {{"optical_record", "0"}, {"track", parts.kind.substr(1)}, {"edit_in", parts.frame}};
}

} // namespace

Fields split_tabs(const std::string& line) {
    Fields fields;
    std::size_t from = 0;
    for (std::size_t tab = line.find('\t'); tab != std::string::npos; tab = line.find('\t', from)) {
        fields.push_back(line.substr(from, tab - from));
        from = tab + 1;
    }
    fields.push_back(line.substr(from));
    return fields;
}

std::vector<std::string> lines_of_file(const std::string& path) {
    std::vector<std::string> lines;
    std::ifstream file(path, std::ios::binary);
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

SavedTable::SavedTable(const std::string& path) {
    const std::vector<std::string> lines = lines_of_file(path);
    auto line = std::find(lines.begin(), lines.end(), std::string());
    if (lines.end() - line < 3) return;
    columns = split_tabs(line[1]);
    const auto seal = lines.front() == "%recdb 1" ? lines.end() : lines.end() - 1;
    for (line += 3; line != seal; ++line)
        rows.push_back(split_tabs(*line));
}

int SavedTable::column(const std::string& name) const {
    if (!name.empty() && name.find_first_not_of("0123456789") == std::string::npos) return std::atoi(name.c_str());
    const auto found = std::find(columns.begin(), columns.end(), name);
    return found == columns.end() ? -1 : static_cast<int>(found - columns.begin());
}

std::string SavedTable::field(const Fields& row, const std::string& name) const {
    const int number = column(name);
    if (number < 0 || static_cast<std::size_t>(number) >= row.size()) return "<no column " + name + ">";
    return row[static_cast<std::size_t>(number)];
}

std::vector<Fields> SavedTable::rows_of(const std::string& key) const {
    const Wanted wanted = wanted_fields(key);
    std::vector<Fields> found;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(found), [&](const Fields& row) {
        return std::all_of(wanted.begin(), wanted.end(),
                           [&](const auto& each) { return field(row, each.first) == each.second; });
    });
    return found;
}

} // namespace golden
