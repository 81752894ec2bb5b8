#include "film/film_difference.h"

#include <algorithm>
#include <map>
#include <set>

namespace film {
namespace {

/// What an edit shows at one film frame: what is cut to, and what goes and comes.
struct Shown {
    std::multiset<std::string> numbers; ///< by key number; where there is none, by timecode
    bool others = false;                ///< material that has neither, as titles

    bool operator==(const Shown&) const = default;
};
using Film = std::map<std::int64_t, Shown>;

std::string number_at(const Strip& strip, std::int64_t k) {
    if (strip.key) return strip.key.text_at(k);
    return strip.timecode ? strip.rolls.tape + " " + strip.timecode.text_at(k) : std::string();
}

Film film_of(const Strips& strips) {
    Film film;
    for (const Strip& strip : strips)
        for (std::int64_t k = 0; strip.layer == 0 && !strip.black && k < strip.length(); ++k) {
            Shown& shown = film[strip.start + k];
            std::string number = number_at(strip, k);
            shown.others = shown.others || number.empty();
            if (!number.empty()) shown.numbers.insert(std::move(number));
        }
    return film;
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

const Shown& at(const Film& film, std::int64_t frame) {
    static const Shown none;
    const auto found = film.find(frame);
    return found == film.end() ? none : found->second;
}

/// A run of frames that differ in one event.
struct Difference {
    std::int64_t first = 0;
    int frames = 0;
};

} // namespace

embedded::Warnings film_differences(const EditPtr& edit, const LogRows* log, const EditPtr& again,
                                    const UseOptions& options) {
    return film_differences(uses_of_edit(edit, options, log), uses_of_edit(again, options));
}

embedded::Warnings film_differences(const Strips& strips, const Strips& again) {
    constexpr std::size_t most = 20;
    const Film wanted = film_of(strips), got = film_of(again);
    std::map<int, Difference> differences;
    for (const Strip& strip : strips)
        for (std::int64_t k = 0; strip.layer == 0 && k < strip.length(); ++k) {
            if (is_kept(at(wanted, strip.start + k), at(got, strip.start + k))) continue;
            Difference& difference = differences.try_emplace(strip.item, Difference{strip.start + k, 0}).first->second;
            ++difference.frames;
        }
    embedded::Warnings warnings;
    for (const auto& [item, difference] : differences) {
        if (warnings.size() == most) break;
        const std::int64_t frame = difference.first;
        warnings.push_back({embedded::WarningKind::replaced,
                            "from film frame " + std::to_string(frame) + " on, " + std::to_string(difference.frames) +
                                (difference.frames == 1 ? " frame" : " frames") + " are read again as other film: " +
                                joined(at(got, frame)) + " in place of " + joined(at(wanted, frame))});
    }
    if (differences.size() > most)
        warnings.push_back({embedded::WarningKind::replaced,
                            "the same of " + std::to_string(differences.size() - most) + " further events"});
    return warnings;
}

} // namespace film
