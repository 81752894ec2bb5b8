#include "tool/new_rolls.h"

#include "embedded/edit_recipe.h"
#include "film/cut_uses.h"
#include "film/film_strip.h"
#include "formats/source_labels.h"
#include "host/ascii_text.h"
#include "host/channel_kinds.h"
#include "tool/tool_error.h"

#include <algorithm>
#include <optional>

namespace tool {
namespace {

using embedded::ChannelItem;
using embedded::EditBuilder;
using embedded::EditRecipe;
using embedded::EventDescription;
using embedded::Fraction;
using embedded::LabelDescription;
using embedded::RecipeChannel;
using embedded::SourceDescription;
using film::FilmRun;
using film::FrameRange;

/// The film of a source: which frame of the run lies at which second of it.
struct SourceFilm {
    FilmRun run;
    Fraction first; ///< frame of the run at the source's first frame
    Fraction rate;  ///< frames a second
    Fraction ahead; ///< frames that a log with pulldown is asked for ahead of the time

    Fraction frame_at(const Fraction& seconds) const { return first + seconds * rate; }
    Fraction seconds_at(const Fraction& frame) const { return (frame - first) / rate; }
};

/// `seconds`: where in the source the number stands.
SourceFilm film_from(const LabelPoint& key, const Fraction& seconds, const Fraction& rate) {
    SourceFilm film;
    const int perforations = key.cvt()->samples_per_frame();
    const std::int64_t frame = Fraction(key.sample, perforations).floor();
    film.run = {"", key.type(), key.get_prefix(), static_cast<int>(key.sample - frame * perforations)};
    film.first = Fraction(frame) - seconds * rate;
    film.rate = rate;
    return film;
}

/// Those that it shows and what lies between them. Backwards an event shows first the last frame of its stretch.
FrameRange frames_of(const EventDescription& event, const SourceFilm& film) {
    const Fraction in = film.frame_at(event.source_in);
    const Fraction speed = magnitude(event.speed);
    const Fraction behind = in + event.duration * film.rate * speed;
    const Fraction behind_shown = std::min(behind, behind - speed + 1) - film.ahead;
    const FrameRange frames = event.speed < Fraction(0)
                                  ? FrameRange{film::whole_frame(in + speed - 1), film::whole_frame(behind - 1)}
                                  : FrameRange{film::whole_frame(in), -film::whole_frame(-behind_shown) - 1};
    return {frames.first, std::max(frames.last, frames.first)};
}

/// At the end of an event that has more of them.
std::int64_t frames_beside(const PieceOnRoll& piece, const FrameRange& frames) {
    return std::max(piece.frames.first - frames.first, frames.last - piece.frames.last);
}

class Moving {
public:
    Moving(const EditRecipe& recipe, const NewRolls& rolls, const formats::LogLookup& keys, const RollOfFrame& roll_of,
           embedded::Warnings& warnings)
        : recipe_(recipe), rolls_(rolls), keys_(keys), roll_of_(roll_of), warnings_(warnings), builder_(recipe.edit) {}

    EditPtr run();

private:
    void add_channel(const RecipeChannel& channel, int number);
    void add_item(int number, const RecipeChannel& channel, const ChannelItem& item);
    bool move(EventDescription& event);
    std::optional<SourceFilm> film_of(const SourceDescription& source, const Fraction& seconds) const;
    void find_logged(const SourceDescription& source, const Fraction& seconds, std::optional<SourceFilm>& film) const;
    embedded::SourceId piece_as_source(int source, const SourceFilm& film, const PieceOnRoll& piece);
    const SourceDescription& source_of(const EventDescription& event) const {
        return recipe_.sources[static_cast<std::size_t>(event.source)];
    }
    Fraction film_rate_of(const SourceDescription& source) const {
        return formats::film_rate_of(source, *recipe_.edit.rate);
    }

