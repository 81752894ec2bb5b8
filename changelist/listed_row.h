#pragma once
// A row of changes as the lists read it: field by field, for a list needs few of a row's many labels.

#include "changelist/chgdb.h"

class report;

class ListedRow {
public:
    /// Reads `row` while it lives.
    ListedRow(const dbrecord& row, label_t film_std) : row_(row), film_std_(film_std) {}

    /// Empty where the row has no text.
    const char* text(chgdb_field field) const;
    /// 0 where the row has no number.
    int number(chgdb_field field) const;
    bool is_kind(const char* kind) const;
    /// A row that doesn't say counts as one without a key number.
    bool key_missing() const;
    LabelPoint key(chgdb_field field) const;
    LabelPoint timecode(chgdb_field field) const;
    /// The columns of scene and take or that of the shot's name, as the options ask.
    void print_shot(report& out) const;

private:
    const dbrecord& row_;
    label_t film_std_;
};
