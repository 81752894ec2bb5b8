// The strips of an edit: event by event, and piece by piece where an event leaves a row of its log.

#include "embedded/edit_facts.h"
#include "embedded/label_kinds.h"
#include "film/edit_film.h"
#include "film/edit_walk.h"
#include "film/log_rows.h"
#include "film/opticals.h"
#include "film/source_facts.h"
#include "film/strip_frames.h"

#include <algorithm>

namespace film {
namespace {

using embedded::EventFacts;

/// Frames by which an event may leave its row and still be counted on from it.
constexpr int most_overrun = 30;

/// A stretch of an event that is seen in one role.
struct Stretch {
    const EventFacts* event = nullptr;
    Fraction from, to; ///< seconds of the edit
    Role role = Role::cut;
    int number = 0, optical = 0, layer = 0;
};

/// Where a stretch begins in its source, and how it runs through it.
struct SourcePlace {
    Count frames;   ///< of film, from the source's first one
    Count timecode; ///< none where the source has none
};

/// The numbers of those that effects make; several may share one.
std::vector<int> effects_among(const std::vector<Optical>& opticals) {
    std::vector<int> numbers;
    for (const Optical& optical : opticals)
        if (!optical.channels.empty() && !optical.error) numbers.push_back(optical.number);
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    return numbers;
}

class EditUses {
public:
    EditUses(const EditPtr& edit, const UseOptions& options, const LogRows* log)
        : edit_(edit), options_(options), log_(log), sources_(options.film_reel), rate_(film_rate(edit)) {}

    EditFilm run() {
        if (options_.kind == 1)
            add_picture();
        else
            add_sound();
        sort_strips(strips_);
        std::vector<int> effects = effects_among(opticals_);
        return {std::move(strips_), std::move(slivers_), std::move(events_), std::move(opticals_), std::move(effects)};
    }

private:
    void add_picture();
    void add_sound();
    void make_room(const std::vector<int>& tracks);
    void add_lowest(int chan, std::vector<MainEvent> events);
    void add_upper(int chan, int layer);
    void add_event(const std::vector<EventFacts>& all, std::size_t i, Stretch stretch);
    void add(const Stretch& stretch);
    void add_material(const Stretch& stretch, Strip strip);
    void add_logged(const Strip& whole, const SourceFacts& source);
    std::int64_t add_piece(const Strip& whole, const SourceFacts& source, std::int64_t k);
    void begin_event(const Stretch& stretch);
    void note_material(FilmEvent& event, const Stretch& stretch) const;
    Strip strip_of(const Stretch& stretch) const;
    SourcePlace place_in_source(const Stretch& stretch, const SourceFacts& source) const;
    const Optical* optical_over(int chan, std::int64_t start, std::int64_t end) const;

    const EditPtr edit_;
    const UseOptions options_;
    const LogRows* const log_;
    mutable SourceStore sources_; ///< reads each source once
    const Fraction rate_;
    std::vector<Optical> opticals_;
    std::vector<FilmEvent> events_;
    Fraction begins_;                 ///< where the event at hand does, seconds of the edit
    const LogRow* holding_ = nullptr; ///< the row that holds all frames of the event at hand
    Strips strips_, slivers_;
};

bool is_whole(const Fraction& value) { return value.den() == 1; }

/// The first and the last frames of a strip that are looked at together.
Strip piece_of(const Strip& whole, std::int64_t from, std::int64_t to) {
    Strip piece = whole;
    piece.start = whole.start + from;
    piece.end = whole.start + to;
    if (from > 0) piece.lead = 0;
    if (to < whole.length()) piece.tail = 0;
    for (Count* count : {&piece.key, &piece.ink, &piece.timecode, &piece.source})
        count->first = count->at(from);
    return piece;
}

Count counted_from(Count count, std::int64_t frames) {
    count.first = count.at(frames);
    return count;
}

/// Frames of film that a frame of the source's picture holds.
Fraction picture_of(const SourceFacts& source) {
    return source.timecode.is_useful() ? std::min(source.film_rate / source.timecode_rate, Fraction(1)) : Fraction(1);
}

/// A number of the source's film at the strip's first frame.
Count count_from(const LabelPoint& start, const Fraction& frames, const Fraction& step) {
    Count count;
    if (!start.is_useful()) return count;
    count.kind = start.type();
    count.prefix = start.get_prefix();
    const Fraction sample(start.sample, start.cvt()->samples_per_frame());
    count.perforation = start.sample - static_cast<int>(sample.floor()) * start.cvt()->samples_per_frame();
    count.first = Fraction(sample.floor()) + frames;
    count.step = step;
    return count;
}

/// Film frames of a source's labels, which don't count its starting strip.
Fraction film_behind_start(const Count& frames, const SourceFacts& source) {
    return frames.first - source.start_strip * source.film_rate;
}

void EditUses::add_picture() {
    const std::vector<int> tracks = picture_tracks_of(edit_);
    make_room(tracks);
    std::vector<MainEvent> events = main_events_of(edit_);
    opticals_ = number_events(events, lab_effects_of(edit_), options_.neg_cut);
    for (std::size_t i = 0; i < tracks.size(); ++i) {
        if (i == 0)
            add_lowest(tracks[i], std::move(events));
        else
            add_upper(tracks[i], static_cast<int>(i));
    }
}

// Both are large to move.
void EditUses::make_room(const std::vector<int>& tracks) {
    std::size_t events = 0;
    for (const int chan : tracks)
        events += embedded::facts_of_channel(edit_, chan).size();
    events_.reserve(events);
    strips_.reserve(events);
}

void EditUses::add_lowest(int chan, std::vector<MainEvent> events) {
    const std::vector<EventFacts>& all = embedded::facts_of_channel(edit_, chan);
    std::size_t place = 0;
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i].kind == EventFacts::Kind::transition) continue;
        Stretch stretch;
        stretch.number = events[place].number;
        stretch.optical = events[place].optical;
        ++place;
        add_event(all, i, stretch);
    }
}

