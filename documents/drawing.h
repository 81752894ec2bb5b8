#pragma once
// Drawings of film, in whole frames, before anything is known of their size or colour.
//
//     down:   A   B               along:   old  |  A  |  B  | C |      lanes, one above the other
//             |   :  spacer                      \    \ /           bands from what stays to where it lies now
//             | \ |  transition            new  |  A  | C |  B  |
//             :   |
//
// Frames count from the start of the reel, or of the optical's reel; a length is in frames, and nothing is rounded.

#include "host/labels.h"

#include <cstdint>
#include <string>
#include <vector>

namespace documents {

/// What a piece is drawn as. Patterns tell kinds apart, and words say the same.
enum class Fill : unsigned char { plain, dots, hatched, crossed };

/// Film is a rectangle with a black outline, spacer a thin dashed one, black is solid; an effect, which is no film but
/// lies over some, is narrow.
enum class Stuff : unsigned char { film, spacer, black, effect };

/// A number at an end of a piece or of a transition in it.
struct DrawnNumber {
    std::int64_t edge = 0; ///< the boundary where it stands: ahead of that frame
    std::string text;      ///< of the first frame behind it or the last one ahead of it
};

struct DrawnPiece {
    std::string film; ///< of the row that it belongs to: "event-12"; empty: none
    int lane = 0;
    std::int64_t start = 0, length = 0;
    Stuff stuff = Stuff::film;
    Fill fill = Fill::plain;
    bool strong = false;              ///< a thick outline: something is wrong with it
    std::string name;                 ///< on the film, or beside it where it is short
    std::vector<std::string> details; ///< lines below its name, where lanes go down
    std::vector<DrawnNumber> numbers; ///< by edge; only where lanes go down
    std::string told;                 ///< all there is to say, in words
};

/// From one lane to another, or within one. The film of both sides reaches over all of it, but where both sides are the
/// same lane: then it has its frames to itself.
struct DrawnTransition {
    std::string film; ///< of the piece that goes away
    int from = 0, to = 0;
    std::int64_t start = 0, length = 0;
    std::string name; ///< "Dissolve 24"
    std::string detail;
};

/// Film that lies in a lane and lies again, as long, in the lane below.
struct DrawnBand {
    int lane = 0; ///< the upper one
    std::int64_t from = 0, to = 0, length = 0;
    bool moved = false; ///< out of its order
};

/// Words below a stretch of a lane, with a bar over that stretch or without.
struct DrawnMark {
    std::string film;
    int lane = 0;
    std::int64_t start = 0, length = 0;
    std::string text;
    bool bar = false;
    bool needed = true; ///< else it is left out where there is no room
};

struct DrawnLane {
    std::string name;
    std::string about; ///< behind the name, lighter
};

enum class Way : unsigned char { along, down };

struct Drawing {
    std::string id; ///< letters, digits, hyphens; unique in a document: "optical-3-layer-1". Also the name of its file
    std::string title;
    std::string description; ///< the same in words, for those who don't see it
    Way way = Way::along;
    label_t film = label_none; ///< what the ruler counts feet of; none: frames
    std::int64_t begin = 0, end = 0;
    std::vector<DrawnLane> lanes;
    std::vector<DrawnPiece> pieces;           ///< by lane, then start; none lie over each other
    std::vector<DrawnTransition> transitions; ///< by start
    std::vector<DrawnBand> bands;
    std::vector<DrawnMark> marks; ///< by lane, then start
    std::string patterns;         ///< what the patterns mean, for the foot

    std::int64_t length() const { return end - begin; }
};

} // namespace documents
