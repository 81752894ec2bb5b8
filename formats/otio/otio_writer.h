#pragma once
// Writes edits as OpenTimelineIO files, with all that lists are made of: what is read back makes the same lists.

#include "formats/edit_writing.h"
#include "formats/key_spelling.h"
#include "host/edit.h"

namespace formats {

/// `edit` is one that was built: tracks, transitions with their cut points, speeds, cues, and of each source its reels,
/// labels and log fields. What was nested stands as it was flattened. The text is read again before it is given, and
/// what it says otherwise than the edit is among the warnings. Sources with images are image sequences.
Written write_otio(const EditPtr& edit, const KeySpelling& keys = plain_spelling());

} // namespace formats
