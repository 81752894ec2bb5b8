// The assembly covers each frame of the channel once, with the film that lies there.

#include "film/proof_run.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace film {
namespace {

constexpr std::size_t column_bytes = 9;
constexpr const char* no_key = "NO KEYKODE";
constexpr const char* no_ink = "NO INKCODE";
constexpr const char* black_prefix = "__BLACK_";

/// What the cut of an entry is: a range of frames of the edit.
struct Range {
    std::int64_t from = 0, to = 0;
};

class AssemblyProof {
public:
    AssemblyProof(ProofRun& run, const AssemblyEntries& list) : run_(run), list_(list) {}

    void run() {
        int number = 0;
        for (const AssemblyEntry& entry : list_.events) {
            const EntryName name{PrintedList::assembly, entry.place, event_name(entry.event)};
            run_.expect_number(name, "event", entry.event, ++number);
            prove_entry(name, entry);
        }
        prove_end(number);
        for (const EffectEntry& effect : list_.effects)
            prove_effect(effect);
    }

private:
    void prove_entry(const EntryName& name, const AssemblyEntry& entry) {
        if (entry.reduced) return prove_reduced(name, entry);
        const std::int64_t from = run_.frame_in(name, entry.start), length = run_.length_in(name, entry.length);
        if (from < 0 || length < 0) return;
        const Range range{from, from + length};
        const auto [first, last] = run_.main.equal_range(entry.event);
        if (first == last)
            run_.fail(name, from, "the channel has no such event");
        else if (entry.optical > 0)
            prove_optical(name, entry, range);
        else
            prove_shot(name, entry, range, *first->second);
        at_ = range.to;
    }

    // Black that its transitions take up whole.
    void prove_reduced(const EntryName& name, const AssemblyEntry& entry) {
        const auto found = run_.main.find(entry.event);
        if (found != run_.main.end() && (!found->second->black() || found->second->cut_in < found->second->cut_out))
            run_.fail(name, found->second->start, "is listed as nothing, but has frames");
    }

    void prove_place(const EntryName& name, const Range& range, bool black_beside) {
        if (range.from == at_) return;
        if (range.from > at_ && run_.sound && is_silent(at_, range.from)) return;
        const std::string what =
            "begins at " + run_.units.text_of(range.from, "") + ", but frame " + std::to_string(at_) + " is the next";
        run_.fail_place(name, std::min(range.from, at_), what,
                        black_beside && range.from < at_ ? Rule::black_wipe : Rule::none);
    }

    /// A sound track needs no film where it has no event.
    bool is_silent(std::int64_t from, std::int64_t to) const {
        const auto next = std::partition_point(run_.pieces.begin(), run_.pieces.end(),
                                               [from](const Piece& piece) { return piece.end <= from; });
        return next == run_.pieces.end() || next->start >= to;
    }

    void prove_optical(const EntryName& name, const AssemblyEntry& entry, const Range& range) {
        prove_place(name, range, false);
        Range film{INT64_MAX, 0};
        const auto [first, last] = run_.main.equal_range(entry.event);
        for (auto at = first; at != last; ++at) {
            film.from = std::min(film.from, at->second->start);
            film.to = std::max(film.to, at->second->end);
            run_.expect_number(name, "optical", entry.optical, at->second->first().optical, at->second->start);
        }
        prove_range(name, range, film);
    }

    void prove_range(const EntryName& name, const Range& range, const Range& film) {
        if (range.from == film.from && range.to == film.to) return;
        run_.fail_place(name, film.from,
                        "frames " + std::to_string(range.from) + " to " + std::to_string(range.to) + ", should be " +
                            std::to_string(film.from) + " to " + std::to_string(film.to));
    }

    std::optional<Shares> shares_over(const Piece& piece, const Range& range) const {
        for (const Shares& shares : shares_of(piece, run_.cutting_copy && !run_.sound)) {
            const bool here = piece.cut_in - in_frames(piece, shares) == range.from &&
                              piece.cut_out + out_frames(piece, shares) == range.to;
            if (here) return shares;
        }
        return std::nullopt;
    }

