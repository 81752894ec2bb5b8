#pragma once
// What effects of AAF files do: speeds, transitions, nests.

#include "embedded/edit_builder.h"
#include "formats/aaf/aaf_file.h"

#include <string>
#include <vector>

namespace formats::aaf {

/// A stretch of the output at one speed:
///
///     output frame   from . . . . . . . to
///     input frame    source_from . . . source_to      backward the last is the lower: 7 to -1 shows 7 down to 0
struct SpeedPiece {
    Fraction from, to, source_from, source_to;

    Fraction speed() const; ///< 0 for a freeze, below 0 backward
    Fraction source_at(const Fraction& output) const { return source_from + (output - from) * speed(); }
};

struct Speed {
    std::vector<SpeedPiece> pieces; ///< one behind the other over the whole output
    bool curve = false;          ///< no pieces say it exactly: one piece from the first to the last frame stands for it
    const char* doubt = nullptr; ///< what of it was guessed
};

bool is_speed(const File& file, const Object& group);
/// Of a group for which `is_speed`, over that many frames of output.
Speed speed_of(const File& file, const Object& group, const Fraction& length);
/// The simplest fraction within a millionth: 333333333/1000000000 is 1/3.
Fraction simple_speed(const Fraction& speed);

/// Whether an effect only holds what is nested.
bool is_nest(const File& file, const Object& group);
/// An effect's name; where the file has none, that of its id.
std::string effect_name(const File& file, const Object& group);

/// Kind, name and pattern of a transition; the offsets stay 0.
embedded::TransitionDescription transition_of(const File& file, const Object& transition);

} // namespace formats::aaf
