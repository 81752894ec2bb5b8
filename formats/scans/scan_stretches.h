#pragma once
// Where the frames of a sequence run on without a break: file numbers, key numbers, timecodes and frame positions all
// count on from each frame to the next.
//
//     file     1001  1002  1003 | 1004  1005 | 1008
//     key      +00   +01   +02  | +09   +10  | +13
//                               jump         frames are missing

#include "formats/scans/scan_frames.h"

namespace formats {

/// Indices of frames, the last one included.
struct Stretch {
    std::size_t first, last;
};

/// In their order. A count that a few headers lack is filled in where those on both sides agree about it; `warnings`
/// tell of that and of each break.
std::vector<Stretch> stretches_of(const ScanFiles& files, ScanFrames& scan, embedded::Warnings& warnings);

} // namespace formats
