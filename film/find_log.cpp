// What an event's row of the log says, against what the lists take from the log.

#include "film/finder.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>

namespace film {
namespace {

bool same_name(const std::string& a, const std::string& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](unsigned char x, unsigned char y) { return std::toupper(x) == std::toupper(y); });
}

std::string quoted(const std::string& text) { return '"' + text + '"'; }

std::string roll_text(const Strip& strip) { return strip.rolls.listed.empty() ? "no roll" : strip.rolls.listed; }

std::string key_text(const Count& key, std::int64_t k) { return key ? key.text_at(k) : "no key"; }

} // namespace

const LogRow* Finder::listed_row(const FilmEvent& event) const {
    return event.timecode ? log_->listed(event.rolls.tape, event.timecode_in, event.timecode_out) : nullptr;
}

std::string Finder::row_text(const LogRow& row) const {
    return (options_.log_file.empty() ? "" : options_.log_file + " ") + "line " + std::to_string(row.line);
}

void Finder::look_at_log() {
    for (std::size_t i = 0; i < film_.events.size(); ++i) {
        const FilmEvent& event = film_.events[i];
        if (event.material() && event.listed()) look_at_row(i);
    }
}

/// A reel of the log that may be meant.
std::string Finder::near_miss(const FilmEvent& event) const {
    const LogRow* row =
        event.timecode ? log_->similar(event.rolls.tape, event.timecode_in, event.timecode_out) : nullptr;
    return row ? "; did you mean reel " + quoted(row->reel) + " of " + row_text(*row) + "?" : "";
}

void Finder::look_at_row(std::size_t i) {
    const FilmEvent& event = film_.events[i];
    const LogRow* listed = listed_row(event);
    if (!listed) {
        if (const LogRow* own = log_->first_of(event.rolls.tape)) find_counting(event, *own, Severity::doubt);
        find(Code::no_log_row, Severity::doubt, event, event.start,
             "no row of the log fits reel " + quoted(event.rolls.tape) + " from " + event.timecode.text_at(0) +
                 " for " + frames_text(event.end - event.start) + near_miss(event));
        return;
    }
    find_counting(event, *listed, Severity::wrong);
    find_reel(event, *listed);
    find_film_kind(event, *listed);
    find_overrun(i, *listed);
    find_ambiguous(i);
    find_conflict(i);
}

// The lists compare frame numbers alone.
void Finder::find_counting(const FilmEvent& event, const LogRow& row, Severity severity) {
    if (row.kind == event.timecode.kind) return;
    find(Code::rate, severity, event, event.start,
         "reel " + quoted(event.rolls.tape) + " counts " + label_type_to_edlstr(event.timecode.kind) +
             " in the edit and " + label_type_to_edlstr(row.kind) + " in " + row_text(row));
}

void Finder::find_reel(const FilmEvent& event, const LogRow& listed) {
    if (same_name(listed.reel, event.rolls.tape)) return;
    const bool own = log_->first_of(event.rolls.tape) != nullptr;
    const std::string how = listed.reel.empty() ? "which has no reel and so is taken for any"
                                                : "as the row's reel " + quoted(listed.reel) + " begins it";
    find(Code::reel_prefix, own ? Severity::wrong : Severity::doubt, event, event.start,
         "reel " + quoted(event.rolls.tape) + " is listed with the film of " + row_text(listed) + ", " + how +
             (own ? "; the log has rows of its own for it" : ""));
}

// The first row settles the kind for all.
void Finder::find_film_kind(const FilmEvent& event, const LogRow& listed) {
    const LogRow& first = log_->rows().front();
    const auto same_frames = [](label_t a, label_t b) {
        const label_cvt &x = *get_static_label_cvt(a), &y = *get_static_label_cvt(b);
        return x.samples_per_frame() == y.samples_per_frame() && x.samples_per_count() == y.samples_per_count();
    };
    if (!listed.key.is_useful() || same_frames(first.own_film, listed.own_film)) return;
    find(Code::film_kind, Severity::wrong, event, event.start,
         row_text(listed) + " is " + label_type_to_edlstr(listed.own_film) + " and is counted as " +
             label_type_to_edlstr(first.own_film) + ", the kind of the log's first row");
}

// Frames of the event that lie in another row than the lists take for all of them.
void Finder::find_overrun(std::size_t i, const LogRow& listed) {
    std::int64_t all = 0, elsewhere = 0, nowhere = 0;
    const Strip* first_elsewhere = nullptr;
    const Strip* first_nowhere = nullptr;
    for (const Strip* strip : strips_of(i)) {
        all += strip->length();
        const bool known = strip->sureness != Sureness::beyond && strip->sureness != Sureness::unknown;
        const LogRow* row = strip->log_row < 0 ? nullptr : log_->row(strip->log_row);
        if (known && (row == &listed || same_film(*row, listed))) continue;
        (known ? elsewhere : nowhere) += strip->length();
        const Strip*& first = known ? first_elsewhere : first_nowhere;
        if (!first) first = strip;
    }
    const FilmEvent& event = film_.events[i];
    const std::string past = " of " + std::to_string(all) + " frames lie outside " + row_text(listed);
    if (first_elsewhere) {
        const LogRow& row = *log_->row(first_elsewhere->log_row);
        find(Code::log_overrun, Severity::wrong, event, first_elsewhere->start,
             std::to_string(elsewhere) + past + ", in " + row_text(row) + ": their film is " +
                 roll_text(*first_elsewhere) + " " + key_text(first_elsewhere->key, 0) + ", and they are listed as " +
                 (listed.camera.empty() ? listed.reel : listed.camera));
    }
    if (first_nowhere)
        find(Code::log_overrun, Severity::doubt, event, first_nowhere->start,
             std::to_string(nowhere) + past + ", in no other row");
}

void Finder::find_ambiguous(std::size_t i) {
    std::int64_t count = 0;
    const Strip* first = nullptr;
    for (const Strip* strip : strips_of(i)) {
        if (strip->other_row < 0) continue;
        count += strip->length();
        if (!first) first = strip;
    }
    if (!first) return;
    find(Code::log_ambiguous, Severity::doubt, film_.events[i], first->start,
         frames_text(count) + " lie in " + row_text(*log_->row(first->log_row)) + " and in " +
             row_text(*log_->row(first->other_row)) + ", which name different film");
}

// With pulldown two true numbers may lie a frame apart.
void Finder::find_conflict(std::size_t i) {
    const FilmEvent& event = film_.events[i];
    for (const Strip* strip : strips_of(i)) {
        if (strip->role != Role::cut && strip->role != Role::layer) continue;
        if (!event.own_key || !strip->key) continue;
        const std::int64_t k = strip->start - event.start;
        const bool same_prefix = event.own_key.prefix == strip->key.prefix && event.own_key.kind == strip->key.kind;
        const std::int64_t off = event.own_key.sample_at(k) - strip->key.sample_at(0);
        const int frame = get_static_label_cvt(strip->key.kind)->samples_per_frame();
        if (same_prefix && std::llabs(off) <= std::int64_t{frame} * strip->off) continue;
        find(Code::key_conflict, Severity::doubt, event, strip->start,
             "the key number is " + event.own_key.text_at(k) + " in the edit and " + strip->key.text_at(0) + " in " +
                 row_text(*log_->row(strip->log_row)));
        return;
    }
}

} // namespace film
