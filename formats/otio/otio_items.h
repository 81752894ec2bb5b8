#pragma once
// The items of a channel: what tracks, nests and gaps come down to.

#include "formats/otio/otio_details.h"
#include "formats/timeline/items.h"

#include <unordered_map>
#include <vector>

namespace formats::otio {

using timeline::drop_inner_transitions;
using timeline::Item;
using timeline::Items;
using timeline::length_of;
using timeline::spliced;
using timeline::Stretch;
using timeline::trimmed;

/// 0 for kinds that are neither picture nor sound.
int kind_of_track(const JsonValue& track);
/// The children of a composition that a channel of that kind is made from: of a track the track itself.
std::vector<Place> tracks_of_kind(const Place& composition, int kind);
bool has_effects(const Place& object, const Context& context);

/// What of a track's content its own range leaves. A range that meets nothing of it is left out with a warning.
Stretch stretch_of_track(const Place& track, const Fraction& content, const Context& context);

/// How long things are, in seconds. What was measured is kept, so the document must stay as it is.
class Lengths {
public:
    explicit Lengths(const Context& context) : context_(context) {}

    /// What a child takes in its composition.
    Fraction of(const Place& item);
    Fraction of_children(const Place& track);
    Fraction shown_of(const Place& track);

private:
    Fraction measure(const Place& item);
    Fraction longest_child(const Place& stack);

    const Context& context_;
    std::unordered_map<const JsonValue*, Fraction> known_;
};

/// Brings tracks down to items.
class Flattener {
public:
    Flattener(const Context& context, Sources& sources) : context_(context), sources_(sources), lengths_(context) {}

    /// All children of a track, untrimmed; `effects_of_gaps` on FX channels, where gaps with effects count.
    Items children(const Place& track, int kind, bool effects_of_gaps);
    /// A child of a stack that isn't a track.
    Items single(const Place& item, int kind);
    /// Seconds that a child takes in its composition, a track in a stack.
    Fraction length(const Place& item) { return lengths_.of(item); }

private:
    void add(const Place& item, Items& items);
    void add_clip(const Place& clip, Items& items);
    void add_gap(const Place& gap, Items& items);
    void add_nest(const Place& nest, Items& items);
    void add_rendered(const Place& nest, const Effects& effects, Items& items);
    void splice(const Place& nest, const Place& track, Items& items);
    Items track_in_nest(const Place& nest, const Place& track);
    void add_marks(const Place& object, const Fraction& from, Item& item);
    Item gap_of(const Place& object, const Fraction& length) const;

    const Context& context_;
    Sources& sources_;
    Lengths lengths_;
    int kind_ = picture_channel;
    int depth_ = 0;
    bool on_fx_ = false;
};

} // namespace formats::otio
