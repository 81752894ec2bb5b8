// Finds the film that is in both cuts. Film that is used once falls into the same pieces in whatever order they are
// looked for; of film that is used again the order decides which use becomes which:
//
//      old   [ A ][ x ][ B ][ C ]      A and C in order; then B, a whole shot elsewhere; then x in part, between the
//      new   [ B ][ A ][ x  ][ C ]     same shots; then parts anywhere

#include "base/row_numbers.h"
#include "changelist/bench/common_shots.h"
#include "changelist/bench/film_overlaps.h"
#include "changelist/bench/heaviest_run.h"
#include "changelist/bench/kept_pieces.h"
#include "changelist/bench/shot_numbers.h"

#include <algorithm>

namespace {

/// One cut while its film is given away.
struct Side {
    Side(const FilmOnReels& laid, const Vector<NumberedShot>& numbered)
        : film(laid), shots(numbered), given(numbered.size(), 0), gap(numbered.size(), 0) {}

    std::size_t first_of(std::size_t reel) const { return film.events_ahead(film.reel_start(reel)); }
    std::size_t end_of(std::size_t reel) const { return film.events_ahead(film.reel_end(reel)); }
    const LaidEvent& event(std::size_t index) const { return film.events()[index]; }

    const FilmOnReels& film;
    const Vector<NumberedShot>& shots;
    Vector<char> given;        ///< not 0: all of the event has its place in the other cut
    Vector<std::uint64_t> gap; ///< how many shots in order lie ahead of the event, on all reels
};

/// A shot that has no place in the other cut yet.
struct WaitingShot {
    std::uint32_t shot;
    std::size_t reel;
    std::size_t event;

    bool comes_before(const WaitingShot& other, bool by_reel) const {
        if (shot != other.shot) return shot < other.shot;
        return by_reel && reel < other.reel;
    }
};

/// What nobody holds yet of one cut.
class GivenFilm {
public:
    GivenFilm(const KeptPieces& pieces, FilmPlace KeptPiece::*place) {
        for (const KeptPiece& piece : pieces)
            taken_.push_back({piece.*place, piece.*place + piece.length});
        std::sort(taken_.begin(), taken_.end(), [](const Taken& a, const Taken& b) { return a.at < b.at; });
    }
    bool is_free(FilmPlace from, FilmPlace to) const {
        const auto next = next_behind(from);
        return next == taken_.end() || next->at >= to;
    }
    /// Calls `use(from, to)` for each free stretch of an event.
    template <class Use> void free_parts(const LaidEvent& event, Use use) const {
        FilmPlace from = event.at;
        for (auto next = next_behind(from); next != taken_.end() && next->at < event.end(); ++next) {
            if (from < next->at) use(from, next->at);
            from = next->end;
        }
        if (from < event.end()) use(from, event.end());
    }

private:
    struct Taken {
        FilmPlace at;
        FilmPlace end;
    };
    Vector<Taken>::const_iterator next_behind(FilmPlace place) const {
        return std::upper_bound(taken_.begin(), taken_.end(), place,
                                [](FilmPlace wanted, const Taken& taken) { return wanted < taken.end; });
    }

    Vector<Taken> taken_;
};

class Finder {
public:
    Finder(const BenchCuts& cuts, const NumberedCuts& numbers)
        : cuts_(cuts), old_(cuts.old_film, numbers.old_cut), new_(cuts.new_film, numbers.new_cut) {}

    FilmInBoth find(const Vector<MatchedPiece>& matched, bool any_part) {
        FilmInBoth found;
        for (std::size_t reel = 0; reel < cuts_.reels.size(); ++reel)
            take_shots_in_order(reel);
        found.shots_that_differ = static_cast<std::int64_t>(old_.shots.size() + new_.shots.size() - 2 * pieces_.size());
        found.in_order = pieces_in_order();
        take_whole_shots(true);
        take_whole_shots(false);
        found.whole_shots = pieces_in_order();
        take_parts_between();
        const int rounds = any_part ? most_rounds : 1;
        for (int round = 0; round < rounds && take_parts(any_part); ++round) {
        }
        take_matches(matched);
        for (KeptPiece& piece : pieces_)
            piece.stays = false;
        found.all = pieces_in_order();
        return found;
    }

private:
    static constexpr int most_rounds = 4;

