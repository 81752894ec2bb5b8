#pragma once
// The frames that a strip's numbers name, and those that it may show.
//
//     film    | 0   | 1   | 2   | 3   |      four frames of film, five of video: what begins with the second of them
//     may video   | 0  | 1  | 2  | 3  | 4  |      show frame 0 or not, as the transfer began
//
// With pulldown orders take both.

#include "film/film_needs.h"

namespace film {

/// The number that the film is told by.
const Count& told_by(const Strip& strip);
/// In whichever direction.
FrameRange named_frames(const Strip& strip);
/// Sets `more_below` and `more_above`. `picture`: frames of film that a frame of the source's picture holds, at most 1.
void note_more(const Fraction& picture, Strip& strip);

} // namespace film
