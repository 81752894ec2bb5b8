#pragma once
// A row of changes as the lists read it: field by field, for a list needs few of a row's many labels.

#include "changelist/row_fields.h"

class report;

class ListedRow {
public:
    /// Reads `row` while it and the labels of its table live.
    ListedRow(const dbrecord& row, const RowLabels& labels) : row_(row), labels_(labels) {}

    /// Empty where the row has no text.
    const char* text(chgdb_field field) const { return text_field(row_, field); }
    /// 0 where the row has no number.
    int number(chgdb_field field) const { return number_field(row_, field); }
    bool is_kind(const char* kind) const { return std::strcmp(text(hf_record_type), kind) == 0; }
    bool key_missing() const { return is_key_missing(row_); }
    LabelPoint key(chgdb_field field) const { return labels_.key(row_, field); }
    LabelPoint timecode(chgdb_field field) const { return RowLabels::timecode(row_, field); }
    /// The columns of scene and take or that of the shot's name, as the options ask.
    void print_shot(report& out) const;

private:
    const dbrecord& row_;
    const RowLabels& labels_;
};
