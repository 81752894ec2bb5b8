#pragma once
// What most neighbours show.

#include <algorithm>
#include <map>
#include <optional>

namespace formats {

/// The number that was counted most often, the least of several; nothing where none was.
template <class Number, class Times> std::optional<Number> most_frequent(const std::map<Number, Times>& counts) {
    const auto most = std::max_element(counts.begin(), counts.end(),
                                       [](const auto& a, const auto& b) { return a.second < b.second; });
    return most == counts.end() ? std::nullopt : std::optional(most->first);
}

} // namespace formats
