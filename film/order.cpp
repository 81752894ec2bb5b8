#include "film/order.h"

#include <algorithm>
#include <map>
#include <numeric>

namespace film {
namespace {

/// How far a need reaches with its handles. They stop at the ends of the take, but what is needed never does; a take
/// that holds nothing of the need gives no handles.
FrameRange reach_of(const FilmNeed& need, const OrderOptions& options) {
    const FrameRange wide{need.frames.first - options.handles, need.frames.last + options.handles};
    if (!need.take) return wide;
    if (!need.take->meets(need.frames)) return need.frames;
    const FrameRange held =
        options.whole_takes ? *need.take
                            : FrameRange{std::max(wide.first, need.take->first), std::min(wide.last, need.take->last)};
    return {std::min(held.first, need.frames.first), std::max(held.last, need.frames.last)};
}

void extend(FrameRange& range, const FrameRange& other) {
    range.first = std::min(range.first, other.first);
    range.last = std::max(range.last, other.last);
}

/// `next` begins nowhere ahead of the piece.
bool joins(const OrderPiece& piece, const FilmRun& run, const FrameRange& next, const OrderOptions& options) {
    const std::int64_t between = next.first - piece.frames.last - 1;
    return piece.run == run && (between < 0 || between < options.join);
}

std::vector<std::size_t> by_film(const FilmNeeds& needs, const std::vector<FrameRange>& reaches) {
    std::vector<std::size_t> order(needs.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        if (!(needs[a].run == needs[b].run)) return needs[a].run < needs[b].run;
        return std::pair(reaches[a].first, reaches[a].last) < std::pair(reaches[b].first, reaches[b].last);
    });
    return order;
}

/// The pieces that were had, by run and first frame.
class HadFilm {
public:
    explicit HadFilm(const std::vector<HadPiece>& had) : had_(had), used_(had.size(), false) {
        for (std::size_t i = 0; i < had.size(); ++i)
            by_run_[had[i].run].push_back(i);
        for (auto& [run, places] : by_run_)
            sort_run(places);
    }

    /// Marks the pieces that hold a part of it. The one that holds most; `npos` where none does.
    std::size_t best_for(const FilmNeed& need);
    bool used(std::size_t place) const { return used_[place]; }

    static constexpr std::size_t npos = static_cast<std::size_t>(-1);

private:
    struct Run {
        std::vector<std::size_t> places;
        std::vector<std::int64_t> last_so_far; ///< the greatest last frame up to each place
        void push_back(std::size_t place) { places.push_back(place); }
    };

    void sort_run(Run& run) {
        std::sort(run.places.begin(), run.places.end(), [&](std::size_t a, std::size_t b) {
            return std::pair(had_[a].frames.first, a) < std::pair(had_[b].frames.first, b);
        });
        std::int64_t last = INT64_MIN;
        for (const std::size_t place : run.places)
            run.last_so_far.push_back(last = std::max(last, had_[place].frames.last));
    }

    const std::vector<HadPiece>& had_;
    std::vector<bool> used_;
    std::map<FilmRun, Run> by_run_;
};

std::int64_t shared(const FrameRange& a, const FrameRange& b) {
    return std::min(a.last, b.last) - std::max(a.first, b.first) + 1;
}

std::size_t HadFilm::best_for(const FilmNeed& need) {
    const auto run = by_run_.find(need.run);
    if (run == by_run_.end()) return npos;
    const std::vector<std::size_t>& places = run->second.places;
    const auto behind = std::upper_bound(places.begin(), places.end(), need.frames.last,
                                         [&](std::int64_t last, std::size_t p) { return last < had_[p].frames.first; });
    std::size_t best = npos;
    for (auto i = behind - places.begin(); i > 0; --i) {
        if (run->second.last_so_far[static_cast<std::size_t>(i - 1)] < need.frames.first) break;
        const std::size_t place = places[static_cast<std::size_t>(i - 1)];
        if (!had_[place].frames.meets(need.frames)) continue;
        used_[place] = true;
        if (best == npos || shared(had_[place].frames, need.frames) >= shared(had_[best].frames, need.frames))
            best = place;
    }
    return best;
}

/// What no piece holds, need by need.
class Missing {
public:
    Missing(const std::vector<HadPiece>& had, bool ends_alone) : had_(had), film_(had), ends_alone_(ends_alone) {}

    void add(const FilmNeed& need);
    bool used(std::size_t place) const { return film_.used(place); }

    FilmNeeds needs;
    std::vector<std::size_t> parts; ///< of each need the piece that holds a part of it, or `HadFilm::npos`

private:
    void add_whole(const FilmNeed& need, std::size_t part) {
        needs.push_back(need);
        parts.push_back(part);
    }
    void add_end(FilmNeed need, const FrameRange& end, std::size_t part);

    const std::vector<HadPiece>& had_;
    HadFilm film_;
    const bool ends_alone_;
};

void Missing::add(const FilmNeed& need) {
    const std::size_t best = film_.best_for(need);
    if (best == HadFilm::npos || !ends_alone_) {
        if (best == HadFilm::npos || !had_[best].frames.holds(need.frames)) add_whole(need, best);
        return;
    }
    const FrameRange& held = had_[best].frames;
    add_end(need, {need.frames.first, held.first - 1}, best);
    add_end(need, {held.last + 1, need.frames.last}, best);
}

// Another piece may hold the end, or a part of it.
void Missing::add_end(FilmNeed need, const FrameRange& end, std::size_t part) {
    if (end.length() <= 0) return;
    need.frames = end;
    if (film_.best_for(need) == HadFilm::npos)
        add_whole(need, part);
    else
        add(need);
}

} // namespace

OrderPieces order_of(const FilmNeeds& needs, const OrderOptions& options) {
    std::vector<FrameRange> reaches;
    for (const FilmNeed& need : needs)
        reaches.push_back(reach_of(need, options));
    OrderPieces pieces;
    for (const std::size_t place : by_film(needs, reaches)) {
        const FilmNeed& need = needs[place];
        if (pieces.empty() || !joins(pieces.back(), need.run, reaches[place], options))
            pieces.push_back({need.run, reaches[place], need.frames, {}});
        extend(pieces.back().frames, reaches[place]);
        extend(pieces.back().needed, need.frames);
        pieces.back().uses.push_back(place);
    }
    return pieces;
}

ChangeOrder change_order(const FilmNeeds& needs, const std::vector<HadPiece>& had, const OrderOptions& options,
                         bool ends_alone) {
    Missing missing(had, ends_alone);
    for (const FilmNeed& need : needs)
        missing.add(need);
    ChangeOrder order;
    order.needs = std::move(missing.needs);
    order.pieces = order_of(order.needs, options);
    for (std::size_t piece = 0; piece < order.pieces.size(); ++piece)
        for (const std::size_t use : order.pieces[piece].uses)
            if (missing.parts[use] != HadFilm::npos) order.longer.push_back({piece, missing.parts[use]});
    std::sort(order.longer.begin(), order.longer.end());
    order.longer.erase(std::unique(order.longer.begin(), order.longer.end()), order.longer.end());
    for (std::size_t i = 0; i < had.size(); ++i)
        if (!missing.used(i)) order.unused.push_back(i);
    return order;
}

} // namespace film
