#include "formats/aaf/aaf_composition.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <set>

namespace formats::aaf {
namespace {

using embedded::WarningKind;

constexpr Auid top_level = auid("0d010102-0101-0700-060e-2b3404010101");
constexpr Auid attributes = auid("60958184-47b1-11d4-a01c-0004ac969f50");
constexpr int segments_deep = 100;

/// The mobs that source clips below a segment refer to.
void collect_references(const Object* segment, std::set<MobId>& found, int depth) {
    if (!segment || depth > segments_deep) return;
    if (const auto id = segment->mob_id(pid::source_id)) found.insert(*id);
    for (const Pid list : {pid::components, pid::scope_slots, pid::input_segments, pid::choices})
        for (const Object* inner : segment->children(list))
            collect_references(inner, found, depth + 1);
    for (const Pid one : {pid::selected, pid::pulldown_input})
        collect_references(segment->child(one), found, depth + 1);
}

/// Those of a kind by the number of the track, else of the slot.
std::vector<const Slot*> slots_of(const Mob& mob, Kind kind) {
    std::vector<const Slot*> slots;
    for (const Slot& slot : mob.slots)
        if (slot.kind == kind && slot.segment) slots.push_back(&slot);
    std::stable_sort(slots.begin(), slots.end(), [](const Slot* a, const Slot* b) {
        const auto place = [](const Slot* slot) { return std::pair(slot->number.value_or(slot->id), slot->id); };
        return place(a) < place(b);
    });
    return slots;
}

/// What a timecode slot shows at its first frame.
std::optional<Timecode> timecode_of(const File& file, const Mob& composition, const Slot& slot) {
    Chain chain;
    return timecode_at(file, {&composition, &slot, slot.origin, slot.rate}, slot, chain);
}

/// The last change in seconds since the epoch; `otherwise` where the mob doesn't say. A year, month and day, then
/// hour, minute and second.
std::int64_t time_of(const Object& mob, std::int64_t otherwise) {
    const Bytes stamp = mob.bytes(pid::last_modified);
    if (stamp.size() < 7) return otherwise;
    const auto number = [&](std::size_t at, std::size_t size) {
        return static_cast<unsigned>(*stamp.number(at, size));
    };
    const std::chrono::year_month_day date{std::chrono::year(static_cast<int>(number(0, 2))),
                                           std::chrono::month(number(2, 1)), std::chrono::day(number(3, 1))};
    if (!date.ok() || number(0, 2) < 1970) return otherwise;
    const auto day = std::chrono::sys_days(date).time_since_epoch();
    return std::chrono::duration_cast<std::chrono::seconds>(day).count() + number(4, 1) * 3600 + number(5, 1) * 60 +
           number(6, 1);
}

/// The scope that a track is, also as the only component of a sequence; null for others.
const Object* scope_of(const Object& segment) {
    if (segment.what() == Class::nested_scope) return &segment;
    if (segment.what() != Class::sequence) return nullptr;
    const auto& components = segment.children(pid::components);
    const bool one = components.size() == 1 && components[0] && components[0]->what() == Class::nested_scope;
    return one ? components[0] : nullptr;
}

class ChannelAdder {
public:
    ChannelAdder(const Mob& composition, const Context& context, embedded::EditBuilder& builder)
        : composition_(composition), context_(context), builder_(builder), sources_(builder),
          flattener_(context, sources_), place_{nullptr, composition.title()} {}

    void add_all();

private:
    void add_slot(const Slot& slot, int kind);
    void add_track(const Object& segment, const Slot& slot, int kind, const Place& place);
    void add_markers(const Slot& slot);
    void add_marker(const Object& marker, const Slot& slot);
    std::string text_of_marker(const Object& marker);
    void tell_of_others() const;

