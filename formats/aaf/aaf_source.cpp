#include "formats/aaf/aaf_source.h"

#include "formats/aaf/aaf_film.h"
#include "formats/key_number.h"
#include "formats/timeline/sources.h"
#include "host/ascii_text.h"

#include <algorithm>
#include <limits>

namespace formats::aaf {
namespace {

using embedded::LabelDescription;
using embedded::SourceDescription;
using embedded::WarningKind;

constexpr std::int64_t key_track = 1, ink_track = 2;
constexpr std::int64_t keycode_format = 1;

bool is_reel(Class medium) {
    return medium == Class::tape_descriptor || medium == Class::import_descriptor ||
           medium == Class::recording_descriptor;
}

/// The slots of a kind, track 1 first, then by number, those without one last in file order.
std::vector<const Slot*> slots_of(const Mob& mob, Kind kind) {
    std::vector<const Slot*> slots;
    for (const Slot& slot : mob.slots)
        if (slot.kind == kind) slots.push_back(&slot);
    std::stable_sort(slots.begin(), slots.end(), [](const Slot* a, const Slot* b) {
        if (a->number.has_value() != b->number.has_value()) return a->number.has_value();
        return a->number < b->number;
    });
    return slots;
}

bool read_timecodes(const File& file, const Link& link, Traced& traced) {
    for (const Slot* slot : slots_of(*link.mob, Kind::timecode)) {
        const auto found = timecode_at(file, link, *slot, traced.chain);
        if (!found) continue;
        if (!traced.timecode)
            traced.timecode = found;
        else if (found->counting == 24 && traced.timecode->counting != 24 && !traced.timecode_24)
            traced.timecode_24 = found;
    }
    return traced.timecode.has_value();
}

/// The nearest tape that has timecode; without one the nearest tape, and the timecode of files or masters.
void find_reel(const File& file, Traced& traced) {
    for (const Link& link : traced.chain.links)
        if (is_reel(link.mob->medium()) && read_timecodes(file, link, traced)) {
            traced.reel = &link;
            return;
        }
    const auto nearest = std::find_if(traced.chain.links.begin(), traced.chain.links.end(),
                                      [](const Link& link) { return is_reel(link.mob->medium()); });
    if (nearest != traced.chain.links.end()) traced.reel = &*nearest;
    for (const Class what : {Class::source_mob, Class::master_mob})
        for (const Link& link : traced.chain.links)
            if (link.mob->what == what && link.mob->medium() != Class::film_descriptor &&
                read_timecodes(file, link, traced))
                return;
}

/// By the number of the track; where that lacks, by how the numbers are written.
void take_edge_number(const Slot& slot, const EdgeNumber& number, Traced& traced) {
    const std::int64_t track = slot.number.value_or(number.format == keycode_format ? key_track : ink_track);
    if (track == key_track && !traced.key) traced.key = number;
    if (track == ink_track && !traced.ink) traced.ink = number;
}

void read_edge_numbers(const File& file, const Link& link, bool only_keycode, Traced& traced) {
    for (const Slot* slot : slots_of(*link.mob, Kind::edgecode)) {
        const auto number = edge_number_at(file, link, *slot, traced.chain);
        if (!number || (only_keycode && (number->format != keycode_format || number->prefix.empty()))) continue;
        take_edge_number(*slot, *number, traced);
    }
}

/// Film says what its numbers are; other mobs have frame numbers there too, which are none of film.
void find_film(const File& file, Traced& traced) {
    for (const Link& link : traced.chain.links)
        if (link.mob->medium() == Class::film_descriptor) {
            traced.film = &link;
            read_edge_numbers(file, link, false, traced);
            return;
        }
    for (const Link& link : traced.chain.links)
        if (!traced.key && link.mob->what != Class::composition_mob) read_edge_numbers(file, link, true, traced);
}

/// The columns of the bin.
struct Columns {
    std::vector<const Mob*> mobs; ///< the nearest first
    const SubClips& sub_clips;    ///< the first of them

    struct Number {
        std::string text;
        bool of_sub_clip = false;
    };
    /// That of the chain, whose first frame is the material's; where it has none, that of the nearest sub-clip.
    Number number(std::string_view name) const {
        const auto own = mobs.begin() + std::ssize(sub_clips.mobs);
        const Columns chain{{own, mobs.end()}, sub_clips};
        const std::string text = chain.text({name});
        return text.empty() ? Number{this->text({name}), true} : Number{text, false};
    }

