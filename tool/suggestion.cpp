#include "tool/suggestion.h"

#include <algorithm>

namespace tool {
namespace {

/// One letter in three, two at least, may be wrong, and never all of them.
std::size_t farthest_for(const std::string& word) {
    return std::min(std::max<std::size_t>(2, word.size() / 3), word.size() - std::min<std::size_t>(word.size(), 1));
}

} // namespace

std::size_t edit_distance(const std::string& a, const std::string& b) {
    // Rows of the distances of a's beginnings to all of b's: of the last two beginnings, and of the present one.
    std::vector<std::size_t> before(b.size() + 1), last(b.size() + 1), row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        before.swap(last);
        last.swap(row);
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
            const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
            if (swapped) row[j] = std::min(row[j], before[j - 2] + 1);
        }
    }
    return row.back();
}

std::string suggestion(const std::string& word, const std::vector<std::string>& known) {
    std::string nearest;
    std::size_t least = farthest_for(word) + 1;
    for (const std::string& candidate : known) {
        const std::size_t distance = edit_distance(word, candidate);
        if (distance >= least) continue;
        least = distance;
        nearest = candidate;
    }
    return nearest.empty() ? "" : "; did you mean \"" + nearest + "\"?";
}

} // namespace tool