    const Mob& composition_;
    const Context& context_;
    embedded::EditBuilder& builder_;
    timeline::Sources sources_;
    Flattener flattener_;
    const Place place_;
    bool lowest_found_ = false;
    std::map<std::int64_t, int> channels_; ///< the lowest of each slot
    std::optional<Pid> attributes_;
};

void ChannelAdder::add_all() {
    for (const Slot* slot : slots_of(composition_, Kind::picture))
        add_slot(*slot, picture_channel);
    for (const Slot* slot : slots_of(composition_, Kind::sound))
        add_slot(*slot, sound_channel);
    for (const Slot& slot : composition_.slots)
        if (slot.kind == Kind::markers) add_markers(slot);
    tell_of_others();
}

void ChannelAdder::add_slot(const Slot& slot, int kind) {
    const Place place = place_.step("slot " + std::to_string(slot.id));
    if (slot.rate <= Fraction(0)) refuse(place, "its rate isn't above 0");
    if (!(slot.origin == Fraction(0)))
        context_.warn(WarningKind::doubt, place,
                      "its origin, frame " + std::to_string(slot.origin.nearest()) +
                          ", doesn't count: it stands where the edit begins");
    const Object* scope = scope_of(*slot.segment);
    if (!scope) {
        add_track(*slot.segment, slot, kind, place);
        return;
    }
    const auto& tracks = scope->children(pid::scope_slots);
    // Those on top that only show what lies below are none.
    std::size_t count = tracks.size();
    while (count > 1 && tracks[count - 1] && shows_what_is_below(*tracks[count - 1]))
        --count;
    for (std::size_t i = 0; i < count; ++i) {
        const Place inner = place.step("track " + std::to_string(i + 1));
        if (!tracks[i]) refuse(inner, "isn't in the file");
        add_track(*tracks[i], slot, kind, inner);
    }
}

void ChannelAdder::add_track(const Object& segment, const Slot& slot, int kind, const Place& place) {
    timeline::Channel channel;
    channel.number = builder_.add_channel(kind);
    channel.gaps_are_black = kind == picture_channel && !lowest_found_;
    lowest_found_ = lowest_found_ || channel.gaps_are_black;
    channels_.emplace(slot.id, channel.number);
    timeline::hand_over(flattener_.track(segment, slot.rate, composition_, place), channel, builder_);
}

void ChannelAdder::add_markers(const Slot& slot) {
    if (!slot.segment) return;
    if (slot.segment->has(pid::event_position)) add_marker(*slot.segment, slot);
    for (const Object* marker : slot.segment->children(pid::components))
        if (marker && marker->has(pid::event_position)) add_marker(*marker, slot);
}

// Markers of a track stand on it, those of none on all.
void ChannelAdder::add_marker(const Object& marker, const Slot& slot) {
    const bool alike = slot.rate <= Fraction(0) || counting_of(slot.rate) == context_.rate->nominal;
    const Fraction rate = alike ? context_.rate->rate() : slot.rate;
    const embedded::CueDescription cue{Fraction(marker.integer(pid::event_position, 0)) / rate, text_of_marker(marker)};
    const Bytes described = marker.bytes(pid::described_slots);
    bool placed = false;
    for (std::size_t at = 0; at + 4 <= described.size(); at += 4) {
        const auto channel = channels_.find(static_cast<std::int64_t>(*described.number(at, 4)));
        if (channel == channels_.end()) continue;
        builder_.add_cue(channel->second, embedded::EditBuilder::CueLevel::track, cue);
        placed = true;
    }
    if (!placed) builder_.add_stack_cue(cue);
}

std::string ChannelAdder::text_of_marker(const Object& marker) {
    std::string text = marker.text(pid::event_comment);
    if (!text.empty()) return text;
    if (!attributes_) attributes_ = context_.file.own_property(attributes);
    if (*attributes_ == 0) return {};
    for (const Object* tag : marker.children(*attributes_))
        if (tag && tag->text(pid::tag_name) == "_ATN_CRM_COM") return indirect_text(tag->bytes(pid::tag_value));
    return {};
}

void ChannelAdder::tell_of_others() const {
    for (const Slot& slot : composition_.slots) {
        const Place place = place_.step("slot " + std::to_string(slot.id));
        if (!slot.segment)
            context_.warn(WarningKind::dropped, place, "it holds nothing and is left out");
        else if (slot.kind == Kind::other)
            context_.warn(WarningKind::dropped, place, "it is neither picture nor sound, and is left out");
    }
}

} // namespace

std::vector<const Mob*> top_compositions(const File& file) {
    std::vector<const Mob*> all, marked, unused;
    std::set<MobId> used;
    for (const auto& mob : file.mobs()) {
        if (mob->what != Class::composition_mob) continue;
        all.push_back(mob.get());
        if (mob->usage == top_level) marked.push_back(mob.get());
    }
    if (!marked.empty()) return marked;
    for (const Mob* mob : all)
        for (const Slot& slot : mob->slots)
            collect_references(slot.segment, used, 0);
    for (const Mob* mob : all)
        if (!used.contains(mob->id)) unused.push_back(mob);
    return unused.empty() ? all : unused;
}

const embedded::RateInfo* rate_of(const File& file, const Mob& composition) {
    for (const Kind kind : {Kind::picture, Kind::sound})
        for (const Slot* slot : slots_of(composition, kind))
            if (const embedded::RateInfo* rate = embedded::nearest_rate(slot->rate.to_double())) return rate;
    for (const Slot* slot : slots_of(composition, Kind::timecode)) {
        if (const embedded::RateInfo* rate = embedded::nearest_rate(slot->rate.to_double())) return rate;
        const auto timecode = timecode_of(file, composition, *slot);
        if (!timecode) continue;
        if (const embedded::RateInfo* rate = embedded::nearest_rate(static_cast<double>(timecode->counting)))
            return rate;
    }
    return nullptr;
}

std::string why_no_rate(const Mob& composition) {
    if (composition.slots.empty()) return {};
    const Slot& slot = composition.slots.front();
    const bool other = slot.kind == Kind::other || slot.kind == Kind::markers;
    return "slot " + std::to_string(slot.id) +
           (!slot.segment ? " holds nothing"
            : other       ? " holds neither pictures nor timecode"
                          : " has no rate that is listed");
}

embedded::EditDescription describe_edit(const Mob& composition, const Context& context, const std::string& name,
                                        std::int64_t file_time) {
    embedded::EditDescription edit;
    edit.name = name;
    edit.rate = context.rate;
    edit.modification_time = time_of(*composition.object, file_time);
    bool first = true;
    for (const Slot* slot : slots_of(composition, Kind::timecode)) {
        const auto timecode = timecode_of(context.file, composition, *slot);
        if (!timecode) continue;
        const std::int64_t nominal = context.rate->nominal;
        if (first) {
            first = false;
            edit.start_frame = (Fraction(timecode->frame) * Fraction(nominal, timecode->counting)).nearest();
            edit.drop_frame = timecode->drop && context.rate->can_drop();
            if (timecode->counting != nominal)
                context.warn(WarningKind::rate, {nullptr, composition.title()},
                             "its timecode counts " + std::to_string(timecode->counting) + " frames a second, not " +
                                 std::to_string(nominal) + ": it is converted");
        } else if (timecode->counting == 24 && nominal != 24 && !edit.timecode_24p) {
            edit.timecode_24p = embedded::LabelDescription{
                label_tc_24, {}, timeline::sample_of(timecode->frame, 24), embedded::film_rate_of(*context.rate)};
        }
    }
    return edit;
}

void add_channels(const Mob& composition, const Context& context, embedded::EditBuilder& builder) {
    ChannelAdder(composition, context, builder).add_all();
}

} // namespace formats::aaf
