#pragma once
// Writes what an edit uses of its shots as an ALE log.

#include "formats/edit_writing.h"
#include "formats/key_lookup.h"
#include "formats/key_spelling.h"
#include "host/edit.h"

#include <vector>

namespace formats {

struct AleWriting {
    std::vector<int> channels; ///< absolute; FX channels are passed over
    /// Unset: the edit's own key numbers.
    LogLookup log = {};
    const KeySpelling* keys = &plain_spelling();
    /// Rows begin with a cycle of pulldown and say so, and end with a frame of film that they begin; else the first
    /// frame that is used begins one, and the last one ends with the row.
    bool cycles = true;
};

/// A row for each shot that is used, from the first frame that any event shows of it to behind the last, with its
/// reels, timecodes, key and ink numbers, scene and take. By reel, then timecode.
Written write_ale(const EditPtr& edit, const AleWriting& writing);

} // namespace formats
