#pragma once
// Small tables for the tests of record tables.

#include "host/recdb.h"

#include <string>
#include <vector>

inline const DBFieldDesc* three_columns() {
    static const DBFieldDesc schema[] = {{"event", DBFieldTypes::text},
                                         {"cam reel", DBFieldTypes::text},
                                         {"cam tc", DBFieldTypes::timecode},
                                         {"", DBFieldTypes::none}};
    return schema;
}

using Rows = std::vector<std::vector<std::string>>;

inline void append_rows(recdb& table, const Rows& rows) {
    for (const auto& fields : rows) {
        const auto record = static_cast<unsigned>(table.add_records(1));
        for (unsigned field = 0; field < fields.size(); ++field)
            table.set_field(record, field, fields[field].c_str());
    }
}

inline Rows rows_of(const recdb& table) {
    Rows rows;
    for (unsigned record = 0; record < table.get_num_records(); ++record) {
        rows.emplace_back();
        for (unsigned field = 0; field < table.get_num_fields(); ++field) {
            rows.back().emplace_back(table.getField(record, field).view());
        }
    }
    return rows;
}

/// The texts of one column, as the table shows it.
inline std::vector<std::string> column_of(const recdb& table, unsigned field) {
    std::vector<std::string> texts;
    for (const auto& row : rows_of(table))
        texts.push_back(row[field]);
    return texts;
}
