#pragma once
// An edit's film with the events that it belongs to.

#include "film/film_uses.h"
#include "film/opticals.h"
#include "host/recdb.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace film {

/// An event of a listed channel, or of a picture track above it.
struct FilmEvent {
    int item = -1; ///< its place in `EditFilm::events`; -1: none of them
    int event = 0, optical = 0, layer = 0;
    std::int64_t start = 0, end = 0; ///< without its transitions, film frames of the edit
    bool black = false, rendered = false, opens = true;
    std::string where, name;
    std::string listed_as; ///< by a table, the word that stands for material that wasn't known; else empty
    Rolls rolls;           ///< the source's own
    Fraction speed = 1;

    Count timecode;                           ///< at `start`
    Count own_key;                            ///< the key number that the edit itself gives, at `start`
    Count source;                             ///< frames of film from the source's first one, at `start`
    Fraction film_rate, timecode_rate;        ///< of the source, frames a second
    std::optional<std::int64_t> media_frames; ///< of film, that the source's media holds
    /// Timecode at the event's two points, as whole frames: the lists look up the log by these.
    std::int64_t timecode_in = 0, timecode_out = 0;

    /// Lists show the lowest track, and of the others what opticals draw on.
    bool listed() const { return layer == 0 || optical > 0; }
    bool material() const { return !black && opens && !rendered; }
};

struct EditFilm {
    Strips strips;  ///< `Strip::item` is a place in `events`
    Strips slivers; ///< shown for less than a frame of film between two of them; told as one frame long
    std::vector<FilmEvent> events;
    std::vector<Optical> opticals;
    std::vector<int> effects; ///< numbers of the opticals that effects make, in order; the others chain transitions
};

/// See `uses_of_edit`.
EditFilm film_of_edit(const EditPtr& edit, const UseOptions& options, const LogRows* log);
/// See `uses_of_table`. Places of `events` that no strip has are black; of the opticals only those in error are there.
EditFilm film_of_table(const recdb& table);

} // namespace film
