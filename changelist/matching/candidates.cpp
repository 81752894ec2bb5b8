#include "changelist/matching/candidates.h"

#include "base/frame_math.h"
#include "changelist/row_fields.h"
#include "host/ascii_text.h"

#include <cmath>
#include <cstring>
#include <tuple>

namespace {

/// As texts compare without regard to case.
template <std::size_t N> void put_folded(char (&folded)[N], const char* text) {
    for (std::size_t i = 0; i + 1 < N && text[i]; ++i)
        folded[i] = ascii::lower(text[i]);
}

bool is_usable(const LabelPoint& bracket) { return bracket.is_valid() && !is_filler(bracket); }

bool same_bracket(const LabelPoint& a, const LabelPoint& b) { return is_usable(a) && a == b; }

/// A little wider than what `same_speed` takes, so that rounding can't matter.
bool may_be_same_speed(const Bounds<double>& speeds, double speed) {
    constexpr double margin = 0.0101;
    return speeds.low <= speed + margin && speeds.high >= speed - margin;
}

struct SameEvent {
    const ChangeRecord& x;
    const Candidates& candidates;

    bool misses(const EventBounds& bounds) const {
        return !bounds.key_in.holds(x.key_in()) || !bounds.length.holds(x.edit_length) ||
               !may_be_same_speed(bounds.speed, x.speed);
    }
    bool takes_all(const EventBounds&) const { return false; }
    bool takes(std::uint32_t event) const { return same_event(candidates[static_cast<int>(event)], x); }
};

/// The same black behind or ahead of the same film.
struct SameBlack : SameEvent {
    LabelPoint ChangeRecord::*bracket;

    bool takes(std::uint32_t event) const {
        const ChangeRecord& y = candidates[static_cast<int>(event)];
        return same_bracket(y.*bracket, x.*bracket) && same_event(y, x);
    }
};

/// Film that overlaps an event of normal speed, or covers it.
struct Overlap {
    const ChangeRecord& x;
    const Candidates& candidates;
    std::int64_t latest_in;
    std::int64_t least_end;

    Overlap(const ChangeRecord& event, const Candidates& among, bool covering)
        : x(event), candidates(among), latest_in(std::int64_t{event.key_end()} - 1),
          least_end(std::int64_t{event.key_in()} + 1) {
        if (!covering) return;
        latest_in = std::min<std::int64_t>(latest_in, event.key_in());
        least_end = std::max<std::int64_t>(least_end, event.key_end());
    }

    bool misses(const EventBounds& bounds) const {
        return bounds.key_in.low > latest_in || bounds.key_end.high < least_end ||
               (!all_normal(bounds.speed) && !may_be_same_speed(bounds.speed, x.speed));
    }
    bool takes_all(const EventBounds& bounds) const {
        return bounds.key_in.high <= latest_in && bounds.key_end.low >= least_end && speed_matters_not(bounds.speed);
    }
    bool takes(std::uint32_t event) const {
        const ChangeRecord& y = candidates[static_cast<int>(event)];
        return y.key_in() <= latest_in && y.key_end() >= least_end && overlaps(y, x);
    }

    static bool all_normal(const Bounds<double>& speeds) {
        return same_speed(speeds.low, 1.0) && same_speed(speeds.high, 1.0);
    }
    bool speed_matters_not(const Bounds<double>& speeds) const {
        return all_normal(speeds) || (same_speed(speeds.low, x.speed) && same_speed(speeds.high, x.speed));
    }
};

/// Film of the speed of a varispeed event that lies within it.
struct WithinVarispeed {
    const ChangeRecord& x;
    const Candidates& candidates;

    bool misses(const EventBounds& bounds) const {
        return !may_be_same_speed(bounds.speed, x.speed) || !may_lie_behind_start(bounds) || !may_fit(bounds);
    }
    bool takes_all(const EventBounds&) const { return false; }
    bool takes(std::uint32_t event) const {
        const ChangeRecord& y = candidates[static_cast<int>(event)];
        const bool behind_start = y.speed < 0 ? y.key_in() <= x.key_in() : y.key_in() >= x.key_in();
        return behind_start && same_speed(y.speed, x.speed) && overlaps(y, x) &&
               fits(y.edit_length, varispeed_offset(x, y.key_in()));
    }

