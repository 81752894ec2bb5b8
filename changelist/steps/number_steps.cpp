// Numbers the steps of a recut in an order in which they can be carried out along each reel.
//
//     old reel  | DC  | kept | MF >        taken out in this order, head to tail
//     new reel  | kept | I   | < MF        put in in this order, at the same time
//                             < MB         shots moved back are put down from tail to head

#include "base/table_order.h"
#include "changelist/row_fields.h"
#include "changelist/run_state.h"
#include "changelist/steps/deleted_parts.h"
#include "changelist/steps/moves.h"

#include <algorithm>
#include <numeric>
#include <tuple>

namespace {

enum class StepKind : unsigned char { other, inserted, moved_forward, moved_back, deleted_run, deleted_part };

/// What is done to a row at one of its places.
struct PlacedStep {
    int step = 0;
    int sub = 0;
    int position = 0;   ///< frames from the reel's start
    bool given = false; ///< by this pass
};

/// A row that needs action; frames.
struct StepRow {
    StepKind kind = StepKind::other;
    bool turned_back = false; ///< an "MF" that has become an "MB"
    int old_reel = 0;
    int old_in = 0;
    int reel = 0;
    int in = 0;
    int length = 0;
    PlacedStep taken; ///< at its old place
    PlacedStep put;   ///< at its new place

    bool leaves_old_place() const {
        return kind == StepKind::deleted_run || kind == StepKind::moved_forward || kind == StepKind::moved_back;
    }
    bool comes_to_new_place() const {
        return kind == StepKind::inserted || kind == StepKind::moved_forward || kind == StepKind::moved_back;
    }
};

using StepRows = Vector<StepRow>;

StepKind step_kind(const dbrecord& row) {
    struct Entry {
        const char* text;
        StepKind kind;
    };
    static constexpr Entry entries[] = {{"I", StepKind::inserted},
                                        {"MF", StepKind::moved_forward},
                                        {"MB", StepKind::moved_back},
                                        {"DC", StepKind::deleted_run},
                                        {"DU", StepKind::deleted_part}};
    const RowKind kind(row);
    for (const Entry& entry : entries) {
        if (kind.is(entry.text)) return entry.kind;
    }
    return StepKind::other;
}

StepRow step_row(const dbrecord& row) {
    StepRow read;
    read.kind = step_kind(row);
    read.old_reel = number_field(row, hf_old_reel_seq);
    read.old_in = number_field(row, hf_old_edit_in);
    read.reel = number_field(row, hf_reel_seq);
    read.in = number_field(row, hf_edit_in);
    read.length = number_field(row, hf_edit_length);
    read.taken.step = number_field(row, hf_event1);
    return read;
}

Vector<DeletedPart> deleted_parts(const StepRows& rows) {
    Vector<DeletedPart> parts;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        if (rows[row].kind == StepKind::deleted_part)
            parts.push_back({row, rows[row].old_reel, rows[row].old_in, rows[row].length});
    }
    return parts;
}

/// The rows by reel and place in the new cut; the order in the old one decides between equals.
Vector<std::size_t> in_new_order(const StepRows& rows) {
    Vector<std::size_t> order(rows.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return std::tie(rows[a].reel, rows[a].in, a) < std::tie(rows[b].reel, rows[b].in, b);
    });
    return order;
}

/// Walks each reel in its old and its new order at once. `rows` stand in the old order.
class StepWalk {
public:
    explicit StepWalk(StepRows& rows) : rows_(rows), new_order_(in_new_order(rows)), parts_(deleted_parts(rows)) {}

    void number(int reel_count) {
        for (int reel = 1; reel <= reel_count; ++reel)
            walk_reel(reel);
        put_back_across_reels();
        parts_.settle([&](std::size_t row, const PartStep& part) {
            rows_[row].taken = {part.step, part.sub, part.position, true};
        });
    }

private:
    void walk_reel(int reel) {
        old_pos_ = new_pos_ = film_pos_ = 0;
        walk_both_sides(reel);
        if (old_side_left_) {
            take_rest(reel);
        } else {
            put_rest(reel);
        }
        put_back(reel);
    }

    // Until one side has nothing more on this reel. Each round passes a row or leaves.
    void walk_both_sides(int reel) {
        old_side_left_ = false;
        while (old_at_ < rows_.size() && new_at_ < rows_.size()) {
            StepRow& old_row = rows_[old_at_];
            StepRow& new_row = next_new();
            if (!old_row.leaves_old_place()) {
                ++old_at_;
            } else if (old_row.old_reel != reel) {
                return;
            } else if (!new_row.comes_to_new_place()) {
                ++new_at_;
            } else if (new_row.reel != reel) {
                old_side_left_ = true;
                return;
            } else {
                pass_first(old_row, new_row);
            }
        }
        old_side_left_ = old_at_ < rows_.size();
    }

    StepRow& next_new() { return rows_[new_order_[new_at_]]; }

    void pass_first(StepRow& old_row, StepRow& new_row) {
        const int gap_old = frame_difference(old_row.old_in, old_pos_);
        const int gap_new = frame_difference(new_row.in, new_pos_);
        if (gap_old > gap_new) {
            old_pos_ = frame_sum(old_pos_, gap_new);
            pass_new(new_row, gap_new);
            ++new_at_;
        } else {
            take(old_row, true);
            ++old_at_;
        }
    }

