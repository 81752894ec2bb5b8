#pragma once
// The material of a clip: its chain of mobs as a source with reels, labels and log fields.

#include "embedded/edit_builder.h"
#include "formats/aaf/aaf_chain.h"
#include "formats/aaf/aaf_place.h"

namespace formats::aaf {

/// A clip at one of its frames.
struct Traced {
    Chain chain;
    std::optional<Timecode> timecode, timecode_24;
    std::optional<EdgeNumber> key, ink;
    const Link* reel = nullptr; ///< tape, import or recording
    const Link* film = nullptr;
};

Traced trace(const File& file, const Point& point);

/// A source, and where in it the clip begins, in seconds from the source's first frame. That is the material's, but the
/// clip's where film is only numbered from somewhere behind the material's.
struct ClipSource {
    embedded::SourceDescription source;
    Fraction in;
};

/// The sub-clips that a clip is in, the nearest first.
struct SubClips {
    const std::vector<const Mob*>& mobs;
    std::optional<Fraction> since; ///< seconds from where the nearest begins to the frame; none where nothing tells
};

/// The source whose labels are right at that frame. The columns of the sub-clips count before those of the chain, but
/// for numbers, of which those of the chain do. `wanted` is the mob that the clip refers to, whether it is there or
/// not.
ClipSource source_of(const Traced& traced, const MobId& wanted, const SubClips& others, const Context& context,
                     const Place& place);

} // namespace formats::aaf
