// Collects new material whose film is in the old cut, or further on among the new material.
//
//     new material   |        a ----------------- b |
//     found film     |   c ------- d                |     a to d is taken again, d to b is looked for further
//     found film     |             c ----- d        |     c to d is taken again, a to c and d to b are looked for

#include "base/frame_math.h"
#include "base/messages.h"
#include "changelist/row_fields.h"
#include "changelist/steps/moves.h"
#include "changelist/steps/reused_film.h"
#include "host/settings.h"

#include <algorithm>

namespace {

/// Film that is used over and over has many more places than rows; this many for each row are enough.
constexpr std::size_t finds_a_row = 1;

/// Writes what was found, as far as its limit goes.
class ReuseList {
public:
    ReuseList(chgdb& table, std::size_t limit) : table_(table), left_(limit) {}

    bool full() const { return left_ == 0; }
    void count_find() { left_ -= left_ > 0 ? 1 : 0; }
    /// The whole row.
    dbrecord& add(const dbrecord& row) {
        dbrecord& added = *table_.get_record(static_cast<unsigned>(table_.add_records(1)));
        added = row;
        return added;
    }
    /// The part of a row that a span covers.
    void add(const dbrecord& row, FilmSpan span) {
        dbrecord& added = add(row);
        added.set_field(hf_edit_length, span.length);
        added.set_field(hf_keycode_missing, span.missing);
        set_point(added, hf_keycode_in, span.key_in);
        set_point(added, hf_keycode_out, span.key_out);
        set_point(added, hf_inkcode_in, span.ink_in);
        set_point(added, hf_inkcode_out, span.ink_out);
    }

private:
    static void set_point(dbrecord& row, chgdb_field field, LabelPoint& point) {
        row.set_field(field, point.get_string(), true);
    }

    chgdb& table_;
    std::size_t left_;
};

/// Looks for one row's film, and for what remains of it on both sides of each find.
class RowSearch {
public:
    RowSearch(const dbrecord& row, const FilmByKeyOut& film, std::size_t from, bool outs_from_ins, ReuseList& list)
        : row_(row), film_(film), from_(from), outs_from_ins_(outs_from_ins), list_(list) {}

    void search(const FilmSpan& whole) {
        waiting_.push_back(whole);
        while (!waiting_.empty() && !list_.full()) {
            FilmSpan span = waiting_.back();
            waiting_.pop_back();
            if (const FilmSpan* found = film_.first_meeting(span, from_)) split(span, *found);
        }
    }

private:
    void split(const FilmSpan& span, const FilmSpan& found) {
        list_.count_find();
        add_common(span, found);
        // What waits last is looked for first: the head ahead of the tail.
        if (span.key_end() > found.key_end()) wait_for_tail(span, found);
        if (span.key_start() < found.key_start()) wait_for_head(span, found);
    }

    void add_common(const FilmSpan& span, const FilmSpan& found) {
        FilmSpan common = span;
        const bool starts_before = span.key_start() <= found.key_start();
        if (starts_before) common.take_start(found);
        const int start = std::max(span.key_start(), found.key_start());
        const int end = std::min(span.key_end(), found.key_end());
        common.set_length(frames_between(span, start, end));
        const bool ends_inside = span.key_end() < found.key_end();
        if (common.length > 0 || !(starts_before && ends_inside)) list_.add(row_, common);
    }

    void wait_for_head(const FilmSpan& span, const FilmSpan& found) {
        wait(span, frames_between(span, span.key_start(), found.key_start()));
    }

    void wait_for_tail(const FilmSpan& span, const FilmSpan& found) {
        FilmSpan tail = span;
        tail.start_at(found.key_end(), found.ink_end());
        wait(tail, frames_between(span, found.key_end(), span.key_end()));
    }

    void wait(FilmSpan rest, int length) {
        if (length <= 0) return;
        rest.set_length(length);
        if (outs_from_ins_) rest.outs_from_ins();
        waiting_.push_back(rest);
    }

    static int frames_between(const FilmSpan& span, int start, int end) {
        return frame_difference(end, start) / span.frame_step();
    }

    const dbrecord& row_;
    const FilmByKeyOut& film_;
    std::size_t from_;
    bool outs_from_ins_;
    ReuseList& list_;
    Vector<FilmSpan> waiting_;
};

void show_inserts_by_key(chgdb& changes) {
    show_all(changes);
    int by_key[] = {hf_keycode_in, -1};
    changes.set_sortfields(by_key);
    changes.sort(1, 1);
    tag_kind(changes, "I", 1);
    changes.set_show_tags_only(1);
}

void show_events_by_key(chgdb& events) {
    show_events(events);
    int by_key[] = {hf_keycode_in, -1};
    events.set_sortfields(by_key);
    events.sort(1, 1);
}

void reused_in_old(const dbrecord& row, const FilmRow& film, const FilmByKeyOut& old_film, ReuseList& list) {
    if (film.varispeed) {
        list.add(row);
    } else {
        RowSearch(row, old_film, 0, false, list).search(film.span);
    }
}

void reused_in_inserts(const dbrecord& row, const FilmRow& film, std::size_t index, const FilmByKeyOut& new_film,
                       ReuseList& list) {
    if (!film.varispeed) RowSearch(row, new_film, index + 1, true, list).search(film.span);
}

/// Calls `visit(row, film, index)` for each row with film behind it.
template <class Visit> void for_each_film(const chgdb& changes, const Vector<FilmRow>& rows, Visit visit) {
    for (std::size_t index = 0; index < rows.size(); ++index) {
        if (!rows[index].filler) visit(*changes.get_record(static_cast<unsigned>(index)), rows[index], index);
    }
}

} // namespace

const char* find_reused_material(chgdb& changes, chgdb& old_events, chgdb& reused, LoggerHandle& log) {
    say(log, text_looking_for_reuse);
    show_inserts_by_key(changes);
    show_events_by_key(old_events);
    const Vector<FilmRow> inserts = film_rows(changes);
    if (inserts.empty()) return nullptr;
    const Vector<FilmRow> events = film_rows(old_events);
    const FilmByKeyOut old_film(events);
    const FilmByKeyOut new_film(inserts);
    ReuseList list(reused, finds_a_row * (inserts.size() + events.size()));
    for_each_film(changes, inserts, [&](const dbrecord& row, const FilmRow& film, std::size_t) {
        reused_in_old(row, film, old_film, list);
    });
    for_each_film(changes, inserts, [&](const dbrecord& row, const FilmRow& film, std::size_t index) {
        reused_in_inserts(row, film, index, new_film, list);
    });
    return nullptr;
}
