#pragma once
// A cutting copy of single frames in plain lists, worked on by erasing and inserting: slow, and plain to see.

#include "changelist/steps/kept_steps.h"

#include <string>
#include <vector>

namespace frame_by_frame {

struct Frame {
    std::string word; ///< of filler; empty for film
    std::string roll; ///< prefix and camera roll, lower case
    double speed = 1.0;
    double sample = 0;  ///< of its key number
    int film_frame = 1; ///< samples
    int old_index = -1; ///< which frame of the old cut it was; -1 for new film
    int old_reel = 0;
    int old_frame = 0;
    int step = 0;
};

bool is_same(const Frame& a, const Frame& b);

struct Result {
    bool proved = false;
    int step = 0;
    int reel = 0;
    int position = 0;

    bool operator==(const Result&) const = default;
};

/// Events in order of reel and frame as single frames.
std::vector<Frame> frames_of(const Vector<CutEvent>& cut);

Result carry_out(const Vector<CutEvent>& old_cut, const Vector<CutEvent>& new_cut, const Vector<change_step>& steps);

/// Pieces that are on both sides, found frame by frame, each frame once; filler only by whole events.
Vector<MatchedPiece> match(const Vector<CutEvent>& old_cut, const Vector<CutEvent>& new_cut);

} // namespace frame_by_frame
