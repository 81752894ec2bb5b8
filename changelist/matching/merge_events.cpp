#include "base/messages.h"
#include "changelist/change_analysis.h"
#include "changelist/matching/match_event.h"
#include "changelist/row_fields.h"
#include "host/ascii_text.h"
#include "host/fixed_text.h"
#include "host/settings.h"

namespace {

/// Opticals take no part; the rest stands in the order of its film.
void order_by_film(chgdb& events) {
    show_events(events);
    int order[] = {hf_keycode_in, hf_reel_seq, hf_edit_in, -1};
    events.set_sortfields(order);
    events.sort(1, 1);
}

/// Brings the new events in as one batch a roll.
class RollBatches {
public:
    RollBatches(const chgdb& new_events, Candidates& candidates)
        : events_(new_events), labels_(new_events.film_std()), candidates_(candidates) {}

    bool at_end() const { return next_ >= events_.get_num_records(); }
    const char* roll() const { return roll_; }

    void load() {
        for (bool first = true; !at_end(); first = false) {
            const dbrecord& row = *events_.get_record(next_);
            const LabelPoint key = labels_.key(row, hf_keycode_in);
            const char* prefix = key.get_prefix();
            if (first) put_text(roll_, prefix);
            if (!ascii::same(prefix, roll_)) return;
            candidates_.load(row);
            ++next_;
        }
    }

private:
    const chgdb& events_;
    RowLabels labels_;
    Candidates& candidates_;
    unsigned next_ = 0;
    char roll_[20] = "";
};

class Merge {
public:
    Merge(chgdb& new_events, chgdb& changes, LoggerHandle& log, bool labels_held)
        : changes_(changes), candidates_(new_events, log, labels_held), batches_(new_events, candidates_) {}

    const char* match(ChangeRecord& x, const dbrecord& row) {
        advance_to(x.keycode_in.get_prefix());
        return match_event(x, candidates_, changes_, &row);
    }

    /// What no old event reached.
    void finish() {
        while (!done_) {
            next_batch();
        }
    }

private:
    void advance_to(const char* roll) {
        while (ascii::compare(roll, batches_.roll()) > 0 && !done_) {
            next_batch();
            candidates_.sort();
        }
    }
    void next_batch() {
        candidates_.drain(changes_);
        if (batches_.at_end()) done_ = true;
        batches_.load();
    }

    chgdb& changes_;
    Candidates candidates_;
    RollBatches batches_;
    bool done_ = false; ///< the last roll has been drained
};

} // namespace

const char* merge_events(chgdb& old_events, chgdb& new_events, chgdb& changes, LoggerHandle& log, bool labels_held) {
    say(log, text_comparing_cutlists, level_comparing);
    order_by_film(old_events);
    order_by_film(new_events);
    Merge merge(new_events, changes, log, labels_held);
    const ChangeRecord blank(old_events.film_std());
    for (unsigned index = 0; index < old_events.get_num_records(); ++index) {
        const dbrecord& row = *old_events.get_record(index);
        ChangeRecord x = blank;
        x.read_for_match(row);
        if (const char* error = merge.match(x, row)) return error;
    }
    merge.finish();
    return nullptr;
}
