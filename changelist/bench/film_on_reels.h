#pragma once
// The film of a cut as it lies on the bench: events one behind the other, whatever gaps their cutlist leaves.
//
//      cutlist   [ A ]   [ B ][ C       ]          frames as the cutlist counts them
//      bench     [ A ][ B ][ C       ]             places
//
// A reel begins where the one before it ends, so that one number is a place.

#include "changelist/reel_numbers.h"
#include "changelist/steps/kept_steps.h"

#include <cstdint>
#include <optional>

using FilmPlace = std::int64_t;

/// An event with its place.
struct LaidEvent {
    const CutEvent* event = nullptr;
    FilmPlace at = 0;

    FilmPlace end() const { return at + event->length; }
};

class FilmOnReels {
public:
    /// Holds on to the events of `cut`. Those without a length are no film.
    FilmOnReels(const Vector<CutEvent>& cut, const ReelNumbers& reels);

    FilmPlace reel_start(std::size_t reel) const { return reel_start_[reel]; }
    FilmPlace reel_end(std::size_t reel) const { return reel_start_[reel + 1]; }
    FilmPlace reel_length(std::size_t reel) const { return reel_end(reel) - reel_start(reel); }

    /// Where a stretch begins that the cutlist counts from `frame`; nothing unless one event holds all of it.
    std::optional<FilmPlace> find(int reel_number, int frame, int length) const;
    /// The event whose film lies at a place; there must be some.
    const LaidEvent& event_at(FilmPlace place) const { return events_[index_at(place)]; }
    std::size_t index_at(FilmPlace place) const { return events_ahead(place + 1) - 1; }
    /// How many events begin ahead of a place.
    std::size_t events_ahead(FilmPlace place) const;
    /// In order.
    const Vector<LaidEvent>& events() const { return events_; }

private:
    Vector<LaidEvent> events_;
    Vector<FilmPlace> reel_start_; ///< and the end of the last
};

/// Names the film from `first` up to `end` in a step: numbers of its first and last frame, and what the event of
/// its first frame is called.
void name_film(change_step& step, const FilmOnReels& film, FilmPlace first, FilmPlace end);

/// One piece of film: every frame of the one stretch is the film of the other. At a speed of its own a frame of
/// the cut can't be told from its neighbours on the film, so there they may lie that far apart.
bool is_same_film(const LaidEvent& a, FilmPlace a_at, const LaidEvent& b, FilmPlace b_at, int length);
