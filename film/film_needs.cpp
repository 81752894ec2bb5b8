#include "film/film_needs.h"

#include "film/strip_frames.h"
#include "host/ascii_text.h"

#include <algorithm>
#include <map>

namespace film {
namespace {

/// Those that it may show.
FrameRange frames_of(const Strip& strip) {
    const FrameRange named = named_frames(strip);
    return {named.first - strip.more_below, named.last + strip.more_above};
}

FrameRange from_with_length(std::int64_t first, std::int64_t length) { return {first, first + length - 1}; }

std::int64_t frame_of(const LabelPoint& point) {
    return Fraction(point.sample, point.cvt()->samples_per_frame()).floor();
}

/// Of a log's row: all of it, in frames of film where it has a key number, else of timecode.
std::optional<FrameRange> take_of(const LogRow& row, const FilmEvent& event, const Strip& strip) {
    if (!strip.key) return from_with_length(row.start, row.end - row.start);
    if (!row.key.is_useful() || event.timecode_rate == Fraction(0)) return std::nullopt;
    const Fraction share = event.film_rate / event.timecode_rate;
    return from_with_length(frame_of(row.key), whole_frame(Fraction(row.end - row.start) * share));
}

/// Of an edit's media, from whose first film frame on `source` counts.
std::optional<FrameRange> take_of(const FilmEvent& event, const Strip& strip) {
    if (!event.media_frames) return std::nullopt;
    if (!strip.key) {
        const Fraction each = event.timecode_rate / event.film_rate;
        return from_with_length(whole_frame(strip.timecode.first - strip.source.first * each),
                                whole_frame(Fraction(*event.media_frames) * each));
    }
    return from_with_length(whole_frame(strip.key.first - strip.source.first), *event.media_frames);
}

std::optional<FrameRange> take_of(const Strip& strip, const EditFilm& film, const LogRows* log) {
    if (strip.item < 0 || static_cast<std::size_t>(strip.item) >= film.events.size()) return std::nullopt;
    const FilmEvent& event = film.events[static_cast<std::size_t>(strip.item)];
    const LogRow* row = log && strip.log_row >= 0 ? log->row(strip.log_row) : nullptr;
    if (row) return take_of(*row, event, strip);
    return log ? std::nullopt : take_of(event, strip);
}

FilmRun run_of(const Strip& strip) {
    const Count& count = told_by(strip);
    return {ascii::upper_case(strip.key ? strip.rolls.listed : strip.rolls.tape), count.kind, count.prefix,
            count.perforation};
}

/// The next of an event's strips takes its film on from the one before.
bool runs_on(const Strip& before, const Strip& next) {
    const Count &count = told_by(before), &further = told_by(next);
    return before.item >= 0 && before.item == next.item && before.layer == next.layer && before.end == next.start &&
           before.log_row == next.log_row && count.kind == further.kind && count.prefix == further.prefix &&
           count.perforation == further.perforation && count.step == further.step &&
           count.at(before.length()) == further.at(0);
}

void lengthen(Strip& strip, const Strip& next) {
    strip.end = next.end;
    strip.tail = next.tail;
    strip.off = std::max(strip.off, next.off);
}

/// An event with its share of the transitions at its ends is one pass through the gate, and to be pulled as that.
///
///     | cut . . . . . . . |\ outgoing \|         strips of one event
///     | . . . . . . . . . . . . . . . . |         what is needed of it
class Passes {
public:
    explicit Passes(FilmNeeds& needs) : needs_(needs) {}

    /// False where it begins a need of its own.
    bool lengthens(const Strip& strip) {
        const auto last = last_.find(strip.item);
        if (last == last_.end()) return false;
        FilmNeed& need = needs_[last->second];
        if (!runs_on(need.strip, strip)) return false;
        lengthen(need.strip, strip);
        const FrameRange more = frames_of(strip);
        need.frames = {std::min(need.frames.first, more.first), std::max(need.frames.last, more.last)};
        return true;
    }
    void begin(const Strip& strip) { last_[strip.item] = needs_.size() - 1; }

private:
    FilmNeeds& needs_;
    std::map<int, std::size_t> last_; ///< by item
};

/// Upper tracks are needed too, whether a list shows them or not.
bool wants_film(const Strip& strip) { return !strip.black && strip.end > strip.start; }

} // namespace

bool FilmRun::has_key() const { return kind != label_none && label_t_to_key_label_t(kind) == kind; }

LabelPoint FilmRun::point_at(std::int64_t frame) const {
    Count count;
    count.kind = kind;
    count.prefix = prefix;
    count.perforation = perforation;
    count.first = Fraction(frame);
    return count.point_at(0);
}

std::string FilmRun::text_at(std::int64_t frame) const { return point_at(frame).get_string(); }

void add_slivers(const EditFilm& film, const LogRows* log, int reel, ReelNeeds& all) {
    for (const Strip& strip : film.slivers) {
        if (told_by(strip))
            all.needs.push_back({run_of(strip), frames_of(strip), take_of(strip, film, log), reel, strip});
        else
            all.unknown.push_back({reel, strip});
    }
}

void add_needs(const EditFilm& film, const LogRows* log, int reel, ReelNeeds& all) {
    Passes passes(all.needs);
    for (const Strip& strip : film.strips) {
        if (!wants_film(strip) || passes.lengthens(strip)) continue;
        if (!told_by(strip)) {
            all.unknown.push_back({reel, strip});
            continue;
        }
        all.needs.push_back({run_of(strip), frames_of(strip), take_of(strip, film, log), reel, strip});
        passes.begin(strip);
    }
}

} // namespace film
