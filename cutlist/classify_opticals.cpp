#include "cutlist/classify_opticals.h"

#include "cutlist/cutlist_options.h"
#include "cutlist/upper_tracks.h"
#include "host/fixed_text.h"
#include "reports/cut_s.h"
#include "reports/cutdb.h"

namespace {

constexpr const char* chain_before_last_optical = "single-layer effect";
constexpr const char* chain_behind_last_optical = "single-layer transition";

/// A row whose record is written anew, so that numbers can be put into it.
dbrecord& rewritten(const cutdb& db, unsigned index) {
    dbrecord& row = *db.get_record(index);
    rewrite_record(row);
    return row;
}

/// What the search for what hangs together asks of a cut.
struct cut_extent {
    int edit_in;
    int edit_out;
    bool joined; ///< a transition leads out of it

    explicit cut_extent(const dbrecord& row)
        : edit_in(number_in(row, cf_edit_in)), edit_out(number_in(row, cf_edit_out)),
          joined(has_text(row.get_field(cf_fx_op_out))) {}

private:
    static bool has_text(const char* text) { return text && *text; }
};

/// The same of an optical.
struct optical_extent {
    int optical_in;
    int edit_in;
    int edit_out;

    explicit optical_extent(const dbrecord& row)
        : optical_in(number_in(row, cf_optical_in)), edit_in(number_in(row, cf_edit_in)),
          edit_out(number_in(row, cf_edit_out)) {}
};

/// One run over a sorted picture table: cuts of V1 first, then upper tracks, then optical rows.
class optical_classifier {
public:
    optical_classifier(cutdb& db, LoggerHandle& logger)
        : db_(db), extra_(&logger), rows_(db.get_num_records()), neg_cut_(cutlist_options().pull_match_assembly == 0) {}

    void run() {
        find_starts();
        while (!no_more_opticals_) {
            if (no_more_cuts_) {
                mark_remaining_opticals();
                break;
            }
            place_next();
        }
        while (is_v1_cut(cut_))
            place_remaining_cut();
        assign_upper_tracks(db_);
        append_extra_rows();
    }

private:
    /// The cuts and opticals that hang together from `first_cut` and `first_optical` on.
    struct group {
        unsigned first_cut, last_cut;
        unsigned first_optical, last_optical;
        bool overlap = false;
        bool chained = false;
    };

    bool is_optical(unsigned row) const { return row < rows_ && number_in(row, cf_optical_record) != 0; }
    bool is_v1_cut(unsigned row) const {
        return row < rows_ && number_in(row, cf_optical_record) == 0 && number_in(row, cf_track) == 1;
    }
    int number_in(unsigned row, cutdb_field field) const { return ::number_in(*db_.get_record(row), field); }

    void find_starts() {
        while (optical_ < rows_ && number_in(optical_, cf_optical_record) != 1)
            ++optical_;
        while (cut_ < rows_ && !is_v1_cut(cut_))
            ++cut_;
        no_more_opticals_ = optical_ == rows_;
        no_more_cuts_ = cut_ == rows_;
    }

    void next_cut() {
        ++cut_;
        no_more_cuts_ = !is_v1_cut(cut_);
    }

    void mark_error(unsigned row, int ref) {
        dbrecord& optical = rewritten(db_, row);
        optical.set_field(cf_optical_error, 1);
        optical.set_field(cf_optical_ref, ref);
    }

    void mark_remaining_opticals() {
        for (unsigned row = optical_; is_optical(row); ++row)
            mark_error(row, next_ref_ + static_cast<int>(row - optical_));
    }

    void place_next() {
        const cut_extent a(*db_.get_record(cut_));
        const optical_extent b(*db_.get_record(optical_));
        if (a.edit_in > b.optical_in) {
            mark_error(optical_, next_ref_);
            next_optical();
            return;
        }
        const group g = gather(a, b);
        if (g.overlap) {
            place_under_opticals(g);
            next_optical();
        } else if (g.chained) {
            place_chain(g);
        } else {
            number_cut(g.first_cut, 0, true);
        }
    }

    void next_optical() {
        ++next_ref_;
        ++optical_;
        no_more_opticals_ = !is_optical(optical_);
    }

