#pragma once
// By how much key numbers of neighbouring frames differ, and which film counts like that.
//
//     count, perforations   1000 56   1000 60   1001 00   1001 04
//     from frame to frame          4         4         4             steps of 4, counts of 60 - 0 + 4 = 64: 35mm, 4
//     perforations

#include "formats/scans/scan_header.h"
#include "host/labels.h"

#include <map>

namespace formats {

/// In perforations; nothing where no frames showed it.
struct ScanRhythm {
    std::optional<int> step;  ///< from frame to frame
    std::optional<int> count; ///< from count to count
};

/// Takes the key numbers of neighbours, pair by pair; what most of them have is the rhythm.
class RhythmTaker {
public:
    void take(const HeaderKey& key, const HeaderKey& next);
    ScanRhythm rhythm() const;

private:
    std::map<int, int> steps_, falls_; ///< how many pairs have each
};

/// The kind of key numbers with these perforations; none where there is none, or where no count was shown and several
/// have that step.
label_t film_of_rhythm(const ScanRhythm& rhythm);

/// How offsets of headers become perforations.
enum class OffsetUnit {
    perforations,
    frames, ///< some programs write frames where perforations belong
    neither ///< the headers don't count as that film does
};

OffsetUnit offset_unit(const ScanRhythm& rhythm, label_t film);

} // namespace formats