void EditUses::add_upper(int chan, int layer) {
    const std::vector<EventFacts>& all = embedded::facts_of_channel(edit_, chan);
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i].kind == EventFacts::Kind::transition) continue;
        Stretch stretch;
        stretch.layer = layer;
        const Optical* optical =
            optical_over(chan, film_frame_of(all[i].edit_in, rate_), film_frame_of(all[i].edit_out, rate_));
        if (optical) stretch.optical = optical->number;
        // An effect that the lists went past has no number, and lists none of what it draws on.
        if (stretch.optical > 0) stretch.role = Role::layer;
        add_event(all, i, stretch);
    }
}

// Each event is taken whole into the last optical over it that draws on its track.
const Optical* EditUses::optical_over(int chan, std::int64_t start, std::int64_t end) const {
    const Optical* found = nullptr;
    for (const Optical& optical : opticals_) {
        const bool draws = std::find(optical.channels.begin(), optical.channels.end(), chan) != optical.channels.end();
        if (draws && start < optical.end && end > optical.start) found = &optical;
    }
    return found;
}

// With the shares that it has in the transitions on both sides.
void EditUses::add_event(const std::vector<EventFacts>& all, std::size_t i, Stretch stretch) {
    const bool layer = stretch.role == Role::layer;
    stretch.event = &all[i];
    stretch.from = all[i].edit_in;
    stretch.to = all[i].edit_out;
    begin_event(stretch);
    const auto add_share = [&](const Fraction& from, const Fraction& to, Role role) {
        stretch.from = from;
        stretch.to = to;
        stretch.role = layer ? Role::layer : role;
        add(stretch);
    };
    const bool after = i > 0 && all[i - 1].kind == EventFacts::Kind::transition;
    const bool before = i + 1 < all.size() && all[i + 1].kind == EventFacts::Kind::transition;
    if (after) add_share(all[i - 1].edit_in, all[i - 1].edit_out, Role::incoming);
    add_share(all[i].edit_in, all[i].edit_out, Role::cut);
    if (before) add_share(all[i + 1].edit_in, all[i + 1].edit_out, Role::outgoing);
}

// Sound is listed as if its crossfades weren't there.
void EditUses::add_sound() {
    const std::vector<int> channels = channels_of(edit_, 2);
    if (options_.number < 1 || static_cast<std::size_t>(options_.number) > channels.size()) return;
    const int chan = channels[static_cast<std::size_t>(options_.number) - 1];
    Stretch stretch;
    for (const EventFacts& facts : embedded::facts_of_channel(edit_, chan)) {
        if (facts.kind == EventFacts::Kind::transition || facts.only_beside_transition) continue;
        stretch.event = &facts;
        ++stretch.number;
        stretch.from = facts.whole_in;
        stretch.to = facts.whole_out;
        begin_event(stretch);
        add(stretch);
    }
}

