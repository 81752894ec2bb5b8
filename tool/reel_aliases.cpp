#include "tool/reel_aliases.h"

#include "formats/text_lines.h"
#include "tool/file_bytes.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

#include <vector>

namespace tool {
namespace {

using formats::lower_case;
using formats::without_blanks_around;

struct Alias {
    std::string_view edit, log;

    bool whole() const { return !edit.empty() && !log.empty(); }
};

Alias parted_at(std::string_view line, std::size_t at) {
    return {without_blanks_around(line.substr(0, at)), without_blanks_around(line.substr(at + 1))};
}

/// By the first "=", else the first tab, else the only blank stretch.
Alias alias_of(std::string_view line) {
    for (const char parting : {'=', '\t'})
        if (const std::size_t at = line.find(parting); at != std::string_view::npos) return parted_at(line, at);
    const std::size_t blank = line.find(' ');
    if (blank == std::string_view::npos) return {};
    const Alias words = parted_at(line, blank);
    return words.log.find(' ') == std::string_view::npos ? words : Alias();
}

[[noreturn]] void refuse(const std::string& path, std::size_t line, const std::string& why) {
    throw JobError(path + ": line " + std::to_string(line + 1) + ": " + why);
}

} // namespace

ReelAliases parse_aliases(std::string_view bytes, const std::string& path) {
    const formats::TextLines lines(bytes);
    if (*lines.trouble()) throw JobError(path + ": " + lines.trouble());
    ReelAliases aliases;
    for (std::size_t i = 0; i < lines.count(); ++i) {
        const std::string_view line = without_blanks_around(lines.line(i));
        if (line.empty() || line.front() == '#') continue;
        const Alias alias = alias_of(line);
        if (!alias.whole())
            refuse(path, i, "\"" + one_line(std::string(line)) + "\" is no pair of reels, as \"A12 = A012\"");
        const auto [known, fresh] = aliases.try_emplace(lower_case(alias.edit), alias.log);
        if (!fresh && known->second != alias.log)
            refuse(path, i,
                   "reel \"" + one_line(std::string(alias.edit)) + "\" is \"" + one_line(known->second) +
                       "\" in a line above");
    }
    return aliases;
}

ReelAliases read_aliases(const std::string& path) { return parse_aliases(bytes_of(path), path); }

} // namespace tool
