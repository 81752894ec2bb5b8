// Film that is used twice, and pieces that lie too close on the negative for a splice.

#include "film/finder.h"

#include <algorithm>
#include <map>
#include <string>
#include <tuple>
#include <utility>

namespace film {
namespace {

/// A strip that goes on with another one's film where the other one ends in the edit: nothing is cut between them.
bool goes_on(const Strip& a, const Strip& b) {
    if (a.end != b.start || a.key.step != b.key.step || a.layer != b.layer) return false;
    const Fraction off(std::max(a.off, b.off)), apart = b.key.at(0) - a.key.at(a.length());
    return -off <= apart && apart <= off;
}

/// The pieces met so far that reach furthest: of all events, and of all events but that one's.
struct Furthest {
    const FilmPiece* best = nullptr;
    const FilmPiece* other = nullptr;

    const FilmPiece* of_another(int item) const { return best && best->strip->item == item ? other : best; }
    void take(const FilmPiece& piece) {
        if (best && piece.last < best->last) {
            if (piece.strip->item != best->strip->item && (!other || other->last < piece.last)) other = &piece;
            return;
        }
        if (best && best->strip->item != piece.strip->item) other = best;
        best = &piece;
    }
};

/// Where two events meet on film.
struct Meeting {
    const FilmPiece* first = nullptr;
    const FilmPiece* second = nullptr;
    std::int64_t frames = 0; ///< used by both, or 0 and less: lying between them
};

} // namespace

// In the order of their first frames, each against the one before that reaches furthest and is another event's:
//
//     |-----------|             furthest
//          |----|               used twice with it
//                  |-----|      too close behind it
//
void Finder::find_meetings(std::vector<FilmPiece>& pieces) {
    std::stable_sort(pieces.begin(), pieces.end(),
                     [](const FilmPiece& a, const FilmPiece& b) { return a.first < b.first; });
    std::map<std::pair<int, int>, Meeting> meetings;
    Furthest furthest;
    for (const FilmPiece& piece : pieces) {
        if (const FilmPiece* before = furthest.of_another(piece.strip->item)) {
            const std::int64_t frames = std::min(before->last, piece.last) - piece.first + 1;
            const bool cut = !goes_on(*before->strip, *piece.strip) && !goes_on(*piece.strip, *before->strip);
            Meeting& meeting = meetings[std::minmax(before->strip->item, piece.strip->item)];
            if (frames > 0 || (cut && -frames < options_.splice_frames)) {
                if (!meeting.first || (meeting.frames <= 0 && frames > 0)) meeting = {before, &piece, 0};
                meeting.frames = frames > 0 ? std::max<std::int64_t>(meeting.frames, 0) + frames : frames;
            }
        }
        furthest.take(piece);
    }
    for (const auto& [items, meeting] : meetings)
        if (meeting.first) tell_meeting(*meeting.first, *meeting.second, meeting.frames);
}

void Finder::tell_meeting(const FilmPiece& a, const FilmPiece& b, std::int64_t frames) {
    const bool in_order = a.strip->start <= b.strip->start;
    const FilmPiece& earlier = in_order ? a : b;
    const FilmPiece& later = in_order ? b : a;
    const FilmEvent& event = film_.events[static_cast<std::size_t>(later.strip->item)];
    const FilmEvent& other = film_.events[static_cast<std::size_t>(earlier.strip->item)];
    const std::string timecode = clock_(earlier.strip->start);
    const std::string at = " of " + channel_of(other.layer) + " at " +
                           (timecode.empty() ? "frame " + std::to_string(earlier.strip->start) : timecode);
    const std::string which = (other.event > 0 ? "event " + std::to_string(other.event) : "an event") + at;
    const std::string from = later.strip->key.text_at(0);
    if (frames > 0)
        find(Code::used_twice, Severity::doubt, event, later.strip->start,
             frames_text(frames) + " of its film, which it uses from " + from + " on, are used in " + which + " too");
    else
        find(Code::too_close, Severity::doubt, event, later.strip->start,
             "on the negative " + frames_text(-frames) + " lie between it and " + which + ", and a splice needs " +
                 std::to_string(options_.splice_frames));
}

void Finder::find_meetings() {
    std::map<std::tuple<label_t, std::string, int>, std::vector<FilmPiece>> film;
    for (const Strip& strip : film_.strips) {
        if (!strip.key || !strip.has_film()) continue;
        const std::int64_t a = strip.key.frame_at(0), b = strip.key.frame_at(strip.length() - 1);
        film[{strip.key.kind, strip.key.prefix, strip.key.perforation}].push_back(
            {&strip, std::min(a, b), std::max(a, b)});
    }
    for (auto& [roll, pieces] : film)
        find_meetings(pieces);
}

} // namespace film
