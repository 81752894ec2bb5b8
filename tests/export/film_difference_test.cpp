// Film of two edits held against each other, with a model that writes down each frame in words.

#include "embedded/label_kinds.h"
#include "film/film_difference.h"

#include <rapidcheck/gtest.h>

#include <algorithm>
#include <map>
#include <set>

using film::Count;
using film::Strip;
using film::Strips;

namespace {

Count some_count(const char* kind, const char* prefix) {
    Count count;
    count.kind = embedded::label_kind_of_text(kind).type;
    count.prefix = prefix;
    count.first = *rc::gen::inRange(0, 4);
    count.step = embedded::Fraction(*rc::gen::inRange(-2, 3), *rc::gen::element(1, 2));
    return count;
}

Strip some_strip() {
    Strip strip;
    strip.start = *rc::gen::inRange(0, 12);
    strip.end = strip.start + *rc::gen::inRange(0, 6);
    strip.item = *rc::gen::inRange(0, 4);
    strip.layer = *rc::gen::element(0, 0, 0, 1);
    strip.black = *rc::gen::inRange(0, 6) == 0;
    const int known = *rc::gen::inRange(0, 6);
    // Kinds of five and of four digits that print alike are one number in words.
    if (known > 1) strip.key = some_count(known == 2 ? "35mm-4p-4d" : "35mm-4p", known == 3 ? "KJ123457" : "KJ123456");
    if (known == 1) strip.timecode = some_count("24fps", "");
    strip.rolls.tape = *rc::gen::element<std::string>("TK01", "TK02");
    return strip;
}

struct Frame {
    std::multiset<std::string> numbers;
    bool others = false;
};

Frame frame_of(const Strips& strips, std::int64_t at) {
    Frame frame;
    for (const Strip& strip : strips) {
        if (strip.layer != 0 || strip.black || at < strip.start || at >= strip.end) continue;
        if (strip.key)
            frame.numbers.insert(strip.key.text_at(at - strip.start));
        else if (strip.timecode)
            frame.numbers.insert(strip.rolls.tape + " " + strip.timecode.text_at(at - strip.start));
        else
            frame.others = true;
    }
    return frame;
}

bool is_kept(const Frame& wanted, const Frame& got) {
    if (!wanted.others) return wanted.numbers == got.numbers && !got.others;
    return std::includes(got.numbers.begin(), got.numbers.end(), wanted.numbers.begin(), wanted.numbers.end());
}

std::string words_of(const Frame& frame) {
    std::string words;
    for (const std::string& number : frame.numbers)
        words += (words.empty() ? "" : " and ") + number;
    return words.empty() ? "nothing" : words;
}

std::vector<std::string> model(const Strips& strips, const Strips& again) {
    std::map<int, std::pair<std::int64_t, int>> differences; ///< by event: the first frame, and how many
    for (const Strip& strip : strips)
        for (std::int64_t at = strip.start; strip.layer == 0 && at < strip.end; ++at)
            if (!is_kept(frame_of(strips, at), frame_of(again, at)))
                ++differences.try_emplace(strip.item, at, 0).first->second.second;
    std::vector<std::string> lines;
    for (const auto& [item, difference] : differences) {
        const auto& [first, frames] = difference;
        lines.push_back("from film frame " + std::to_string(first) + " on, " + std::to_string(frames) +
                        (frames == 1 ? " frame" : " frames") + " are read again as other film: " +
                        words_of(frame_of(again, first)) + " in place of " + words_of(frame_of(strips, first)));
    }
    return lines;
}

RC_GTEST_PROP(FilmDifference, IsWhatAModelOfEachFrameTells, ()) {
    Strips strips, again;
    for (int i = *rc::gen::inRange(0, 6); i > 0; --i)
        strips.push_back(some_strip());
    for (const Strip& strip : strips)
        if (*rc::gen::inRange(0, 5) > 0) again.push_back(*rc::gen::inRange(0, 6) > 0 ? strip : some_strip());
    if (*rc::gen::arbitrary<bool>()) std::reverse(again.begin(), again.end());
    std::vector<std::string> told;
    for (const embedded::Warning& warning : film::film_differences(strips, again))
        told.push_back(warning.text);
    RC_ASSERT(told == model(strips, again));
}

} // namespace
