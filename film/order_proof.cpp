// Orders held against what the reels need. Shares nothing with the making of orders but the needs.

#include "film/order.h"

#include <algorithm>
#include <map>

namespace film {
namespace {

/// Of one run.
struct RunFilm {
    std::vector<FrameRange> pieces;
    std::vector<FrameRange> allowed; ///< that pieces may take
    std::vector<const FilmNeed*> needs;
};

using Runs = std::map<FilmRun, RunFilm>;

/// A need with its handles where there is film for them, all of a take where takes are pulled whole.
std::vector<FrameRange> allowed_by(const FilmNeed& need, const OrderOptions& options) {
    const FrameRange wide{need.frames.first - options.handles, need.frames.last + options.handles};
    if (!need.take) return {wide};
    if (!need.take->meets(need.frames)) return {need.frames};
    const FrameRange held =
        options.whole_takes ? *need.take
                            : FrameRange{std::max(wide.first, need.take->first), std::min(wide.last, need.take->last)};
    return {need.frames, held};
}

bool by_first(const FrameRange& a, const FrameRange& b) {
    return std::pair(a.first, a.last) < std::pair(b.first, b.last);
}

/// Ranges with fewer than `join` frames between them, or none, as one.
std::vector<FrameRange> areas_of(std::vector<FrameRange> ranges, int join) {
    std::erase_if(ranges, [](const FrameRange& range) { return range.length() <= 0; });
    std::sort(ranges.begin(), ranges.end(), by_first);
    std::vector<FrameRange> areas;
    for (const FrameRange& range : ranges) {
        const bool apart = areas.empty() || range.first - areas.back().last - 1 >= std::max(join, 1);
        if (apart)
            areas.push_back(range);
        else
            areas.back().last = std::max(areas.back().last, range.last);
    }
    return areas;
}

/// The last range that begins at or ahead of the frame; null where none does.
const FrameRange* range_at(const std::vector<FrameRange>& sorted, std::int64_t frame) {
    const auto behind = std::upper_bound(sorted.begin(), sorted.end(), frame,
                                         [](std::int64_t f, const FrameRange& range) { return f < range.first; });
    return behind == sorted.begin() ? nullptr : &*(behind - 1);
}

std::string text_of(const FilmRun& run, const FrameRange& range) {
    return run.roll + ' ' + run.text_at(range.first) + " to " + run.text_at(range.last);
}

void check_pieces(const FilmRun& run, const RunFilm& film, const OrderOptions& options, OrderProof& proof) {
    const std::vector<FrameRange> areas = areas_of(film.allowed, options.join);
    for (std::size_t i = 0; i < film.pieces.size(); ++i) {
        const FrameRange& piece = film.pieces[i];
        if (i > 0 && film.pieces[i - 1].last >= piece.first)
            proof.failures.push_back(text_of(run, piece) + ": its head is pulled twice");
        const FrameRange* area = range_at(areas, piece.first);
        if (!area || !area->holds(piece))
            proof.failures.push_back(text_of(run, piece) + ": goes beyond what is needed and its handles");
    }
}

void check_needs(const FilmRun& run, const RunFilm& film, OrderProof& proof) {
    for (const FilmNeed* need : film.needs) {
        proof.frames += need->frames.length();
        const FrameRange* piece = range_at(film.pieces, need->frames.first);
        if (!piece || !piece->holds(need->frames))
            proof.failures.push_back(text_of(run, need->frames) + ": is needed, and no piece holds all of it");
    }
}

} // namespace

OrderProof prove_order(const OrderPieces& pieces, const FilmNeeds& needs, const OrderOptions& options) {
    Runs runs;
    for (const OrderPiece& piece : pieces)
        runs[piece.run].pieces.push_back(piece.frames);
    for (const FilmNeed& need : needs) {
        RunFilm& film = runs[need.run];
        film.needs.push_back(&need);
        for (const FrameRange& range : allowed_by(need, options))
            film.allowed.push_back(range);
    }
    OrderProof proof;
    for (auto& [run, film] : runs) {
        std::sort(film.pieces.begin(), film.pieces.end(), by_first);
        check_pieces(run, film, options, proof);
        check_needs(run, film, proof);
    }
    return proof;
}

OrderProof prove_cover(const OrderPieces& pieces, const std::vector<HadPiece>& had, const FilmNeeds& needs) {
    Runs runs;
    for (const OrderPiece& piece : pieces)
        runs[piece.run].pieces.push_back(piece.frames);
    for (const HadPiece& piece : had)
        runs[piece.run].pieces.push_back(piece.frames);
    for (const FilmNeed& need : needs)
        runs[need.run].needs.push_back(&need);
    OrderProof proof;
    for (auto& [run, film] : runs) {
        film.pieces = areas_of(std::move(film.pieces), 0);
        check_needs(run, film, proof);
    }
    return proof;
}

} // namespace film