    std::string text(std::initializer_list<std::string_view> names) const {
        for (const std::string_view name : names)
            for (const Mob* mob : mobs)
                for (const auto& [column, value] : mob->comments)
                    if (!value.empty() && ascii::same(column, name)) return value;
        return {};
    }
};

/// What a counter shows at the material's first frame when it shows `frame` at the clip's, as positions are counted
/// there.
std::int64_t at_first_frame(std::int64_t frame, const Fraction& source_in, const Fraction& step) {
    return (Fraction(frame) - Fraction((source_in * step + Fraction(1, 1000000)).floor())).floor();
}

/// The listed rate of material that counts otherwise than the edit; null for other material.
const embedded::RateInfo* rate_of_its_own(const Link& link, const Context& context) {
    const embedded::RateInfo* rate = embedded::nearest_rate(link.slot->rate.to_double());
    return rate && rate->nominal != context.rate->nominal ? rate : nullptr;
}

/// Frames of the material in a second of its time. In an edit of 24 a nest of 23.976 is taken frame for frame, so that
/// 25.025 frames of 25 pass in a second of the edit; its places are told in 25 all the same.
Fraction frames_a_second(const Link& link, const Context& context) {
    const embedded::RateInfo* own = rate_of_its_own(link, context);
    return own && frame_for_frame(link.step, own->rate()) ? own->rate() : link.step;
}

Fraction source_in(const Traced& traced, const Context& context) {
    const Link* link = traced.chain.material();
    return link ? link->position / frames_a_second(*link, context) : Fraction(0);
}

/// Whether a number of film would lie below its count 0 at the material's first frame.
bool begins_ahead_of_film(const Traced& traced, const Fraction& in) {
    const auto below = [&](const std::optional<EdgeNumber>& number) {
        return number && number->frame >= 0 && at_first_frame(number->frame, in, number->step) < 0;
    };
    return below(traced.key) || below(traced.ink);
}

class SourceMaker {
public:
    SourceMaker(const Traced& traced, const Columns& columns, const Context& context, const Place& place)
        : traced_(traced), columns_(columns), context_(context), place_(place), in_(source_in(traced, context)) {}

    ClipSource made(const MobId& wanted);

private:
    void material(const MobId& wanted);
    void reels();
    void timecodes();
    LabelDescription timecode(const Timecode& from);
    void film();
    void film_columns();
    void log_fields();
    void label_of(std::optional<LabelDescription>& label, label_t type, const Columns::Number& number,
                  const Fraction& rate, int samples, const char* what);
    void warn(WarningKind kind, const std::string& what) const { context_.warn(kind, place_, what); }

