#include "changelist/matching/match_event.h"

#include "base/frame_math.h"
#include "changelist/change_analysis.h"
#include "changelist/row_fields.h"
#include "host/fixed_text.h"

#include <algorithm>

namespace {

using Pieces = Vector<ChangeRecord>;

/// An old event, or what is left of one.
struct EventInHand {
    ChangeRecord& record;
    const dbrecord* row; ///< that it comes from; null once all of it has been read

    ChangeRecord& whole() {
        if (row) record.read_rest(*row);
        row = nullptr;
        return record;
    }
};

/// A transition is gone when nothing is left of it.
void trim(char (&operation)[4], std::int32_t& length) {
    if (length >= 1) return;
    operation[0] = '\0';
    length = 0;
}

void shorten_start(ChangeRecord& piece, int frames) {
    piece.fx_len1 = frame_difference(piece.fx_len1, frames);
    trim(piece.fx_op1, piece.fx_len1);
}

void shorten_end(ChangeRecord& piece, int frames) {
    piece.fx_len2 = frame_difference(piece.fx_len2, frames);
    trim(piece.fx_op2, piece.fx_len2);
}

void limit_start(ChangeRecord& piece) { piece.fx_len1 = std::min(piece.edit_length, piece.fx_len1); }

void limit_end(ChangeRecord& piece) { piece.fx_len2 = std::min(piece.edit_length, piece.fx_len2); }

/// An old event and the candidate that it meets, in samples of the roll, as they stand when they meet:
///
///     X      K|-----------|E
///     Y   k|---------|e
///
class Meeting {
public:
    Meeting(const ChangeRecord& old_event, const ChangeRecord& candidate)
        : x(old_event), y(candidate), step(x.key_step()), K(x.key_in()), E(x.key_end()), k(y.key_in()), e(y.key_end()) {
    }

    int frames(int to, int from) const { return wrapped((std::int64_t{to} - from) / step); }

    ChangeRecord head_of_x() const { return head(x, y, frames(k, K), frames(E, k)); }
    ChangeRecord tail_of_x() const { return tail(x, y, frames(e, K), frames(E, e)); }
    ChangeRecord head_of_y() const { return head(y, x, frames(K, k), frames(e, K)); }
    ChangeRecord tail_of_y() const { return tail(y, x, frames(E, k), frames(e, E)); }

