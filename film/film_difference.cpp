#include "film/film_difference.h"

#include "film/film_needs.h"

#include <algorithm>
#include <map>
#include <set>
#include <vector>

namespace film {
namespace {

using Shows = std::vector<const Strip*>; ///< what an edit shows at one film frame: what is cut to, what goes and comes

/// The same in words.
struct Shown {
    std::multiset<std::string> numbers; ///< by key number; where there is none, by timecode
    bool others = false;                ///< material that has neither, as titles

    bool operator==(const Shown&) const = default;
};

std::string number_at(const Strip& strip, std::int64_t k) {
    if (strip.key) return strip.key.text_at(k);
    return strip.timecode ? strip.rolls.tape + " " + strip.timecode.text_at(k) : std::string();
}

Shown shown_at(const Shows& strips, std::int64_t frame) {
    Shown shown;
    for (const Strip* strip : strips) {
        std::string number = number_at(*strip, frame - strip->start);
        shown.others = shown.others || number.empty();
        if (!number.empty()) shown.numbers.insert(std::move(number));
    }
    return shown;
}

bool is_same(const Count& a, std::int64_t at_a, const Count& b, std::int64_t at_b) {
    return a.kind == b.kind && a.prefix == b.prefix && a.sample_at(at_a) == b.sample_at(at_b);
}

/// Surely one number; others may be one all the same, in words.
bool is_same_number(const Strip& a, const Strip& b, std::int64_t frame) {
    const std::int64_t at_a = frame - a.start, at_b = frame - b.start;
    if (a.key || b.key) return is_same(a.key, at_a, b.key, at_b);
    if (!a.timecode && !b.timecode) return true;
    return a.rolls.tape == b.rolls.tape && is_same(a.timecode, at_a, b.timecode, at_b);
}

/// Material without numbers may have become any other.
bool is_kept(const Shown& wanted, const Shown& got) {
    return wanted.others
               ? std::includes(got.numbers.begin(), got.numbers.end(), wanted.numbers.begin(), wanted.numbers.end())
               : wanted == got;
}

std::string joined(const Shown& shown) {
    std::string text;
    for (const std::string& one : shown.numbers)
        text += (text.empty() ? "" : " and ") + one;
    return text.empty() ? "nothing" : text;
}

bool is_kept(const Shows& wanted, const Shows& got, std::int64_t frame) {
    const bool same = std::equal(wanted.begin(), wanted.end(), got.begin(), got.end(),
                                 [frame](const Strip* a, const Strip* b) { return is_same_number(*a, *b, frame); });
    return same || is_kept(shown_at(wanted, frame), shown_at(got, frame));
}

bool is_cut_to(const Strip& strip) { return strip.layer == 0 && strip.length() > 0; }

/// What is shown as frames go by, forward.
class Reel {
public:
    explicit Reel(const Strips& strips) {
        for (const Strip& strip : strips)
            if (is_cut_to(strip) && !strip.black) waiting_.push_back(&strip);
        std::stable_sort(waiting_.begin(), waiting_.end(),
                         [](const Strip* a, const Strip* b) { return a->start < b->start; });
    }

    const Shows& at(std::int64_t frame) {
        std::erase_if(shown_, [frame](const Strip* strip) { return strip->start + strip->length() <= frame; });
        for (; next_ < waiting_.size() && waiting_[next_]->start <= frame; ++next_)
            if (waiting_[next_]->start + waiting_[next_]->length() > frame) shown_.push_back(waiting_[next_]);
        return shown_;
    }

private:
    Shows waiting_, shown_;
    std::size_t next_ = 0;
};

/// Where strips of either edit begin or end, in order.
std::vector<std::int64_t> borders_of(const Strips& strips, const Strips& again) {
    std::vector<std::int64_t> borders;
    for (const Strips* side : {&strips, &again})
        for (const Strip& strip : *side)
            if (is_cut_to(strip)) borders.insert(borders.end(), {strip.start, strip.start + strip.length()});
    std::sort(borders.begin(), borders.end());
    borders.erase(std::unique(borders.begin(), borders.end()), borders.end());
    return borders;
}

/// All frames that aren't kept, as ranges in order. Between two borders the same strips are shown.
std::vector<FrameRange> differing_frames(const Strips& strips, const Strips& again) {
    std::vector<FrameRange> differing;
    Reel wanted(strips), got(again);
    const std::vector<std::int64_t> borders = borders_of(strips, again);
    for (std::size_t i = 0; i + 1 < borders.size(); ++i) {
        const Shows &one = wanted.at(borders[i]), &other = got.at(borders[i]);
        if (one.empty() && other.empty()) continue;
        for (std::int64_t frame = borders[i]; frame < borders[i + 1]; ++frame) {
            if (is_kept(one, other, frame)) continue;
            if (differing.empty() || differing.back().last + 1 != frame) differing.push_back({frame, frame});
            differing.back().last = frame;
        }
    }
    return differing;
}

Shown shown_by(const Strips& strips, std::int64_t frame) { return shown_at(Reel(strips).at(frame), frame); }

/// A run of frames that differ in one event.
struct Difference {
    std::int64_t first = 0;
    std::int64_t frames = 0;
};

} // namespace

embedded::Warnings film_differences(const EditPtr& edit, const LogRows* log, const EditPtr& again,
                                    const UseOptions& options) {
    return film_differences(uses_of_edit(edit, options, log), uses_of_edit(again, options));
}

embedded::Warnings film_differences(const Strips& strips, const Strips& again) {
    constexpr std::size_t most = 20;
    const std::vector<FrameRange> differing = differing_frames(strips, again);
    std::map<int, Difference> differences;
    for (const Strip& strip : strips) {
        const FrameRange film{strip.start, strip.start + strip.length() - 1};
        auto range = std::lower_bound(differing.begin(), differing.end(), film.first,
                                      [](const FrameRange& one, std::int64_t frame) { return one.last < frame; });
        for (; is_cut_to(strip) && range != differing.end() && range->first <= film.last; ++range) {
            const std::int64_t first = std::max(range->first, film.first), last = std::min(range->last, film.last);
            differences.try_emplace(strip.item, Difference{first, 0}).first->second.frames += last - first + 1;
        }
    }
    embedded::Warnings warnings;
    for (const auto& [item, difference] : differences) {
        if (warnings.size() == most) break;
        const std::int64_t frame = difference.first;
        warnings.push_back({embedded::WarningKind::replaced,
                            "from film frame " + std::to_string(frame) + " on, " + std::to_string(difference.frames) +
                                (difference.frames == 1 ? " frame" : " frames") + " are read again as other film: " +
                                joined(shown_by(again, frame)) + " in place of " + joined(shown_by(strips, frame))});
    }
    if (differences.size() > most)
        warnings.push_back({embedded::WarningKind::replaced,
                            "the same of " + std::to_string(differences.size() - most) + " further events"});
    return warnings;
}

} // namespace film
