#pragma once
// Writes one channel of an edit as a CMX 3600 edit list.

#include "formats/edit_writing.h"
#include "formats/key_lookup.h"
#include "formats/key_spelling.h"
#include "host/edit.h"

namespace formats {

struct EdlWriting {
    int channel = 0; ///< absolute
    /// Unset: the edit's own key numbers.
    LogLookup log = {};
    const KeySpelling* keys = &plain_spelling();
    bool last_keys = false; ///< the number of the last frame too, in a comment behind that of the first
};

/// Reels, timecodes, clip and file names, speeds as `M2`, black as `BL`, dissolves and wipes in two lines, key numbers
/// and cues in comments that our own reader takes again.
Written write_edl(const EditPtr& edit, const EdlWriting& writing);

} // namespace formats
