#pragma once
// Whether a row holds the labels of a record as they are: read again and written once more they stay. Nearly all do; a
// label that doesn't has a roll, a count or a kind that its text has no room for.

#include "changelist/change_record.h"
#include "changelist/row_fields.h"

class HeldLabels {
public:
    explicit HeldLabels(label_t film_std) : labels_(film_std) {}

    /// Of a row that the record was written to: its name and its own labels, all of them plain texts.
    bool are_held(const ChangeRecord& record, const dbrecord& row) const;
    /// The same of the last key number of the event before, which may be none.
    bool is_bracket_in_held(const ChangeRecord& record, const dbrecord& row) const;

private:
    RowLabels labels_;
};
