#pragma once
// Edit lists as clips on tracks, in frames of the record.

#include "embedded/rates.h"
#include "embedded/warning.h"
#include "formats/edl/edl_list.h"
#include "host/channel_kinds.h"

#include <cstdint>
#include <map>
#include <tuple>

namespace formats::edl {

using embedded::Fraction;
using embedded::RateInfo;

struct NamedList {
    std::string path;
    EventList list;
};

/// A timecode's frames since midnight. A label that drop-frame leaves out counts as the next that exists, and
/// `skipped` says so. Throws `BadLine` for frames that the rate doesn't have.
std::int64_t frames_of(const Timecode& time, const RateInfo& rate, bool drop, bool* skipped = nullptr);
std::int64_t frames_of_day(const RateInfo& rate, bool drop);

/// Whether frames a second, without their sign, are read as normal speed.
bool is_normal_speed(const Fraction& frames, const RateInfo& rate);

/// The key number of a source, which begins with the frame of tape that it is of, or up to a cycle before that.
struct PlacedKey {
    const KeyNumber* number = nullptr;
    std::int64_t start = 0; ///< of the source, in frames since midnight, whatever is shown of it
    std::int64_t ahead = 0; ///< frames of film from there to the number
};

/// One line's stretch of the record and of its source.
struct PlacedLine {
    const EventLine* line = nullptr;
    const Event* event = nullptr;
    std::int64_t in = 0, out = 0; ///< frames of the record
    Fraction source_in;           ///< frames of the source since midnight, where its stretch of media begins
    Fraction speed = 1;
    bool source_drop = false;
    PlacedKey key;
};

/// A clip on a track:
///
///     |from . . . .|\         the transition begins with the clip and takes `frames`
///              in  |-X-|= = = = = =| out
struct Clip {
    PlacedLine placed;
    EditType type = EditType::cut;
    int frames = 0;                 ///< of its transition
    std::optional<PlacedLine> from; ///< what the list says that it comes from
    bool joined = false;            ///< begins where the clip before ends, and comes from that
    std::int64_t held_from = 0;     ///< where it would begin without the delay of a split edit
    std::string_view name;
    std::size_t list = 0;

    const EventLine& line() const { return *placed.line; }
    bool black() const { return placed.line->black(); }
};

/// Picture tracks come before sound; those of the first list before those of the next; keys lie on the track
/// that they cover.
struct TrackPlace {
    int kind = picture_channel; ///< or `sound_channel`
    std::size_t list = 0;
    int number = 1;
    bool key = false;

    friend bool operator<(const TrackPlace& a, const TrackPlace& b) {
        return std::tie(a.kind, a.list, a.number, a.key) < std::tie(b.kind, b.list, b.number, b.key);
    }
};

struct Tracks {
    std::map<TrackPlace, std::vector<Clip>> clips; ///< each in order of the record, none over another
    bool drop = false;                             ///< of the record
    std::int64_t start = 0;                        ///< where the first clip begins
    std::int64_t midnight_shift = 0;               ///< added to records in the first half of a day
    embedded::Warnings warnings;

    bool empty() const { return clips.empty(); }
    /// A record timecode in frames; throws `BadLine`.
    std::int64_t record_frames(const Timecode& time, const RateInfo& rate) const;
};

/// `lists` must outlive the result.
/// `reverse_from_first`: the source in of a reverse shot is the frame that is shown first, not its lowest.
Tracks lay_out_tracks(const std::vector<NamedList>& lists, const RateInfo& rate, bool reverse_from_first = false);

/// "reel1.edl: line 12"; the path alone for line 0.
std::string place_of(const std::string& path, int line);

} // namespace formats::edl