    // Cuts joined by transitions stay together, and so do cuts under one optical:
    //
    //     FX    |--- optical ---|      |-- optical --|
    //     V1  | cut |  cut  x  cut  x  cut  | next group
    //
    group gather(cut_extent a, optical_extent b) {
        group g{cut_, cut_, optical_, optical_};
        for (;;) {
            if (a.edit_out > b.edit_in) {
                g.overlap = true;
                g.last_optical = optical_;
            }
            if (!a.joined && (!g.overlap || a.edit_out >= b.edit_out)) {
                next_cut();
                return g;
            }
            g.chained = true;
            next_cut();
            if (no_more_cuts_) return g;
            g.last_cut = cut_;
            a = cut_extent(*db_.get_record(cut_));
            if (a.edit_in >= b.edit_out && is_optical(optical_ + 1)) {
                ++optical_;
                b = optical_extent(*db_.get_record(optical_));
            }
        }
    }

    /// In a cutting-copy list every cut has a number; in a neg-cut list only those that no optical stands for.
    void number_cut(unsigned row, int ref, bool always) {
        dbrecord& cut = rewritten(db_, row);
        if (ref != 0) cut.set_field(cf_optical_ref, ref);
        if (always || !neg_cut_) cut.set_field(cf_event, next_event_++);
    }

    void place_under_opticals(const group& g) {
        for (unsigned row = g.first_cut; row <= g.last_cut; ++row)
            number_cut(row, next_ref_, false);
        const int span_in = number_in(g.first_cut, cf_edit_in);
        const int span_out = number_in(g.last_cut, cf_edit_out);
        for (unsigned row = g.first_optical; row <= g.last_optical; ++row) {
            dbrecord& optical = rewritten(db_, row);
            optical.set_field(cf_optical_in, span_in);
            optical.set_field(cf_optical_out, span_out);
            optical.set_field(cf_optical_ref, next_ref_);
            if (neg_cut_ && row == g.first_optical) optical.set_field(cf_event, next_event_++);
        }
    }

    void add_chain_row(const char* name, int ref, int span_in, int span_out) {
        cut_s chain;
        chain.optical_record = 1;
        chain.optical_ref = ref;
        chain.edit_in = chain.optical_in = span_in;
        chain.edit_out = chain.optical_out = span_out;
        put_text(chain.optical_name, name);
        if (neg_cut_) chain.event = next_event_++;
        chain.to_record(*extra_.get_record(static_cast<unsigned>(extra_.add_records(1))));
    }

    void place_chain(const group& g) {
        for (unsigned row = g.first_cut; row <= g.last_cut; ++row)
            number_cut(row, next_ref_, false);
        add_chain_row(chain_before_last_optical, next_ref_, number_in(g.first_cut, cf_edit_in),
                      number_in(g.last_cut, cf_edit_out));
        ++next_ref_;
    }

    bool has_transition_behind(unsigned row) const { return db_.get_record(row)->get_field(cf_fx_op_out) != nullptr; }

    void place_remaining_cut() {
        if (!has_transition_behind(cut_)) {
            number_cut(cut_++, 0, true);
            return;
        }
        const int ref = next_ref_++;
        const int span_in = number_in(cut_, cf_edit_in);
        int span_out = span_in;
        // The chain's end is the first cut without a transition behind it, or the end of the table.
        for (bool open = true; open && cut_ < rows_; ++cut_) {
            if (!is_v1_cut(cut_)) continue;
            number_cut(cut_, ref, false);
            span_out = number_in(cut_, cf_edit_out);
            open = has_transition_behind(cut_);
        }
        add_chain_row(chain_behind_last_optical, ref, span_in, span_out);
    }

    void append_extra_rows() {
        const unsigned count = extra_.get_num_records();
        for (unsigned i = 0; i < count; ++i)
            *db_.get_record(static_cast<unsigned>(db_.add_records(1))) = *extra_.get_record(i);
    }

    cutdb& db_;
    cutdb extra_;
    const unsigned rows_;
    const bool neg_cut_;
    unsigned cut_ = 0;
    unsigned optical_ = 0;
    bool no_more_cuts_ = false;
    bool no_more_opticals_ = false;
    int next_event_ = 1;
    int next_ref_ = 1;
};

void number_sound_events(cutdb& db) {
    const unsigned rows = db.get_num_records();
    for (unsigned row = 0; row < rows; ++row) {
        dbrecord& record = rewritten(db, row);
        record.set_field(cf_event, static_cast<int>(row) + 1);
        record.set_field(cf_optical_ref, 0);
    }
}

} // namespace

void classify_opticals(cutdb& db, LoggerHandle& logger) {
    int order[] = {cf_optical_record, cf_track, cf_edit_in, -1};
    db.set_sortfields(order);
    db.sort(1, 0);
    if (db.get_num_records() == 0) return;
    if (cutlist_options().chan_type == sound_channel)
        number_sound_events(db);
    else
        optical_classifier(db, logger).run();
}
