#include "formats/fcp7xml/fcp7_row.h"

#include <algorithm>
#include <iterator>

namespace formats::fcp7 {
namespace {

bool is_item(const Element& element) { return element.name() == "clipitem" || element.name() == "generatoritem"; }

/// A child of a track: an item or a transition.
struct Thing {
    Element element;
    std::optional<Fraction> start, end;
    std::size_t placed = 0; ///< of an item, where it stands among those
    bool item = false, usable = true;
};

class Row {
public:
    Row(const Element& track, const Rate& sequence, int kind, const Context& context)
        : sequence_(sequence), kind_(kind), context_(context), teller_(context.teller) {
        collect(track);
    }

    std::vector<Placed> run() {
        for (std::size_t i = 0; i < things_.size(); ++i)
            if (things_[i].item) place(i);
        for (std::size_t i = 0; i < things_.size(); ++i)
            if (!things_[i].item && things_[i].usable) join(i);
        put_in_order();
        return std::move(placed_);
    }

private:
    void collect(const Element& track);
    void place(std::size_t i);
    void check(const Placed& placed, bool asked);
    Fraction frames_of_own(const Placed& placed) const;
    const Thing* transition_at(std::size_t i) const;
    Placed* item_at(std::size_t i, const Thing& transition, bool behind);
    Fraction cut_between(const Placed* before, const Placed* behind, const Thing& transition) const;
    void doubt_reach(const Placed* before, const Placed* behind, const Thing& transition);
    void join(std::size_t i);
    void put_in_order();
    void keep(Placed placed, std::vector<Placed>& kept);
    void cut_under(const Placed& placed, std::vector<Placed>& kept);
    void drop(std::unique_ptr<embedded::TransitionDescription>& transition);
    Fraction seconds(const Fraction& frames) const { return context_.clock.seconds(frames, sequence_); }

