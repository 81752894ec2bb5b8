#pragma once
// The lists of an order: what to pull or scan, what of it was had shorter, what no reel uses any more, and what can't
// be ordered.

#include "documents/document.h"
#include "film/order_facts.h"

#include <string>
#include <vector>

namespace documents {

/// An order as its lists see it.
struct OrderFilm {
    TitleBlock title;
    film::OrderToTell order;
    std::vector<std::string> files; ///< what the scans of each piece are called, by place in the pieces; may be empty
    bool change = false;            ///< it was held against earlier orders
    bool frames = false;            ///< lengths in frames, in place of feet and frames
};

/// "R1 weir, R2 mill, R3 ford and 2 more", numbered as uses have them; the name alone of a single reel.
std::string names_of_reels(const std::vector<film::OrderInput>& reels);

/// The names of its reels, and their gauge where it is one.
TitleBlock title_of(const film::OrderToTell& order);

/// The pieces in their order, those of a roll under its name.
List order_list_of(const OrderFilm& film);
/// The pieces of which an earlier order holds a part.
List longer_list_of(const OrderFilm& film);
/// What earlier orders hold, and no reel uses any more.
List order_discard_of(const OrderFilm& film);
/// The new rolls that the pieces are laid on, piece by piece.
List select_roll_list_of(const OrderFilm& film);
/// What has neither key number nor timecode.
List not_ordered_of(const OrderFilm& film);

} // namespace documents