    const Traced& traced_;
    const Columns& columns_;
    const Context& context_;
    const Place& place_;
    Fraction in_;
    SourceDescription source_;
};

void SourceMaker::material(const MobId& wanted) {
    const Link* link = traced_.chain.material();
    source_.opens = link != nullptr;
    source_.name = link ? link->mob->name : "lost mob " + text_of(wanted);
    source_.identity = "mob:" + text_of(link ? link->mob->id : wanted);
    source_.rate = context_.rate;
    if (!link) return;
    if (const embedded::RateInfo* own = rate_of_its_own(*link, context_)) source_.rate = own;
    const std::int64_t length = link->slot->segment->integer(pid::length, -1);
    if (length >= 0) source_.length = Fraction(length) / frames_a_second(*link, context_);
    if (!begins_ahead_of_film(traced_, in_)) return;
    if (source_.length) source_.length = std::max(Fraction(0), *source_.length - in_);
    in_ = 0;
}

void SourceMaker::reels() {
    const auto set = [&](const embedded::ReelLabel& label, const std::string& text) {
        if (!text.empty()) source_.reels.emplace(label, text);
    };
    if (traced_.reel) set(embedded::tape_reel, traced_.reel->mob->name);
    set(embedded::tape_reel, columns_.text({"Tape", "TapeID", "Reel"}));
    if (traced_.film) set(embedded::camera_reel, traced_.film->mob->name);
    set(embedded::camera_reel, columns_.text({"Camroll", "Camera Roll", "Cam Roll"}));
    set(embedded::sound_reel, columns_.text({"Soundroll", "Sound Roll"}));
    set(embedded::lab_reel, columns_.text({"Labroll", "Lab Roll"}));
    set(embedded::composite_reel, columns_.text({"Comproll", "Comp Roll"}));
}

LabelDescription SourceMaker::timecode(const Timecode& from) {
    const embedded::RateInfo* rate = embedded::nearest_rate(static_cast<double>(from.counting));
    const bool drop = from.drop && rate->can_drop();
    const std::int64_t frame = at_first_frame(from.frame, in_, from.step);
    return {drop ? rate->drop_timecode : rate->timecode, {}, timeline::sample_of(frame, rate->nominal), from.step};
}

void SourceMaker::timecodes() {
    const bool known =
        traced_.timecode && embedded::nearest_rate(static_cast<double>(traced_.timecode->counting)) != nullptr;
    if (known)
        source_.video_timecode = timecode(*traced_.timecode);
    else if (source_.opens)
        source_.video_timecode = LabelDescription{source_.rate->timecode, {}, 0, source_.rate->rate()};
    if (traced_.timecode && !known)
        warn(WarningKind::rate, "its timecode counts " + std::to_string(traced_.timecode->counting) +
                                    " frames a second, which no list can show: it is left out");
    if (traced_.timecode_24) source_.timecode_24p = timecode(*traced_.timecode_24);
}

void SourceMaker::label_of(std::optional<LabelDescription>& label, label_t type, const Columns::Number& number,
                           const Fraction& rate, int samples, const char* what) {
    if (number.text.empty() || label) return;
    std::string fault;
    label = timeline::label_of_text(type, number.text, what, fault);
    if (!label) return warn(WarningKind::dropped, fault);
    if (!number.of_sub_clip) return;
    const auto& since = columns_.sub_clips.since;
    if (!since)
        return warn(WarningKind::doubt, "nothing tells where its sub-clip begins: the " + std::string(what) +
                                            " of that counts from the first frame of the material");
    LabelPoint point(0, type);
    point.set_sample(number.text.c_str());
    const std::int64_t frames = point.sample / samples;
    const std::int64_t sample = point.sample + (at_first_frame(frames, in_ - *since, rate) - frames) * samples;
    if (sample < 0 || sample > std::numeric_limits<int>::max()) {
        label.reset();
        return warn(WarningKind::dropped, "its " + std::string(what) + " begins behind its material, and is left out");
    }
    point.set_sample(static_cast<int>(sample));
    label->text = point.get_string();
}

void SourceMaker::film() {
    const Gauge gauge = gauge_of(traced_);
    const auto set = [&](const std::optional<EdgeNumber>& number, UserLabelType kind,
                         std::optional<LabelDescription>& label, const char* what) {
        if (!number) return;
        const std::int64_t frame = at_first_frame(number->frame, in_, number->step);
        label = edge_label(gauge, *number, frame, kind);
        if (!label)
            warn(WarningKind::dropped, std::string("its ") + what + " is of a film (" + gauge.text() +
                                           ") that has none here, or out of all bounds: it is left out");
        source_.film_rate = number->step;
    };
    if (traced_.film) source_.film_rate = traced_.film->step;
    set(traced_.ink, user_label_ink, source_.ink, "ink number");
    set(traced_.key, user_label_key, source_.key, "key number");
    if (traced_.key && gauge.doubt) warn(WarningKind::doubt, gauge.doubt + (": it counts as " + gauge.text()));
}

/// Where the chain leads to no film, key numbers may stand in the bin, for the first frame of the master or sub-clip.
void SourceMaker::film_columns() {
    if (traced_.film || !source_.opens) return;
    constexpr int perforations = 4;
    const std::string film = "35mm-4p";
    const Fraction rate = embedded::film_rate_of(*source_.rate);
    Columns::Number key = columns_.number("KN Start");
    if (!key.text.empty()) key.text = plain_key_number(key.text);
    label_of(source_.key, edlstr_to_label_type(film.c_str(), user_label_key), key, rate, perforations, "key number");
    if (source_.key) warn(WarningKind::doubt, "nothing tells the film of its key number: it counts as " + film);
    label_of(source_.ink, edlstr_to_label_type(film.c_str(), user_label_ink), columns_.number("Ink Number"), rate,
             perforations, "ink number");
}

void SourceMaker::log_fields() {
    source_.scene = columns_.text({"Scene"});
    source_.take = columns_.text({"Take"});
    source_.description = columns_.text({"Description", "Descript", "Comments"});
    if (source_.video_timecode) {
        label_of(source_.sound_timecode, source_.video_timecode->type, columns_.number("Sound TC"),
                 *source_.video_timecode->rate, 1, "sound timecode");
        if (source_.sound_timecode) source_.sound_timecode->rate = source_.video_timecode->rate;
    }
}

ClipSource SourceMaker::made(const MobId& wanted) {
    material(wanted);
    reels();
    timecodes();
    film();
    film_columns();
    log_fields();
    return {std::move(source_), in_};
}

} // namespace

Traced trace(const File& file, const Point& point) {
    Traced traced;
    traced.chain = chain_of(file, point);
    find_reel(file, traced);
    find_film(file, traced);
    std::vector<const void*>& way = traced.chain.way;
    for (const auto* timecode : {&traced.timecode, &traced.timecode_24})
        if (*timecode) way.insert(way.end(), (*timecode)->way.begin(), (*timecode)->way.end());
    for (const auto* number : {&traced.key, &traced.ink})
        if (*number) way.insert(way.end(), (*number)->way.begin(), (*number)->way.end());
    return traced;
}

ClipSource source_of(const Traced& traced, const MobId& wanted, const SubClips& others, const Context& context,
                     const Place& place) {
    Columns columns{others.mobs, others};
    for (const Link& link : traced.chain.links)
        columns.mobs.push_back(link.mob);
    return SourceMaker(traced, columns, context, place).made(wanted);
}

} // namespace formats::aaf
