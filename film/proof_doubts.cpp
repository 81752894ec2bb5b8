// The list of doubts stands at places of the reel, and names all film without a number and all that no list shows.

#include "film/proof_run.h"

#include <algorithm>
#include <set>
#include <utility>

namespace film {
namespace {

class DoubtProof {
public:
    DoubtProof(ProofRun& run, const DoubtEntries& list) : run_(run), list_(list) {
        for (const Piece& piece : run.pieces)
            pieces_.emplace(std::pair(label_of(piece), piece.start), &piece);
    }

    void run() {
        for (const DoubtEntry& entry : list_.entries)
            prove_entry(entry);
        for (const Piece& piece : run_.pieces)
            if (is_missing(piece) && !is_told(piece)) tell_missing(piece);
    }

private:
    /// As entries name what lies there.
    std::string label_of(const Piece& piece) const {
        const Strip& strip = piece.first();
        if (strip.event > 0 && strip.layer == 0) return std::to_string(strip.event);
        return (run_.sound ? "A" : "V") + std::to_string(strip.layer + 1);
    }

    static bool is_missing(const Piece& piece) {
        if (piece.black()) return false;
        return piece.unknown() || !piece.numbered() || (piece.first().layer > 0 && piece.first().optical == 0);
    }

    static bool holds(const Piece& piece, std::int64_t frame) {
        return piece.start <= frame && frame < std::max(piece.end, piece.start + 1);
    }

    void prove_entry(const DoubtEntry& entry) {
        const std::string label = entry.event > 0 ? std::to_string(entry.event) : std::string(entry.channel);
        const EntryName name{PrintedList::doubts, entry.place,
                             entry.event > 0 ? event_name(entry.event) : std::string(entry.channel)};
        const std::int64_t frame = run_.frame_in(name, entry.position);
        if (frame < 0) return;
        told_.emplace(label, frame);
        const bool here = is_film_at(label, frame);
        // What names a track alone may be an optical, which can lie where there is no film.
        if (!here && entry.event > 0) run_.fail(name, frame, "the event doesn't lie there");
        if (!here && entry.in_no_list) run_.fail(name, frame, "no film of that track lies there");
    }

    /// Pieces of a track lie over each other by transitions alone, so only the last ones to begin may hold it.
    bool is_film_at(const std::string& label, std::int64_t frame) const {
        constexpr int most = 4;
        auto at = pieces_.upper_bound({label, frame});
        for (int looked = 0; looked < most && at != pieces_.begin(); ++looked) {
            --at;
            if (at->first.first == label && holds(*at->second, frame)) return true;
        }
        return false;
    }

    bool is_told(const Piece& piece) const {
        const auto from = told_.lower_bound({label_of(piece), piece.start});
        return from != told_.end() && from->first == label_of(piece) && holds(piece, from->second);
    }

    void tell_missing(const Piece& piece) {
        const EntryName name{PrintedList::doubts, {}, label_of(piece)};
        run_.fail(name, piece.cut_in, "\"" + piece.first().name + "\" is missing in the list");
    }

    ProofRun& run_;
    const DoubtEntries& list_;
    std::multimap<std::pair<std::string, std::int64_t>, const Piece*> pieces_;
    std::set<std::pair<std::string, std::int64_t>> told_;
};

} // namespace

void prove_doubts(ProofRun& run) {
    if (run.report.doubts) DoubtProof(run, *run.report.doubts).run();
}

} // namespace film
