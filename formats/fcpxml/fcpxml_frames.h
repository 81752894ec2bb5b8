#pragma once
// Times that were rounded when the file was written, put back onto the frames that were meant.
//
// Editing programs write a time in units of their own, often of 1/2400 s. Where media and edit differ in rate, frames
// lie between those units: frame 214 at 29.97 is written as 17137/2400 s, a 700th of a frame too early. Read as it
// stands it would be frame 213.

#include "formats/fcpxml/fcpxml_layers.h"

namespace formats::fcpxml {

/// Frames that are counted from a time on.
struct Frames {
    Fraction zero, rate;

    /// The start of a frame that is no farther than rounding can be, 1/2000 s (about a hundredth of a frame); any
    /// other time, truly between frames, as it is.
    Fraction settled(const Fraction& time) const;
};

/// All that begins or ends within rounding of a frame does so there. What is shorter than that is no item, but left
/// over where a rounded time met a cut: it goes.
void settle_on_frames(Run& run, const Frames& frames);

/// What an item shows, which begins on a frame: a cut that speeds or another rate put truly between frames lies where
/// the next one begins, the first that shows what is behind.
Items with_cuts_on_frames(Items items, const Fraction& rate);

/// Makes the items that long, at their tail; for differences as small as rounding.
void fit(Items& items, const Fraction& length);

} // namespace formats::fcpxml
