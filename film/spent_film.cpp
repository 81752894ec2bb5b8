#include "film/spent_film.h"

namespace film {
namespace {

/// What one cut does to one strand.
struct StrandCut {
    std::vector<FrameRange> used, taken, printed;
    std::vector<std::int64_t> heads, tails;
};

void add_all(Stretches& all, const Stretches& more) {
    std::vector<FrameRange> ranges = all;
    ranges.insert(ranges.end(), more.begin(), more.end());
    all = merged(std::move(ranges));
}

void add_use(const CutUse& use, const StrandState& state, int loss, StrandCut& cut) {
    if (use.printed) return cut.printed.push_back(use.perforations());
    cut.used.push_back(use.perforations());
    for (const Side side : {Side::head, Side::tail})
        if (!stands(use, side, state)) cut.taken.push_back(taken_beyond(end_of(use, side), side, loss));
    cut.heads.push_back(end_of(use, Side::head));
    cut.tails.push_back(end_of(use, Side::tail));
}

void carry_out_on(StrandState& state, StrandCut cut) {
    add_all(state.spent, without(merged(std::move(cut.taken)), merged(std::move(cut.used))));
    add_all(state.printed, merged(std::move(cut.printed)));
    state.heads.insert(cut.heads.begin(), cut.heads.end());
    state.tails.insert(cut.tails.begin(), cut.tails.end());
}

} // namespace

void SpentFilm::carry_out(const CutUses& uses) {
    std::map<Strand, StrandCut> cuts;
    for (const CutUse& use : uses) {
        const Strand strand = strand_of(use.run);
        add_use(use, state_of(strand), rules_.spent_on_a_side(use.run.kind), cuts[strand]);
    }
    for (auto& [strand, cut] : cuts)
        carry_out_on(strands_[strand], std::move(cut));
}

const StrandState& SpentFilm::state_of(const Strand& strand) const {
    static const StrandState untouched;
    const auto found = strands_.find(strand);
    return found == strands_.end() ? untouched : found->second;
}

std::int64_t end_of(const CutUse& use, Side side) {
    const FrameRange film = use.perforations();
    return side == Side::head ? film.first : film.last;
}

bool stands(const CutUse& use, Side side, const StrandState& state) {
    return state.ends(side).count(end_of(use, side)) > 0;
}

FrameRange taken_beyond(std::int64_t end, Side side, std::int64_t perforations) {
    if (side == Side::head) return {end - perforations, end - 1};
    return {end + 1, end + perforations};
}

Stretches frames_holding(const FilmRun& run, const Stretches& perforations) {
    const std::int64_t frame = perforations_of_frame(run.kind);
    std::vector<FrameRange> frames;
    for (const FrameRange& range : perforations)
        frames.push_back({floor_quotient(range.first - run.perforation, frame),
                          floor_quotient(range.last - run.perforation, frame)});
    return merged(std::move(frames));
}

} // namespace film