void EditUses::begin_event(const Stretch& stretch) {
    FilmEvent& event = events_.emplace_back();
    event.item = static_cast<int>(events_.size()) - 1;
    event.event = stretch.number;
    event.optical = stretch.optical;
    event.layer = stretch.layer;
    event.start = film_frame_of(stretch.from, rate_);
    event.end = film_frame_of(stretch.to, rate_);
    event.where = stretch.event->label;
    event.speed = stretch.event->speed;
    event.black = stretch.event->kind == EventFacts::Kind::black;
    begins_ = stretch.from;
    holding_ = nullptr;
    if (event.black) return;
    note_material(event, stretch);
    if (!log_ || !event.timecode || event.start >= event.end) return;
    const std::int64_t first = event.timecode.frame_at(0), last = event.timecode.frame_at(event.end - event.start - 1);
    holding_ = log_->holding(event.rolls.tape, std::min(first, last), std::max(first, last));
}

void EditUses::note_material(FilmEvent& event, const Stretch& stretch) const {
    const SourceFacts& source = sources_.of(stretch.event->cookie);
    event.opens = source.opens;
    event.rendered = source.rendered;
    event.name = source.name;
    event.rolls = source.rolls;
    event.film_rate = source.film_rate;
    event.timecode_rate = source.timecode_rate;
    if (!event.material()) return;
    SourcePlace place = place_in_source(stretch, source);
    event.source = std::move(place.frames);
    event.timecode = std::move(place.timecode);
    event.own_key = count_from(source.key, film_behind_start(event.source, source), event.source.step);
    if (source.length) event.media_frames = whole_frame(*source.length * source.film_rate);
    if (!event.timecode) return;
    event.timecode_in = event.timecode.frame_at(0);
    const Fraction seconds = (stretch.to - stretch.from) * stretch.event->speed;
    event.timecode_out = whole_frame(event.timecode.first + seconds * source.timecode_rate);
}

Strip EditUses::strip_of(const Stretch& stretch) const {
    const FilmEvent& event = events_.back();
    Strip strip;
    strip.start = film_frame_of(stretch.from, rate_);
    strip.end = film_frame_of(stretch.to, rate_);
    strip.event = stretch.number;
    strip.optical = stretch.optical;
    strip.layer = stretch.layer;
    strip.role = stretch.role;
    strip.item = event.item;
    strip.where = event.where;
    strip.speed = event.speed;
    strip.black = event.black;
    strip.rendered = event.rendered;
    strip.name = event.name;
    strip.rolls = event.rolls;
    return strip;
}

SourcePlace EditUses::place_in_source(const Stretch& stretch, const SourceFacts& source) const {
    const EventFacts& event = *stretch.event;
    const Fraction in_source = event.source_in + (stretch.from - event.whole_in) * event.speed;
    SourcePlace place;
    place.frames.kind = label_frames;
    place.frames.first = in_source * source.film_rate;
    place.frames.step = event.speed * source.film_rate / rate_;
    if (source.timecode.is_useful())
        place.timecode =
            count_from(source.timecode, in_source * source.timecode_rate, event.speed * source.timecode_rate / rate_);
    return place;
}

void EditUses::add(const Stretch& stretch) {
    Strip strip = strip_of(stretch);
    const bool sliver = strip.start >= strip.end;
    if (sliver && (strip.black || stretch.to <= stretch.from)) return;
    if (sliver) strip.end = strip.start + 1;
    if (strip.black)
        strips_.push_back(std::move(strip));
    else
        add_material(stretch, std::move(strip));
    if (!sliver) return;
    slivers_.push_back(std::move(strips_.back()));
    strips_.pop_back();
}

void EditUses::add_material(const Stretch& stretch, Strip strip) {
    const SourceFacts& source = sources_.of(stretch.event->cookie);
    strip.scene = source.scene;
    strip.take = source.take;
    if (!events_.back().material()) {
        strip.sureness = Sureness::unknown;
        strips_.push_back(std::move(strip));
        return;
    }
    // The shares of an event count on from where it begins, as in the lists, so that they go on with each other.
    const FilmEvent& event = events_.back();
    strip.source = counted_from(event.source, strip.start - event.start);
    strip.timecode = counted_from(event.timecode, strip.start - event.start);
    const bool even = is_whole(begins_ * rate_) && is_whole(stretch.from * rate_) && is_whole(strip.source.first) &&
                      is_whole(strip.source.step);
    strip.sureness = even ? Sureness::exact : Sureness::within;
    strip.off = even ? 0 : 1;
    strip.lead = (stretch.from - begins_) * rate_ - Fraction(strip.start - event.start);
    strip.tail = (stretch.to - begins_) * rate_ - Fraction(strip.end - event.start);
    if (log_) return add_logged(strip, source);
    const Fraction film = film_behind_start(strip.source, source);
    strip.key = count_from(source.key, film, strip.source.step);
    strip.ink = count_from(source.ink, film, strip.source.step);
    if (!strip.key) strip.sureness = Sureness::counted;
    if (!strip.key) strip.off = 0;
    note_more(picture_of(source), strip);
    strips_.push_back(std::move(strip));
}

