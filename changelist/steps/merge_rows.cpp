// Joins what earlier passes cut: pieces that are neighbours in both cuts become one row again, and every run of
// neighbours that are gone gets a row of its own.
//
//     gone from the old cut   | DU | DU |    | DU |
//     added                   |   DC    |    | DC |

#include "base/frame_math.h"
#include "base/messages.h"
#include "base/table_order.h"
#include "changelist/row_fields.h"
#include "changelist/steps/film_fields.h"
#include "changelist/steps/moves.h"
#include "host/settings.h"

#include <optional>

namespace {

/// The last frame of a piece.
struct PieceEnd {
    LabelPoint key;
    LabelPoint ink;

    /// An invalid ink number leaves the row's own.
    void write(dbrecord& row) {
        row.set_field(hf_keycode_out, key.get_string(), true);
        if (ink.is_valid()) row.set_field(hf_inkcode_out, ink.get_string(), true);
    }
};

/// The numbers of the first frame as they were read, for rows are sorted by their texts. An invalid ink number leaves
/// the row's own.
void write_start(ChangeRecord& film, dbrecord& row) {
    row.set_field(hf_keycode_in, film.keycode_in.get_string(), true);
    if (film.inkcode_in.is_valid()) row.set_field(hf_inkcode_in, film.inkcode_in.get_string(), true);
}

/// Of a text only so much is read as a timecode has. A longer one, of film in the place of timecode, changes each time
/// that its row is read and written back.
void write_timecodes(dbrecord& row) {
    for (const chgdb_field field : {hf_prim_tc_in, hf_prim_tc_out})
        if (std::strlen(text_field(row, field)) > timecode_chars)
            row.set_field(field, RowLabels::timecode(row, field).get_string(), true);
}

/// At the last frame of the piece's own film.
PieceEnd own_end(ChangeRecord& film) {
    film.set_outs();
    return {film.keycode_out, film.inkcode_out};
}

/// The same for a piece that ends a longer one: a missing key number is shown as such.
PieceEnd joined_end(ChangeRecord& film) {
    film.set_outs();
    return {film.keycode_missing ? missing_key_out(film.keycode_in) : film.keycode_out, film.inkcode_out};
}

/// Pieces in a row, from the first to the last of them so far.
struct PieceRun {
    unsigned first = 0;
    unsigned last = 0;
    int length = 0; ///< frames
    PieceEnd end;
    bool has_ink = false; ///< the first piece has an ink number

    PieceRun(unsigned row, ChangeRecord& film)
        : first(row), last(row), length(film.edit_length), end(own_end(film)), has_ink(film.inkcode_in.is_valid()) {}

    void extend(unsigned row, ChangeRecord& film) {
        last = row;
        length = frame_sum(length, film.edit_length);
        end = joined_end(film);
    }
};

/// Where a piece stands in both cuts; frames.
struct Place {
    int old_reel = 0;
    int old_in = 0;
    int reel = 0;
    int in = 0;

    bool operator==(const Place&) const = default;
};

Place start_of(const dbrecord& row) {
    return {number_field(row, hf_old_reel_seq), number_field(row, hf_old_edit_in), number_field(row, hf_reel_seq),
            number_field(row, hf_edit_in)};
}

Place behind(Place start, int length) {
    return {start.old_reel, frame_sum(start.old_in, length), start.reel, frame_sum(start.in, length)};
}

/// Joins the pieces that are in both cuts. A run's row is that of its last piece; the others are tagged.
class RunMerger {
public:
    explicit RunMerger(chgdb& changes) : changes_(changes), reader_(changes.film_std()) {}

    void merge() {
        const unsigned count = changes_.get_num_records();
        for (unsigned row = 0; row < count; ++row)
            visit(row);
        finish();
    }

private:
    void visit(unsigned index) {
        dbrecord& row = *changes_.get_record(index);
        const RowKind kind(row);
        if (kind.is("FX")) return;
        ChangeRecord& film = reader_.read(row);
        write_timecodes(row);
        if (kind.is("DU") || kind.is("I")) {
            write_start(film, row);
            own_end(film).write(row);
        } else if (run_ && continues(row, kind)) {
            changes_.set_tag(run_->last, 1);
            run_->extend(index, film);
        } else {
            finish();
            write_start(film, row);
            run_.emplace(index, film);
            run_start_ = start_of(row);
        }
    }

