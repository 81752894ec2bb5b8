#pragma once
// The film of a row alone: its key and ink numbers, length and speed, without the other labels of a record.

#include "changelist/change_record.h"
#include "changelist/row_fields.h"

/// Reads the film of one row after another into one record.
class FilmReader {
public:
    explicit FilmReader(label_t film_std) : labels_(film_std), film_(film_std) {}

    /// Key and ink number of the first frame, `keycode_missing`, `edit_length` and `speed`, as a new record would
    /// read them; no other member means anything. Good until the next call.
    ChangeRecord& read(const dbrecord& row);
    /// The row's own key and ink number of the last frame.
    LabelPoint key_out(const dbrecord& row) const { return labels_.key(row, hf_keycode_out); }
    LabelPoint ink_out(const dbrecord& row) const { return labels_.ink(row, hf_inkcode_out); }

private:
    RowLabels labels_;
    ChangeRecord film_;
};

/// The key number that stands at the end of a piece whose own is missing.
LabelPoint missing_key_out(const LabelPoint& key_in);
