// Numbers, media and speed of one event.

#include "film/finder.h"

#include <algorithm>

namespace film {
namespace {

constexpr std::int64_t count_end = 10000; ///< counts of four digits

/// Frames of a strip for which `outside` holds at their source frame, counted without walking them: the source runs
/// evenly, so they lie at the strip's ends.
std::int64_t frames_outside(const Strip& strip, std::int64_t media) {
    const auto inside = [&](std::int64_t k) {
        const std::int64_t frame = strip.source.frame_at(k);
        return frame >= 0 && frame < media;
    };
    const std::int64_t length = strip.length();
    const auto below = [&](std::int64_t k) { return strip.source.frame_at(k) < 0; };
    const auto split = [length](const auto& holds) {
        std::int64_t low = 0, high = length;
        while (low < high) {
            const std::int64_t middle = low + (high - low) / 2;
            if (holds(middle))
                low = middle + 1;
            else
                high = middle;
        }
        return low;
    };
    const bool backward = strip.source.step < Fraction();
    if (strip.source.step == Fraction()) return inside(0) ? 0 : length;
    const std::int64_t first =
        split([&](std::int64_t k) { return backward ? strip.source.frame_at(k) >= media : below(k); });
    const std::int64_t behind =
        split([&](std::int64_t k) { return backward ? !below(k) : strip.source.frame_at(k) < media; });
    return first + (length - behind);
}

} // namespace

void Finder::look_at_film() {
    for (std::size_t i = 0; i < film_.events.size(); ++i) {
        const FilmEvent& event = film_.events[i];
        if (event.black) continue;
        if (!event.listed()) {
            find_not_listed(i);
            if (event.material()) find_media(i);
            continue;
        }
        find_numbers(i);
        if (!event.material()) continue;
        find_media(i);
        find_speed(i);
        find_key_range(i);
    }
}

/// Without its transitions, unless it lies in them as a whole.
std::int64_t Finder::frames_of(std::size_t i) const {
    const FilmEvent& event = film_.events[i];
    if (event.start < event.end || strips_of(i).empty()) return event.end - event.start;
    return strips_of(i).back()->end - strips_of(i).front()->start;
}

void Finder::find_not_listed(std::size_t i) {
    const FilmEvent& event = film_.events[i];
    // What lies in a transition as a whole has nothing beside it.
    const bool in_transition = event.start >= event.end && !strips_of(i).empty();
    const Strip* strip = in_transition ? strips_of(i).front() : strip_at(event, event.start);
    if (!strip) return;
    std::string film;
    if (!strip->rolls.listed.empty()) film += ", roll " + strip->rolls.listed;
    if (strip->key) film += ", from " + strip->key.text_at(in_transition ? 0 : event.start - strip->start);
    find(Code::not_listed, Severity::wrong, event, event.start,
         frames_text(frames_of(i)) + " on " + channel_of(event.layer) + film + (film.empty() ? "" : ",") +
             " are in no list: no optical with a number draws on that track");
}

void Finder::find_numbers(std::size_t i) {
    const FilmEvent& event = film_.events[i];
    if (!event.material()) {
        find(Code::no_film, Severity::doubt, event, event.start,
             frames_text(event.end - event.start) + (event.rendered
                                                         ? " are rendered, and what they were rendered from isn't known"
                                                     : event.listed_as.empty() ? " have no media"
                                                                               : " are listed as " + event.listed_as));
        return;
    }
    bool no_key = false, no_roll = false, no_ink = false;
    for (const Strip* strip : strips_of(i)) {
        if (strip->sureness == Sureness::unknown) continue;
        no_key = no_key || !strip->key;
        no_ink = no_ink || (!strip->ink && needs_ink(*strip));
        const bool row_without_roll = log_ && options_.uses.film_reel == 2 && strip->rolls.camera.empty();
        no_roll = no_roll || strip->rolls.listed.empty() || row_without_roll;
    }
    if (!no_key && !no_roll && !no_ink) return;
    const std::string tape = event.rolls.tape.empty() ? "" : " of tape " + event.rolls.tape;
    const std::string from = event.timecode ? " from " + event.timecode.text_at(0) : "";
    const std::string what = frames_text(frames_of(i)) + tape + from;
    if (no_key) find(Code::no_key, Severity::doubt, event, event.start, what + " have no key number");
    if (no_roll)
        find(Code::no_roll, Severity::doubt, event, event.start,
             what + " have no camera roll" + (log_ ? ", and the tape is listed in its place" : ""));
    if (no_ink) find(Code::no_ink, Severity::doubt, event, event.start, what + " have no ink number");
}

void Finder::find_media(std::size_t i) {
    const FilmEvent& event = film_.events[i];
    if (!event.media_frames) return;
    std::int64_t outside = 0, all = 0;
    for (const Strip* strip : strips_of(i)) {
        all += strip->length();
        outside += frames_outside(*strip, *event.media_frames);
    }
    if (outside == 0) return;
    const Strip &head = *strips_of(i).front(), &tail = *strips_of(i).back();
    find(Code::outside_media, Severity::wrong, event, event.start,
         std::to_string(outside) + " of " + frames_text(all) + " lie outside the media: it holds " +
             frames_text(*event.media_frames) + ", and frames " + std::to_string(head.source.frame_at(0)) + " to " +
             std::to_string(tail.source.frame_at(tail.length() - 1)) + " are used, counted from 0");
}

void Finder::find_speed(std::size_t i) {
    const FilmEvent& event = film_.events[i];
    if (strips_of(i).empty())
        find(Code::inexact, Severity::note, event, event.start,
             "it is shown for less than a frame of film, and the lists give it none");
    int off = 0;
    for (const Strip* strip : strips_of(i))
        off = std::max(off, strip->off);
    if (off > 0) {
        const bool pulldown = event.speed.den() == 1;
        find(Code::inexact, Severity::note, event, event.start,
             "its film may be off by " + frames_text(off) +
                 (pulldown ? ", as its times don't fall on whole frames of film"
                           : ", as it runs at " + fraction_text(event.speed) + " times play-speed"));
    }
    if (event.speed < Fraction() && options_.edl) find_reverse(i);
}

// The two conventions: the source in is the lowest frame of the stretch, or the one that is shown first.
//
//     low     in |<- - - - - - -| out       first      <- - - - - - -| in
//
void Finder::find_reverse(std::size_t i) {
    const FilmEvent& event = film_.events[i];
    const std::int64_t used = event.source.frame_at(0) - event.source.frame_at(event.end - event.start - 1);
    const std::int64_t shift = options_.low_is_first ? used : -used;
    const std::string taken = options_.low_is_first ? "the frame shown first" : "the lowest frame";
    std::string what = "it runs backward, and its source in was taken for " + taken + ": frames " +
                       event.timecode.text_at(event.end - event.start - 1) + " to " + event.timecode.text_at(0);
    const bool better = log_ && event.timecode && !listed_row_holds(event, 0) && listed_row_holds(event, shift);
    if (better) what += "; taken the other way they would lie in a row of the log, and so they don't";
    find(Code::reverse, better ? Severity::doubt : Severity::note, event, event.start, what);
}

bool Finder::listed_row_holds(const FilmEvent& event, std::int64_t film_frames) const {
    const Fraction share = event.timecode.step / event.source.step;
    const std::int64_t shift = (Fraction(film_frames) * share).floor();
    const std::int64_t length = event.end - event.start;
    const std::int64_t first = event.timecode.frame_at(0) + shift, last = event.timecode.frame_at(length - 1) + shift;
    return log_->holding(event.rolls.tape, std::min(first, last), std::max(first, last)) != nullptr;
}

void Finder::find_key_range(std::size_t i) {
    const FilmEvent& event = film_.events[i];
    for (const Strip* strip : strips_of(i)) {
        if (!strip->key || get_static_label_cvt(strip->key.kind)->count_digits() > 4) continue;
        const int count = get_static_label_cvt(strip->key.kind)->samples_per_count();
        const int first = strip->key.sample_at(0), last = strip->key.sample_at(strip->length() - 1);
        const std::int64_t high = std::max(first, last), low = std::min(first, last);
        if (low >= 0 && high < count_end * count) continue;
        find(Code::key_past_9999, Severity::doubt, event, strip->start,
             "its key numbers run from " + strip->key.text_at(0) + " to " + strip->key.text_at(strip->length() - 1) +
                 (low < 0 ? ", before the first of the prefix" : ", past 9999"));
        return;
    }
}

} // namespace film
