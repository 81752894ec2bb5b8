#pragma once
// A composition as an edit: its rate, its timecode, its channels and its markers.

#include "formats/aaf/aaf_items.h"

#include <vector>

namespace formats::aaf {

/// The compositions that can be read as edits: those marked as such, else those that no other uses, else all.
std::vector<const Mob*> top_compositions(const File& file);

/// The rate of its pictures, else of its timecode; null where neither tells one that is listed.
const embedded::RateInfo* rate_of(const File& file, const Mob& composition);
/// Why its first track tells none, as "slot 1 holds nothing"; empty where it has no tracks.
std::string why_no_rate(const Mob& composition);
embedded::EditDescription describe_edit(const Mob& composition, const Context& context, const std::string& name,
                                        std::int64_t file_time);
/// Adds pictures from the lowest track, then sound, and the cues of both. Refuses what the items refuse.
void add_channels(const Mob& composition, const Context& context, embedded::EditBuilder& builder);

} // namespace formats::aaf
