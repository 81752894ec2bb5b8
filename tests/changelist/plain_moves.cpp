#include "tests/changelist/plain_moves.h"

#include "base/frame_math.h"
#include "changelist/change_record.h"
#include "host/fixed_text.h"

#include <cstring>
#include <strings.h>

namespace {

bool is(const ChangeRecord& row, const char* kind) { return std::strcmp(row.record_type, kind) == 0; }

ChangeRecord read(const chgdb& table, int index) {
    ChangeRecord row(table.film_std());
    row.read(*table.get_record(static_cast<unsigned>(index)));
    return row;
}

void write(chgdb& table, int index, const ChangeRecord& row) {
    row.write(*table.get_record(static_cast<unsigned>(index)));
}

void add_to(chgdb& table, const ChangeRecord& row) {
    row.write(*table.get_record(static_cast<unsigned>(table.add_records(1))));
}

int size(const chgdb& table) { return static_cast<int>(table.get_num_records()); }

void sort_fields(chgdb& table, int a, int b, int fold) {
    int fields[] = {a, b, -1};
    table.set_sortfields(fields);
    table.sort(1, fold);
}

void begin(chgdb& table) {
    table.set_all_tags(0);
    table.set_show_tags_only(0);
}

void set_out(ChangeRecord& row) {
    row.keycode_out = row.keycode_in;
    row.keycode_out.set_sample(row.key_last());
    row.inkcode_out = row.inkcode_in;
    row.inkcode_out.set_sample(row.ink_last());
}

void extend(ChangeRecord& run, const ChangeRecord& r) {
    run.edit_length = frame_sum(run.edit_length, r.edit_length);
    run.keycode_out = r.keycode_in;
    if (r.keycode_missing) {
        run.keycode_out.modify_count_length(4);
        run.keycode_out.set_prefix("????????");
        run.keycode_out.set_sample(0);
    } else {
        run.keycode_out.set_sample(r.key_last());
    }
    run.inkcode_out = r.inkcode_in;
    run.inkcode_out.set_sample(r.ink_last());
    run.prim_tc_out = r.prim_tc_out;
}

struct Classifier {
    chgdb& changes;
    int anchor = 0, bound = 0, last_new = 0, run_length = 0, run_old_in = 0, block_old_in = 0;
    int block_first = 0, run_start = 0, run_last = 0;
    bool in_order = true, pending = false;

    void mark(int first, int last, const char* kind) {
        for (int k = first; k <= last; ++k) {
            ChangeRecord row = read(changes, k);
            if (row.reel_seq != row.old_reel_seq) continue;
            put_text(row.record_type, kind);
            write(changes, k, row);
        }
    }
    void decide() {
        if (run_length < frame_difference(run_old_in, block_old_in)) {
            mark(run_start, run_last, "MB");
        } else {
            mark(block_first, run_start - 1, "MF");
            mark(run_start, run_last, "MO");
        }
    }
    void close() {
        pending = false;
        if (in_order)
            mark(run_start, run_last, "MO");
        else
            decide();
    }
    void run() {
        int current_reel = 0;
        for (int i = 0; i < size(changes);) {
            ChangeRecord row = read(changes, i);
            const int n = row.edit_in, len = row.edit_length;
            if (row.old_reel_seq != current_reel) {
                if (pending) {
                    close();
                    continue;
                }
                current_reel = row.old_reel_seq;
                anchor = bound = last_new = run_length = run_old_in = block_old_in = 0;
                block_first = run_start = run_last = i;
                in_order = true;
            }
            if (row.reel_seq != row.old_reel_seq) {
                put_text(row.record_type, row.reel_seq > row.old_reel_seq ? "MF" : "MB");
                write(changes, i, row);
                ++i;
                continue;
            }
            pending = true;
            if (n > last_new && (in_order || n < bound)) {
                run_length = frame_sum(run_length, len);
                if (in_order) anchor = n;
            } else {
                if (n <= last_new && in_order)
                    mark(run_start, run_last, "MO");
                else
                    decide();
                run_length = len;
                run_start = i;
                run_old_in = row.old_edit_in;
                if (n < anchor) {
                    in_order = false;
                    for (int k = i - 1; k >= 0 && read(changes, k).edit_in > n; --k) {
                        block_first = k;
                        bound = read(changes, k).edit_in;
                        block_old_in = read(changes, k).old_edit_in;
                    }
                } else {
                    anchor = n;
                    bound = block_old_in = block_first = 0;
                    in_order = true;
                }
            }
            last_new = n;
            run_last = i;
            ++i;
        }
        if (pending) close();
    }
};

/// Both orders of the film on its way along the reels.
struct Numberer {
    chgdb& old_order;
    chgdb new_order;
    int rows;
    int step = 1;
    bool fresh = true;
    int i = 0, j = 0, old_pos = 0, new_pos = 0, film_pos = 0;

