#pragma once
// What film the reels of a programme need, stretch by stretch, told by roll and number: what orders are made of.

#include "film/edit_film.h"
#include "film/log_rows.h"

#include <cstdint>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace film {

/// A run of numbers on a roll of film; frames count from number 0 of the prefix. Film without key numbers is told by
/// its tape and timecode, whose frames are those of the timecode.
struct FilmRun {
    std::string roll; ///< as lists print it; of film without key numbers the tape
    label_t kind = label_none;
    std::string prefix;
    int perforation = 0; ///< what its frames lie off those of the numbers, in perforations

    auto key() const { return std::tie(roll, kind, prefix, perforation); }
    friend bool operator==(const FilmRun& a, const FilmRun& b) { return a.key() == b.key(); }
    friend bool operator<(const FilmRun& a, const FilmRun& b) { return a.key() < b.key(); }

    /// Whether its numbers are key numbers, and not timecode.
    bool has_key() const;
    LabelPoint point_at(std::int64_t frame) const;
    std::string text_at(std::int64_t frame) const;
};

/// Frames of a run from `first` to `last`, both of them included.
struct FrameRange {
    std::int64_t first = 0, last = -1;

    std::int64_t length() const { return last - first + 1; }
    bool holds(const FrameRange& other) const { return first <= other.first && other.last <= last; }
    bool meets(const FrameRange& other) const { return first <= other.last && other.first <= last; }
    friend bool operator==(const FrameRange& a, const FrameRange& b) = default;
};

/// What an event of a reel needs: its strips, as far as their film runs on.
///
///     roll     - - - | take . . . . . . . . . . . | - - -     what is known to be there
///                        | frames . . . |                     what the reel needs of it
struct FilmNeed {
    FilmRun run;
    FrameRange frames;
    std::optional<FrameRange> take; ///< that the log's row or the media holds, where it is known
    int reel = 0;                   ///< among the reels, from 0
    Strip strip;                    ///< the first of them, as long as all of them
};

using FilmNeeds = std::vector<FilmNeed>;

/// A strip of a reel whose film nothing tells: it can't be ordered.
struct UnknownFilm {
    int reel = 0;
    Strip strip;
};

struct ReelNeeds {
    FilmNeeds needs;
    std::vector<UnknownFilm> unknown;
};

/// Adds what a reel needs. `log` is the table that its numbers came from; null without one.
void add_needs(const EditFilm& film, const LogRows* log, int reel, ReelNeeds& all);
/// The same of what it shows for less than a frame of film, to which lists give none.
void add_slivers(const EditFilm& film, const LogRows* log, int reel, ReelNeeds& all);

} // namespace film
