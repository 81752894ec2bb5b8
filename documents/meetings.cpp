#include "documents/meetings.h"

#include <algorithm>
#include <map>
#include <string>
#include <tuple>
#include <utility>

namespace documents {
namespace {

using film::Piece;

/// A stretch of a roll that a piece uses, both ends included.
struct Stretch {
    const Piece* piece = nullptr;
    FilmRun run;
    std::int64_t first = 0, last = 0;
};

using RollKey = std::tuple<label_t, std::string, int>;

std::map<RollKey, std::vector<Stretch>> stretches_of(const CutFilm& cut) {
    std::map<RollKey, std::vector<Stretch>> rolls;
    for (const Piece& piece : cut.pieces) {
        if (piece.black()) continue;
        for (const FilmRun& run : runs_of(piece, piece.start, piece.end)) {
            if (!run.key || !run.strip->has_film()) continue;
            const std::int64_t a = run.key.frame_at(0), b = run.key.frame_at(run.length() - 1);
            rolls[{run.key.kind, run.key.prefix, run.key.perforation}].push_back(
                {&piece, run, std::min(a, b), std::max(a, b)});
        }
    }
    for (auto& [roll, stretches] : rolls)
        std::stable_sort(stretches.begin(), stretches.end(),
                         [](const Stretch& a, const Stretch& b) { return a.first < b.first; });
    return rolls;
}

/// The stretch behind goes on in the reel where the one before ends: nothing is cut between them.
bool run_on(const Stretch& a, const Stretch& b) {
    const auto behind = [](const Stretch& x, const Stretch& y) {
        return x.run.end == y.run.start && x.piece->first().layer == y.piece->first().layer &&
               x.run.key.step == y.run.key.step && x.run.key.at(x.run.length()) == y.run.key.at(0);
    };
    return behind(a, b) || behind(b, a);
}

/// Those met so far that reach furthest: of all pieces, and of all but that one's.
struct Furthest {
    const Stretch* best = nullptr;
    const Stretch* other = nullptr;

    const Stretch* of_another(const Piece* piece) const { return best && best->piece == piece ? other : best; }
    void take(const Stretch& stretch) {
        if (best && stretch.last < best->last) {
            if (stretch.piece != best->piece && (!other || other->last < stretch.last)) other = &stretch;
            return;
        }
        if (best && best->piece != stretch.piece) other = best;
        best = &stretch;
    }
};

Meeting meeting_of(const Stretch& a, const Stretch& b, std::int64_t frames) {
    Meeting meeting;
    const bool in_order = a.piece->start <= b.piece->start;
    meeting.first = in_order ? a.piece : b.piece;
    meeting.second = in_order ? b.piece : a.piece;
    meeting.shared = std::max<std::int64_t>(frames, 0);
    meeting.apart = std::max<std::int64_t>(-frames, 0);
    meeting.key = b.run.key;
    meeting.key.first = film::Fraction(b.first);
    return meeting;
}

void find_meetings(const std::vector<Stretch>& stretches, int butt, std::vector<Meeting>& meetings) {
    Furthest furthest;
    for (const Stretch& stretch : stretches) {
        if (const Stretch* before = furthest.of_another(stretch.piece)) {
            const std::int64_t frames = std::min(before->last, stretch.last) - stretch.first + 1;
            const bool close = -frames < butt && !run_on(*before, stretch);
            if (frames > 0 || close) meetings.push_back(meeting_of(*before, stretch, frames));
        }
        furthest.take(stretch);
    }
}

} // namespace

std::vector<Meeting> meetings_of(const CutFilm& cut) {
    std::vector<Meeting> meetings;
    for (const auto& [roll, stretches] : stretches_of(cut))
        find_meetings(stretches, cut.options.butt, meetings);
    std::stable_sort(meetings.begin(), meetings.end(), [](const Meeting& a, const Meeting& b) {
        return std::pair(a.first->start, a.second->start) < std::pair(b.first->start, b.second->start);
    });
    return meetings;
}

} // namespace documents