    bool continues(const dbrecord& row, const RowKind& kind) const {
        return kind.is(RowKind(*changes_.get_record(run_->first)).text) &&
               start_of(row) == behind(run_start_, run_->length);
    }

    void finish() {
        if (!run_) return;
        dbrecord& row = *changes_.get_record(run_->last);
        if (run_->first != run_->last) take_over(row, *changes_.get_record(run_->first));
        run_->end.write(row);
    }

    // The last piece's row becomes the first's, but for its timecode out, and for its ink where the first has none.
    void take_over(dbrecord& row, const dbrecord& first) const {
        const LightweightString<char> tc_out(text_field(row, hf_prim_tc_out));
        const LightweightString<char> ink_in(text_field(row, hf_inkcode_in));
        const LightweightString<char> ink_out(text_field(row, hf_inkcode_out));
        row = first;
        row.set_field(hf_edit_length, run_->length);
        row.set_field(hf_prim_tc_out, tc_out.c_str(), true);
        if (!run_->has_ink) row.set_field(hf_inkcode_in, ink_in.c_str(), true);
        row.set_field(hf_inkcode_out, ink_out.c_str(), true);
    }

    chgdb& changes_;
    FilmReader reader_;
    std::optional<PieceRun> run_;
    Place run_start_;
};

/// Collects the runs of pieces that are gone and appends a row for each.
class GapCollector {
public:
    explicit GapCollector(chgdb& changes) : changes_(changes), reader_(changes.film_std()) {}

    void collect() {
        const unsigned count = changes_.get_num_records();
        for (unsigned row = 0; row < count; ++row) {
            if (RowKind(*changes_.get_record(row)).is("DU")) visit(row);
        }
    }

    void append() {
        const int added = changes_.add_records(static_cast<int>(gaps_.size()));
        for (std::size_t gap = 0; gap < gaps_.size(); ++gap)
            write(gaps_[gap], *changes_.get_record(static_cast<unsigned>(added) + static_cast<unsigned>(gap)));
    }

private:
    void visit(unsigned index) {
        const dbrecord& row = *changes_.get_record(index);
        ChangeRecord& film = reader_.read(row);
        const int reel = number_field(row, hf_old_reel_seq);
        const int in = number_field(row, hf_old_edit_in);
        if (!gaps_.empty() && reel == reel_ && in == frame_sum(in_, gaps_.back().length)) {
            gaps_.back().extend(index, film);
        } else {
            gaps_.emplace_back(index, film);
            reel_ = reel;
            in_ = in;
        }
    }

    void write(PieceRun& gap, dbrecord& row) const {
        row = *changes_.get_record(gap.first);
        row.set_field(hf_record_type, "DC", true);
        row.set_field(hf_edit_length, gap.length);
        row.set_field(hf_prim_tc_out, text_field(*changes_.get_record(gap.last), hf_prim_tc_out), true);
        if (!gap.has_ink) row.set_field(hf_inkcode_in, "", true);
        row.set_field(hf_inkcode_out, "", true);
        write_timecodes(row);
        gap.end.write(row);
    }

    chgdb& changes_;
    FilmReader reader_;
    Vector<PieceRun> gaps_;
    int reel_ = 0; ///< of the last gap
    int in_ = 0;
};

} // namespace

const char* merge_rows(chgdb& changes, LoggerHandle& log) {
    say(log, text_joining_changes);
    show_all(changes);
    sort_by(changes, {hf_old_reel_seq, hf_old_edit_in, -1});
    RunMerger(changes).merge();
    GapCollector gaps(changes);
    gaps.collect();
    gaps.append();
    changes.delete_tagged_records();
    return nullptr;
}