    // An event that is the same one lies at offset 0 with the same length, so it fits.
    bool fits(int length, int offset) const { return std::int64_t{length} + offset <= x.edit_length; }
    bool may_fit(const EventBounds& bounds) const {
        return fits(bounds.length.low,
                    std::min(varispeed_offset(x, bounds.key_in.low), varispeed_offset(x, bounds.key_in.high)));
    }
    bool may_lie_behind_start(const EventBounds& bounds) const {
        const bool some_forward = bounds.speed.high >= 0 && bounds.key_in.high >= x.key_in() &&
                                  bounds.key_in.low < x.key_end() && bounds.key_end.high > x.key_in();
        const bool some_backward = bounds.speed.low < 0 && bounds.key_in.low <= x.key_in() &&
                                   bounds.key_in.high > x.key_end() && bounds.key_end.low < x.key_in();
        return some_forward || some_backward;
    }
};

/// The first that the query takes, of normal speed or not.
template <class Query>
std::uint32_t first_of_any_speed(Candidates& candidates, CandidateGroup group, const Query& query) {
    group.varispeed = false;
    const std::uint32_t best = candidates.first(group, query);
    if (!candidates.has_varispeed()) return best;
    group.varispeed = true;
    return candidates.first(group, query, best);
}

std::uint32_t first_black(const ChangeRecord& x, Candidates& candidates) {
    const CandidateGroup all(x, false);
    const std::uint32_t behind =
        first_of_any_speed(candidates, all.with_neighbour(CandidateGroup::behind_neighbour, x.bracket_in),
                           SameBlack{{x, candidates}, &ChangeRecord::bracket_in});
    const std::uint32_t ahead =
        first_of_any_speed(candidates, all.with_neighbour(CandidateGroup::ahead_of_neighbour, x.bracket_out),
                           SameBlack{{x, candidates}, &ChangeRecord::bracket_out});
    return std::min(behind, ahead);
}

std::uint32_t first_overlap(const ChangeRecord& x, const CandidateGroup& group, Candidates& candidates) {
    const std::uint32_t covering = first_of_any_speed(candidates, group, Overlap(x, candidates, true));
    return covering != no_event ? covering : first_of_any_speed(candidates, group, Overlap(x, candidates, false));
}

std::uint32_t first_film(const ChangeRecord& x, Candidates& candidates) {
    const CandidateGroup all(x, false);
    const CandidateGroup own_reel = all.with_reel(x.reel_seq);
    const bool one_reel = candidates.are_on_reel(x.reel_seq);
    std::uint32_t found = first_of_any_speed(candidates, own_reel, SameEvent{x, candidates});
    if (found == no_event && !one_reel) found = first_of_any_speed(candidates, all, SameEvent{x, candidates});
    if (found == no_event) found = first_overlap(x, own_reel, candidates);
    if (found == no_event && !one_reel) found = first_overlap(x, all, candidates);
    return found;
}

dbrecord& add_row(chgdb& table) { return *table.get_record(static_cast<unsigned>(table.add_records(1))); }

int index_of(std::uint32_t event) { return event == no_event ? -1 : static_cast<int>(event); }

} // namespace

CandidateGroup::CandidateGroup(const ChangeRecord& event, bool of_varispeed) : varispeed(of_varispeed) {
    put_folded(roll, event.keycode_in.get_prefix());
    put_folded(cam_reel, event.cam_reel);
}

CandidateGroup CandidateGroup::with_reel(int reel) const {
    CandidateGroup group = *this;
    group.scope = on_reel;
    group.number = reel;
    return group;
}

CandidateGroup CandidateGroup::with_neighbour(Scope side, const LabelPoint& key) const {
    CandidateGroup group = *this;
    group.scope = side;
    group.number = key.type();
    group.sample = key.sample;
    std::memcpy(group.neighbour, key.get_prefix(), std::strlen(key.get_prefix()));
    return group;
}

std::size_t CandidateGroup::hash() const {
    constexpr std::uint64_t prime = 0x100000001b3u;
    std::uint64_t mixed = 0xcbf29ce484222325u;
    const auto mix = [&mixed](std::uint64_t part) { mixed = (mixed ^ part ^ (mixed >> 29)) * prime; };
    for (const std::string_view text : {roll, cam_reel, neighbour}) {
        for (const char c : text)
            mix(static_cast<unsigned char>(c));
        mix(0);
    }
    mix(varispeed);
    mix(scope);
    mix(static_cast<std::uint32_t>(number));
    mix(static_cast<std::uint32_t>(sample));
    return static_cast<std::size_t>(mixed ^ (mixed >> 32));
}

EventForest* CandidateGroups::find(const CandidateGroup& group) {
    if (slots_.empty()) return nullptr;
    const std::uint32_t place = slots_[slot_of(group)];
    return place == no_event ? nullptr : &forests_[place];
}

EventForest& CandidateGroups::make(const CandidateGroup& group) {
    if (EventForest* known = find(group)) return *known;
    if (slots_.size() <= 2 * groups_.size()) spread();
    slots_[slot_of(group)] = static_cast<std::uint32_t>(groups_.size());
    groups_.push_back(group);
    return forests_.emplace_back();
}

void CandidateGroups::clear() {
    groups_.clear();
    forests_.clear();
    slots_.clear();
}

