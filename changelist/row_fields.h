#pragma once
// Single fields of a row, for passes that need a few of them and no labels.

#include "changelist/chgdb.h"
#include "reports/number_text.h"

#include <cstring>

/// 0 for a field without text.
inline int number_field(const dbrecord& row, chgdb_field field) {
    return decimal_number(row.get_field(static_cast<unsigned short>(field)));
}

/// Empty, never null, for a field without text.
inline const char* text_field(const dbrecord& row, chgdb_field field) {
    const char* text = row.get_field(static_cast<unsigned short>(field));
    return text ? text : "";
}

/// The kind of change of a row.
struct RowKind {
    char text[4] = "";

    explicit RowKind(const dbrecord& row) { row.in_field(hf_record_type, text, sizeof text - 1); }
    bool is(const char* kind) const { return std::strcmp(text, kind) == 0; }
};
