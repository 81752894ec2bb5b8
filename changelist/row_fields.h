#pragma once
// Single fields of a row, for passes and lists that need few of them: a whole record has many labels to parse.

#include "base/number_text.h"
#include "changelist/chgdb.h"

#include <cstring>

// Bytes of a field that are read.
constexpr int code_chars = 19;
constexpr int timecode_chars = 14;
constexpr int standard_chars = 11;
constexpr int shot_name_chars = 1023;

/// Digits of the count where there is no real key number.
constexpr int missing_key_digits = 4;

/// 0 for a field without text.
inline int number_field(const dbrecord& row, chgdb_field field) {
    return decimal_number(row.get_field(static_cast<unsigned short>(field)));
}

/// Empty, never null, for a field without text.
inline const char* text_field(const dbrecord& row, chgdb_field field) {
    const char* text = row.get_field(static_cast<unsigned short>(field));
    return text ? text : "";
}

/// Fills an array with as much of the field as it holds; a field without text leaves it as it was.
template <std::size_t N> void copy_field(const dbrecord& row, chgdb_field field, char (&text)[N]) {
    row.in_field(field, text, static_cast<int>(N) - 1);
}

LightweightString<wchar_t> shot_name_field(const dbrecord& row);

/// A row that doesn't say counts as one without a key number.
inline bool is_key_missing(const dbrecord& row) {
    const char* missing = text_field(row, hf_keycode_missing);
    return *missing == '\0' || decimal_number(missing) != 0;
}

/// Parses the field in the point's own kind.
void parse_code(const dbrecord& row, chgdb_field field, LabelPoint& point);
void parse_timecode(const dbrecord& row, chgdb_field field, LabelPoint& point);
/// The kind of the row's timecodes.
label_t timecode_kind(const dbrecord& row);

/// The labels of rows of one film standard, as a new record would read them. Make one for all rows of a table.
class RowLabels {
public:
    explicit RowLabels(label_t film_std);

    LabelPoint key(const dbrecord& row, chgdb_field field) const;
    /// Invalid where the row has none.
    LabelPoint ink(const dbrecord& row, chgdb_field field) const;
    /// Of a neighbour: whether its own event has a key number the row doesn't say.
    LabelPoint bracket(const dbrecord& row, chgdb_field field) const;
    static LabelPoint timecode(const dbrecord& row, chgdb_field field);

private:
    // Blank ones, to be filled from a text.
    LabelPoint key_;
    LabelPoint missing_key_;
    LabelPoint ink_;
};

/// The kind of change of a row.
struct RowKind {
    char text[4] = "";

    explicit RowKind(const dbrecord& row) { copy_field(row, hf_record_type, text); }
    bool is(const char* kind) const { return std::strcmp(text, kind) == 0; }
};
