#include "film/proof_run.h"

#include <algorithm>

namespace film {
namespace {

constexpr std::size_t roll_bytes = 8;
constexpr const char* no_roll_words[] = {"__BLACK", "__NOLOG", "__NOSHOT", "RENDERED", ""};

ProofFinding finding_of(const EntryName& entry, std::int64_t frame, std::string what, Rule rule) {
    ProofFinding finding;
    finding.list = name_of(entry.list);
    finding.page = entry.place.page;
    finding.line = entry.place.line;
    finding.entry = entry.text;
    finding.frame = frame;
    finding.what = std::move(what);
    if (rule != Rule::none) finding.rule = &list_rules()[static_cast<std::size_t>(rule)];
    return finding;
}

std::string quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

/// A bar takes itself and the character behind it off the page, and control characters lay it out anew.
bool prints_as_it_is(const std::string& name) {
    return std::none_of(name.begin(), name.end(), [](char c) { return c == '|' || (c >= 0 && c < 32); });
}

/// The text that stands for the last code of an entry: its count alone.
std::string last_text(const Codes& codes) { return count_of(codes.kind, codes.prefix, codes.last); }

} // namespace

std::string event_name(int event) { return "event " + std::to_string(event); }
std::string optical_name(int optical) { return "OPTICAL#" + std::to_string(optical); }

void ProofRun::fail(const EntryName& entry, std::int64_t frame, std::string what, Rule rule) {
    proof.failures.push_back(finding_of(entry, frame, std::move(what), rule));
}

void ProofRun::fail_place(const EntryName& entry, std::int64_t frame, std::string what, Rule rule) {
    const auto behind = between.upper_bound(frame);
    const bool explained = behind != between.begin() && frame <= std::prev(behind)->second;
    fail(entry, frame, std::move(what), explained ? Rule::between_frames : rule);
}

// A shot and the frame to either side of it, to which its neighbours may reach.
void ProofRun::find_between() {
    for (const Piece& piece : pieces) {
        const bool lies_between = std::any_of(piece.strips.begin(), piece.strips.end(), [](const Strip* strip) {
            return !(strip->lead == Fraction(0)) || !(strip->tail == Fraction(0));
        });
        if (!lies_between || piece.in_length() + piece.out_length() == 0) continue;
        std::int64_t& furthest = between.try_emplace(piece.start - 1, piece.end + 1).first->second;
        furthest = std::max(furthest, piece.end + 1);
    }
    std::int64_t furthest = -1;
    for (auto& [from, to] : between)
        to = furthest = std::max(furthest, to);
}

void ProofRun::except(const EntryName& entry, std::int64_t frame, std::string what, Rule rule) {
    proof.exceptions.push_back(finding_of(entry, frame, std::move(what), rule));
}

std::int64_t ProofRun::frame_in(const EntryName& entry, std::string_view text) {
    if (const auto frame = units.frame_of(text)) return *frame;
    fail(entry, -1, quoted(text) + " is no position");
    return -1;
}

std::int64_t ProofRun::length_in(const EntryName& entry, std::string_view text) {
    if (const auto frames = units.length_of(text)) return *frames;
    fail(entry, -1, quoted(text) + " is no length");
    return -1;
}

void ProofRun::expect_number(const EntryName& entry, const char* what, std::int64_t stands, std::int64_t should,
                             std::int64_t frame) {
    if (stands != should)
        fail_place(entry, frame,
                   std::string(what) + ' ' + std::to_string(stands) + ", should be " + std::to_string(should));
}

void ProofRun::check_roll(const EntryName& entry, std::string_view printed, const Piece& piece) {
    const Strip& strip = piece.at(piece.cut_in);
    if (strip.rolls.listed.empty() || piece.unknown() || piece.black()) {
        const auto* const found = std::find(std::begin(no_roll_words), std::end(no_roll_words), printed);
        if (found != std::end(no_roll_words) && (!piece.black() || printed == "__BLACK")) return;
        return fail(entry, piece.start, "roll " + quoted(printed) + ", but the film has none");
    }
    const std::string roll = strip.rolls.listed.substr(0, roll_bytes);
    if (prints_as_it_is(roll) && trimmed(roll) != printed)
        fail(entry, piece.start, "roll " + quoted(printed) + ", should be " + quoted(roll));
}

void ProofRun::check_name(const EntryName& entry, std::string_view printed, const Piece& piece, std::size_t width) {
    const std::string& name = piece.at(piece.cut_in).name;
    if (!prints_as_it_is(name)) return except(entry, piece.start, "the name holds what no page prints", Rule::name_cut);
    if (piece.unknown() || trimmed(name.substr(0, width)) == printed) return;
    fail(entry, piece.start, "shot " + quoted(printed) + ", should be " + quoted(name.substr(0, width)));
}

void ProofRun::check_effect(const EntryName& entry, std::string_view printed, int optical) {
    constexpr std::size_t shortest_cut = 30;
    const auto [first, last] = options.effects.equal_range(optical);
    const bool known = std::any_of(first, last, [printed](const auto& effect) {
        const std::string_view name = effect.second;
        if (name.find('|') != std::string_view::npos) return true;
        return trimmed(name) == trimmed(printed) ||
               (printed.size() >= shortest_cut && name.substr(0, printed.size()) == printed);
    });
    if (!known && first != last)
        fail(entry, -1, "effect \"" + std::string(printed) + "\", should be \"" + first->second + '"');
}

bool ProofRun::codes_agree(const Piece& piece, Count Strip::*number, const Shares& shares, int handles,
                           const CodeTexts& texts, double slack) const {
    const Codes codes = listed_codes(piece, number, shares, handles, slack);
    if (!codes) return texts.first == texts.missing && texts.last == texts.missing;
    return code_of(codes.kind, codes.prefix, codes.first) == texts.first && last_text(codes) == texts.last;
}

void ProofRun::check_codes(const EntryName& entry, const Piece& piece, Count Strip::*number, const Shares& shares,
                           int handles, const CodeTexts& texts, double slack) {
    Codes codes = listed_codes(piece, number, shares, handles, slack);
    const std::string stands = std::string(texts.first) + " to " + std::string(texts.last);
    const bool unlisted = number == &Strip::ink && label_t_to_ink_label_t(options.film) == label_none;
    if (codes && unlisted && texts.first == texts.missing && texts.last == texts.missing)
        return except(entry, piece.start, stands + ", the film has " + range_text(codes), Rule::no_ink_kind);
    if (!codes) {
        if (texts.first != texts.missing || texts.last != texts.missing)
            fail(entry, piece.start, stands + ", but the film has no such number");
        return;
    }
    if (codes_agree(piece, number, shares, handles, texts, slack))
        return check_frames(entry, piece, number, shares, codes);
    const auto first = sample_of(codes.kind, codes.prefix, texts.first);
    const auto last = sample_of(codes.kind, codes.prefix, texts.last);
    const Strip& strip = piece.at(piece.cut_in);
    const std::int64_t step = get_static_label_cvt(codes.kind)->samples_per_frame();
    const std::int64_t off = strip.sureness == Sureness::within ? strip.off * step : 0;
    const bool has_prefix = texts.first.substr(0, codes.prefix.size()) == codes.prefix;
    const auto lie_within = [&](std::int64_t samples) {
        return has_prefix && first && last && std::abs(*first - codes.first) <= samples &&
               std::abs(*last - codes.last) <= samples;
    };
    const std::string should = stands + ", should be " + range_text(codes);
    if (!lie_within(off + 2 * step)) return fail(entry, piece.start, should);
    if (!lie_within(off)) return fail_place(entry, piece.start, should);
    except(entry, piece.start, stands + ", by the frames " + range_text(codes), Rule::inexact);
}

void ProofRun::check_frames(const EntryName& entry, const Piece& piece, Count Strip::*number, const Shares& shares,
                            const Codes& codes) {
    for (const Unnamed& unnamed : unnamed_by(codes, piece, number, shares)) {
        const Strip& strip = *unnamed.strip;
        const std::string what = "lists " + range_text(codes) + ", but the frames are " + unnamed.film(strip.*number);
        if (!unnamed.elsewhere && unnamed.unsure()) return except(entry, unnamed.first, what, Rule::inexact);
        const Rule rule = unnamed.elsewhere || strip.log_row != piece.first().log_row ? Rule::log_row
                          : codes.from_zero                                           ? Rule::from_zero
                          : piece.in_length() + piece.out_length() > 0                ? Rule::transition_at_speed
                                                                                      : Rule::none;
        return fail(entry, unnamed.first, what, rule);
    }
}

} // namespace film