void EditUses::add_logged(const Strip& whole, const SourceFacts& source) {
    for (std::int64_t k = 0; k < whole.length();)
        k = add_piece(whole, source, k);
}

/// Behind the last frame, from `k` on, of which the timecode lies from `low` to below `high`.
std::int64_t frames_within(const Count& timecode, std::int64_t k, std::int64_t low, std::int64_t high,
                           std::int64_t end) {
    const Fraction none;
    std::int64_t behind = end;
    if (none < timecode.step && high != INT64_MAX)
        behind = -((timecode.first + hair_ahead - Fraction(high)) / timecode.step).floor();
    else if (timecode.step < none && low != INT64_MIN)
        behind = ((timecode.first + hair_ahead - Fraction(low)) / -timecode.step).floor() + 1;
    return std::clamp(behind, k + 1, end);
}

/// Behind the last frame, from `k` on, that is nearest to the same row as frame `k`.
std::int64_t frames_near(const LogRows& log, const std::string& reel, const Count& timecode, std::int64_t k,
                         std::int64_t end) {
    const LogRow* const row = log.nearest(reel, timecode.frame_at(k), most_overrun);
    std::int64_t same = k, other = end;
    while (other - same > 1) {
        const std::int64_t middle = same + (other - same) / 2;
        if (log.nearest(reel, timecode.frame_at(middle), most_overrun) == row)
            same = middle;
        else
            other = middle;
    }
    return other;
}

/// Of rows of one reel, the one that holds all of the event goes before others that hold only this frame.
void prefer(const LogRow& row, std::int64_t frame, RowAt& at) {
    if (at.row->reel != row.reel || frame < row.start || row.end <= frame) return;
    if (!same_film(*at.row, row)) at.other = at.row;
    at.row = &row;
}

void take_row(const LogRow& row, const SourceFacts& source, int film_reel, Strip& piece) {
    piece.log_row = row.row;
    piece.rolls = rolls_of(row, source.rolls.tape, film_reel);
    const Fraction share = source.film_rate / source.timecode_rate;
    const Fraction film = (piece.timecode.first - Fraction(row.start)) * share;
    piece.pushed = inside_frame(share) * share;
    piece.key = count_from(row.key, film + piece.pushed, piece.source.step);
    piece.ink = count_from(row.ink, film + piece.pushed, piece.source.step);
    // Film that goes to tape by pulldown can show one frame more at an end between two of them.
    const bool even = is_whole(film) && (is_whole(share) || is_whole(piece.tail));
    if (!even && piece.sureness == Sureness::exact) {
        piece.sureness = Sureness::within;
        piece.off = 1;
    }
}

std::int64_t EditUses::add_piece(const Strip& whole, const SourceFacts& source, std::int64_t k) {
    Strip piece;
    std::int64_t end = whole.length();
    const LogRow* row = nullptr;
    bool beyond = false;
    int other = -1;
    if (whole.timecode) {
        RowAt at = log_->at(source.rolls.tape, whole.timecode.frame_at(k));
        end = frames_within(whole.timecode, k, at.from, at.to, end);
        if (at.row && holding_) prefer(*holding_, whole.timecode.frame_at(k), at);
        if (at.other && at.other != at.row) other = at.other->row;
        row = at.row;
        if (!row) {
            end = frames_near(*log_, source.rolls.tape, whole.timecode, k, end);
            row = log_->nearest(source.rolls.tape, whole.timecode.frame_at(k), most_overrun);
            beyond = row != nullptr;
        }
    }
    piece = piece_of(whole, k, end);
    piece.other_row = other;
    if (row) take_row(*row, source, options_.film_reel, piece);
    if (!row)
        piece.sureness = Sureness::unknown;
    else if (!piece.key)
        piece.sureness = Sureness::counted;
    else if (beyond)
        piece.sureness = Sureness::beyond;
    if (piece.sureness != Sureness::within) piece.off = 0;
    note_more(picture_of(source), piece);
    strips_.push_back(std::move(piece));
    return end;
}

} // namespace

EditFilm film_of_edit(const EditPtr& edit, const UseOptions& options, const LogRows* log) {
    return EditUses(edit, options, log).run();
}

Strips uses_of_edit(const EditPtr& edit, const UseOptions& options, const LogRows* log) {
    return film_of_edit(edit, options, log).strips;
}

} // namespace film
