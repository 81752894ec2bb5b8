#pragma once
// What film an edit needs, as strips: runs of the edit's frames that take their film evenly from one stretch.
//
//     edit      | 0 . . . . 47 | 48 . . . 71 | 72 ...       a strip of role cut, a dissolve with an outgoing and an
//     V1        |-- A ---------|-- A out ----|              incoming strip over the same frames, then B again
//                              |-- B in -----|-- B ---

#include "embedded/fraction.h"
#include "host/labels.h"

#include <cstdint>
#include <string>
#include <vector>

namespace film {

using embedded::Fraction;

/// The frame that a place lies in. Places that a speed such as 2/3 puts a hair ahead of a frame count as on it, as they
/// do in the lists.
std::int64_t whole_frame(const Fraction& place);
extern const Fraction hair_ahead;

/// A number that runs along a strip: frame `k` of the strip, from 0, has the number `first` + `k` * `step`.
///
/// It counts frames from sample 0 of the prefix: frames of film for key and ink numbers, of timecode for timecode. The
/// frame of film that is meant is the whole part; fractions come of speeds and of pulldown. `perforation` is what the
/// samples of that film lie off those frames, from 0 to below the perforations of a frame.
struct Count {
    label_t kind = label_none; ///< none: the strip has no such number
    std::string prefix;        ///< as the labels have it, to the kind's length
    Fraction first;
    Fraction step = 1; ///< below 0 in reverse, 0 for a freeze
    int perforation = 0;

    explicit operator bool() const { return kind != label_none; }
    Fraction at(std::int64_t k) const { return first + Fraction(k) * step; }
    std::int64_t frame_at(std::int64_t k) const { return whole_frame(at(k)); }
    /// The same as a label's sample; kept within an int.
    int sample_at(std::int64_t k) const;
    LabelPoint point_at(std::int64_t k) const;
    std::string text_at(std::int64_t k) const;
};

enum class Role : unsigned char {
    cut,      ///< seen alone
    outgoing, ///< in a transition, what goes away
    incoming, ///< in a transition, what comes
    layer,    ///< of an upper track, where an optical that has a number draws on that track
};

/// How far the film of a strip is known.
enum class Sureness : unsigned char {
    exact,
    within,  ///< the frame may be off by up to `Strip::off` frames
    beyond,  ///< counted on past the end of the log's row, where the film may not go on
    counted, ///< there is no number: `Strip::key` is none; the frames are known from the source's first one on
    unknown, ///< nothing is known of the film
};

/// Names of the rolls and reels, whole: lists cut them. Empty where there is none.
struct Rolls {
    std::string listed; ///< the one that lists print, as the option `film_reel` chooses it
    std::string camera, lab, daily, tape, sound, timecode_24;
};

struct Strip {
    int event = 0;   ///< as the assembly numbers it, from 1; 0 where the assembly doesn't show it
    int optical = 0; ///< from 1 in the order of the edit; 0 outside opticals
    int layer = 0;   ///< 0 the channel itself, then the picture tracks above it
    Role role = Role::cut;
    bool black = false; ///< needs no film
    bool rendered = false;
    std::int64_t start = 0, end = 0; ///< whole film frames of the edit, `end` behind the last

    Rolls rolls;
    Count key, ink;
    Count timecode; ///< of the picture, in its own frames
    Count source;   ///< frames of film from the source's first one; always there for material, of kind `label_frames`
    Sureness sureness = Sureness::exact;
    int off = 0; ///< with `within`, at most so many frames; in the others 0
    /// What of `key.first` only pushes it inside its frame, where film goes to the log's tape by pulldown.
    Fraction pushed;
    /// Where it begins and ends by the exact times, as frames of the edit behind `start` and `end`: with pulldown cuts
    /// lie between frames of film.
    Fraction lead, tail;
    /// Frames that it may show for that, ahead of those that its numbers name and behind them.
    std::int64_t more_below = 0, more_above = 0;

    std::string name, scene, take;
    std::string where;  ///< file and line or object, as messages name the event
    int item = -1;      ///< tells the event: all pieces and shares of one event have the same, and no others
    int log_row = -1;   ///< of the logging table, from 0; -1 where none is meant
    int other_row = -1; ///< another row that holds the same frames with as good a right and names other film
    Fraction speed = 1;

    std::int64_t length() const { return end - start; }
    bool has_film() const { return !black && sureness != Sureness::unknown; }
};

using Strips = std::vector<Strip>;

/// By start, layer, role, and the rest in the order in which they were made.
void sort_strips(Strips& strips);

} // namespace film