    bool is_same_black(std::size_t old_event, std::size_t new_event) const;
    Vector<ShotPair> shots_in_order(std::size_t reel) const;
    void take_shots_in_order(std::size_t reel);
    void take_whole_shots(bool on_own_reel);
    void take_parts_between();
    bool take_parts(bool any_part);
    void take_matches(const Vector<MatchedPiece>& matched);

    KeptPieces pieces_in_order() const;
    bool is_same(const KeptPiece& piece) const;
    bool give_whole(std::size_t old_event, std::size_t new_event, bool stays);
    KeptPiece piece_at(FilmPlace old_at, FilmPlace new_at, std::int64_t length) const;
    KeptPiece piece_of(const BenchSpan& old_span, const BenchSpan& new_span) const;
    bool is_whole_shot(const KeptPiece& piece) const;
    void take(KeptPieces& found);

    const BenchCuts& cuts_;
    Side old_;
    Side new_;
    std::uint64_t gaps_ = 0;
    KeptPieces pieces_;
};

KeptPieces Finder::pieces_in_order() const {
    KeptPieces pieces = pieces_;
    std::sort(pieces.begin(), pieces.end(), [](const KeptPiece& a, const KeptPiece& b) { return a.old_at < b.old_at; });
    join_neighbours(pieces);
    return pieces;
}

// No piece is longer than the event that it lies in, which counts in ints.
bool Finder::is_same(const KeptPiece& piece) const {
    return is_same_film(old_.film.event_at(piece.old_at), piece.old_at, new_.film.event_at(piece.new_at), piece.new_at,
                        static_cast<int>(piece.length));
}

KeptPiece Finder::piece_at(FilmPlace old_at, FilmPlace new_at, std::int64_t length) const {
    const std::size_t old_reel = cuts_.reels.index(old_.film.event_at(old_at).event->reel);
    const std::size_t new_reel = cuts_.reels.index(new_.film.event_at(new_at).event->reel);
    return {old_at, new_at, length, old_reel, new_reel};
}

bool Finder::give_whole(std::size_t old_event, std::size_t new_event, bool stays) {
    const LaidEvent& shot = old_.event(old_event);
    KeptPiece piece = piece_at(shot.at, new_.event(new_event).at, shot.event->length);
    piece.stays = piece.in_order = stays;
    if (!is_same(piece)) return false;
    old_.given[old_event] = new_.given[new_event] = 1;
    pieces_.push_back(piece);
    return true;
}

/// Black is no shot of its own; each is another.
Vector<std::uint32_t> row_of(const Side& side, std::size_t first, std::size_t end, std::uint32_t black) {
    Vector<std::uint32_t> row;
    for (std::size_t event = first; event < end; ++event, black += 2)
        row.push_back(side.shots[event].filler ? black : side.shots[event].shot);
    return row;
}

/// The same black on the far side of the same shot is the same.
bool Finder::is_same_black(std::size_t old_event, std::size_t new_event) const {
    const NumberedShot& shot = old_.shots[old_event];
    return shot.filler && shot.shot == new_.shots[new_event].shot;
}

Vector<ShotPair> Finder::shots_in_order(std::size_t reel) const {
    constexpr std::uint32_t old_black = 1U << 31U, new_black = old_black + 1;
    const std::size_t old_first = old_.first_of(reel), old_end = old_.end_of(reel);
    const std::size_t new_first = new_.first_of(reel), new_end = new_.end_of(reel);
    Vector<ShotPair> found;
    std::size_t old_from = old_first, new_from = new_first;
    const auto add = [&](std::size_t old_event, std::size_t new_event) {
        found.push_back({old_event, new_event});
        old_from = old_event + 1;
        new_from = new_event + 1;
    };
    for (const ShotPair& pair :
         common_shots(row_of(old_, old_first, old_end, old_black), row_of(new_, new_first, new_end, new_black))) {
        const std::size_t old_event = old_first + pair.old_shot, new_event = new_first + pair.new_shot;
        if (old_from < old_event && new_from < new_event && is_same_black(old_event - 1, new_event - 1))
            add(old_event - 1, new_event - 1);
        add(old_event, new_event);
        if (old_from < old_end && new_from < new_end && is_same_black(old_from, new_from)) add(old_from, new_from);
    }
    return found;
}

void Finder::take_shots_in_order(std::size_t reel) {
    std::size_t old_event = old_.first_of(reel), new_event = new_.first_of(reel);
    const auto number_gap = [&](std::size_t old_to, std::size_t new_to) {
        for (; old_event < old_to; ++old_event)
            old_.gap[old_event] = gaps_;
        for (; new_event < new_to; ++new_event)
            new_.gap[new_event] = gaps_;
        ++gaps_;
    };
    for (const ShotPair& pair : shots_in_order(reel)) {
        if (give_whole(pair.old_shot, pair.new_shot, true)) number_gap(pair.old_shot + 1, pair.new_shot + 1);
    }
    number_gap(old_.end_of(reel), new_.end_of(reel));
}

Vector<WaitingShot> waiting_shots(const Side& side, const ReelNumbers& reels, bool by_reel) {
    Vector<WaitingShot> waiting;
    for (std::size_t event = 0; event < side.shots.size(); ++event) {
        if (side.given[event] || side.shots[event].filler) continue;
        waiting.push_back({side.shots[event].shot, reels.index(side.event(event).event->reel), event});
    }
    std::sort(waiting.begin(), waiting.end(), [&](const WaitingShot& a, const WaitingShot& b) {
        return a.comes_before(b, by_reel) || (!b.comes_before(a, by_reel) && a.event < b.event);
    });
    return waiting;
}

void Finder::take_whole_shots(bool on_own_reel) {
    const Vector<WaitingShot> old_shots = waiting_shots(old_, cuts_.reels, on_own_reel);
    const Vector<WaitingShot> new_shots = waiting_shots(new_, cuts_.reels, on_own_reel);
    for (std::size_t i = 0, j = 0; i < old_shots.size() && j < new_shots.size();) {
        if (old_shots[i].comes_before(new_shots[j], on_own_reel)) {
            ++i;
        } else if (new_shots[j].comes_before(old_shots[i], on_own_reel)) {
            ++j;
        } else {
            give_whole(old_shots[i++].event, new_shots[j++].event, false);
        }
    }
}

KeptPiece Finder::piece_of(const BenchSpan& old_span, const BenchSpan& new_span) const {
    const std::int64_t first = std::max(old_span.first_frame, new_span.first_frame);
    const std::int64_t end = std::min(old_span.end_frame(), new_span.end_frame());
    return piece_at(old_span.at + (first - old_span.first_frame), new_span.at + (first - new_span.first_frame),
                    end - first);
}

Vector<BenchSpan> spans_in_gaps(const Side& side) {
    Vector<BenchSpan> spans;
    for (std::size_t i = 0; i < side.shots.size(); ++i) {
        const NumberedShot& shot = side.shots[i];
        if (side.given[i] || shot.film == NumberedShot::no_film) continue;
        const LaidEvent& laid = side.event(i);
        spans.push_back({side.gap[i] << 32U | shot.film, shot.first_frame, laid.event->length, laid.at});
    }
    return spans;
}

/// Places in a new order that rise where new places do; of pieces that begin together none can follow another.
Vector<WeighedPlace> row_of(const KeptPieces& pieces) {
    const Vector<std::size_t> order = sorted_numbers(0, pieces.size(), [&](std::size_t a, std::size_t b) {
        return pieces[a].new_at != pieces[b].new_at ? pieces[a].new_at < pieces[b].new_at : a > b;
    });
    Vector<WeighedPlace> row(pieces.size());
    for (std::size_t place = 0; place < order.size(); ++place)
        row[order[place]] = {static_cast<std::int64_t>(place), pieces[order[place]].length};
    return row;
}

/// Leaves each piece only what lies behind the one before it, on both sides.
KeptPieces clipped(const KeptPieces& pieces, const Vector<std::size_t>& run) {
    KeptPieces kept;
    for (const std::size_t index : run) {
        KeptPiece piece = pieces[index];
        if (!kept.empty()) {
            const std::int64_t shared =
                std::max<std::int64_t>({0, kept.back().old_end() - piece.old_at, kept.back().new_end() - piece.new_at});
            piece.old_at += shared;
            piece.new_at += shared;
            piece.length -= shared;
        }
        if (piece.length > 0) kept.push_back(piece);
    }
    return kept;
}

// Between two shots in order what overlaps can stay too, as long as it is in order itself.
void Finder::take_parts_between() {
    Vector<BenchSpan> old_spans = spans_in_gaps(old_);
    Vector<BenchSpan> new_spans = spans_in_gaps(new_);
    KeptPieces found;
    for (const SpanPair& pair : film_overlaps(old_spans, new_spans)) {
        const KeptPiece piece = piece_of(old_spans[pair.old_span], new_spans[pair.new_span]);
        if (piece.old_reel == piece.new_reel) found.push_back(piece);
    }
    std::sort(found.begin(), found.end(), [](const KeptPiece& a, const KeptPiece& b) {
        return a.old_at != b.old_at ? a.old_at < b.old_at : a.new_at > b.new_at;
    });
    KeptPieces kept = clipped(found, heaviest_rising_run(row_of(found)));
    take(kept);
}

void Finder::take(KeptPieces& found) {
    drop_overlaps(found);
    for (const KeptPiece& piece : found) {
        if (is_same(piece)) pieces_.push_back(piece);
    }
}

Vector<BenchSpan> free_spans(const Side& side, const GivenFilm& given) {
    Vector<BenchSpan> spans;
    for (std::size_t i = 0; i < side.shots.size(); ++i) {
        const NumberedShot& shot = side.shots[i];
        if (side.given[i] || shot.film == NumberedShot::no_film) continue;
        const LaidEvent& laid = side.event(i);
        given.free_parts(laid, [&](FilmPlace from, FilmPlace to) {
            spans.push_back({shot.film, shot.first_frame + (from - laid.at), to - from, from});
        });
    }
    return spans;
}

bool covers(const KeptPiece& piece, FilmPlace at, const FilmOnReels& film) {
    const LaidEvent& laid = film.event_at(at);
    return laid.at == at && laid.event->length == piece.length;
}

bool Finder::is_whole_shot(const KeptPiece& piece) const {
    return covers(piece, piece.old_at, old_.film) || covers(piece, piece.new_at, new_.film);
}

// Part of a shot that becomes part of another may be any of many; it is worth moving where there is no other choice.
bool Finder::take_parts(bool any_part) {
    Vector<BenchSpan> old_spans = free_spans(old_, GivenFilm(pieces_, &KeptPiece::old_at));
    Vector<BenchSpan> new_spans = free_spans(new_, GivenFilm(pieces_, &KeptPiece::new_at));
    const Vector<SpanPair> pairs = film_overlaps(old_spans, new_spans);
    Vector<std::uint32_t> old_choices(old_spans.size(), 0), new_choices(new_spans.size(), 0);
    for (const SpanPair& pair : pairs)
        ++old_choices[pair.old_span], ++new_choices[pair.new_span];
    KeptPieces found;
    for (const SpanPair& pair : pairs) {
        const KeptPiece piece = piece_of(old_spans[pair.old_span], new_spans[pair.new_span]);
        const bool only_one = old_choices[pair.old_span] == 1 && new_choices[pair.new_span] == 1;
        if (any_part || only_one || is_whole_shot(piece)) found.push_back(piece);
    }
    const std::size_t before = pieces_.size();
    take(found);
    return pieces_.size() > before;
}

// Of film that has no numbers of its own the analysis knows more: which black lies between the same shots, which
// shots at a speed of their own are parts of others.
void Finder::take_matches(const Vector<MatchedPiece>& matched) {
    const GivenFilm old_given(pieces_, &KeptPiece::old_at), new_given(pieces_, &KeptPiece::new_at);
    KeptPieces found;
    for (const MatchedPiece& match : matched) {
        const auto old_at = old_.film.find(match.old_reel, match.old_frame, match.length);
        const auto new_at = new_.film.find(match.new_reel, match.new_frame, match.length);
        if (!old_at || !new_at) continue;
        const KeptPiece piece = piece_at(*old_at, *new_at, match.length);
        if (old_given.is_free(piece.old_at, piece.old_end()) && new_given.is_free(piece.new_at, piece.new_end()) &&
            is_same(piece))
            found.push_back(piece);
    }
    take(found);
}

} // namespace

FilmInBoth film_in_both(const BenchCuts& cuts, const Vector<MatchedPiece>& matched, bool any_part) {
    const NumberedCuts numbers = number_shots(cuts.old_film, cuts.new_film);
    return Finder(cuts, numbers).find(matched, any_part);
}