    explicit Numberer(chgdb& changes) : old_order(changes), new_order(changes, changes.log, 1), rows(size(changes)) {
        new_order.set_all_tags(1);
        new_order.set_show_tags_only(1);
        sort_fields(new_order, 9, 8, 0);
    }

    void take_step() {
        if (!fresh) ++step;
        fresh = false;
    }
    void number_parts(ChangeRecord& t, int p, bool own_reel_only) {
        int count = 0, sub = 1, q = p;
        for (int k = 0; k < rows; ++k) {
            ChangeRecord d = read(old_order, k);
            if (!is(d, "DU") || d.old_edit_in < t.old_edit_in) continue;
            if (d.old_edit_in >= frame_sum(t.old_edit_in, t.edit_length)) continue;
            if (own_reel_only && d.old_reel_seq != t.old_reel_seq) continue;
            d.event1 = step;
            d.subevent1 = sub;
            d.relpos1 = q;
            q = frame_sum(q, d.edit_length);
            ++count;
            ++sub;
            write(old_order, k, d);
        }
        if (count < 2) t.subevent1 = 1;
    }
    void old_side(ChangeRecord& t, bool own_reel_only) {
        const int gap_old = frame_difference(t.old_edit_in, old_pos);
        new_pos = frame_sum(new_pos, gap_old);
        old_pos = frame_sum(old_pos, frame_sum(t.edit_length, gap_old));
        const int p = frame_sum(film_pos, gap_old);
        take_step();
        t.event1 = step;
        t.subevent1 = 0;
        t.relpos1 = p;
        if (is(t, "DC")) number_parts(t, p, own_reel_only);
        film_pos = frame_sum(p, t.edit_length);
        write(old_order, i, t);
        ++i;
    }
    void put(int at, const ChangeRecord& w, int position) {
        ChangeRecord u = read(old_order, at);
        u.event2 = step;
        u.subevent2 = 0;
        u.relpos2 = position;
        write(old_order, at, u);
        film_pos = frame_sum(film_pos, w.edit_length);
    }
    void new_side(ChangeRecord& w, int gap_new) {
        old_pos = frame_sum(old_pos, gap_new);
        new_pos = frame_sum(new_pos, frame_sum(w.edit_length, gap_new));
        film_pos = frame_sum(film_pos, gap_new);
        if (!is(w, "MB")) {
            ChangeRecord u = read(old_order, w.xref_recnum);
            if (is(w, "MF") && u.event1 == 0) {
                put_text(u.record_type, "MB");
                put_text(w.record_type, "MB");
                write(old_order, w.xref_recnum, u);
                write(new_order, j, w);
            } else {
                take_step();
                put(w.xref_recnum, w, film_pos);
            }
        }
        ++j;
    }
    static bool old_kind(const ChangeRecord& t) { return is(t, "DC") || is(t, "MF") || is(t, "MB"); }
    static bool new_kind(const ChangeRecord& w) { return is(w, "I") || is(w, "MF") || is(w, "MB"); }