    const ChangeRecord x;
    const ChangeRecord y;
    const int step;
    const int K, E, k, e;

private:
    /// What lies ahead of `cut`, `rest` frames being taken from the end.
    static ChangeRecord head(const ChangeRecord& whole, const ChangeRecord& cut, int length, int rest) {
        ChangeRecord piece = whole;
        piece.prim_tc_out = cut.prim_tc_in;
        piece.edit_length = length;
        shorten_end(piece, rest);
        limit_start(piece);
        return piece;
    }
    /// What lies behind `cut`, `ahead` frames being taken from the start.
    static ChangeRecord tail(const ChangeRecord& whole, const ChangeRecord& cut, int ahead, int length) {
        ChangeRecord piece = whole;
        piece.prim_tc_in = cut.prim_tc_out;
        piece.edit_in = frame_sum(piece.edit_in, ahead);
        piece.set_key_in(cut.key_end());
        piece.set_ink_in(cut.ink_end());
        piece.edit_length = length;
        shorten_start(piece, ahead);
        limit_end(piece);
        return piece;
    }
};

void match_again(const ChangeRecord& piece, Pieces& left) {
    if (piece.edit_length > 0) left.push_back(piece);
}

void put_back(const ChangeRecord& piece, Candidates& candidates) {
    if (piece.edit_length > 0) candidates.put_back(piece);
}

void add_common(ChangeRecord& old_piece, ChangeRecord& common, chgdb& changes) {
    record_fx_changes(old_piece, common, changes);
    add_record(changes, common);
}

/// The common piece begins where X does.
ChangeRecord common_from_start(const Meeting& met) {
    ChangeRecord common = met.y;
    common.keycode_in = met.x.keycode_in;
    common.keycode_missing = met.x.keycode_missing;
    common.inkcode_in = met.x.inkcode_in;
    common.prim_tc_in = met.x.prim_tc_in;
    common.old_edit_in = met.x.edit_in;
    common.old_reel_seq = met.x.reel_seq;
    common.edit_in = frame_sum(common.edit_in, met.frames(met.K, met.k));
    return common;
}

/// The common piece begins inside X.
ChangeRecord common_from_within(const Meeting& met) {
    ChangeRecord common = met.y;
    common.old_edit_in = frame_sum(met.x.edit_in, met.frames(met.k, met.K));
    common.old_reel_seq = met.x.reel_seq;
    return common;
}

//     X        |-----|
//     Y     |-----------|
void meet_covering(ChangeRecord& x, const Meeting& met, Candidates& candidates, chgdb& changes) {
    ChangeRecord common = common_from_start(met);
    common.prim_tc_out = x.prim_tc_out;
    common.edit_length = x.edit_length;
    if (*common.fx_op1) shorten_start(common, met.frames(met.K, met.k));
    if (*common.fx_op2) shorten_end(common, met.frames(met.e, met.E));
    add_common(x, common, changes);
    put_back(met.head_of_y(), candidates);
    put_back(met.tail_of_y(), candidates);
}

//     X        |--------|
//     Y     |-----|
void meet_start(const Meeting& met, Candidates& candidates, chgdb& changes, Pieces& left) {
    ChangeRecord common = common_from_start(met);
    common.edit_length = met.frames(met.e, met.K);
    shorten_start(common, met.frames(met.K, met.k));
    limit_end(common);
    ChangeRecord old_piece = met.x;
    shorten_end(old_piece, met.frames(met.E, met.e));
    if (common.edit_length > 0) add_common(old_piece, common, changes);
    put_back(met.head_of_y(), candidates);
    match_again(met.tail_of_x(), left);
}

//     X     |--------|
//     Y           |-----|
void meet_end(ChangeRecord& x, const Meeting& met, Candidates& candidates, chgdb& changes, Pieces& left) {
    ChangeRecord common = common_from_within(met);
    common.prim_tc_out = met.x.prim_tc_out;
    common.edit_length = met.frames(met.E, met.k);
    shorten_end(common, met.frames(met.E, met.k));
    // A start that lies ahead of the piece isn't trimmed here: it still shows as the old transition, and it is the
    // event in hand that loses it.
    ChangeRecord old_piece = met.x;
    old_piece.fx_len1 = frame_difference(old_piece.fx_len1, met.frames(met.k, met.K));
    if (old_piece.fx_len1 < 1) {
        x.fx_op1[0] = '\0';
        x.fx_len1 = 0;
    }
    add_common(old_piece, common, changes);
    put_back(met.tail_of_y(), candidates);
    match_again(met.head_of_x(), left);
}

//     X     |-----------|
//     Y        |-----|
void meet_within(const Meeting& met, chgdb& changes, Pieces& left) {
    ChangeRecord common = common_from_within(met);
    ChangeRecord old_piece = met.x;
    shorten_start(old_piece, met.frames(met.k, met.K));
    shorten_end(old_piece, met.frames(met.E, met.e));
    add_common(old_piece, common, changes);
    // The last one is matched first, with all that follows from it.
    match_again(met.tail_of_x(), left);
    match_again(met.head_of_x(), left);
}

void delete_record(ChangeRecord& x, chgdb& changes) {
    put_text(x.record_type, "DU");
    x.old_edit_in = x.edit_in;
    x.old_reel_seq = x.reel_seq;
    x.edit_in = 0;
    add_record(changes, x);
}

void delete_row(const ChangeRecord& x, const dbrecord& row, chgdb& changes) {
    dbrecord& added = add_copy(changes, row);
    added.set_field(hf_record_type, "DU", true);
    added.set_field(hf_old_edit_in, x.edit_in);
    added.set_field(hf_old_reel_seq, x.reel_seq);
    added.set_field(hf_edit_in, 0);
}

void delete_event(EventInHand& x, const Candidates& candidates, chgdb& changes) {
    if (x.row && candidates.are_labels_held()) return delete_row(x.record, *x.row, changes);
    delete_record(x.whole(), changes);
}

void add_record_of_both(ChangeRecord& x, ChangeRecord y, chgdb& changes) {
    record_fx_changes(x, y, changes);
    y.old_edit_in = x.edit_in;
    y.old_reel_seq = x.reel_seq;
    add_record(changes, y);
}

void add_row_of_both(const ChangeRecord& x, const dbrecord& row, chgdb& changes) {
    dbrecord& added = add_copy(changes, row);
    added.set_field(hf_old_edit_in, x.edit_in);
    added.set_field(hf_old_reel_seq, x.reel_seq);
    for (const chgdb_field operation : {hf_fx_op1, hf_fx_op2})
        if (*text_field(added, operation) == 'C') added.set_field(operation, "", true);
}

void add_whole(ChangeRecord& x, int index, Candidates& candidates, chgdb& changes) {
    if (!candidates.are_labels_held(index) || has_fx_changes(x, candidates[index]))
        return add_record_of_both(x, candidates.take(index), changes);
    add_row_of_both(x, candidates.row_of(index), changes);
    candidates.remove(index);
}

void match_normal(EventInHand& x, Candidates& candidates, chgdb& changes, Pieces& left) {
    int index = -1;
    find_match(&index, x.record, candidates);
    if (index < 0 || !overlaps(candidates[index], x.record)) return delete_event(x, candidates, changes);
    if (same_event(candidates[index], x.record)) return add_whole(x.record, index, candidates, changes);
    const Meeting met(x.whole(), candidates.take(index));
    const bool from_start = met.k <= met.K;
    if (from_start && met.e >= met.E) return meet_covering(x.record, met, candidates, changes);
    if (from_start) return meet_start(met, candidates, changes, left);
    if (met.e > met.E) return meet_end(x.record, met, candidates, changes, left);
    meet_within(met, changes, left);
}

void delete_piece(ChangeRecord& piece, int length, chgdb& changes) {
    piece.edit_in = 0;
    piece.edit_length = length;
    if (length <= 0) return;
    put_text(piece.record_type, "DU");
    add_record(changes, piece);
}

/// The sample of an old varispeed event's film that many frames into it.
int varispeed_sample(int start, int frames, double speed, int step) {
    return speed == 0 ? start : whole_part(start + frames / speed * step);
}

//     X     |-----------|        only whole candidates match; what lies beside them is gone
//     Y        |-----|
void meet_varispeed(const ChangeRecord& x, const ChangeRecord& y, chgdb& changes) {
    const int ahead = varispeed_offset(x, y.key_in());
    const int upto = frame_sum(y.edit_length, ahead);
    ChangeRecord piece = y;
    piece.old_edit_in = frame_sum(x.edit_in, ahead);
    piece.old_reel_seq = x.reel_seq;
    ChangeRecord old_piece = x;
    shorten_start(old_piece, ahead);
    shorten_end(old_piece, frame_difference(x.edit_length, upto));
    add_common(old_piece, piece, changes);

    piece.old_edit_in = x.edit_in;
    piece.keycode_in = x.keycode_in;
    piece.keycode_missing = x.keycode_missing;
    piece.inkcode_in = x.inkcode_in;
    piece.prim_tc_out = y.prim_tc_in;
    delete_piece(piece, ahead, changes);

    piece.old_edit_in = frame_sum(x.edit_in, upto);
    piece.set_key_in(varispeed_sample(x.key_in(), upto, x.speed, x.key_step()));
    piece.set_ink_in(varispeed_sample(x.ink_in(), upto, x.speed, x.ink_step()));
    piece.prim_tc_in = y.prim_tc_out;
    delete_piece(piece, frame_difference(x.edit_length, upto), changes);
}

void match_varispeed(EventInHand& x, Candidates& candidates, chgdb& changes) {
    int index = -1;
    find_varispeed_match(&index, x.record, candidates);
    if (index < 0) return delete_event(x, candidates, changes);
    meet_varispeed(x.whole(), candidates.take(index), changes);
}

void match_piece(EventInHand x, Candidates& candidates, chgdb& changes, Pieces& left) {
    if (x.record.varispeed()) {
        match_varispeed(x, candidates, changes);
    } else {
        match_normal(x, candidates, changes, left);
    }
}

} // namespace

// A list of what is left in place of recursion: an event can fall into as many pieces as its roll has events.
const char* match_event(ChangeRecord& x, Candidates& candidates, chgdb& changes, const dbrecord* row) {
    Pieces left;
    match_piece({x, row}, candidates, changes, left);
    while (!left.empty()) {
        ChangeRecord piece = left.back();
        left.pop_back();
        match_piece({piece, nullptr}, candidates, changes, left);
    }
    return nullptr;
}
