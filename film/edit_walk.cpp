#include "film/edit_walk.h"

#include "embedded/positions.h"

namespace film {

using embedded::EventFacts;

std::vector<int> channels_of(const EditPtr& edit, int kind) {
    Vector<int> channels;
    edit->getChans(channels, static_cast<unsigned>(kind), 0);
    return {channels.begin(), channels.end()};
}

std::vector<int> picture_tracks_of(const EditPtr& edit) {
    std::vector<int> tracks;
    for (const int chan : channels_of(edit, 1)) {
        const EditChanSubType subtype = edit->getChanSubtype(chan);
        if (subtype != chan_fx && subtype != chan_unlisted) tracks.push_back(chan);
    }
    return tracks;
}

embedded::Fraction film_rate(const EditPtr& edit) {
    const embedded::Fraction rate = embedded::film_rate_of_edit(edit);
    constexpr int where_none_counts = 24;
    return embedded::Fraction() < rate ? rate : embedded::Fraction(where_none_counts);
}

std::int64_t film_frame_of(const embedded::Fraction& time, const embedded::Fraction& rate) {
    return (time * rate).floor();
}

std::vector<MainEvent> main_events_of(const EditPtr& edit) {
    std::vector<MainEvent> events;
    const std::vector<int> tracks = picture_tracks_of(edit);
    if (tracks.empty()) return events;
    const embedded::Fraction rate = film_rate(edit);
    for (const EventFacts& facts : embedded::facts_of_channel(edit, tracks.front())) {
        if (facts.kind != EventFacts::Kind::transition)
            events.push_back({film_frame_of(facts.edit_in, rate), film_frame_of(facts.edit_out, rate), false, 0, 0});
        else if (!events.empty())
            events.back().joined = true;
    }
    return events;
}

} // namespace film
