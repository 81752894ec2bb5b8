#pragma once
// An editing program's index of events beside its log: the one names the reels that edit lists go by, the other has the
// key numbers.
//
//     event   reel A012C003   clip 12-3   01:00:04:00 to 01:00:06:12
//     shot                    clip 12-3   01:00:00:00 to 01:00:20:00   KJ 12 3456 1000+00
//     row     reel A012C003   clip 12-3   01:00:00:00 to 01:00:20:00   KJ 12 3456 1000+00

#include "formats/logs/log_row.h"

namespace formats {

/// Each shot that holds events takes what it lacks from the first of them, and its reel from all: a shot of events on
/// several reels becomes a row for each reel. Events that shots hold are gone afterwards; others stay rows, each once,
/// and `warnings` tell of them where there are any shots. A shot holds an event of its reel, or else of its name, with
/// all of its timecodes; where several do and their key numbers differ, none does.
void join_events(std::vector<LogRow>& rows, embedded::Warnings& warnings);

} // namespace formats
