// The list of rolls names each roll once, and the re-use report the film that two entries want.

#include "film/proof_run.h"

#include <algorithm>
#include <map>
#include <set>

namespace film {
namespace {

constexpr std::size_t roll_bytes = 8;
constexpr std::size_t shot_bytes = 13;

/// As the list names it; empty where the piece has none.
std::string roll_of(const Piece& piece) {
    const Strip& strip = piece.at(piece.cut_in);
    if (strip.rendered) return "RENDERED";
    if (piece.unknown()) return {};
    return std::string(trimmed(strip.rolls.listed.substr(0, roll_bytes)));
}

std::set<std::string> rolls_needed(const ProofRun& run) {
    std::set<std::string> rolls;
    for (const Piece& piece : run.pieces)
        rolls.insert(roll_of(piece));
    rolls.erase("");
    return rolls;
}

/// The place of each roll among those of the main track, by its first event.
std::map<std::string, std::size_t> order_of_rolls(const ProofRun& run) {
    std::map<std::string, std::size_t> order;
    for (const Piece& piece : run.pieces)
        if (piece.first().layer == 0) order.emplace(roll_of(piece), order.size());
    order.erase("");
    return order;
}

/// Film of a pull list's entry without its handles, in the samples of its kind.
struct Stretch {
    const PullEntry* entry = nullptr;
    const Piece* piece = nullptr;
    std::int64_t start = 0, end = 0; ///< the end is behind the last frame, at the shot's own speed
    std::int64_t low = 0, high = 0;
    std::int64_t step = 0; ///< samples of a frame at that speed
};

/// By prefix, by where they begin.
using Stretches = std::map<std::string, std::vector<Stretch>>;

class ReuseProof {
public:
    explicit ReuseProof(ProofRun& run) : run_(run) {
        for (const auto& [entry, piece] : run.pulled)
            add(*entry, *piece);
        for (auto& [prefix, stretches] : stretches_)
            std::sort(stretches.begin(), stretches.end(),
                      [](const Stretch& a, const Stretch& b) { return a.low < b.low; });
    }

    void run() {
        prove_count();
        if (!run_.report.reuse) return;
        for (const ReuseEntry& entry : *run_.report.reuse)
            if (!entry.unnumbered) prove_case(entry);
    }

private:
    void add(const PullEntry& entry, const Piece& piece) {
        const Count& key = piece.at(piece.cut_in).key;
        if (!key || !entry.reused) return;
        const auto first = sample_of(key.kind, key.prefix, entry.key_in);
        const auto last = sample_of(key.kind, key.prefix, entry.key_out);
        if (!first || !last) return;
        const int frame = get_static_label_cvt(key.kind)->samples_per_frame();
        Stretch stretch{&entry, &piece};
        stretch.step = static_cast<std::int64_t>(frame * piece.first().speed.to_double());
        const std::int64_t handle = std::int64_t{run_.options.handles} * frame * (stretch.step < 0 ? -1 : 1);
        stretch.start = *first + handle;
        stretch.end = *last - handle + stretch.step;
        stretch.low = std::min(stretch.start, stretch.end);
        stretch.high = std::max(stretch.start, stretch.end);
        stretches_[key.prefix].push_back(stretch);
    }

    void prove_count() {
        if (!run_.report.pulls || run_.sound) return;
        const int noted = std::max(run_.report.pulls->reuse_cases, 0);
        const EntryName name{PrintedList::pulls, run_.report.pulls->note, ""};
        const std::size_t listed = run_.report.reuse ? run_.report.reuse->size() : 0;
        run_.expect_number(name, "cases of re-use", noted, static_cast<std::int64_t>(listed));
    }

    void prove_case(const ReuseEntry& entry) {
        const EntryName name{PrintedList::reuse, entry.place, "roll " + std::string(entry.roll)};
        for (const auto& [prefix, stretches] : stretches_) {
            if (entry.from.substr(0, prefix.size()) != prefix) continue;
            if (is_wanted_twice(entry, prefix, stretches)) return;
        }
        run_.fail(name, -1, std::string(entry.from) + " isn't what two marked entries of the pull lists share");
    }

    bool is_wanted_twice(const ReuseEntry& entry, const std::string& prefix, const std::vector<Stretch>& film) const {
        const label_t kind = film.front().piece->at(film.front().piece->cut_in).key.kind;
        const auto from = sample_of(kind, prefix, entry.from);
        const auto to = entry.butt ? from : sample_of(kind, prefix, entry.to);
        if (!from || !to) return false;
        const std::int64_t margin =
            std::int64_t{get_static_label_cvt(kind)->samples_per_frame()} * (run_.options.butt + 1);
        std::vector<const Stretch*> here;
        auto at = std::partition_point(film.begin(), film.end(),
                                       [&](const Stretch& stretch) { return stretch.low - margin <= *from; });
        while (at != film.begin()) {
            const Stretch& stretch = *--at;
            if (stretch.high + margin < *to) continue;
            for (const Stretch* other : here)
                if (is_shared(entry, *from, *to, stretch, *other)) return true;
            here.push_back(&stretch);
        }
        return false;
    }

    // From the later start to the earlier end, less a frame of one of them.
    static bool is_shared(const ReuseEntry& entry, std::int64_t from, std::int64_t to, const Stretch& a,
                          const Stretch& b) {
        const std::int64_t end = std::min(a.end, b.end);
        const bool ends = entry.butt || to == end - a.step || to == end - b.step;
        const auto names = [&entry](const Stretch& stretch) {
            const Strip& strip = stretch.piece->first();
            return entry.roll == trimmed(strip.rolls.listed.substr(0, roll_bytes)) &&
                   entry.shot == trimmed(strip.name.substr(0, shot_bytes));
        };
        return from == std::max(a.start, b.start) && ends && (names(a) || names(b));
    }

    ProofRun& run_;
    Stretches stretches_;
};

} // namespace

void prove_rolls(ProofRun& run) {
    if (!run.report.rolls) return;
    std::set<std::string> needed = rolls_needed(run), named;
    const std::map<std::string, std::size_t> order = order_of_rolls(run);
    std::size_t reached = 0;
    for (const RollEntry& entry : *run.report.rolls) {
        const EntryName name{PrintedList::rolls, entry.place, std::string(entry.roll)};
        if (!named.insert(std::string(entry.roll)).second)
            run.fail(name, -1, "stands here a second time");
        else if (needed.erase(std::string(entry.roll)) == 0)
            run.fail(name, -1, "is a roll of which no film is used");
        const auto place = order.find(std::string(entry.roll));
        if (place == order.end()) continue;
        if (place->second < reached) run.fail(name, -1, "is used ahead of the rolls above it");
        reached = std::max(reached, place->second);
    }
    for (const std::string& roll : needed)
        run.fail({PrintedList::rolls, {}, ""}, -1, "roll \"" + roll + "\" is missing");
}

void prove_reuse(ProofRun& run) { ReuseProof(run).run(); }

} // namespace film
