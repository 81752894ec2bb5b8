#include "tests/changelist/plain_analysis.h"

#include "tests/changelist/film_events.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <strings.h>

namespace {

int count(const chgdb& table) { return static_cast<int>(table.get_num_records()); }

ChangeRecord row(const chgdb& table, int index) { return read_row(table, static_cast<unsigned>(index)); }

bool usable(LabelPoint bracket) { return bracket.is_valid() && std::strncmp(bracket.get_string(), "__", 2) != 0; }

int find_black(const ChangeRecord& x, const chgdb& candidates) {
    if (!usable(x.bracket_in) && !usable(x.bracket_out)) return -1;
    for (int i = 0; i < count(candidates); ++i) {
        const ChangeRecord y = row(candidates, i);
        const bool behind = usable(y.bracket_in) && y.bracket_in == x.bracket_in;
        const bool ahead = usable(y.bracket_out) && y.bracket_out == x.bracket_out;
        if ((behind || ahead) && same_event(y, x)) return i;
    }
    return -1;
}

int find_same(const ChangeRecord& x, const chgdb& candidates, bool own_reel) {
    for (int i = 0; i < count(candidates); ++i) {
        const ChangeRecord y = row(candidates, i);
        if ((!own_reel || y.reel_seq == x.reel_seq) && same_event(y, x)) return i;
    }
    return -1;
}

int find_overlap(const ChangeRecord& x, const chgdb& candidates, bool own_reel) {
    int best = -1;
    double best_score = 0;
    for (int i = 0; i < count(candidates); ++i) {
        const ChangeRecord y = row(candidates, i);
        if ((own_reel && y.reel_seq != x.reel_seq) || !overlaps(y, x)) continue;
        const int common = std::min(y.key_end(), x.key_end()) - std::max(y.key_in(), x.key_in());
        const int span = x.key_step() * x.edit_length;
        const double score = span == 0 ? 0 : common / span;
        if (best >= 0 && score <= best_score) continue;
        best = i;
        best_score = score;
    }
    return best;
}

int edit_frames(const ChangeRecord& x, int key) {
    if (x.speed == 0) return 0;
    return static_cast<int>((key - x.key_in()) / x.key_step() / x.speed);
}

void trim(char* operation, int& length) {
    if (length >= 1) return;
    *operation = '\0';
    length = 0;
}

void compare_fx(ChangeRecord& old_piece, ChangeRecord& new_piece, chgdb& changes) {
    record_fx_changes(old_piece, new_piece, changes);
}

void del(ChangeRecord x, chgdb& changes) {
    std::strcpy(x.record_type, "DU");
    x.old_edit_in = x.edit_in;
    x.old_reel_seq = x.reel_seq;
    x.edit_in = 0;
    append(changes, x);
}

void match_varispeed(ChangeRecord x, chgdb& candidates, chgdb& changes) {
    const int index = plain_find_varispeed(x, candidates);
    if (index < 0) return del(x, changes);
    const ChangeRecord y = row(candidates, index);
    const int d = edit_frames(x, y.key_in());
    ChangeRecord r = y;
    r.old_edit_in = x.edit_in + d;
    r.old_reel_seq = x.reel_seq;
    ChangeRecord old_piece = x;
    old_piece.fx_len1 -= d;
    trim(old_piece.fx_op1, old_piece.fx_len1);
    old_piece.fx_len2 += y.edit_length - x.edit_length + d;
    trim(old_piece.fx_op2, old_piece.fx_len2);
    compare_fx(old_piece, r, changes);
    append(changes, r);
    candidates.delete_records(static_cast<unsigned>(index), 1);

    r.old_edit_in = x.edit_in;
    r.old_reel_seq = x.reel_seq;
    r.edit_in = 0;
    r.keycode_in = x.keycode_in;
    r.keycode_missing = x.keycode_missing;
    r.inkcode_in = x.inkcode_in;
    r.prim_tc_out = y.prim_tc_in;
    r.edit_length = d;
    if (r.edit_length > 0) {
        std::strcpy(r.record_type, "DU");
        append(changes, r);
    }
    const int n = y.edit_length + d;
    r.old_edit_in = x.edit_in + n;
    r.edit_in = 0;
    r.edit_length = x.edit_length - n;
    if (x.speed != 0) {
        r.set_key_in(static_cast<int>(x.key_in() + n / x.speed * x.key_step()));
        r.set_ink_in(static_cast<int>(x.ink_in() + n / x.speed * x.ink_step()));
    }
    r.prim_tc_in = y.prim_tc_out;
    if (r.edit_length > 0) {
        std::strcpy(r.record_type, "DU");
        append(changes, r);
    }
}

} // namespace

