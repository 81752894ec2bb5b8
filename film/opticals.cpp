#include "film/opticals.h"

#include "embedded/edit_facts.h"
#include "embedded/positions.h"
#include "film/edit_walk.h"

#include <algorithm>

namespace film {
namespace {

/// The events that belong together, from `first` to `last`, and the last of the effects over them.
struct Group {
    std::size_t first = 0, last = 0;
    bool chained = false;        ///< a transition joins some of them
    bool effect = false;         ///< an effect lies over some of them
    std::size_t effects_end = 0; ///< behind the last effect over them
    std::size_t reached = 0;     ///< the effect that the search for the group's end came to
};

class Grouping {
public:
    Grouping(std::vector<MainEvent>& events, std::vector<Optical>& effects, bool neg_cut)
        : events_(events), effects_(effects), neg_cut_(neg_cut) {}

    std::vector<Optical> run() {
        while (effect_ < effects_.size())
            place_next_effect();
        while (event_ < events_.size())
            take(group_at(event_));
        opticals_.insert(opticals_.begin(), effects_.begin(), effects_.end());
        return std::move(opticals_);
    }

private:
    void place_next_effect() {
        Optical& effect = effects_[effect_];
        if (event_ == events_.size() || events_[event_].start > effect.start) {
            effect.error = true;
            effect.number = next_optical_++;
            ++effect_;
            return;
        }
        take(group_at(event_));
    }

    // A group goes on while a transition leads on, or while an effect that has begun runs on.
    Group group_at(std::size_t first) const {
        Group group{first, first, false, false, effect_, effect_};
        std::size_t& at = group.reached;
        for (;; ++group.last) {
            const MainEvent& event = events_[group.last];
            const bool effects_left = at < effects_.size();
            if (effects_left && event.end > effects_[at].start) {
                group.effect = true;
                group.effects_end = at + 1;
            }
            const bool runs_on = effects_left && group.effect && event.end < effects_[at].end;
            if (!event.joined && !runs_on) return group;
            group.chained = true;
            if (group.last + 1 == events_.size()) return group;
            const bool past = effects_left && events_[group.last + 1].start >= effects_[at].end;
            if (past && at + 1 < effects_.size()) ++at;
        }
    }

    void take(const Group& group) {
        const bool optical = group.effect || group.chained;
        const int number = optical ? next_optical_++ : 0;
        for (std::size_t i = group.first; i <= group.last; ++i) {
            events_[i].optical = number;
            events_[i].number = next_event_;
            if (!optical || !neg_cut_) ++next_event_;
        }
        if (optical && neg_cut_) ++next_event_;
        if (group.effect) {
            for (; effect_ < group.effects_end; ++effect_)
                effects_[effect_].number = number;
        }
        // Effects that the search went past without meeting an event stay without a number.
        for (const std::size_t next = group.reached + (group.effect ? 1 : 0); effect_ < next; ++effect_)
            effects_[effect_].error = true;
        if (group.chained && !group.effect) {
            Optical chain;
            chain.number = number;
            chain.start = events_[group.first].start;
            chain.end = events_[group.last].end;
            opticals_.push_back(chain);
        }
        event_ = group.last + 1;
    }

    std::vector<MainEvent>& events_;
    std::vector<Optical>& effects_;
    std::vector<Optical> opticals_;
    const bool neg_cut_;
    std::size_t event_ = 0, effect_ = 0;
    int next_event_ = 1, next_optical_ = 1;
};

void add_effects_of(const EditPtr& edit, int chan, const std::vector<int>& pictures, std::vector<Optical>& effects) {
    const embedded::Fraction rate = film_rate(edit);
    for (const embedded::EventFacts& facts : embedded::facts_of_channel(edit, chan)) {
        if (facts.lab_tracks.empty() || facts.edit_in == facts.edit_out) continue;
        Optical optical;
        for (const int track : facts.lab_tracks)
            if (std::find(pictures.begin(), pictures.end(), track) != pictures.end()) optical.channels.push_back(track);
        if (optical.channels.empty()) continue;
        optical.start = film_frame_of(facts.edit_in, rate);
        optical.end = film_frame_of(facts.edit_out, rate);
        optical.name = facts.lab_effect;
        optical.where = facts.label;
        effects.push_back(std::move(optical));
    }
}

} // namespace

std::vector<Optical> number_events(std::vector<MainEvent>& events, std::vector<Optical> effects, bool neg_cut) {
    return Grouping(events, effects, neg_cut).run();
}

// Effects stand on FX tracks and on the first of the others.
std::vector<Optical> lab_effects_of(const EditPtr& edit) {
    const std::vector<int> pictures = channels_of(edit, 1);
    std::vector<Optical> effects;
    bool lowest_done = false;
    for (const int chan : pictures) {
        const bool fx = edit->getChanSubtype(chan) == chan_fx;
        if (fx || !lowest_done) add_effects_of(edit, chan, pictures, effects);
        lowest_done = lowest_done || !fx;
    }
    std::stable_sort(effects.begin(), effects.end(),
                     [](const Optical& a, const Optical& b) { return a.start < b.start; });
    return effects;
}

} // namespace film
