#pragma once
// What the fuzz targets of all readers of logs do.

#include "formats/logs/log_check.h"
#include "formats/logs/log_table.h"
#include "formats/text_lines.h"
#include "quillbrook/logging_tables.h"

#include <cstdint>
#include <cstdlib>

namespace fuzz {

using Reader = formats::Log (*)(const formats::TextLines&, const std::string&, const formats::LogOptions&);

inline void expect(bool holds) {
    if (!holds) std::abort();
}

/// A refused file has no rows; others give findings and a table with as many rows.
inline void use_log(const formats::Log& log) {
    if (!log.error.empty()) expect(log.rows.empty());
    for (const formats::LogFinding& finding : formats::check_log(log.rows))
        expect(finding.line > 0 && !finding.text.empty());
    filmdb table;
    formats::fill_table(table, log.rows);
    expect(table.get_num_records() == log.rows.size());
}

/// With the file's own rate, and with one of the caller.
inline int read_any(const std::uint8_t* data, std::size_t size, Reader reader) {
    const formats::TextLines text(std::string_view(reinterpret_cast<const char*>(data), size));
    if (*text.trouble()) return 0;
    formats::LogOptions options;
    use_log(reader(text, "log", options));
    options.rate = embedded::nearest_rate(29.97);
    use_log(reader(text, "log", options));
    return 0;
}

} // namespace fuzz