int plain_find_match(const ChangeRecord& x, const chgdb& candidates) {
    LabelPoint key = x.keycode_in;
    if (std::strncmp(key.get_string(), "__", 2) == 0) return find_black(x, candidates);
    for (const bool own_reel : {true, false}) {
        const int found = find_same(x, candidates, own_reel);
        if (found >= 0) return found;
    }
    const int found = find_overlap(x, candidates, true);
    return found >= 0 ? found : find_overlap(x, candidates, false);
}

int plain_find_varispeed(const ChangeRecord& x, const chgdb& candidates) {
    for (int i = 0; i < count(candidates); ++i) {
        const ChangeRecord y = row(candidates, i);
        if (!overlaps(y, x) || !(std::fabs(y.speed - x.speed) <= 0.01)) continue;
        if (y.speed < 0 ? y.key_in() > x.key_in() : y.key_in() < x.key_in()) continue;
        if (same_event(y, x) || y.edit_length + edit_frames(x, y.key_in()) <= x.edit_length) return i;
    }
    return -1;
}

void plain_match_event(ChangeRecord x, chgdb& candidates, chgdb& changes) {
    if (x.varispeed()) return match_varispeed(x, candidates, changes);
    const int index = plain_find_match(x, candidates);
    if (index < 0) return del(x, changes);
    const ChangeRecord y = row(candidates, index);
    if (!overlaps(y, x)) return del(x, changes);
    const auto at = static_cast<unsigned>(index);
    ChangeRecord common = y;
    if (same_event(y, x)) {
        compare_fx(x, common, changes);
        common.old_edit_in = x.edit_in;
        common.old_reel_seq = x.reel_seq;
        append(changes, common);
        candidates.delete_records(at, 1);
        return;
    }
    const int s = x.key_step(), K = x.key_in(), E = x.key_end(), k = y.key_in(), e = y.key_end();
    const auto frames = [s](int a, int b) { return (a - b) / s; };
    ChangeRecord old_piece = x;
    ChangeRecord x_head = x, x_tail = x, y_head = y, y_tail = y;

    y_head.fx_len2 -= frames(e, K);
    trim(y_head.fx_op2, y_head.fx_len2);
    y_head.prim_tc_out = x.prim_tc_in;
    y_head.edit_length = frames(K, k);
    y_head.fx_len1 = std::min(y_head.edit_length, y_head.fx_len1);

    y_tail.set_key_in(E);
    y_tail.set_ink_in(x.ink_end());
    y_tail.prim_tc_in = x.prim_tc_out;
    y_tail.edit_in += frames(E, k);
    y_tail.fx_len1 -= frames(E, k);
    trim(y_tail.fx_op1, y_tail.fx_len1);
    y_tail.edit_length = frames(e, E);
    y_tail.fx_len2 = std::min(y_tail.edit_length, y_tail.fx_len2);

    x_tail.prim_tc_in = y.prim_tc_out;
    x_tail.edit_in += frames(e, K);
    x_tail.set_key_in(e);
    x_tail.set_ink_in(y.ink_end());
    x_tail.edit_length = frames(E, e);
    x_tail.fx_len2 = std::min(x_tail.edit_length, x_tail.fx_len2);
    x_tail.fx_len1 -= frames(e, K);
    trim(x_tail.fx_op1, x_tail.fx_len1);

    x_head.prim_tc_out = y.prim_tc_in;
    x_head.edit_length = frames(k, K);
    x_head.fx_len2 -= frames(E, k);
    trim(x_head.fx_op2, x_head.fx_len2);
    x_head.fx_len1 = std::min(x_head.edit_length, x_head.fx_len1);

    if (k <= K) {
        common.keycode_in = x.keycode_in;
        common.keycode_missing = x.keycode_missing;
        common.inkcode_in = x.inkcode_in;
        common.prim_tc_in = x.prim_tc_in;
        common.old_edit_in = x.edit_in;
        common.edit_in += frames(K, k);
    } else {
        common.old_edit_in = x.edit_in + frames(k, K);
    }
    common.old_reel_seq = x.reel_seq;

    if (k <= K && e >= E) {
        common.prim_tc_out = x.prim_tc_out;
        common.edit_length = x.edit_length;
        if (*common.fx_op1) {
            common.fx_len1 -= frames(K, k);
            trim(common.fx_op1, common.fx_len1);
        }
        if (*common.fx_op2) {
            common.fx_len2 -= frames(e, E);
            trim(common.fx_op2, common.fx_len2);
        }
        compare_fx(old_piece, common, changes);
        append(changes, common);
        candidates.delete_records(at, 1);
        if (y_head.edit_length > 0) append(candidates, y_head);
        if (y_tail.edit_length >= 1) append(candidates, y_tail);
    } else if (k <= K) {
        common.edit_length = frames(e, K);
        common.fx_len1 -= frames(K, k);
        trim(common.fx_op1, common.fx_len1);
        common.fx_len2 = std::min(common.edit_length, common.fx_len2);
        old_piece.fx_len2 -= frames(E, e);
        trim(old_piece.fx_op2, old_piece.fx_len2);
        if (common.edit_length > 0) {
            compare_fx(old_piece, common, changes);
            append(changes, common);
        }
        candidates.delete_records(at, 1);
        if (y_head.edit_length > 0) append(candidates, y_head);
        if (x_tail.edit_length > 0) plain_match_event(x_tail, candidates, changes);
    } else if (e > E) {
        common.prim_tc_out = x.prim_tc_out;
        common.edit_length = frames(E, k);
        common.fx_len2 -= frames(E, k);
        trim(common.fx_op2, common.fx_len2);
        old_piece.fx_len1 -= frames(k, K);
        compare_fx(old_piece, common, changes);
        append(changes, common);
        candidates.delete_records(at, 1);
        if (y_tail.edit_length > 0) append(candidates, y_tail);
        if (x_head.edit_length > 0) plain_match_event(x_head, candidates, changes);
    } else {
        old_piece.fx_len1 -= frames(k, K);
        trim(old_piece.fx_op1, old_piece.fx_len1);
        old_piece.fx_len2 -= frames(E, e);
        trim(old_piece.fx_op2, old_piece.fx_len2);
        compare_fx(old_piece, common, changes);
        append(changes, common);
        candidates.delete_records(at, 1);
        if (x_head.edit_length > 0) plain_match_event(x_head, candidates, changes);
        if (x_tail.edit_length > 0) plain_match_event(x_tail, candidates, changes);
    }
}

