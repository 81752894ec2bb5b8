#pragma once
// An order with all that is told of it, whatever the output.

#include "embedded/rates.h"
#include "film/order.h"
#include "film/select_rolls.h"

#include <cstdint>
#include <string>
#include <vector>

namespace film {

/// A file that an order was made of.
struct OrderInput {
    std::string file;
    std::string edit;                         ///< its name
    std::uint32_t crc32 = 0;                  ///< of its bytes
    const embedded::RateInfo* rate = nullptr; ///< of the edit; null where it isn't known
};

struct OrderToTell {
    std::vector<OrderInput> reels;
    std::string log; ///< empty without one
    OrderOptions options;
    FilmNeeds all_needs;                     ///< of the reels
    FilmNeeds needs;                         ///< that this order is for: all of them, or what earlier orders lack
    OrderPieces pieces;                      ///< in the order in which they are told
    bool by_roll = true;                     ///< those of a roll together
    std::vector<UnknownFilm> unknown;        ///< that can't be ordered
    std::vector<HadPiece> had;               ///< of earlier orders
    std::vector<std::string> had_names;      ///< "order1.json piece 4", one for each
    std::vector<ChangeOrder::Longer> longer; ///< by place in `pieces` and in `had`
    std::vector<std::size_t> unused;         ///< by place in `had`
    SelectRolls selects;                     ///< that the pieces are laid on; none where they weren't asked for
};

/// What people and scripts are told of a piece, from all its uses.
struct PieceFacts {
    std::string lab_roll, tape, timecode_in, timecode_out; ///< the last one behind the piece
    std::string names, scenes, takes;                      ///< each once, parted by ", "
    std::string used;                                      ///< "R1 4, R1 17"
    std::int64_t from_take = -1; ///< frames from the first of the log's row or the media; -1 where that isn't known
};
PieceFacts facts_of(const OrderToTell& order, const OrderPiece& piece);

/// The timecode of a piece's film, by the first of its uses that has one.
struct PieceTimecode {
    Count count; ///< of the piece's first frame; a frame of film is a step. Of kind none where no use has one
    std::string tape;
    bool runs_on = true; ///< no use of the piece has another timecode for its film
};
PieceTimecode timecode_of(const OrderToTell& order, const OrderPiece& piece);

} // namespace film