    int walk(int reel) {
        for (;;) {
            if (i >= rows) return 5;
            if (j >= rows) return 4;
            ChangeRecord t = read(old_order, i);
            if (!old_kind(t)) {
                ++i;
                continue;
            }
            if (t.old_reel_seq != reel) return 5;
            ChangeRecord w = read(new_order, j);
            if (!new_kind(w)) {
                ++j;
                continue;
            }
            if (w.reel_seq != reel) return 4;
            const int gap_old = frame_difference(t.old_edit_in, old_pos);
            const int gap_new = frame_difference(w.edit_in, new_pos);
            if (gap_old > gap_new)
                new_side(w, gap_new);
            else
                old_side(t, true);
        }
    }
    void rest_of_old(int reel) {
        while (i < rows) {
            ChangeRecord t = read(old_order, i);
            if (t.old_reel_seq != reel) return;
            if (old_kind(t))
                old_side(t, false);
            else
                ++i;
        }
    }
    void rest_of_new(int reel) {
        for (; j < rows; ++j) {
            const ChangeRecord w = read(new_order, j);
            if (w.reel_seq != reel) return;
            if (!new_kind(w)) continue;
            const int gap = frame_difference(w.edit_in, new_pos);
            new_pos = frame_sum(new_pos, frame_sum(w.edit_length, gap));
            film_pos = frame_sum(film_pos, gap);
            if (is(w, "MB")) continue;
            take_step();
            put(w.xref_recnum, w, film_pos);
        }
    }
    void backward(int reel) {
        for (int k = rows - 1; k >= 0; --k) {
            const ChangeRecord w = read(new_order, k);
            if (!is(w, "MB")) continue;
            if (w.reel_seq < reel) return;
            const int back = frame_difference(frame_difference(new_pos, w.edit_length), w.edit_in);
            film_pos = frame_difference(film_pos, back);
            new_pos = frame_difference(new_pos, back);
            if (w.old_reel_seq == reel) {
                ++step;
                put(w.xref_recnum, w, film_pos);
            } else {
                new_pos = frame_difference(new_pos, w.edit_length);
            }
        }
    }
    void run(int reel_max) {
        for (int reel = 1; reel <= reel_max; ++reel) {
            old_pos = new_pos = film_pos = 0;
            if (walk(reel) == 4)
                rest_of_old(reel);
            else
                rest_of_new(reel);
            backward(reel);
        }
        for (int k = 0; k < rows; ++k) {
            const ChangeRecord w = read(new_order, k);
            if (!is(w, "MB") || w.reel_seq == w.old_reel_seq) continue;
            take_step();
            put(w.xref_recnum, w, w.edit_in);
        }
    }
};

struct Reuse {
    chgdb& reused;

    void set_outs(ChangeRecord& t) {
        t.keycode_out.set_sample(t.key_last());
        t.inkcode_out.set_sample(t.ink_last());
    }
    void search(ChangeRecord r, chgdb& table, int from, bool inserts) {
        if (r.varispeed()) {
            if (!inserts) add_to(reused, r);
            return;
        }
        int k = from;
        for (; k < size(table); ++k) {
            ChangeRecord o = read(table, k);
            if (o.varispeed() || is_filler(o.keycode_in)) continue;
            if (strcasecmp(o.keycode_out.get_string(), r.keycode_in.get_string()) >= 0) break;
        }
        if (k == size(table)) return;
        ChangeRecord o = read(table, k);
        if (strcasecmp(o.keycode_in.get_string(), r.keycode_out.get_string()) > 0) return;
        split(r, o, table, from, inserts);
    }
    void again(ChangeRecord t, int length, chgdb& table, int from, bool inserts) {
        t.edit_length = length;
        if (length <= 0) return;
        if (inserts) {
            t.keycode_out = t.keycode_in;
            t.inkcode_out = t.inkcode_in;
        }
        set_outs(t);
        search(t, table, from, inserts);
    }
    void split(const ChangeRecord& r, const ChangeRecord& o, chgdb& table, int from, bool inserts) {
        const int a = r.key_in(), b = r.key_end(), c = o.key_in(), d = o.key_end(), f = r.key_step();
        ChangeRecord t = r;
        ChangeRecord tail = r;
        tail.set_key_in(d);
        tail.set_ink_in(o.ink_end());
        if (a > c && b > d) {
            t.edit_length = (d - a) / f;
            set_outs(t);
            add_to(reused, t);
            again(tail, (b - d) / f, table, from, inserts);
        } else if (a > c) {
            add_to(reused, t);
        } else {
            t.keycode_in = o.keycode_in;
            t.keycode_missing = o.keycode_missing;
            t.inkcode_in = o.inkcode_in;
            t.edit_length = b < d ? (b - c) / f : o.edit_length;
            set_outs(t);
            if (b >= d || t.edit_length > 0) add_to(reused, t);
            again(r, (c - a) / f, table, from, inserts);
            if (b >= d) again(tail, (b - d) / f, table, from, inserts);
        }
    }
};

} // namespace

