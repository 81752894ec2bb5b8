// Each film frame that the reel needs lies inside an entry of the pull list or of the opticals pull list.

#include "film/proof_run.h"

#include <algorithm>
#include <map>
#include <set>

namespace film {
namespace {

constexpr std::size_t column_bytes = 18;
constexpr std::size_t roll_bytes = 8;
constexpr const char* no_key = "NO KEYKODE";
constexpr const char* no_ink = "NO INKCODE";

/// By what an entry for them begins with.
using Open = std::multimap<std::string, const Piece*>;

/// Lists know nothing of such film, or it needs none.
bool is_pulled(const Piece& piece) { return !piece.black() && !piece.unknown(); }

class PullProof {
public:
    PullProof(ProofRun& run, const PullEntries& list, PrintedList kind)
        : run_(run), list_(list), kind_(kind), halves_(run.cutting_copy && !run.sound) {}

    void run() {
        gather();
        for (const PullEntry& entry : list_.entries)
            prove_entry(entry);
        tell_left_out();
        prove_order();
    }

private:
    bool opticals() const { return kind_ == PrintedList::optical_pulls; }

    /// The number that an entry for the piece has; 0 where it belongs to the other list or to none.
    int number_of(const Piece& piece) const {
        const Strip& strip = piece.first();
        if (!is_pulled(piece)) return 0;
        if (opticals()) return strip.optical;
        if (strip.layer > 0 || (!run_.cutting_copy && strip.optical != 0)) return 0;
        return strip.event;
    }

    void gather() {
        for (const Piece& piece : run_.pieces)
            if (const int number = number_of(piece)) open_[number].emplace(start_of(piece), &piece);
    }

    /// What an entry for the piece begins with; an opticals pull list may hold many of one number.
    std::string start_of(const Piece& piece) const {
        if (!opticals()) return "";
        const Codes codes = listed_codes(piece, &Strip::key, {Share::whole, Share::whole}, run_.options.handles);
        return codes ? code_of(codes.kind, codes.prefix, codes.first) : no_key;
    }

    EntryName name_for(const PullEntry& entry) const {
        return {kind_, entry.place, opticals() ? optical_name(entry.optical) : event_name(entry.event)};
    }

    static ProofRun::CodeTexts keys_of(const PullEntry& entry) { return {entry.key_in, entry.key_out, no_key}; }
    static ProofRun::CodeTexts inks_of(const PullEntry& entry) { return {entry.ink_in, entry.ink_out, no_ink}; }

    bool has_inks() const { return run_.cutting_copy && !opticals(); }

    std::int64_t frames_of(const Piece& piece, const Shares& shares) const {
        return piece.cut_out - piece.cut_in + in_frames(piece, shares) + out_frames(piece, shares) +
               2 * std::int64_t{run_.options.handles};
    }

    std::vector<Shares> shares_over(const Piece& piece) const {
        if (run_.sound) return {{}};
        return shares_of(piece, halves_);
    }

    /// How well an entry fits a piece: 2 whole, 1 by its film, 0 not at all.
    int fit(const PullEntry& entry, const Piece& piece, std::int64_t length, const Shares& shares) const {
        const int handles = run_.options.handles;
        const bool keys = run_.sound || run_.codes_agree(piece, &Strip::key, shares, handles, keys_of(entry), 0);
        const bool inks = !has_inks() || run_.codes_agree(piece, &Strip::ink, shares, handles, inks_of(entry), 0);
        if (!keys || !inks) return frames_of(piece, shares) == length ? 1 : 0;
        const bool named = trimmed(piece.first().name.substr(0, column_bytes)) == entry.shot;
        return 2 + (frames_of(piece, shares) == length ? 2 : 0) + (named ? 1 : 0);
    }

