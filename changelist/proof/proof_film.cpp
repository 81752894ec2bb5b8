#include "changelist/proof/proof_film.h"

#include "base/frame_math.h"
#include "host/ascii_text.h"
#include "host/fixed_text.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

constexpr double nearly = 0.01;

bool begins_with(const LabelPoint& point, std::string_view start) {
    return std::string_view(point.get_prefix()).substr(0, start.size()) == start;
}

/// The word of filler, without what pads it.
std::string_view filler_word(const LabelPoint& key) {
    const std::string_view word = key.get_prefix();
    return word.substr(0, word.find_last_not_of("_ ") + 1);
}

} // namespace

FilmOfProof::FilmOfProof(const LabelPoint& first_key, const char* roll, double film_speed)
    : key(first_key), speed(film_speed) {
    put_text(cam_reel, roll);
}

bool FilmOfProof::is_filler() const { return begins_with(key, "__"); }

bool FilmOfProof::is_plain() const { return std::fabs(speed - 1.0) <= nearly; }

int FilmOfProof::film_frame() const { return key.is_valid() ? key.cvt()->samples_per_frame() : 1; }

double FilmOfProof::sample(std::int64_t offset) const {
    return (key.is_valid() ? key.sample : 0) + pace() * static_cast<double>(offset);
}

FilmText FilmOfProof::text(std::int64_t offset) const {
    FilmText text;
    if (is_filler()) {
        put_text(text.text, filler_word(key));
        return text;
    }
    LabelPoint point = key;
    point.set_sample(whole_part(sample(offset)));
    const char* const number = key.is_valid() ? point.get_string() : "film without numbers";
    char speed_text[32] = "";
    if (!is_plain()) {
        const int hundredths = whole_part(std::fabs(speed) * 100 + 0.5);
        std::snprintf(speed_text, sizeof speed_text, " at speed %s%d.%02d", speed < 0 ? "-" : "", hundredths / 100,
                      hundredths % 100);
    }
    std::snprintf(text.text, sizeof text.text, "%s%s%s%s", number, *cam_reel ? " of " : "", cam_reel, speed_text);
    return text;
}

Vector<const CutEvent*> film_in_order(const Vector<CutEvent>& cut) {
    Vector<const CutEvent*> events;
    for (const CutEvent& event : cut) {
        if (event.length > 0) events.push_back(&event);
    }
    std::sort(events.begin(), events.end(), [](const CutEvent* a, const CutEvent* b) {
        if (a->reel != b->reel) return a->reel < b->reel;
        return a->frame != b->frame ? a->frame < b->frame : a < b;
    });
    return events;
}

ProofFilm::ProofFilm(const Vector<CutEvent>& old_cut) : old_events_(film_in_order(old_cut)) {
    for (const CutEvent* event : old_events_)
        films_.emplace_back(*event);
}

std::size_t ProofFilm::add(const change_step& step) {
    films_.emplace_back(step);
    return films_.size() - 1;
}

bool ProofFilm::is_old_frame(const FilmStretch& stretch, int reel, int frame) const {
    if (!is_old(stretch)) return false;
    const CutEvent& event = *old_events_[stretch.film];
    return event.reel == reel && event.frame + stretch.offset == frame;
}

bool ProofFilm::runs_on(const FilmStretch& ahead, const FilmStretch& behind) const {
    if (!is_old(ahead) || !is_old(behind)) return false;
    const std::int64_t end = ahead.offset + ahead.length;
    if (ahead.film == behind.film) return behind.offset == end;
    const bool next = behind.film == ahead.film + 1 && old_events_[ahead.film]->reel == old_events_[behind.film]->reel;
    return next && end == old_events_[ahead.film]->length && behind.offset == 0;
}

bool ProofFilm::has_key(const FilmStretch& stretch, const LabelPoint& key) const {
    const FilmOfProof& film = films_[stretch.film];
    if (film.is_filler() || !film.is_plain() || !film.key.is_valid() || !key.is_useful()) return true;
    if (begins_with(key, "????")) return true;
    return ascii::same(film.key.get_prefix(), key.get_prefix()) && film.sample(stretch.offset) == key.sample;
}

std::int64_t ProofFilm::frames_alike(const FilmStretch& stretch, const FilmOfProof& wanted, std::int64_t offset,
                                     std::int64_t length) const {
    const FilmOfProof& film = films_[stretch.film];
    if (film.is_filler() || wanted.is_filler())
        return ascii::same(film.key.get_prefix(), wanted.key.get_prefix()) ? length : 0;
    if (!ascii::same(film.key.get_prefix(), wanted.key.get_prefix())) return 0;
    if (!ascii::same(film.cam_reel, wanted.cam_reel)) return 0;
    if (!(std::fabs(film.speed - wanted.speed) <= nearly)) return 0;

    const bool exact = film.is_plain() && wanted.is_plain();
    const double frame = std::max(film.film_frame(), wanted.film_frame()) *
                         (std::max({1.0, std::fabs(film.speed), std::fabs(wanted.speed)}) + nearly);
    const double drift = std::fabs(film.pace() - wanted.pace());
    const auto alike = [&](std::int64_t at) {
        const double apart = std::fabs(film.sample(stretch.offset + at) - wanted.sample(offset + at));
        return exact ? apart == 0 : apart <= frame + drift * static_cast<double>(std::max(stretch.offset, offset) + at);
    };
    // The frames that are alike are one run, as both sides run straight on.
    if (!alike(0)) return 0;
    if (alike(length - 1)) return length;
    std::int64_t same = 1;
    for (std::int64_t other = length - 1; same < other;) {
        const std::int64_t middle = same + (other - same) / 2;
        alike(middle) ? same = middle + 1 : other = middle;
    }
    return same;
}

FilmText ProofFilm::old_frame_text(const FilmStretch& stretch) const {
    FilmText text;
    if (is_old(stretch)) {
        const CutEvent& event = *old_events_[stretch.film];
        std::snprintf(text.text, sizeof text.text, "frame %lld of reel %d",
                      static_cast<long long>(event.frame + stretch.offset), event.reel);
    }
    return text;
}
