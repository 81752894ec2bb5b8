#include "film/list_lines.h"

#include "film/plain_number.h"

namespace film {

bool ListLines::take(std::string_view text) {
    if (at_end() || peek().text != text) return false;
    ++at_;
    return true;
}

int ListLines::number(std::string_view text, Place place) {
    if (const std::optional<int> value = plain_number(trimmed(text))) return *value;
    fault(place, '"' + std::string(text) + "\" is no number");
    return 0;
}

std::optional<std::string_view> between(std::string_view line, std::string_view after, std::string_view before) {
    const std::size_t start = line.find(after);
    if (start == std::string_view::npos) return std::nullopt;
    const std::size_t first = start + after.size();
    const std::size_t last = before.empty() ? line.size() : line.find(before, first);
    if (last == std::string_view::npos) return std::nullopt;
    return line.substr(first, last - first);
}

} // namespace film
