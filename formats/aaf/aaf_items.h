#pragma once
// The segments of a composition's track as items of a channel.
//
//     sequence     | A . . . . . . .|                    the transition overlaps both; the cut lies CutPoint frames
//                            |X X X X|                   behind its start
//                            |B . . . . . .|
//     items        | A . . . . . |B . . . .|             with a transition before and behind the cut

#include "formats/aaf/aaf_operations.h"
#include "formats/aaf/aaf_source.h"
#include "formats/timeline/items.h"
#include "formats/timeline/sources.h"

#include <optional>
#include <vector>

namespace formats::aaf {

using timeline::Item;
using timeline::Items;
using timeline::Stretch;

/// The slots that a scope reference counts down through, and where in the scope the reference stands.
struct Scope {
    const Scope* outer = nullptr;
    Fraction outer_at; ///< where this scope begins in the outer one
    const std::vector<const Object*>* slots = nullptr;
    std::size_t index = 0;
};

/// Brings tracks down to items. Refuses (by `ReadError`) compositions that hold themselves, and elements that the file
/// lacks, for all behind them would move.
class Flattener {
public:
    Flattener(const Context& context, timeline::Sources& sources) : context_(context), sources_(sources) {}

    /// All of a track that counts frames of `rate`.
    Items track(const Object& segment, const Fraction& rate, const Mob& composition, const Place& place);

private:
    /// Frames that a speed shows: `zero` as its frame 0, and those each `step` behind it. Of its frames another speed
    /// around it may show some alone, or in turned order.
    struct Grid {
        Fraction zero, step;
        const Grid* around = nullptr;

        bool turns() const { return (step < Fraction(0)) != (around && around->turns()); }
        /// The first from `frame` on, in the direction in which all of the speeds play.
        Fraction from(const Fraction& frame) const;
        Grid seen_from(const Fraction& start) const { return {zero - start, step, around}; }
    };
    /// Where a segment is read.
    struct Around {
        const Place& place;
        Fraction rate, step;            ///< its frames, and how many of them pass in a second of the edit
        const Scope* scope = nullptr;   ///< null: a channel of its own, below which others lie
        Fraction at;                    ///< of the segment's frame 0 in the scope
        std::vector<const Mob*> others; ///< sub-clips that it is in, the nearest first
        bool backward = false;          ///< whether a speed around it plays it so
        /// Its frame from which on no transition lies over it, in the direction in which it plays; none at all, or
        /// outside of it, where that holds for the first.
        std::optional<Fraction> clear = {};
        std::optional<Grid> grid = {};         ///< of the frames that a speed around it shows
        std::optional<Fraction> sub_clip = {}; ///< where the nearest of the others begins; none where that isn't simple
    };
    struct Part;

    Items range(const Object& segment, const Stretch& frames, const Around& around);
    /// Without a stretch all of it, however long it says it is.
    Items sequence(const Object& sequence, const std::optional<Stretch>& frames, const Around& around);
    Items shown_of(const Part& part, const std::optional<Stretch>& frames, const Around& inside);
    void tell_of_changes_in_overlaps(const Part& part, const Around& inside);
    bool is_one_piece(const Object& segment, const Stretch& frames, const Around& around);
    void tell_of_what_lacks(const Stretch& frames, const Fraction& length, const Around& around) const;
    std::vector<Part> parts_of(const Object& sequence, const Around& around);
    void share_overlap(Part& before, Part& transition, Part& behind, const Place& place);
    Items transition(const Part& part, const Around& around);
    Items clip(const Object& clip, const Stretch& frames, const Around& around);
    Items nest(const Object& clip, const Mob& mob, const Stretch& frames, const Around& around);
    void add_events(const Object& clip, const Stretch& frames, const Around& around, Items& items);
    /// The first frame from which on the way differs from that at the start; the end where none does.
    Fraction end_of_way(const Object& clip, const Stretch& frames, const Traced& first, const Around& around);
    Item event(const Object& clip, const Stretch& frames, const Traced& first, const Around& around);
    ClipSource source_for(const Object& clip, const Stretch& frames, const Traced& first, const Around& around);
    void add_marks(const Traced& traced, Item& item);
    Traced traced(const Object& clip, const Fraction& frame, const Around& around) const;
    Items operation(const Object& group, const Stretch& frames, const Around& around);
    Items generator(const Object& group, const Stretch& frames, const Around& around);
    Items retimed(const Object& group, const Stretch& frames, const Around& around);
    Items piece(const Object& input, const SpeedPiece& piece, const Stretch& frames, const Around& around);
    Items scope(const Object& nested, const Stretch& frames, const Around& around);
    Items reference(const Object& reference, const Stretch& frames, const Around& around);
    void tell_of_other_inputs(const Object& group, const Object& taken, const Around& around) const;
    Items gap(const Stretch& frames, const Around& around, Item::Kind kind = Item::Kind::gap);
    Item item_for(const Stretch& frames, const Around& around);
    void warn(embedded::WarningKind kind, const Around& around, const std::string& what) const {
        if (!looking_) context_.warn(kind, around.place, what);
    }

    const Context& context_;
    timeline::Sources& sources_;
    std::vector<const Mob*> open_; ///< compositions that are being read, from the outermost
    int depth_ = 0;
    embedded::Warnings cut_off_; ///< of transitions that what is taken of a nest begins or ends inside
    bool looking_ = false;       ///< at what lies under a transition: nothing is told or made of it
    std::size_t made_ = 0;
};

} // namespace formats::aaf