    // A shot whose pick-up hasn't been reached yet really moves back from here.
    void pass_new(StepRow& row, int gap) {
        advance_new(row, gap);
        if (row.kind == StepKind::moved_forward && row.taken.step == 0) {
            row.kind = StepKind::moved_back;
            row.turned_back = true;
        } else if (row.kind != StepKind::moved_back) {
            put(row);
        }
    }

    void advance_new(const StepRow& row, int gap) {
        new_pos_ = frame_sum(new_pos_, frame_sum(row.length, gap));
        film_pos_ = frame_sum(film_pos_, gap);
    }

    void take(StepRow& row, bool own_reel_only) {
        const int gap = frame_difference(row.old_in, old_pos_);
        new_pos_ = frame_sum(new_pos_, gap);
        old_pos_ = frame_sum(old_pos_, frame_sum(row.length, gap));
        const int position = frame_sum(film_pos_, gap);
        next_step();
        row.taken = {step_, 0, position, true};
        if (row.kind == StepKind::deleted_run && number_parts(row, own_reel_only, position) < 2) row.taken.sub = 1;
        film_pos_ = frame_sum(position, row.length);
    }

    int number_parts(const StepRow& run, bool own_reel_only, int position) {
        return parts_.number(run.old_reel, run.old_in, run.length, own_reel_only, step_, position);
    }

    void put(StepRow& row) {
        next_step();
        put_down(row);
    }

    void put_down(StepRow& row) {
        row.put = {step_, 0, film_pos_, true};
        film_pos_ = frame_sum(film_pos_, row.length);
    }

    // Here pieces that stood at the same place on other reels take this reel's numbers, too.
    void take_rest(int reel) {
        for (; old_at_ < rows_.size() && rows_[old_at_].old_reel == reel; ++old_at_) {
            if (rows_[old_at_].leaves_old_place()) take(rows_[old_at_], false);
        }
    }

    void put_rest(int reel) {
        for (; new_at_ < rows_.size() && next_new().reel == reel; ++new_at_) {
            StepRow& row = next_new();
            if (!row.comes_to_new_place()) continue;
            advance_new(row, frame_difference(row.in, new_pos_));
            if (row.kind != StepKind::moved_back) put(row);
        }
    }

    // From the tail; rows of later reels are in it.
    void put_back(int reel) {
        for (auto place = new_order_.rbegin(); place != new_order_.rend(); ++place) {
            StepRow& row = rows_[*place];
            if (row.kind != StepKind::moved_back) continue;
            if (row.reel < reel) return;
            const int back = frame_difference(frame_difference(new_pos_, row.length), row.in);
            film_pos_ = frame_difference(film_pos_, back);
            new_pos_ = frame_difference(new_pos_, back);
            if (row.old_reel == reel) {
                ++step_;
                put_down(row);
            } else {
                new_pos_ = frame_difference(new_pos_, row.length);
            }
        }
    }

    void put_back_across_reels() {
        for (const std::size_t place : new_order_) {
            StepRow& row = rows_[place];
            if (row.kind != StepKind::moved_back || row.reel == row.old_reel) continue;
            next_step();
            row.put = {step_, 0, row.in, true};
        }
    }

    // The first step keeps the number that it finds.
    void next_step() {
        if (!fresh_) ++step_;
        fresh_ = false;
    }

    StepRows& rows_;
    Vector<std::size_t> new_order_;
    DeletedParts parts_;
    std::size_t old_at_ = 0; ///< kept from reel to reel
    std::size_t new_at_ = 0;
    bool old_side_left_ = false;
    int old_pos_ = 0;
    int new_pos_ = 0;
    int film_pos_ = 0;
    int step_ = 1;
    bool fresh_ = true;
};

void show_steps_in_old_order(chgdb& changes) {
    show_all(changes);
    sort_by(changes, {hf_old_reel_seq, hf_old_edit_in, -1});
    tag_kind(changes, "I", 0);
    for (const char* kind : {"MF", "MB", "DC", "DU"})
        tag_kind(changes, kind, 1);
    changes.set_show_tags_only(1);
}

StepRows step_rows(const chgdb& changes) {
    StepRows rows;
    const unsigned count = changes.get_num_records();
    rows.reserve(count);
    for (unsigned index = 0; index < count; ++index)
        rows.push_back(step_row(*changes.get_record(index)));
    return rows;
}

void write_step(dbrecord& row, const PlacedStep& step, chgdb_field event, chgdb_field sub, chgdb_field position) {
    if (!step.given) return;
    row.set_field(event, step.step);
    row.set_field(sub, step.sub);
    row.set_field(position, step.position);
}

void write_steps(chgdb& changes, const StepRows& rows) {
    for (std::size_t index = 0; index < rows.size(); ++index) {
        dbrecord& row = *changes.get_record(static_cast<unsigned>(index));
        row.set_field(hf_xref_recnum, static_cast<int>(index));
        write_step(row, rows[index].taken, hf_event1, hf_subevent1, hf_relpos1);
        write_step(row, rows[index].put, hf_event2, hf_subevent2, hf_relpos2);
        if (rows[index].turned_back) row.set_field(hf_record_type, "MB", true);
    }
}

} // namespace

const char* number_steps(chgdb& changes, LoggerHandle&) {
    show_steps_in_old_order(changes);
    StepRows rows = step_rows(changes);
    StepWalk(rows).number(change_run().reel_max);
    write_steps(changes, rows);
    return nullptr;
}