    void prove_shot(const EntryName& name, const AssemblyEntry& entry, const Range& range, const Piece& piece) {
        if (run_.main.count(entry.event) > 1 || (!run_.cutting_copy && piece.first().optical != 0))
            run_.fail(name, range.from, "is listed as a shot, but an optical covers it");
        prove_place(name, range, piece.black() || piece.black_before);
        run_.check_roll(name, entry.roll, piece);
        run_.check_name(name, entry.shot, piece, column_bytes);
        const std::optional<Shares> shares = shares_over(piece, range);
        if (!shares) {
            const Shares should = shares_of(piece, run_.cutting_copy && !run_.sound).front();
            return prove_range(name, range,
                               {piece.cut_in - in_frames(piece, should), piece.cut_out + out_frames(piece, should)});
        }
        prove_codes(name, entry, piece, *shares);
        prove_speed(name, entry, piece);
        prove_marks(name, entry, piece, *shares);
    }

    void prove_codes(const EntryName& name, const AssemblyEntry& entry, const Piece& piece, const Shares& shares) {
        if (piece.black())
            return prove_black(name, entry,
                               out_frames(piece, shares) + piece.cut_out - piece.cut_in + in_frames(piece, shares));
        if (run_.sound) {
            if (!entry.key_in.empty() || !entry.key_out.empty()) run_.fail(name, piece.start, "a key number for sound");
        } else if (!piece.unknown()) {
            run_.check_codes(name, piece, &Strip::key, shares, 0, {entry.key_in, entry.key_out, no_key});
        }
        if (run_.cutting_copy && !piece.unknown())
            run_.check_codes(name, piece, &Strip::ink, shares, 0, {entry.ink_in, entry.ink_out, no_ink});
    }

    label_t black_kind() const {
        LabelPoint point(0, run_.options.film);
        point.modify_count_length(4);
        return point.type();
    }

    // Black counts from 0 on a number of its own.
    void prove_black(const EntryName& name, const AssemblyEntry& entry, std::int64_t frames) {
        if (run_.cutting_copy && (entry.ink_in != no_ink || entry.ink_out != no_ink))
            run_.fail(name, -1, "an ink number for black");
        if (run_.sound) return;
        const label_t kind = black_kind();
        const auto first = sample_of(kind, black_prefix, entry.key_in);
        const auto last = sample_of(kind, black_prefix, entry.key_out);
        const int step = get_static_label_cvt(kind)->samples_per_frame();
        if (!first || !last || *first != 0 || *last != (frames - 1) * step)
            run_.fail(name, -1,
                      "black from " + std::string(entry.key_in) + " to " + std::string(entry.key_out) +
                          ", should count " + std::to_string(frames) + " frames from 0");
    }

    void prove_speed(const EntryName& name, const AssemblyEntry& entry, const Piece& piece) {
        char text[32];
        std::snprintf(text, sizeof text, "%.2g", piece.first().speed.to_double());
        const std::string should = piece.black() || piece.first().speed == Fraction(1) ? "" : text;
        if (entry.speed != should && !piece.unknown())
            run_.fail(name, piece.start, "speed \"" + std::string(entry.speed) + "\", should be \"" + should + '"');
    }

    void prove_marks(const EntryName& name, const AssemblyEntry& entry, const Piece& piece, const Shares& shares) {
        if (run_.sound || !run_.cutting_copy) return;
        if (entry.fade_in != 0) run_.expect_number(name, "fade-in of", entry.fade_in, piece.in_length(), piece.start);
        if (entry.fade_in == 0 && piece.black_before && at_ == piece.start && !piece.black() && piece.in_length() > 0)
            run_.fail(name, piece.start, "its fade-in isn't marked");
        const PrintedMark& mark = entry.mark_out;
        run_.expect_number(name, "transition of", mark.length, piece.out_length(), piece.cut_out);
        if (mark.length > 0 && piece.black()) return prove_black_mark(name, piece, mark, shares);
        if (mark.length == 0 || piece.unknown()) return;
        prove_mark(name, piece, &Strip::key, mark.key, no_key);
        prove_mark(name, piece, &Strip::ink, mark.ink, no_ink);
    }