    const Rate sequence_;
    const int kind_;
    const Context& context_;
    Teller& teller_;
    std::vector<Thing> things_;
    std::vector<Placed> placed_;
};

void Row::collect(const Element& track) {
    for (const Element child : track.children()) {
        const bool transition = child.name() == "transitionitem";
        if (!is_item(child) && !transition) {
            if (child.child("start") || child.child("end"))
                teller_.dropped(child, "isn't known as an item of a track, and is left out");
            continue;
        }
        const Element full = context_.index.full(child);
        Thing thing;
        thing.element = full ? full : child;
        thing.start = place_in(thing.element, "start", teller_);
        thing.end = place_in(thing.element, "end", teller_);
        thing.item = !transition;
        if (transition) thing.usable = thing.start && thing.end && *thing.start < *thing.end;
        if (!thing.usable) teller_.dropped(child, "has no length and is left out");
        things_.push_back(thing);
    }
}

const Thing* Row::transition_at(std::size_t i) const {
    return i < things_.size() && !things_[i].item && things_[i].usable ? &things_[i] : nullptr;
}

/// The frames of the sequence that the item's own in and out span.
Fraction Row::frames_of_own(const Placed& placed) const {
    if (!placed.in || !placed.out) return {};
    return (*placed.out - *placed.in) / placed.own_frames;
}

void Row::place(std::size_t i) {
    Thing& thing = things_[i];
    Placed placed;
    placed.element = thing.element;
    placed.in = place_in(thing.element, "in", teller_);
    placed.out = place_in(thing.element, "out", teller_);
    placed.rate = context_.index.rate_of(thing.element).value_or(sequence_);
    placed.own_frames = context_.clock.rate(placed.rate) / context_.clock.rate(sequence_);
    std::optional<Fraction> start = thing.start, end = thing.end;
    if (!start)
        if (const Thing* before = i > 0 ? transition_at(i - 1) : nullptr) start = before->start;
    if (!end)
        if (const Thing* behind = transition_at(i + 1)) end = behind->end;
    const bool guessed = !start || !end;
    if (guessed) {
        const Fraction length = frames_of_own(placed);
        const Fraction last = placed_.empty() ? Fraction(0) : placed_.back().end;
        if (!start) start = end ? *end - length : last;
        if (!end) end = *start + length;
        teller_.doubt(thing.element,
                      "has no start or no end, and no transition there; its length is that of its media");
    }
    placed.start = placed.from = *start;
    placed.end = placed.to = *end;
    check(placed, !guessed);
    thing.placed = placed_.size();
    placed_.push_back(std::move(placed));
}

/// In and out span as much as start and end do, at the speed of the item too.
void Row::check(const Placed& placed, bool asked) {
    const Fraction length = placed.end - placed.start;
    if (!asked || placed.element.name() != "clipitem" || !placed.in || !placed.out || length <= Fraction(0)) return;
    const Fraction off = frames_of_own(placed) - length;
    const Fraction allowed(placed.rate == sequence_ ? 0 : 1);
    if (off <= allowed && -allowed <= off) return;
    teller_.doubt(placed.element, "is " + std::to_string(length.nearest()) + " frames long in the sequence but " +
                                      std::to_string(frames_of_own(placed).nearest()) +
                                      " of its media; the sequence counts");
}

/// The item beside a transition, where it touches that.
Placed* Row::item_at(std::size_t i, const Thing& transition, bool behind) {
    if (i >= things_.size() || !things_[i].item) return nullptr;
    const std::optional<Fraction>& edge = behind ? things_[i].start : things_[i].end;
    if (edge && (*edge < *transition.start || *transition.end < *edge)) return nullptr;
    return &placed_[things_[i].placed];
}

// Without a neighbour on one side it is a fade, whatever it is aligned to. Items that both tell the edge that they
// share are cut there.
Fraction Row::cut_between(const Placed* before, const Placed* behind, const Thing& transition) const {
    if (!before) return behind->start;
    if (!behind || before->end == behind->start) return before->end;
    return cut_of(transition.element, *transition.start, *transition.end, sequence_, teller_);
}

/// A transition shows its items from its start to its end; one that begins or ends under it has no frames there.
void Row::doubt_reach(const Placed* before, const Placed* behind, const Thing& transition) {
    const bool short_before = before && before->end < *transition.end;
    const bool short_behind = behind && *transition.start < behind->start;
    if (!short_before && !short_behind) return;
    if (!before || !behind)
        teller_.doubt(transition.element, "is longer than what its one item has under it; it is cut to that");
    else if (before->end != behind->start)
        teller_.doubt(transition.element,
                      "begins ahead of the item behind it, or ends behind the one before it: what it shows of them "
                      "lies beyond their own frames");
}

void Row::join(std::size_t i) {
    const Thing& thing = things_[i];
    const Fraction start = *thing.start, end = *thing.end;
    Placed* const before = i > 0 ? item_at(i - 1, thing, false) : nullptr;
    Placed* const behind = item_at(i + 1, thing, true);
    if (!before && !behind) {
        teller_.dropped(thing.element, "touches no item and is left out");
        return;
    }
    auto transition =
        std::make_unique<embedded::TransitionDescription>(describe_transition(thing.element, kind_, context_));
    doubt_reach(before, behind, thing);
    const Fraction cut = cut_between(before, behind, thing);
    if (before) {
        before->to = cut;
        before->tail_taken = cut - start;
        before->in_transition = true;
    }
    if (behind) {
        behind->from = cut;
        behind->head_taken = end - cut;
        behind->in_transition = true;
        if (before) behind->joined = before->element;
    }
    transition->in_offset = before ? seconds(cut - start) : Fraction(0);
    transition->out_offset = behind ? seconds(end - cut) : Fraction(0);
    (behind ? behind->head : before->tail) = std::move(transition);
}

void Row::keep(Placed placed, std::vector<Placed>& kept) {
    if (placed.from < Fraction(0)) {
        teller_.dropped(placed.element, "begins " + std::to_string((-placed.from).nearest()) +
                                            " frames ahead of the sequence; what lies there is left out");
        placed.from = 0;
    }
    if (placed.to < placed.from || (placed.to == placed.from && !placed.in_transition)) {
        teller_.dropped(placed.element, "has no length and is left out");
        drop(placed.head);
        drop(placed.tail);
        return;
    }
    if (!kept.empty() && placed.from < kept.back().to) cut_under(placed, kept);
    // It would show whatever has come to stand before it instead.
    if (placed.joined && (kept.empty() || kept.back().element != placed.joined)) drop(placed.head);
    kept.push_back(std::move(placed));
}

void Row::cut_under(const Placed& placed, std::vector<Placed>& kept) {
    Placed& before = kept.back();
    teller_.dropped(before.element, "lies under the item behind it, on the same track, from frame " +
                                        std::to_string(placed.from.nearest()) + " on; it is cut there");
    before.to = std::max(before.from, placed.from);
    drop(before.tail);
    if (before.length() > Fraction(0)) return;
    drop(before.head);
    kept.pop_back();
}

void Row::drop(std::unique_ptr<embedded::TransitionDescription>& transition) {
    if (!transition) return;
    teller_.warnings().push_back(
        {embedded::WarningKind::dropped, transition->label + ": left out with an item that it belongs to"});
    transition.reset();
}

void Row::put_in_order() {
    std::stable_sort(placed_.begin(), placed_.end(), [](const Placed& a, const Placed& b) { return a.from < b.from; });
    std::vector<Placed> kept;
    for (Placed& placed : placed_)
        keep(std::move(placed), kept);
    placed_ = std::move(kept);
}

} // namespace

std::vector<Placed> place_items(const Element& track, const Rate& sequence, int kind, const Context& context) {
    return Row(track, sequence, kind, context).run();
}

} // namespace formats::fcp7
