// Finds the moves that explain a changed order of film that is in both cuts.
//
//     old   | A | B | C |          A longer than B: B moves back ("MB"), A and C stay ("MO")
//     new   | B | A | C |          A no longer than B: A moves forward ("MF"), B and C stay

#include "base/frame_math.h"
#include "base/messages.h"
#include "base/table_order.h"
#include "changelist/row_fields.h"
#include "changelist/steps/moves.h"
#include "changelist/steps/range_marks.h"
#include "host/settings.h"

namespace {

constexpr const char* kept = "MO";
constexpr const char* moved_forward = "MF";
constexpr const char* moved_back = "MB";

/// Film in both cuts; frames.
struct MatchedRow {
    int old_reel;
    int old_in;
    int reel;
    int in;
    int length;

    bool same_reel() const { return reel == old_reel; }
};

MatchedRow matched_row(const dbrecord& row) {
    return {number_field(row, hf_old_reel_seq), number_field(row, hf_old_edit_in), number_field(row, hf_reel_seq),
            number_field(row, hf_edit_in), number_field(row, hf_edit_length)};
}

Vector<MatchedRow> matched_rows(const chgdb& changes) {
    Vector<MatchedRow> rows;
    const unsigned count = changes.get_num_records();
    rows.reserve(count);
    for (unsigned index = 0; index < count; ++index)
        rows.push_back(matched_row(*changes.get_record(index)));
    return rows;
}

/// For each row the first of the rows right before it that all lie further on in the new cut; the row itself
/// where there are none.
Vector<std::size_t> starts_of_later_rows(const Vector<MatchedRow>& rows) {
    Vector<std::size_t> starts(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        std::size_t start = i;
        while (start > 0 && rows[start - 1].in > rows[i].in)
            start = starts[start - 1];
        starts[i] = start;
    }
    return starts;
}

/// Walks the rows in the order of the old cut. A run is a stretch whose order holds; a block is what the run
/// jumped over.
class MoveFinder {
public:
    explicit MoveFinder(const Vector<MatchedRow>& rows) : rows_(rows), later_start_(starts_of_later_rows(rows)) {}

    void find() {
        for (std::size_t i = 0; i < rows_.size(); ++i)
            visit(i);
        if (pending_) close_reel();
    }

    /// Calls `set(row, kind)` for every row that has got a kind.
    template <class Set> void settle(Set set) const {
        marks_.settle(rows_.size(), [&](std::size_t row, const auto& range) {
            if (rows_[row].same_reel()) set(row, range.mark);
        });
        for (std::size_t row = 0; row < rows_.size(); ++row) {
            if (!rows_[row].same_reel()) set(row, rows_[row].reel > rows_[row].old_reel ? moved_forward : moved_back);
        }
    }

private:
    void visit(std::size_t i) {
        const MatchedRow& row = rows_[i];
        if (row.old_reel != current_reel_) {
            if (pending_) close_reel();
            open_reel(row.old_reel, i);
        }
        if (!row.same_reel()) return;
        pending_ = true;
        if (extends_run(row)) {
            run_length_ = frame_sum(run_length_, row.length);
            if (in_order_) anchor_ = row.in;
        } else {
            end_run(row);
            start_run(i);
        }
        last_new_ = row.in;
        run_last_ = i;
    }

    void open_reel(int reel, std::size_t i) {
        current_reel_ = reel;
        anchor_ = bound_ = last_new_ = run_length_ = run_old_in_ = block_old_in_ = 0;
        block_first_ = run_start_ = run_last_ = i;
        in_order_ = true;
    }

    void close_reel() {
        pending_ = false;
        if (in_order_) {
            mark_run(kept);
        } else {
            decide();
        }
    }

    bool extends_run(const MatchedRow& row) const { return row.in > last_new_ && (in_order_ || row.in < bound_); }

    void end_run(const MatchedRow& next) {
        if (next.in <= last_new_ && in_order_) {
            mark_run(kept);
        } else {
            decide();
        }
    }

    void start_run(std::size_t i) {
        const MatchedRow& row = rows_[i];
        run_length_ = row.length;
        run_start_ = i;
        run_old_in_ = row.old_in;
        in_order_ = row.in >= anchor_;
        if (in_order_) {
            anchor_ = row.in;
            bound_ = block_old_in_ = 0;
            block_first_ = 0;
        } else if (later_start_[i] < i) {
            block_first_ = later_start_[i];
            bound_ = rows_[block_first_].in;
            block_old_in_ = rows_[block_first_].old_in;
        }
    }

    // The shorter of the run and the block moves.
    void decide() {
        if (run_length_ < frame_difference(run_old_in_, block_old_in_)) {
            mark_run(moved_back);
        } else {
            marks_.mark(block_first_, run_start_, moved_forward);
            mark_run(kept);
        }
    }

    void mark_run(const char* kind) { marks_.mark(run_start_, run_last_ + 1, kind); }

    const Vector<MatchedRow>& rows_;
    Vector<std::size_t> later_start_;
    RangeMarks<const char*> marks_;
    int current_reel_ = 0;
    bool pending_ = false; ///< a run of this reel has no kind yet
    int anchor_ = 0;       ///< place of the last row in order
    int bound_ = 0;        ///< where the block begins in the new cut
    int last_new_ = 0;
    int run_length_ = 0;
    int run_old_in_ = 0;
    int block_old_in_ = 0;
    std::size_t block_first_ = 0;
    std::size_t run_start_ = 0;
    std::size_t run_last_ = 0;
    bool in_order_ = true;
};

void show_matched_in_old_order(chgdb& changes) {
    show_all(changes);
    sort_by(changes, {hf_old_reel_seq, hf_old_edit_in, -1});
    tag_kind(changes, "D", 0);
    tag_kind(changes, "I", 1);
    tag_kind(changes, "FX", 1);
    changes.invert_all_tags();
    changes.set_show_tags_only(1);
}

} // namespace

const char* classify_moves(chgdb& changes, LoggerHandle& log) {
    say(log, text_looking_for_moves);
    show_matched_in_old_order(changes);
    const Vector<MatchedRow> rows = matched_rows(changes);
    MoveFinder finder(rows);
    finder.find();
    finder.settle([&](std::size_t row, const char* kind) {
        changes.get_record(static_cast<unsigned>(row))->set_field(hf_record_type, kind, true);
    });
    return nullptr;
}
