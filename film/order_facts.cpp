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

/// The timecode of a film frame, by a use of its film; false where that doesn't tell.
bool find_timecode(const Strip& strip, std::int64_t frame, std::string& text) {
    if (!strip.timecode || (strip.key && strip.key.step == Fraction(0))) return false;
    Count count = strip.timecode;
    count.first = strip.key ? count.first + (Fraction(frame) - Fraction(strip.key.frame_at(0))) * strip.timecode.step /
                                                strip.key.step
                            : Fraction(frame);
    text = count.text_at(0);
    return true;
}

} // namespace

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
        if (facts.timecode_in.empty() && find_timecode(need.strip, piece.frames.first, facts.timecode_in))
            find_timecode(need.strip, piece.frames.last + 1, facts.timecode_out);
    }
    facts.lab_roll = joined(labs);
    facts.tape = joined(tapes);
    facts.names = joined(names);
    facts.scenes = joined(scenes);
    facts.takes = joined(takes);
    facts.used = joined(used);
    return facts;
}

} // namespace film
