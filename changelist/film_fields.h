#pragma once
// The film of a row alone: its key and ink numbers, length and speed, without the other labels of a record.

#include "changelist/change_record.h"
#include "changelist/chgdb.h"

/// Reads the film of one row after another into one record.
class FilmReader {
public:
    explicit FilmReader(label_t film_std) : blank_(film_std), film_(film_std) {}

    /// Key and ink number of the first frame, `keycode_missing`, `edit_length` and `speed`, as a new record would
    /// read them; no other member means anything. Good until the next call.
    ChangeRecord& read(const dbrecord& row);
    /// The row's own key or ink number of the last frame, in the kind of the film that was read last.
    LabelPoint key_out(const dbrecord& row) const;
    LabelPoint ink_out(const dbrecord& row) const;

private:
    LabelPoint read_key(const dbrecord& row, chgdb_field field, const LabelPoint& blank) const;
    LabelPoint read_ink(const dbrecord& row, chgdb_field field, const LabelPoint& blank) const;

    const ChangeRecord blank_;
    ChangeRecord film_;
};

/// The key number that stands at the end of a piece whose own is missing.
LabelPoint missing_key_out(const LabelPoint& key_in);
