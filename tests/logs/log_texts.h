#pragma once
// Logs put together for the tests.

#include "formats/logs/log_reader.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace log_texts {

using Cells = std::vector<std::string>;

inline std::string joined(const Cells& cells, const std::string& delimiter) {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i)
        line += (i == 0 ? "" : delimiter) + cells[i];
    return line;
}

/// An ALE of the heading lines (with their tabs), the column names and the rows.
inline std::string ale(const Cells& heading, const Cells& columns, const std::vector<Cells>& rows,
                       const std::string& end = "\n") {
    std::string text = "Heading" + end;
    for (const std::string& line : heading)
        text += line + end;
    text += end + "Column" + end + joined(columns, "\t") + end + end + "Data" + end;
    for (const Cells& row : rows)
        text += joined(row, "\t") + end;
    return text;
}

inline formats::Log read(const std::string& bytes, const std::string& path = "day.ale",
                         const formats::LogOptions& options = {}) {
    return formats::read_log_bytes(bytes, path, options);
}

/// A line of blanks with texts at their places.
inline std::string placed(const std::vector<std::pair<std::size_t, std::string>>& places) {
    std::string line;
    for (const auto& [at, text] : places) {
        if (line.size() < at + text.size()) line.resize(at + text.size(), ' ');
        line.replace(at, text.size(), text);
    }
    return line;
}

inline const std::string& text(const formats::LogRow& row, formats::LogField field) { return row[field]; }

} // namespace log_texts
