#pragma once
// Whether an edit that was written in some format and read again needs the same film.

#include "embedded/warning.h"
#include "film/film_uses.h"
#include "film/log_rows.h"

namespace film {

/// A line for each event of the channel, on its lowest track, that `again` would cut from other film, at most 20 and
/// one that counts the rest. Film is compared frame by frame, by key number, else by reel and timecode. `log` is where
/// the numbers of `edit` come from, if not from itself.
embedded::Warnings film_differences(const EditPtr& edit, const LogRows* log, const EditPtr& again,
                                    const UseOptions& options);
/// The same of strips, of their lowest layer.
embedded::Warnings film_differences(const Strips& strips, const Strips& again);

} // namespace film
