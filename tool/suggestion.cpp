#include "tool/suggestion.h"

#include <algorithm>

namespace tool {
namespace {

/// One letter in three, two at least, may be wrong, and never all of them.
std::size_t farthest_for(const std::string& word) {
    return std::min(std::max<std::size_t>(2, word.size() / 3), word.size() - std::min<std::size_t>(word.size(), 1));
}

} // namespace

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