    const EditRecipe& recipe_;
    const NewRolls& rolls_;
    const formats::LogLookup& keys_;
    const RollOfFrame& roll_of_;
    embedded::Warnings& warnings_;
    EditBuilder builder_;
    std::map<int, embedded::SourceId> kept_;                                           ///< sources that stay
    std::map<std::pair<int, const PieceOnRoll*>, embedded::SourceId> pieces_on_rolls_; ///< of a source and a piece
};

EditPtr Moving::run() {
    for (const RecipeChannel& channel : recipe_.channels)
        add_channel(channel, builder_.add_channel(channel.kind, channel.subtype));
    for (const embedded::RecipeCue& cue : recipe_.cues) {
        if (cue.channel < 0)
            builder_.add_stack_cue(cue.cue);
        else
            builder_.add_cue(cue.channel, cue.level, cue.cue);
    }
    return builder_.finish();
}

void Moving::add_channel(const RecipeChannel& channel, int number) {
    std::size_t cut = 0;
    for (std::size_t i = 0; i <= channel.items.size(); ++i) {
        for (; cut < channel.cuts.size() && channel.cuts[cut].before_item <= i; ++cut)
            builder_.add_transition(number, channel.cuts[cut].transition);
        if (i < channel.items.size()) add_item(number, channel, channel.items[i]);
    }
}

void Moving::add_item(int number, const RecipeChannel& channel, const ChannelItem& item) {
    EventDescription event = item.event;
    switch (item.kind) {
    case ChannelItem::Kind::gap:
        return builder_.add_gap(number, event.duration, event.effects, event.effect_tracks);
    case ChannelItem::Kind::black:
        return builder_.add_black(number, event.duration, event.effects, event.effect_tracks);
    case ChannelItem::Kind::event:
        break;
    }
    if (channel.kind != picture_channel || !move(event)) {
        const auto [kept, fresh] = kept_.try_emplace(event.source, 0);
        if (fresh) kept->second = builder_.add_source(source_of(event));
        event.source = kept->second;
    }
    builder_.add_event(number, std::move(event));
}

/// False where it has no number to be found by.
bool Moving::move(EventDescription& event) {
    const SourceDescription& source = source_of(event);
    if (!source.opens || source.rendered) return false;
    const std::optional<SourceFilm> film = film_of(source, event.source_in);
    if (!film) {
        warnings_.push_back({embedded::WarningKind::note,
                             event.label + " \"" + source.name + "\": has no key number, and stays on its own reel"});
        return false;
    }
    const FrameRange frames = frames_of(event, *film);
    const PieceOnRoll* piece = rolls_.holding(film->run, frames);
    constexpr std::int64_t rounded = 1; // times between frames of film
    if (!piece || frames_beside(*piece, frames) > rounded)
        throw JobError(event.label + " \"" + source.name + "\": its film, from " + film->run.text_at(frames.first) +
                       " on, lies on no new roll" + (piece ? " as a whole" : "") +
                       "; was the order made of another cut?");
    if (frames_beside(*piece, frames) > 0)
        warnings_.push_back({embedded::WarningKind::doubt,
                             event.label + " \"" + source.name + "\": a frame of its film lies on no new roll"});
    if (piece->run.roll != film->run.roll && !film->run.roll.empty())
        warnings_.push_back({embedded::WarningKind::doubt, event.label + " \"" + source.name +
                                                               "\": the order has its numbers on roll " +
                                                               (piece->run.roll.empty() ? "none" : piece->run.roll) +
                                                               ", and it is of roll " + film->run.roll});
    event.source_in = event.source_in - film->seconds_at(Fraction(piece->frames.first));
    event.source = piece_as_source(event.source, *film, *piece);
    return true;
}

std::optional<SourceFilm> Moving::film_of(const SourceDescription& source, const Fraction& seconds) const {
    std::optional<SourceFilm> film;
    if (keys_) {
        find_logged(source, seconds, film);
    } else if (source.key) {
        film = film_from(formats::point_of(*source.key), source.start_strip, film_rate_of(source));
        film->run.roll = ascii::upper_case(source.reel(embedded::camera_reel));
    }
    return film;
}

void Moving::find_logged(const SourceDescription& source, const Fraction& seconds,
                         std::optional<SourceFilm>& film) const {
    if (!source.video_timecode) return;
    const Fraction rate = source.video_timecode->rate ? *source.video_timecode->rate
                                                      : (source.rate ? source.rate : recipe_.edit.rate)->rate();
    const std::int64_t first = formats::point_of(*source.video_timecode).sample;
    const std::int64_t frame = first + (seconds * rate).floor();
    const std::string reel = source.reel(embedded::tape_reel);
    const std::optional<formats::LoggedFrame> logged = keys_(reel, frame, film_rate_of(source) / rate);
    if (!logged || !logged->key.is_useful()) return;
    const Fraction film_rate = film_rate_of(source), share = film_rate / rate;
    film = film_from(logged->key, Fraction(frame - first) / rate - logged->into / film_rate, film_rate);
    film->ahead = film::inside_frame(share) * share;
    film->run.roll = ascii::upper_case(roll_of_(reel, frame));
}

embedded::SourceId Moving::piece_as_source(int source, const SourceFilm& film, const PieceOnRoll& piece) {
    const auto [known, fresh] = pieces_on_rolls_.try_emplace({source, &piece}, 0);
    if (!fresh) return known->second;
    const SourceDescription& old = recipe_.sources[static_cast<std::size_t>(source)];
    SourceDescription made;
    made.name = old.name;
    made.identity = "name:" + old.name;
    made.reels = old.reels;
    made.reels[embedded::tape_reel] = piece.roll;
    made.rate = old.rate;
    made.film_rate = film.rate;
    made.scene = old.scene;
    made.take = old.take;
    made.description = old.description;
    made.length = Fraction(piece.frames.length()) / film.rate;
    // Below 0 a number would be read again as the one that lies as far above.
    if (piece.frames.first >= 0)
        made.key = LabelDescription{film.run.kind, film.run.text_at(piece.frames.first), std::nullopt, std::nullopt};
    else
        warnings_.push_back({embedded::WarningKind::dropped,
                             "\"" + old.name + "\": its key numbers begin below 0000+00, and are left out"});
    made.video_timecode = LabelDescription{piece.timecode, "", static_cast<int>(piece.first), std::nullopt};
    const embedded::RateInfo& own = *(old.rate ? old.rate : recipe_.edit.rate);
    if (own.timecode != piece.timecode || !(own.rate() == film.rate)) {
        made.rate = embedded::nearest_rate(film.rate.to_double());
        made.video_timecode->rate = film.rate;
    }
    return known->second = builder_.add_source(std::move(made));
}

} // namespace

NewRolls::NewRolls(std::vector<PieceOnRoll> pieces) : pieces_(std::move(pieces)) {
    for (const PieceOnRoll& piece : pieces_) {
        by_film_[{piece.run.kind, piece.run.prefix, piece.run.perforation}].push_back(&piece);
        at_[{ascii::upper_case(piece.roll), piece.first}] = &piece;
    }
    for (auto& [key, all] : by_film_)
        std::sort(all.begin(), all.end(),
                  [](const PieceOnRoll* a, const PieceOnRoll* b) { return a->frames.first < b->frames.first; });
}

const PieceOnRoll* NewRolls::holding(const FilmRun& run, const FrameRange& frames) const {
    const auto film = by_film_.find({run.kind, run.prefix, run.perforation});
    if (film == by_film_.end()) return nullptr;
    const PieceOnRoll* best = nullptr;
    std::pair<bool, std::int64_t> most{false, 0};
    for (const PieceOnRoll* piece : film->second) {
        const std::int64_t held =
            std::min(piece->frames.last, frames.last) - std::max(piece->frames.first, frames.first) + 1;
        const std::pair looks{ascii::upper_case(piece->run.roll) == run.roll, held};
        if (held <= 0 || looks <= most) continue;
        best = piece;
        most = looks;
    }
    return best;
}

const PieceOnRoll* NewRolls::at(const std::string& roll, std::int64_t timecode) const {
    const std::string name = ascii::upper_case(roll);
    const auto behind = at_.upper_bound({name, timecode});
    if (behind == at_.begin()) return nullptr;
    const auto& [place, piece] = *std::prev(behind);
    return place.first == name && timecode <= piece->last() ? piece : nullptr;
}

film::Strips NewRolls::back_to_film(film::Strips strips) const {
    for (film::Strip& strip : strips) {
        strip.key = {};
        if (!strip.timecode || strip.length() <= 0) continue;
        const PieceOnRoll* piece = at(strip.rolls.tape, strip.timecode.frame_at(0));
        if (!piece || at(strip.rolls.tape, strip.timecode.frame_at(strip.length() - 1)) != piece) continue;
        strip.key.kind = piece->run.kind;
        strip.key.prefix = piece->run.prefix;
        strip.key.perforation = piece->run.perforation;
        strip.key.first = strip.timecode.first + Fraction(piece->frames.first - piece->first);
        strip.key.step = strip.timecode.step;
    }
    return strips;
}

RollOfFrame rolls_of_log(const film::LogRows* log) {
    return [log](const std::string& reel, std::int64_t frame) -> std::string {
        constexpr int most_overrun = 30;
        if (!log) return {};
        const film::LogRow* row = log->at(reel, frame).row;
        if (!row) row = log->nearest(reel, frame, most_overrun);
        if (!row) return {};
        return row->camera.empty() ? row->reel : row->camera;
    };
}

EditPtr on_new_rolls(const EditPtr& edit, const NewRolls& rolls, const formats::LogLookup& keys,
                     const RollOfFrame& roll_of, embedded::Warnings& warnings) {
    const EditRecipe* recipe = embedded::recipe_of(edit);
    if (!recipe) throw JobError("the edit holds nothing that could be moved to new rolls");
    return Moving(*recipe, rolls, keys, roll_of, warnings).run();
}

} // namespace tool
