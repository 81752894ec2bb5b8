#include "formats/key_spelling.h"

#include "host/ascii_text.h"

#include <algorithm>

namespace formats {
namespace {

constexpr KeySpelling spellings[] = {
    {"plain", "KJ1234567890+12.1", "", "", "", "", false},
    {"dashed", "KJ 12 3456-7890+12.1", " ", " ", "-", "", false},
    {"roll", "KJ123456 7890+12(1)", "", "", " ", "", true},
    {"stock", "KJ12 3456 7890+12.1", "", " ", " ", "", false},
    {"apart", "KJ 12 3456 7890 +12.1", " ", " ", " ", " ", false},
};

constexpr std::size_t maker_end = 2, stock_end = 4, prefix_end = 8;

bool has_groups(std::string_view prefix) {
    return prefix.size() == prefix_end &&
           std::all_of(prefix.begin(), prefix.end(), [](char c) { return ascii::is_letter(c) || ascii::is_digit(c); });
}

std::string bracketed(const std::string& frames) {
    const std::size_t point = frames.find('.');
    return point == std::string::npos ? frames : frames.substr(0, point) + '(' + frames.substr(point + 1) + ')';
}

} // namespace

const KeySpelling& plain_spelling() { return spellings[0]; }

const KeySpelling* key_spelling_named(std::string_view name) {
    const auto* const found =
        std::find_if(std::begin(spellings), std::end(spellings), [name](const auto& one) { return one.name == name; });
    return found == std::end(spellings) ? nullptr : found;
}

std::vector<std::string> key_spelling_names() {
    std::vector<std::string> names;
    for (const KeySpelling& spelling : spellings)
        names.emplace_back(spelling.name);
    return names;
}

std::string spelled(LabelPoint key, const KeySpelling& spelling) {
    const std::string text = key.get_string(), prefix = key.get_prefix();
    const std::size_t plus = text.find('+');
    if (!has_groups(prefix) || text.compare(0, prefix_end, prefix) != 0 || plus == std::string::npos) return text;
    const std::string frames = text.substr(plus);
    return prefix.substr(0, maker_end) + spelling.behind_maker + prefix.substr(maker_end, stock_end - maker_end) +
           spelling.behind_stock + prefix.substr(stock_end) + spelling.behind_roll +
           text.substr(prefix_end, plus - prefix_end) + spelling.behind_count +
           (spelling.bracketed ? bracketed(frames) : frames);
}

} // namespace formats
