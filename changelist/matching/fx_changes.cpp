#include "changelist/change_analysis.h"
#include "changelist/matching/candidates.h"
#include "host/fixed_text.h"

#include <cstring>

namespace {

/// One end's transition.
struct Transition {
    const char* operation;
    int length;

    bool operator==(const Transition& other) const {
        return std::strcmp(operation, other.operation) == 0 && length == other.length;
    }
};

bool is_changed(const Transition& before, const Transition& after) {
    return (*before.operation || *after.operation) && !(before == after);
}

const char* without_cut(const char* operation) { return operation[0] == 'C' ? "" : operation; }

void forget_cut(char (&operation)[4]) {
    if (operation[0] == 'C') operation[0] = '\0';
}

/// `row` is a copy of the new record, so the transitions that it is given lie elsewhere.
void add_fx_row(ChangeRecord& row, const char* end, const Transition& before, const Transition& after, chgdb& changes) {
    put_text(row.record_type, "FX");
    put_text(row.fx_pos, end);
    put_text(row.fx_op1, before.operation);
    put_text(row.fx_op2, after.operation);
    row.fx_len1 = before.length;
    row.fx_len2 = after.length;
    add_record(changes, row);
}

} // namespace

bool has_fx_changes(const ChangeRecord& old_rec, const ChangeRecord& new_rec) {
    return is_changed({without_cut(old_rec.fx_op1), old_rec.fx_len1}, {without_cut(new_rec.fx_op1), new_rec.fx_len1}) ||
           is_changed({without_cut(old_rec.fx_op2), old_rec.fx_len2}, {without_cut(new_rec.fx_op2), new_rec.fx_len2});
}

const char* record_fx_changes(ChangeRecord& old_rec, ChangeRecord& new_rec, chgdb& changes) {
    for (ChangeRecord* record : {&old_rec, &new_rec}) {
        forget_cut(record->fx_op1);
        forget_cut(record->fx_op2);
    }
    const Transition old_start{old_rec.fx_op1, old_rec.fx_len1};
    const Transition new_start{new_rec.fx_op1, new_rec.fx_len1};
    if (is_changed(old_start, new_start)) {
        ChangeRecord row = new_rec;
        add_fx_row(row, "I", old_start, new_start, changes);
    }
    const Transition old_end{old_rec.fx_op2, old_rec.fx_len2};
    const Transition new_end{new_rec.fx_op2, new_rec.fx_len2};
    if (is_changed(old_end, new_end)) {
        ChangeRecord row = new_rec;
        row.keycode_out.set_sample(new_rec.key_last());
        row.inkcode_out.set_sample(new_rec.ink_last());
        add_fx_row(row, "O", old_end, new_end, changes);
    }
    return nullptr;
}
