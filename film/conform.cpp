#include "film/conform.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <tuple>

namespace film {
namespace {

/// One use held against what was spent.
class Held {
public:
    Held(const CutUse& use, const StrandState& state, int loss)
        : use_(use), state_(state), loss_(loss), frame_(perforations_of_frame(use.run.kind)) {}

    /// Frames that it needs and that are gone.
    Stretches gone() const {
        Stretches spent = within(state_.spent, use_.perforations());
        if (use_.printed) spent = without(spent, state_.printed);
        return within(frames_holding(use_.run, spent), use_.frames);
    }
    /// Whether its splice there needs film that is spent.
    bool lacks_film(Side side) const {
        return !stands(use_, side, state_) &&
               !within(state_.spent, taken_beyond(end_of(use_, side), side, loss_)).empty();
    }
    /// What of it splices can be made at.
    FrameRange kept() const { return of_window(use_.frames); }
    /// The longest stretch of the use that can be cut as it is; without frames where there is none.
    FrameRange longest() const;

private:
    FrameRange of_window(const FrameRange& window) const;
    std::int64_t first_frame_from(std::int64_t frame) const;
    std::int64_t last_frame_to(std::int64_t frame) const;
    std::int64_t first_perforation(std::int64_t frame) const { return frame * frame_ + use_.run.perforation; }
    std::int64_t last_perforation(std::int64_t frame) const { return first_perforation(frame + 1) - 1; }
    bool is_whole(std::int64_t perforation) const { return (perforation - use_.run.perforation) % frame_ == 0; }

    const CutUse& use_;
    const StrandState& state_;
    const std::int64_t loss_, frame_;
};

/// The first frame from there on whose splice has its film, or where one stands.
///
///     spent   x x x x . . . . . .         loss 2 perforations: the splice takes those ahead of the frame
///     frame             ^
std::int64_t Held::first_frame_from(std::int64_t frame) const {
    const std::int64_t first = first_perforation(frame);
    const std::optional<std::int64_t> spent = last_below(state_.spent, first);
    if (!spent) return frame;
    const std::int64_t clear = std::max(frame, ceiling_quotient(*spent + 1 + loss_ - use_.run.perforation, frame_));
    for (auto end = state_.heads.lower_bound(first); end != state_.heads.end() && *end < first_perforation(clear);
         ++end)
        if (is_whole(*end)) return (*end - use_.run.perforation) / frame_;
    return clear;
}

std::int64_t Held::last_frame_to(std::int64_t frame) const {
    const std::int64_t last = last_perforation(frame);
    const std::optional<std::int64_t> spent = first_above(state_.spent, last);
    if (!spent) return frame;
    const std::int64_t clear = std::min(frame, floor_quotient(*spent - loss_ - use_.run.perforation, frame_) - 1);
    for (auto end = state_.tails.upper_bound(last); end != state_.tails.begin();) {
        if (*--end <= last_perforation(clear)) break;
        if (is_whole(*end + 1)) return (*end + 1 - use_.run.perforation) / frame_ - 1;
    }
    return clear;
}

FrameRange Held::of_window(const FrameRange& window) const {
    return {first_frame_from(window.first), last_frame_to(window.last)};
}

FrameRange Held::longest() const {
    FrameRange best;
    if (use_.printed) return best;
    for (const FrameRange& window : without({use_.frames}, gone())) {
        const FrameRange range = of_window(window);
        if (range.length() > std::max<std::int64_t>(best.length(), 0)) best = range;
    }
    return best;
}

/// Of the second one, those that the first one's film lies in.
Stretches shared_frames(const CutUse& first, const CutUse& second) {
    const Stretches both = within({first.perforations()}, second.perforations());
    return within(frames_holding(second.run, both), second.frames);
}

class Conforming {
public:
    Conforming(const CutUses& uses, const SpentFilm& spent) : uses_(uses), spent_(spent) {}

    Conform run() {
        for (std::size_t i = 0; i < uses_.size(); ++i)
            hold(i);
        for (auto& [strand, places] : cut_)
            hold_together(spent_.state_of(strand), places);
        std::stable_sort(conform_.conflicts.begin(), conform_.conflicts.end(),
                         [](const Conflict& a, const Conflict& b) { return a.use < b.use; });
        return std::move(conform_);
    }

private:
    void hold(std::size_t place);
    void tell_gone(std::size_t place, const Held& held, Stretches gone);
    void hold_end(std::size_t place, Side side, const Held& held, const StrandState& state);
    void hold_together(const StrandState& state, std::vector<std::size_t>& places);
    void hold_pair(std::size_t before, std::size_t place, const StrandState& state);
    void tell_pair(std::size_t before, std::size_t place, std::int64_t between, std::int64_t needed);
    std::set<std::size_t>& told(Side side) { return side == Side::head ? told_heads_ : told_tails_; }