namespace {

void order(chgdb& events) {
    show_all(events);
    tag_rows(events, hf_optical, "1", 0);
    events.invert_all_tags();
    events.set_show_tags_only(1);
    int fields[] = {13, 9, 8, -1};
    events.set_sortfields(fields);
    events.sort(1, 1);
}

void drain(chgdb& candidates, chgdb& changes) {
    for (int i = 0; i < count(candidates); ++i) {
        candidates.set_field(static_cast<unsigned>(i), hf_record_type, "I");
        *changes.get_record(static_cast<unsigned>(changes.add_records(1))) =
            *candidates.get_record(static_cast<unsigned>(i));
    }
    candidates.delete_records(0, candidates.get_num_records());
}

std::string load(chgdb& candidates, const chgdb& events, int& next, const std::string& before) {
    if (next >= count(events)) return before;
    const std::string roll = row(events, next).keycode_in.get_prefix();
    while (next < count(events) && strcasecmp(row(events, next).keycode_in.get_prefix(), roll.c_str()) == 0) {
        *candidates.get_record(static_cast<unsigned>(candidates.add_records(1))) =
            *events.get_record(static_cast<unsigned>(next));
        ++next;
    }
    return roll;
}

} // namespace

void plain_merge_events(chgdb& old_events, chgdb& new_events, chgdb& changes) {
    order(old_events);
    order(new_events);
    chgdb candidates(new_events, nullptr, 0);
    std::string roll;
    int next = 0;
    bool done = false;
    for (int i = 0; i < count(old_events); ++i) {
        const ChangeRecord x = row(old_events, i);
        while (strcasecmp(x.keycode_in.get_prefix(), roll.c_str()) > 0 && !done) {
            drain(candidates, changes);
            if (next >= count(new_events)) done = true;
            roll = load(candidates, new_events, next, roll);
            int fields[] = {9, 8, -1};
            candidates.set_sortfields(fields);
            candidates.sort(1, 1);
        }
        plain_match_event(x, candidates, changes);
    }
    for (; !done; roll = load(candidates, new_events, next, roll)) {
        drain(candidates, changes);
        done = next >= count(new_events);
    }
}
