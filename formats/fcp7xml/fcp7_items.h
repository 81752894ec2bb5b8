#pragma once
// Brings tracks down to items of a channel: clips as events, nests as what they hold.

#include "formats/fcp7xml/fcp7_row.h"
#include "formats/fcp7xml/fcp7_speed.h"
#include "formats/timeline/items.h"

#include <cstdint>
#include <vector>

namespace formats::fcp7 {

using timeline::Item;
using timeline::Items;
using timeline::Stretch;

/// The tracks of a sequence, picture or sound, from the lowest.
std::vector<Element> tracks_of(const Element& sequence, int kind);
/// The sequence's rate; refused where nothing says any.
Rate rate_of_sequence(const Element& sequence, const Index& index);

class Flattener {
public:
    explicit Flattener(const Context& context) : context_(context) {}

    /// All items of a track of that sequence. One that is switched off is a single gap.
    Items track(const Element& track, const Element& sequence, int kind);

    int items_off() const { return items_off_; }

private:
    Items items_of(const Element& track, const Rate& rate, int kind);
    Items content_of(const Placed& placed);
    Items gap_for(const Placed& placed, const Stretch& own) const;
    Items made_up(const Placed& placed, const Stretch& own, const std::string& name, bool black);
    Items generator(const Placed& placed, const Stretch& own);
    Items nest(const Placed& placed, const Stretch& own);
    Items spliced_nest(const Element& nested, const Element& track, const Placed& placed, const Piece& taken);
    Items rendered_nest(const Element& nested, const Placed& placed, const Pieces& pieces);
    std::vector<Element> shown_tracks(const Element& sequence, const Element& item) const;
    Item item_like(const Placed& placed, const Fraction& length) const;
    Item no_black(const Placed& placed) const;
    void count(std::size_t more, const Element& where);

    // Clips with a medium.
    Items clip(const Placed& placed, const Stretch& own, const Element& angle);
    Items multiclip(const Placed& placed, const Stretch& own);
    Pieces pieces_of(const Placed& placed, const Stretch& own, const Media& media);
    bool stand_apart(const Pieces& pieces, const Placed& placed) const;
    void place_piece(const Piece& piece, const Rate& rate, embedded::EventDescription& event) const;
    void add_black_ahead(Piece& piece, const Placed& placed, Items& items);
    void add_events(Pieces pieces, const Fraction& moved, const Placed& placed, const Media& media,
                    embedded::SourceId source, Items& items);

    const Context& context_;
    int kind_ = picture_channel;
    int depth_ = 0;
    int items_off_ = 0;
    std::size_t made_ = 0;
    std::vector<std::uint32_t> open_; ///< numbers of the sequences that are being read
};

} // namespace formats::fcp7
