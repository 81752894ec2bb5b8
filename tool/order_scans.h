#pragma once
// Orders as files for scanners and programs that conform.

#include "film/order_facts.h"
#include "formats/edit_writing.h"
#include "formats/key_spelling.h"
#include "tool/order_edit.h"
#include "tool/scan_files.h"

#include <optional>

namespace tool {

/// What the line says of them.
struct ScanWriting {
    const formats::KeySpelling* keys = &formats::plain_spelling();
    OrderEditing::Reel edl_reel = OrderEditing::Reel::roll;
    std::optional<FileNames> files; ///< unset: as `FileNames()`
    FrameNumbers numbers = FrameNumbers::timecode;
};

// Each has all pieces in their order, and warnings of what it can't hold: "piece 3: why". The order isn't empty. They
// throw `JobError`.

/// An event for each piece, behind each other, with key numbers of the first frame and of the last one in comments.
/// What was written is read again and compared.
formats::Written edl_of_order(const film::OrderToTell& order, const ScanWriting& writing);
/// A row for each piece that has a timecode.
formats::Written ale_of_order(const film::OrderToTell& order, const ScanWriting& writing);
/// A clip for each piece, of what is needed of it; its media are the images of the whole piece.
formats::Written otio_of_order(const film::OrderToTell& order, const ScanWriting& writing);
/// A row for each piece that has key numbers.
formats::Written cut_file_of_order(const film::OrderToTell& order, const ScanWriting& writing);

} // namespace tool
