#include "film/order_facts.h"

#include <algorithm>

namespace film {
namespace {

void add_once(std::vector<std::string>& all, const std::string& text) {
    if (!text.empty() && std::find(all.begin(), all.end(), text) == all.end()) all.push_back(text);
}

std::string joined(const std::vector<std::string>& all) {
    std::string text;
    for (const std::string& one : all)
        text += (text.empty() ? "" : ", ") + one;
    return text;
}

/// The same film in frames of timecode: of a held frame, as its rate usually has it.
Fraction step_of(const Strip& strip) {
    if (!strip.key) return 1;
    if (!(strip.key.step == Fraction(0))) return strip.timecode.step / strip.key.step;
    const auto rates = embedded::rates_counting(strip.timecode.kind);
    return rates.empty() ? Fraction(1) : Fraction(1) / embedded::film_share(rates.front()->nominal);
}

/// The timecode of a film frame, by a use of its film; it steps by frames of film.
Count timecode_at(const FilmNeed& need, std::int64_t frame) {
    const Strip& strip = need.strip;
    Count count = strip.timecode;
    count.step = step_of(strip);
    count.first =
        strip.key ? count.first + (Fraction(frame) + strip.pushed - strip.key.first) * count.step : Fraction(frame);
    return count;
}

} // namespace

PieceTimecode timecode_of(const OrderToTell& order, const OrderPiece& piece) {
    PieceTimecode made;
    for (const std::size_t place : piece.uses) {
        const FilmNeed& need = order.needs[place];
        if (!need.strip.timecode) continue;
        const Count count = timecode_at(need, piece.frames.first);
        if (!made.count) {
            made.count = count;
            made.tape = need.strip.rolls.tape;
        } else {
            const bool same = made.tape == need.strip.rolls.tape && made.count.kind == count.kind &&
                              made.count.frame_at(0) == count.frame_at(0) && made.count.step == count.step;
            made.runs_on = made.runs_on && same;
        }
    }
    return made;
}

PieceFacts facts_of(const OrderToTell& order, const OrderPiece& piece) {
    PieceFacts facts;
    std::vector<std::string> labs, tapes, names, scenes, takes, used;
    for (const std::size_t place : piece.uses) {
        const FilmNeed& need = order.needs[place];
        add_once(labs, need.strip.rolls.lab);
        add_once(tapes, need.strip.rolls.tape);
        add_once(names, need.strip.name);
        add_once(scenes, need.strip.scene);
        add_once(takes, need.strip.take);
        const std::string event =
            need.strip.event > 0 ? std::to_string(need.strip.event)
                                 : "V" + std::to_string(need.strip.layer + 1) + ' ' + std::to_string(need.strip.start);
        add_once(used, (order.reels.size() > 1 ? "R" + std::to_string(need.reel + 1) + ' ' : "") + event);
        if (need.take && facts.from_take < 0)
            facts.from_take = std::max<std::int64_t>(piece.frames.first - need.take->first, -1);
    }
    const PieceTimecode timecode = timecode_of(order, piece);
    facts.timecode_in = timecode.count.text_at(0);
    facts.timecode_out = timecode.count.text_at(piece.frames.length());
    facts.lab_roll = joined(labs);
    facts.tape = joined(tapes);
    facts.names = joined(names);
    facts.scenes = joined(scenes);
    facts.takes = joined(takes);
    facts.used = joined(used);
    return facts;
}

} // namespace film
