#pragma once
// The entries of an opticals list, with the drawings of their rolls.

#include "film/report_pages.h"

namespace film {

/// A position of the reel and the key number there. Both are empty where the drawing gives none.
struct DrawnPoint {
    Place place;
    std::string_view position, key;

    explicit operator bool() const { return !position.empty(); }
};

/// A shot of a drawing, on roll A (side 0) or B. Its first frame is at `begin` or at `start_in`, its last one at `end`
/// or at `full_out`.
struct DrawnShot {
    Place place;
    int side = 0;
    std::string_view name, roll;
    int length = 0;
    std::string_view speed; ///< in percent; empty: play-speed
    DrawnPoint begin, end;
    DrawnPoint start_in, full_in;
    DrawnPoint start_out, full_out;
};

/// What follows on what along a roll: a spacer, or a shot.
struct DrawnPart {
    Place place;
    int spacer = 0; ///< frames
    int shot = -1;  ///< place among the layer's shots; -1: a spacer
};

struct DrawnTransition {
    Place place;
    std::string_view name, start, end;
    int length = 0;
};

struct DrawnLayer {
    Place place;
    int number = 0;        ///< 0: the optical has no layers
    std::string_view head; ///< what names its two rolls
    std::vector<DrawnShot> shots;
    std::vector<DrawnPart> rolls[2];
    std::vector<DrawnTransition> transitions;
};

/// An effect over several tracks.
struct DrawnEffect {
    Place place;
    std::string_view name, start, end;
    int length = 0;
};

struct OpticalEntry {
    Place place;
    int number = 0;
    int event = 0; ///< 0: the assembly doesn't show it
    std::string_view name;
    std::string_view begin, end;
    int length = 0;
    bool in_error = false;
    std::vector<DrawnEffect> effects;
    std::vector<DrawnLayer> layers;
};

struct OpticalEntries {
    std::vector<OpticalEntry> opticals;
    bool none = false; ///< the list says that there are none
};

OpticalEntries read_opticals(const ListPages& pages, std::vector<ReadFault>& faults);

} // namespace film
