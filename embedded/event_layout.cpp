#include "embedded/event_layout.h"
#include "embedded/warning.h"

#include <algorithm>
#include <optional>

namespace embedded {

namespace {

const Fraction nothing;

std::string name_of(const TransitionDescription& transition) {
    return transition.label.empty() ? "transition \"" + transition.name + "\"" : transition.label;
}

struct SourceSpan {
    Fraction in, out;
};

// Backward, the last frame of the stretch is shown first: both points lie one frame lower.
SourceSpan source_span(const ChannelItem& item, const Fraction& frame) {
    const EventDescription& event = item.event;
    if (item.kind != ChannelItem::Kind::event) return {nothing, event.duration};
    const Fraction run = event.duration * event.speed;
    if (event.speed < nothing) return {event.source_in - run - frame, event.source_in - frame};
    return {event.source_in, event.source_in + run};
}

Fraction speed_of(const ChannelItem& item) {
    return item.kind == ChannelItem::Kind::event ? item.event.speed : Fraction(1);
}

// The event of an item that gives up `head` and `tail` to transitions:
//
//     start |--head--|= = event = =|--tail--| start + duration
LaidEvent item_event(const ChannelItem& item, std::size_t index, const Fraction& start, const Fraction& head,
                     const Fraction& tail, const Fraction& frame) {
    LaidEvent laid;
    const SourceSpan span = source_span(item, frame);
    const Fraction speed = speed_of(item);
    laid.index = index;
    laid.whole_edit_in = start;
    laid.whole_edit_out = start + item.event.duration;
    laid.whole_source_in = span.in;
    laid.whole_source_out = span.out;
    laid.edit_in = laid.whole_edit_in + head;
    laid.edit_out = laid.whole_edit_out - tail;
    laid.source_in = span.in + head * speed;
    laid.source_out = span.out - tail * speed;
    return laid;
}

LaidEvent black_at(const Fraction& time) {
    LaidEvent laid;
    laid.kind = LaidEvent::Kind::edge_black;
    laid.edit_in = laid.edit_out = laid.whole_edit_in = laid.whole_edit_out = time;
    return laid;
}

// What a transition takes of the items before and behind its cut.
struct Share {
    std::size_t cut = 0;
    Fraction before, behind;
};

class CutLayout {
public:
    CutLayout(const std::vector<ChannelItem>& items, const std::vector<ChannelCut>& cuts, const Fraction& frame,
              Warnings& warnings)
        : items_(items), cuts_(cuts), frame_(frame), warnings_(warnings), shares_(items.size() + 1) {
        events_.reserve(items.size() + cuts.size());
        share_out();
    }

    std::vector<LaidEvent> events() {
        for (std::size_t i = 0; i < items_.size(); ++i) {
            add_transition(i);
            add_item(i);
            now_ = now_ + items_[i].event.duration;
        }
        add_transition(items_.size());
        return std::move(events_);
    }

private:
    bool makes_no_event(std::size_t item) const {
        return item >= items_.size() || items_[item].kind == ChannelItem::Kind::gap;
    }
    // Index of the item before a cut; past the end at the channel's head.
    std::size_t before(std::size_t cut) const { return cut == 0 ? items_.size() : cut - 1; }

    void warn(const ChannelCut& cut, const char* why, WarningKind kind = WarningKind::dropped) {
        warnings_.push_back({kind, name_of(cut.transition) + ": " + why});
    }

    void share_out() {
        for (std::size_t i = 0; i < cuts_.size(); ++i) {
            if (i > 0 && cuts_[i - 1].before_item == cuts_[i].before_item)
                warn(cuts_[i], "dropped, as it follows another transition");
            else if (makes_no_event(before(cuts_[i].before_item)) && makes_no_event(cuts_[i].before_item))
                warn(cuts_[i], "dropped, as it joins nothing");
            else
                share_out(i);
        }
    }

    void share_out(std::size_t i) {
        const ChannelCut& cut = cuts_[i];
        const Share share{i, room_before(cut), room_behind(cut)};
        if (share.before + share.behind == nothing)
            warn(cut, "dropped, as it has no length");
        else
            shares_[cut.before_item] = share;
    }

    Fraction room_before(const ChannelCut& cut) {
        if (cut.before_item == 0) return nothing;
        const std::size_t item = cut.before_item - 1;
        const Fraction left = items_[item].event.duration - head_of(item);
        return cut_to(left, cut.transition.in_offset, cut, "in_offset cut to what is left of the item before");
    }

    Fraction room_behind(const ChannelCut& cut) {
        if (cut.before_item == items_.size()) return nothing;
        return cut_to(items_[cut.before_item].event.duration, cut.transition.out_offset, cut,
                      "out_offset cut to the length of the item behind");
    }

    Fraction cut_to(const Fraction& room, const Fraction& wanted, const ChannelCut& cut, const char* why) {
        if (wanted > room) warn(cut, why);
        if (wanted < nothing) warn(cut, "an offset below 0 counts as 0", WarningKind::replaced);
        return std::max(nothing, std::min(room, wanted));
    }

    Fraction head_of(std::size_t item) const { return shares_[item] ? shares_[item]->behind : nothing; }
    Fraction tail_of(std::size_t item) const { return shares_[item + 1] ? shares_[item + 1]->before : nothing; }

    // Where a side makes no event, black without length stands at the transition's outer end:
    //
    //     . gap . .|\       |          | A . . |\         /| B
    //              b|--X----| A        |       |----X----|b  . gap
    void add_transition(std::size_t cut) {
        if (!shares_[cut]) return;
        LaidEvent laid;
        laid.kind = LaidEvent::Kind::transition;
        laid.index = shares_[cut]->cut;
        laid.edit_in = now_ - shares_[cut]->before;
        laid.edit_out = now_ + shares_[cut]->behind;
        if (makes_no_event(before(cut))) events_.push_back(black_at(laid.edit_in));
        events_.push_back(laid);
        if (makes_no_event(cut)) events_.push_back(black_at(laid.edit_out));
    }

    void add_item(std::size_t item) {
        const bool beside_transition = shares_[item] || shares_[item + 1];
        if (makes_no_event(item)) return;
        if (items_[item].event.duration == nothing && !beside_transition) return;
        events_.push_back(item_event(items_[item], item, now_, head_of(item), tail_of(item), frame_));
    }

    const std::vector<ChannelItem>& items_;
    const std::vector<ChannelCut>& cuts_;
    const Fraction frame_;
    Warnings& warnings_;
    std::vector<std::optional<Share>> shares_;
    std::vector<LaidEvent> events_;
    Fraction now_;
};

} // namespace

std::vector<LaidEvent> lay_out_cuts(const std::vector<ChannelItem>& items, const std::vector<ChannelCut>& cuts,
                                    const Fraction& frame, Warnings& warnings) {
    return CutLayout(items, cuts, frame, warnings).events();
}

std::vector<LaidEvent> lay_out_effects(const std::vector<ChannelItem>& items, const std::vector<ChannelCut>& cuts,
                                       const Fraction& frame, Warnings& warnings) {
    for (const ChannelCut& cut : cuts)
        warnings.push_back(
            {WarningKind::dropped, name_of(cut.transition) + ": dropped, as it stands on an FX channel"});
    std::vector<LaidEvent> events;
    Fraction now;
    for (std::size_t i = 0; i < items.size(); ++i) {
        const EventDescription& event = items[i].event;
        if (!event.effects.empty() && event.duration > nothing)
            events.push_back(item_event(items[i], i, now, nothing, nothing, frame));
        now = now + event.duration;
    }
    return events;
}

} // namespace embedded