std::size_t CandidateGroups::slot_of(const CandidateGroup& group) const {
    std::size_t slot = group.hash() & (slots_.size() - 1);
    while (slots_[slot] != no_event && !(groups_[slots_[slot]] == group))
        slot = (slot + 1) & (slots_.size() - 1);
    return slot;
}

void CandidateGroups::spread() {
    constexpr std::size_t fewest = 16;
    slots_.assign(std::max(fewest, 2 * slots_.size()), no_event);
    for (std::uint32_t place = 0; place < groups_.size(); ++place)
        slots_[slot_of(groups_[place])] = place;
}

Candidates::Candidates(const chgdb& shape, LoggerHandle& log, bool labels_held)
    : pieces_(shape, &log, 0), blank_(shape.film_std()), labels_held_(labels_held) {}

void Candidates::load(const dbrecord& row) {
    loaded_.push_back({&row, number_field(row, hf_reel_seq), number_field(row, hf_edit_in), rows_});
    ++rows_;
}

void Candidates::sort() {
    std::sort(loaded_.begin(), loaded_.end(), [](const LoadedRow& a, const LoadedRow& b) {
        return std::tie(a.reel, a.frame, a.place) < std::tie(b.reel, b.frame, b.place);
    });
}

void Candidates::put_back(const ChangeRecord& piece) {
    add_record(pieces_, piece);
    ++rows_;
}

const dbrecord& Candidates::row_of(int index) const {
    const auto place = static_cast<unsigned>(index);
    const auto loaded = static_cast<unsigned>(loaded_.size());
    return place < loaded ? *loaded_[place].row : *pieces_.get_record(place - loaded);
}

ChangeRecord Candidates::take(int index) {
    ChangeRecord event = (*this)[index];
    event.read_rest(row_of(index));
    remove(index);
    return event;
}

void Candidates::drain(chgdb& changes) {
    for (unsigned row = 0; row < rows_; ++row) {
        if (row < spans_.size() && spans_[row].gone) continue;
        add_copy(changes, row_of(static_cast<int>(row))).set_field(hf_record_type, "I", true);
    }
    pieces_.delete_records(0, pieces_.get_num_records());
    loaded_.clear();
    rows_ = 0;
    has_varispeed_ = false;
    events_.clear();
    spans_.clear();
    groups_.clear();
}

// A piece that is put back is read from its row like any other, as texts may be cut there.
void Candidates::learn() {
    if (events_.empty()) events_.reserve(rows_);
    for (auto row = static_cast<unsigned>(events_.size()); row < rows_; ++row) {
        ChangeRecord& event = events_.emplace_back(blank_);
        event.read_for_match(row_of(static_cast<int>(row)));
        spans_.push_back({event.key_in(), event.key_end(), event.edit_length, false, event.speed});
        const Bounds<int> reel(event.reel_seq);
        if (row == 0) reels_ = reel;
        reels_.add(reel);
        enter(row);
    }
}

bool Candidates::are_on_reel(int reel) {
    learn();
    return events_.empty() || (reels_.low == reel && reels_.high == reel);
}

void Candidates::enter(std::uint32_t index) {
    const ChangeRecord& event = events_[index];
    // No speed is like one that isn't a finite number.
    if (!std::isfinite(event.speed)) return;
    const CandidateGroup all(event, event.varispeed());
    has_varispeed_ = has_varispeed_ || all.varispeed;
    groups_.make(all).add(index);
    groups_.make(all.with_reel(event.reel_seq)).add(index);
    if (!is_filler(event.keycode_in)) return;
    for (const auto& [side, bracket] : {std::pair(CandidateGroup::behind_neighbour, &event.bracket_in),
                                        std::pair(CandidateGroup::ahead_of_neighbour, &event.bracket_out)}) {
        if (is_usable(*bracket)) groups_.make(all.with_neighbour(side, *bracket)).add(index);
    }
}

const char* find_match(int* index, const ChangeRecord& x, Candidates& candidates) {
    *index = index_of(is_filler(x.keycode_in) ? first_black(x, candidates) : first_film(x, candidates));
    return nullptr;
}

const char* find_varispeed_match(int* index, const ChangeRecord& x, Candidates& candidates) {
    *index = index_of(first_of_any_speed(candidates, CandidateGroup(x, false), WithinVarispeed{x, candidates}));
    return nullptr;
}

// At no speed at all every key number lies on the first frame.
int varispeed_offset(const ChangeRecord& x, int key) {
    const std::int64_t frames = (std::int64_t{key} - x.key_in()) / x.key_step();
    return x.speed == 0 ? 0 : whole_part(static_cast<double>(frames) / x.speed);
}

void add_record(chgdb& table, const ChangeRecord& record) { record.write(add_row(table)); }

dbrecord& add_copy(chgdb& table, const dbrecord& row) { return add_row(table) = row; }
