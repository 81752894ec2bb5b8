#include "text_diff.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace golden {
namespace {

constexpr std::size_t context = 3;
constexpr std::size_t most_lines = 12;

using Lines = std::vector<std::string>;

/// Lines keep their LF, so that a missing one at the end shows.
Lines lines_of(const std::string& text) {
    Lines lines;
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t end = text.find('\n', from);
        const std::size_t next = end == std::string::npos ? text.size() : end + 1;
        lines.push_back(text.substr(from, next - from));
        from = next;
    }
    return lines;
}

std::string visible(const std::string& line) {
    std::string shown;
    for (const char c : line) {
        if (c == '\n') continue;
        if (static_cast<unsigned char>(c) >= ' ') {
            shown += c;
            continue;
        }
        char text[8];
        std::snprintf(text, sizeof text, "<%02X>", static_cast<unsigned>(static_cast<unsigned char>(c)));
        shown += text;
    }
    if (line.empty() || line.back() != '\n') shown += "<no line end>";
    return shown;
}

std::string marked(const Lines& lines, std::size_t from, std::size_t to, char mark) {
    std::string text;
    const std::size_t stop = std::min(to, from + most_lines);
    for (std::size_t i = from; i < stop; ++i)
        text += mark + visible(lines[i]) + "\n";
    if (stop < to) text += mark + std::string("... ") + std::to_string(to - stop) + " lines more\n";
    return text;
}

/// Where the first stretch of differing lines ends: at the next line that is the same on both sides.
std::size_t end_of_change(const Lines& a, const Lines& b, std::size_t from) {
    std::size_t to = from + 1;
    const std::size_t both = std::min(a.size(), b.size());
    while (to < both && a[to] != b[to])
        ++to;
    return to;
}

} // namespace

std::string first_difference(const std::string& expected, const std::string& made) {
    if (expected == made) return {};
    const Lines a = lines_of(expected), b = lines_of(made);
    std::size_t at = 0;
    while (at < a.size() && at < b.size() && a[at] == b[at])
        ++at;
    const std::size_t to = end_of_change(a, b, at);
    const std::size_t end_a = std::min(to, a.size()), end_b = std::min(to, b.size());
    const std::size_t before = at < context ? 0 : at - context;
    return "--- expected\n+++ made\n@@ line " + std::to_string(at + 1) + " @@\n" + marked(a, before, at, ' ') +
           marked(a, at, end_a, '-') + marked(b, at, end_b, '+') +
           marked(a, end_a, std::min(a.size(), end_a + context), ' ');
}

} // namespace golden