    // Black counts from 0 at its first listed frame, and is marked at the first one of the transition behind it.
    void prove_black_mark(const EntryName& name, const Piece& piece, const PrintedMark& mark, const Shares& shares) {
        const label_t kind = black_kind();
        const std::int64_t frames = piece.cut_out - piece.cut_in + in_frames(piece, shares);
        const std::string should =
            code_of(kind, black_prefix, frames * get_static_label_cvt(kind)->samples_per_frame());
        if (mark.key != should || mark.ink != no_ink)
            run_.fail(name, piece.cut_out,
                      "marked from " + std::string(mark.key) + " and " + std::string(mark.ink) + ", should be " +
                          should + " and " + no_ink);
    }

    // A transition is marked at its first frame.
    void prove_mark(const EntryName& name, const Piece& piece, Count Strip::*number, std::string_view printed,
                    const char* missing) {
        const Strip& strip = piece.at(piece.cut_in);
        const Count& count = strip.*number;
        if (!count) {
            if (printed != missing) run_.fail(name, piece.cut_out, "marked from " + std::string(printed));
            return;
        }
        const Codes codes = listed_codes(piece, number, {Share::whole, Share::none}, 0);
        const int step = get_static_label_cvt(count.kind)->samples_per_frame();
        const auto speed = static_cast<std::int64_t>(step * piece.first().speed.to_double());
        const std::int64_t should = codes.last + speed;
        if (code_of(count.kind, count.prefix, should) == printed) return;
        const auto stands = sample_of(count.kind, count.prefix, printed);
        const bool near =
            stands && strip.sureness == Sureness::within && std::abs(*stands - should) <= strip.off * step;
        const std::string what =
            "marked from " + std::string(printed) + ", should be " + code_of(count.kind, count.prefix, should);
        if (near)
            run_.except(name, piece.cut_out, what, Rule::inexact);
        else
            run_.fail(name, piece.cut_out, what);
    }

    void prove_end(int listed) {
        const EntryName name{PrintedList::assembly, list_.total_place, "total"};
        const int events = run_.main.empty() ? 0 : run_.main.rbegin()->first;
        if (listed < events) run_.expect_number(name, "events", listed, events);
        std::int64_t end = 0;
        for (const auto& [event, piece] : run_.main)
            end = std::max(end, piece->end);
        const std::int64_t total = run_.frame_in(name, list_.total);
        if (total >= 0) run_.expect_number(name, "frames", total, end);
        if (at_ != end && total == end) run_.fail(name, at_, "the last event ends at frame " + std::to_string(at_));
    }

    void prove_effect(const EffectEntry& effect) {
        const EntryName name{PrintedList::assembly, effect.place, optical_name(effect.optical)};
        const std::int64_t from = run_.frame_in(name, effect.from);
        if (from < 0) return;
        if (effect.optical == 0) return run_.fail(name, from, "is none of the reel's opticals", Rule::unplaced);
        const auto found = run_.in_optical.find(effect.optical);
        const bool covered = found != run_.in_optical.end() &&
                             std::any_of(found->second.begin(), found->second.end(), [from](const Piece* piece) {
                                 return piece->start <= from && from < piece->end;
                             });
        if (!covered) run_.fail(name, from, "the effect begins where its optical has no film");
        run_.check_effect(name, effect.name, effect.optical);
    }

    ProofRun& run_;
    const AssemblyEntries& list_;
    std::int64_t at_ = 0;
};

} // namespace

void prove_assembly(ProofRun& run) {
    if (run.report.assembly) AssemblyProof(run, *run.report.assembly).run();
}

} // namespace film