void plain_classify_moves(chgdb& changes) {
    begin(changes);
    sort_fields(changes, 12, 11, 0);
    tag_kind(changes, "D", 0);
    tag_kind(changes, "I", 1);
    tag_kind(changes, "FX", 1);
    changes.invert_all_tags();
    changes.set_show_tags_only(1);
    Classifier{changes}.run();
}

void plain_merge_rows(chgdb& changes) {
    begin(changes);
    sort_fields(changes, 12, 11, 0);
    ChangeRecord run(changes.film_std());
    int run_row = 0;
    bool have_run = false;
    for (int k = 0; k < size(changes); ++k) {
        ChangeRecord r = read(changes, k);
        if (is(r, "FX")) continue;
        if (is(r, "DU") || is(r, "I")) {
            set_out(r);
            write(changes, k, r);
        } else if (have_run && is(r, run.record_type) && r.old_reel_seq == run.old_reel_seq &&
                   r.reel_seq == run.reel_seq && r.old_edit_in == frame_sum(run.old_edit_in, run.edit_length) &&
                   r.edit_in == frame_sum(run.edit_in, run.edit_length)) {
            extend(run, r);
            changes.set_tag(static_cast<unsigned>(run_row), 1);
            run_row = k;
        } else {
            if (have_run) write(changes, run_row, run);
            run = r;
            set_out(run);
            run_row = k;
            have_run = true;
        }
    }
    if (have_run) write(changes, run_row, run);

    chgdb scratch(changes, changes.log, 0);
    ChangeRecord gap(changes.film_std());
    bool have_gap = false;
    for (int k = 0; k < size(changes); ++k) {
        const ChangeRecord r = read(changes, k);
        if (!is(r, "DU")) continue;
        if (have_gap && r.old_reel_seq == gap.old_reel_seq &&
            r.old_edit_in == frame_sum(gap.old_edit_in, gap.edit_length)) {
            extend(gap, r);
            continue;
        }
        if (have_gap) add_to(scratch, gap);
        gap = r;
        put_text(gap.record_type, "DC");
        set_out(gap);
        have_gap = true;
    }
    if (have_gap) add_to(scratch, gap);
    for (int k = 0; k < size(scratch); ++k) {
        const auto added = static_cast<unsigned>(changes.add_records(1));
        *changes.get_record(added) = *scratch.get_record(static_cast<unsigned>(k));
    }
    changes.delete_tagged_records();
}

void plain_find_reused(chgdb& changes, chgdb& old_events, chgdb& reused) {
    begin(changes);
    sort_fields(changes, 13, -1, 1);
    tag_kind(changes, "I", 1);
    changes.set_show_tags_only(1);
    begin(old_events);
    tag_rows(old_events, hf_optical, "1", 0);
    old_events.invert_all_tags();
    old_events.set_show_tags_only(1);
    sort_fields(old_events, 13, -1, 1);
    Reuse reuse{reused};
    for (int k = 0; k < size(changes); ++k) {
        if (!is_filler(read(changes, k).keycode_in)) reuse.search(read(changes, k), old_events, 0, false);
    }
    for (int k = 0; k < size(changes); ++k) {
        if (!is_filler(read(changes, k).keycode_in)) reuse.search(read(changes, k), changes, k + 1, true);
    }
}

void plain_number_steps(chgdb& changes, int reel_max) {
    begin(changes);
    sort_fields(changes, 12, 11, 0);
    tag_kind(changes, "I", 0);
    for (const char* kind : {"MF", "MB", "DC", "DU"})
        tag_kind(changes, kind, 1);
    changes.set_show_tags_only(1);
    for (int k = 0; k < size(changes); ++k) {
        ChangeRecord row = read(changes, k);
        row.xref_recnum = k;
        write(changes, k, row);
    }
    Numberer(changes).run(reel_max);
}
