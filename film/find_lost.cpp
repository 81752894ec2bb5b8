// Film that lists leave out where they count transitions by rules of their own.

#include "film/finder.h"

namespace film {
namespace {

/// What entries take in of an event's transitions.
constexpr Shares in_opticals{Share::whole, Share::whole};

/// The half that the splice leaves, of a dissolve from or to black all.
Shares in_copies(const Piece& piece) { return shares_of(piece, true).front(); }

/// Film of kinds that have no feet is listed without its ink numbers.
bool lists_ink(const Piece& piece) {
    const Strip& strip = piece.first();
    return strip.ink && (!strip.key || label_t_to_ink_label_t(strip.key.kind) != label_none);
}

/// Other rows of the log, other rolls and numbers that are unsure are found by themselves.
bool is_lost(const Unnamed& unnamed, const Piece& piece) {
    return !unnamed.elsewhere && unnamed.strip->log_row == piece.first().log_row && !unnamed.unsure();
}

/// What of an event is seen in a transition.
struct Seen {
    const Strip* first = nullptr;
    const Strip* last = nullptr;

    void add(const Strip* strip) {
        if (!first) first = strip;
        last = strip;
    }
};

} // namespace

void Finder::find_lost_film() {
    const std::vector<Piece> pieces = pieces_of(film_.strips);
    const auto tells = [this](const Piece& piece) {
        return !piece.black() && !piece.unknown() && event_of(piece).listed();
    };
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const Piece& piece = pieces[i];
        if (!tells(piece)) continue;
        const bool last = i + 1 == pieces.size() || pieces[i + 1].first().layer != piece.first().layer;
        find_between_frames(piece, last || !tells(pieces[i + 1]));
        find_unnamed(piece);
    }
}

// One way of listing the event that leaves film out is told, of the keys before that of the ink numbers.
void Finder::find_unnamed(const Piece& piece) {
    const bool copied = !options_.uses.neg_cut && piece.first().layer == 0;
    if (piece.first().optical > 0 && find_unnamed(piece, &Strip::key, in_opticals)) return;
    if (!copied || find_unnamed(piece, &Strip::key, in_copies(piece))) return;
    if (lists_ink(piece)) find_unnamed(piece, &Strip::ink, in_copies(piece));
}

bool Finder::find_unnamed(const Piece& piece, Count Strip::*number, const Shares& shares) {
    const Codes codes = listed_codes(piece, number, shares, 0);
    if (!codes) return false;
    for (const Unnamed& unnamed : unnamed_by(codes, piece, number, shares)) {
        if (!is_lost(unnamed, piece)) continue;
        find(codes.from_zero ? Code::from_zero : Code::transition_at_speed, Severity::wrong, event_of(piece),
             unnamed.first,
             "the lists leave out " + frames_text(unnamed.by) +
                 " of its film: " + unnamed.film(unnamed.strip->*number) + " are shown, and they take " +
                 range_text(codes) + " for all of it");
        return true;
    }
    return false;
}

void Finder::find_between_frames(const Piece& piece, bool behind_too) {
    Seen ahead, behind;
    for (const Strip* strip : piece.strips) {
        if (strip->start < piece.cut_in) ahead.add(strip);
        if (strip->end > piece.cut_out) behind.add(strip);
    }
    for (const Seen& seen : {ahead, behind_too ? behind : Seen()})
        if (seen.first) find_cut_short(event_of(piece), *seen.first, *seen.last);
}

// Lists cut the ends of a transition to whole frames, and its length by itself.
//
//     frames of film    80    |81    |  . . .  |92    |93    |94
//     dissolve              80.8 |- - - - 12.8 - - - -| 93.6          from 80 to 93, but 12 frames long
//
void Finder::find_cut_short(const FilmEvent& event, const Strip& first, const Strip& last) {
    const std::int64_t frames = last.end - first.start;
    const std::int64_t listed = (Fraction(frames) + last.tail - first.lead).floor();
    if (listed >= frames) return;
    find(Code::between_frames, Severity::wrong, event, first.start,
         "the transition from frame " + std::to_string(first.start) + " to " + std::to_string(last.end - 1) +
             " lies between frames of film: the lists count " + std::to_string(listed) + " of its " +
             frames_text(frames) + ", and leave one out");
}

} // namespace film
