#pragma once
// Rolls of selects: the pieces of an order, spliced one behind the other onto new rolls for the scanner.
//
//     SEL001   |= leader =| piece 1 . . |x| piece 2 . |x| piece 3 . . . |        x: the frames that the splices take
//     place     0          96            ...                                    frames from the head of the leader
//     timecode  01:00:00:00

#include "film/order.h"
#include "film/splice_loss.h"

#include <cstdint>
#include <string>
#include <vector>

namespace film {

struct RollBuilding {
    int feet = 0;        ///< the most that a roll holds, with its leader; 0: no rolls are built
    int leader_feet = 0; ///< at the head of each
    SpliceRules splices;
    label_t timecode = label_tc_24; ///< of the rolls, a frame of film a frame
    std::int64_t start = 0;         ///< timecode of the leader's first frame, as a number of frames
    std::string name = "SEL";       ///< that the names of the rolls begin with
};

struct SelectRoll {
    std::string name;
    label_t kind = label_none;       ///< of all its pieces
    std::int64_t frames = 0;         ///< from its head to the end of its last piece
    std::vector<std::size_t> pieces; ///< by place in the order
};

/// Where a piece lies: on which of the rolls, and which of its frames from the head it takes. Film without key numbers
/// has no length in feet, and lies on none.
struct RollPlace {
    static constexpr std::size_t none = static_cast<std::size_t>(-1);
    std::size_t roll = none;
    FrameRange frames;

    bool is_laid() const { return roll != none; }
};

struct SelectRolls {
    std::vector<SelectRoll> rolls;
    std::vector<RollPlace> places; ///< one for each piece
    RollBuilding building;
    std::string fault; ///< why they can't be built; else empty

    std::string timecode_at(std::int64_t place) const;
};

/// Whole frames in so many feet, rounded down; 0 for film that isn't measured in feet.
std::int64_t frames_in_feet(label_t kind, std::int64_t feet);
/// Frames between two pieces, which both sides of their splice take.
std::int64_t frames_of_splice(label_t kind, const SpliceRules& splices);

/// Lays the pieces in their order, each kind of film on rolls of its own. A piece that no roll holds is a fault.
SelectRolls build_rolls(const OrderPieces& pieces, const RollBuilding& building);

/// Holds rolls against the pieces: each piece that has a length in feet lies once and whole on a roll of its kind,
/// behind the leader, with room for the splices, and no roll is too long. Each failure in a sentence.
std::vector<std::string> prove_rolls(const SelectRolls& rolls, const OrderPieces& pieces);

} // namespace film