    void prove_entry(const PullEntry& entry) {
        const EntryName name = name_for(entry);
        const std::int64_t length = run_.length_in(name, entry.length);
        Open& open = open_[opticals() ? entry.optical : entry.event];
        auto [first, last] = open.equal_range(opticals() ? std::string(entry.key_in) : "");
        if (first == last) first = open.begin(), last = open.end();
        int best = -1;
        Open::iterator place;
        Shares shares;
        for (auto at = first; at != last; ++at)
            for (const Shares& tried : shares_over(*at->second))
                if (const int found = fit(entry, *at->second, length, tried); found > best) {
                    best = found;
                    place = at;
                    shares = tried;
                }
        if (best < 0) return run_.fail(name, -1, "nothing of it is needed, or it stood here before");
        const Piece& piece = *place->second;
        open.erase(place);
        if (length >= 0) run_.expect_number(name, "length", length, frames_of(piece, shares), piece.start);
        prove_film(name, entry, piece, shares);
        order_.emplace_back(&entry, &piece);
        run_.pulled.emplace(&entry, &piece);
    }

    void prove_film(const EntryName& name, const PullEntry& entry, const Piece& piece, const Shares& shares) {
        prove_roll(name, entry, piece);
        run_.check_name(name, entry.shot, piece, column_bytes);
        const int handles = run_.options.handles;
        if (run_.sound) {
            if (!entry.key_in.empty() || !entry.key_out.empty()) run_.fail(name, piece.start, "a key number for sound");
        } else {
            run_.check_codes(name, piece, &Strip::key, shares, handles, keys_of(entry));
        }
        if (has_inks()) run_.check_codes(name, piece, &Strip::ink, shares, handles, inks_of(entry));
    }

    // The first entries of a list may leave their roll to the list ahead.
    void prove_roll(const EntryName& name, const PullEntry& entry, const Piece& piece) {
        roll_named_ |= entry.roll_printed;
        const std::string& roll = piece.at(piece.cut_in).rolls.listed;
        if (roll_named_ || roll.empty()) return run_.check_roll(name, entry.roll, piece);
        run_.fail(name, piece.start, "names no roll, should be \"" + roll.substr(0, roll_bytes) + '"',
                  Rule::roll_carried);
    }

    void tell_left_out() {
        for (const auto& [number, pieces] : open_)
            for (const auto& [start, piece] : pieces) {
                const EntryName name{kind_, {}, opticals() ? optical_name(number) : event_name(number)};
                run_.fail(name, piece->start,
                          "its film isn't listed: roll \"" + piece->first().rolls.listed + "\", shot \"" +
                              piece->first().name + '"');
            }
    }

    // Rolls in the order of their names; a roll's film in the order of its numbers, inks first in a cutting copy. A
    // list by numbers names its roll in each entry.
    void prove_order() {
        for (std::size_t i = 1; i < order_.size(); ++i) {
            const auto& [before, piece_before] = order_[i - 1];
            const auto& [entry, piece] = order_[i];
            if (before->roll != entry->roll || !piece->numbered() || !piece_before->numbered() || !entry->key_in.size())
                continue;
            if (key_of(*piece_before) > key_of(*piece))
                run_.fail(name_for(*entry), piece->start, "stands behind film that comes after it");
        }
    }

    std::pair<std::string, std::string> key_of(const Piece& piece) const {
        const auto text = [&piece](Count Strip::*number) {
            const Count& count = piece.at(piece.cut_in).*number;
            return count ? code_of(count.kind, count.prefix, cut_in_sample(piece, number)) : std::string();
        };
        return {run_.cutting_copy ? text(&Strip::ink) : "", text(&Strip::key)};
    }

    ProofRun& run_;
    const PullEntries& list_;
    const PrintedList kind_;
    const bool halves_;
    bool roll_named_ = false;
    std::map<int, Open> open_; ///< what no entry was met for yet, by the number of the entry
    std::vector<std::pair<const PullEntry*, const Piece*>> order_;
};

} // namespace

void prove_pulls(ProofRun& run) {
    if (run.report.pulls) PullProof(run, *run.report.pulls, PrintedList::pulls).run();
    const bool negative = run.report.pulls && !run.cutting_copy;
    if (negative && !run.report.optical_pulls)
        run.fail({PrintedList::optical_pulls, {}, ""}, -1, "the list is missing");
    if (run.report.optical_pulls) PullProof(run, *run.report.optical_pulls, PrintedList::optical_pulls).run();
}

} // namespace film