    const CutUses& uses_;
    const SpentFilm& spent_;
    std::map<Strand, std::vector<std::size_t>> cut_; ///< places of what isn't printed
    std::set<std::size_t> told_heads_, told_tails_;  ///< ends that an old splice keeps from where they are
    Conform conform_;
};

void Conforming::hold(std::size_t place) {
    const CutUse& use = uses_[place];
    const Strand strand = strand_of(use.run);
    const StrandState& state = spent_.state_of(strand);
    const Held held(use, state, spent_.rules().spent_on_a_side(use.run.kind));
    Stretches gone = held.gone();
    const bool whole = gone.empty();
    if (!whole) tell_gone(place, held, std::move(gone));
    if (use.printed) return;
    cut_[strand].push_back(place);
    for (const Side side : {Side::head, Side::tail}) {
        ++(stands(use, side, state) ? conform_.standing_ends : conform_.new_ends);
        if (whole) hold_end(place, side, held, state);
    }
}

void Conforming::tell_gone(std::size_t place, const Held& held, Stretches gone) {
    const CutUse& use = uses_[place];
    const FrameRange left = held.longest();
    const bool most_is_left = 2 * left.length() > use.frames.length();
    Conflict conflict{Trouble::gone, place};
    conflict.lacking = count_of(gone);
    conflict.frames = std::move(gone);
    conflict.at_head = most_is_left && left.first > use.frames.first;
    conflict.at_tail = most_is_left && left.last < use.frames.last;
    if (conflict.at_head) told_heads_.insert(place);
    if (conflict.at_tail) told_tails_.insert(place);
    conflict.mends.push_back({Mending::print, place});
    if (left.length() > 0)
        conflict.mends.insert(most_is_left ? conflict.mends.begin() : conflict.mends.end(),
                              {Mending::shorten, place, left.first - use.frames.first, use.frames.last - left.last});
    conform_.conflicts.push_back(std::move(conflict));
}

// The frames are there, and an old splice has taken the film that the new one needs beyond them.
void Conforming::hold_end(std::size_t place, Side side, const Held& held, const StrandState& state) {
    const CutUse& use = uses_[place];
    if (stands(use, side, state) || !held.lacks_film(side)) return;
    const FrameRange kept = held.kept();
    Conflict conflict{Trouble::close, place};
    conflict.side = side;
    conflict.lacking = side == Side::head ? kept.first - use.frames.first : use.frames.last - kept.last;
    if (conflict.lacking < use.frames.length())
        conflict.mends.push_back({Mending::shorten, place, side == Side::head ? conflict.lacking : 0,
                                  side == Side::tail ? conflict.lacking : 0});
    conflict.mends.push_back({Mending::duplicate, place});
    told(side).insert(place);
    conform_.conflicts.push_back(std::move(conflict));
}

void Conforming::hold_together(const StrandState& state, std::vector<std::size_t>& places) {
    std::sort(places.begin(), places.end(), [&](std::size_t a, std::size_t b) {
        const FrameRange film = uses_[a].perforations(), other = uses_[b].perforations();
        return std::tuple(film.first, film.last, a) < std::tuple(other.first, other.last, b);
    });
    std::size_t furthest = no_use;
    for (const std::size_t place : places) {
        if (furthest != no_use) hold_pair(furthest, place, state);
        if (furthest == no_use || end_of(uses_[furthest], Side::tail) <= end_of(uses_[place], Side::tail))
            furthest = place;
    }
}

void Conforming::hold_pair(std::size_t before, std::size_t place, const StrandState& state) {
    const CutUse& first = uses_[before];
    const CutUse& second = uses_[place];
    const std::int64_t between = end_of(second, Side::head) - end_of(first, Side::tail) - 1;
    const std::int64_t needed = 2 * std::int64_t{spent_.rules().spent_on_a_side(second.run.kind)};
    if (between >= needed) return;
    const bool settled = (stands(first, Side::tail, state) && stands(second, Side::head, state)) ||
                         told_tails_.count(before) > 0 || told_heads_.count(place) > 0;
    if (between < 0 || !settled) tell_pair(before, place, between, needed);
}

void Conforming::tell_pair(std::size_t before, std::size_t place, std::int64_t between, std::int64_t needed) {
    const FrameRange& first = uses_[before].frames;
    const FrameRange& second = uses_[place].frames;
    const std::int64_t apart = ceiling_quotient(needed - between, perforations_of_frame(uses_[place].run.kind));
    Conflict conflict{between < 0 ? Trouble::twice : Trouble::close, place, before};
    if (between < 0) conflict.frames = shared_frames(uses_[before], uses_[place]);
    conflict.lacking = between < 0 ? count_of(conflict.frames) : apart;
    if (apart < second.length()) conflict.mends.push_back({Mending::shorten, place, apart, 0});
    if (apart < first.length()) conflict.mends.push_back({Mending::shorten, before, 0, apart});
    const std::size_t shorter = first.length() < second.length()   ? before
                                : second.length() < first.length() ? place
                                                                   : std::max(before, place);
    const auto at = between < 0 ? conflict.mends.begin() : conflict.mends.end();
    conflict.mends.insert(at, {Mending::duplicate, shorter});
    conform_.conflicts.push_back(std::move(conflict));
}

} // namespace

Conform conform_of(const CutUses& uses, const SpentFilm& spent) { return Conforming(uses, spent).run(); }

} // namespace film
