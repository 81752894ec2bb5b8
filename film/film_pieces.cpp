#include "film/film_pieces.h"

#include <algorithm>
#include <utility>

namespace film {
namespace {

std::vector<Piece> gathered(const Strips& strips) {
    std::map<std::pair<int, int>, Piece> by_place;
    for (const Strip& strip : strips)
        by_place[{strip.layer, strip.item}].strips.push_back(&strip);
    std::vector<Piece> pieces;
    for (auto& [place, piece] : by_place) {
        std::stable_sort(piece.strips.begin(), piece.strips.end(),
                         [](const Strip* a, const Strip* b) { return a->start < b->start; });
        piece.start = piece.cut_in = piece.strips.front()->start;
        piece.end = piece.cut_out = piece.strips.back()->end;
        pieces.push_back(std::move(piece));
    }
    return pieces;
}

// Where two events of a track lie over each other there is a transition.
void find_transitions(Piece& before, Piece& behind) {
    const std::int64_t overlap = before.end - behind.start;
    if (overlap <= 0) return;
    before.cut_out = std::max(before.end - overlap, before.cut_in);
    behind.cut_in = behind.start + overlap;
    before.black_behind = behind.black();
    behind.black_before = before.black();
}

} // namespace

const Strip& Piece::at(std::int64_t frame) const {
    for (const Strip* strip : strips)
        if (frame < strip->end) return *strip;
    return *strips.back();
}

std::vector<Piece> pieces_of(const Strips& strips) {
    std::vector<Piece> pieces = gathered(strips);
    std::stable_sort(pieces.begin(), pieces.end(), [](const Piece& a, const Piece& b) {
        return std::pair(a.first().layer, a.start) < std::pair(b.first().layer, b.start);
    });
    for (std::size_t i = 0; i + 1 < pieces.size(); ++i)
        if (pieces[i].first().layer == pieces[i + 1].first().layer) find_transitions(pieces[i], pieces[i + 1]);
    return pieces;
}

} // namespace film
