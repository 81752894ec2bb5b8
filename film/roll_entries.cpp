#include "film/roll_entries.h"

#include "film/list_lines.h"

namespace film {
namespace {

constexpr std::size_t roll_indent = 5;
constexpr std::string_view butt_text = " (butt edit)";
constexpr std::string_view no_key = "(NO KEYKODE)";

/// Where roll, shot and film stand in a line: fields are filled up by bytes.
struct ReuseForm {
    std::string_view roll, shot;
    bool unnumbered;
};

constexpr ReuseForm forms[] = {{" roll: ", " shot: ", false}, {" roll ", " shot ", true}};
constexpr std::size_t roll_width = 8;

const ReuseForm* form_of(std::string_view text) {
    for (const ReuseForm& form : forms) {
        const std::size_t shot = form.roll.size() + roll_width;
        if (text.substr(0, form.roll.size()) != form.roll || text.size() <= shot) continue;
        if (text.substr(shot, form.shot.size()) == form.shot) return &form;
    }
    return nullptr;
}

/// The last blank ahead of the film that a butt edit names.
std::size_t start_of_last_word(std::string_view text) { return text.rfind(' ') + 1; }

bool read_film(std::string_view text, ReuseEntry& entry) {
    const bool butt = text.size() > butt_text.size() && text.substr(text.size() - butt_text.size()) == butt_text;
    if (butt) {
        const std::string_view ahead = text.substr(0, text.size() - butt_text.size());
        entry.butt = true;
        const std::size_t at = entry.unnumbered ? ahead.rfind(no_key) : start_of_last_word(ahead);
        if (at == std::string_view::npos) return false;
        entry.from = ahead.substr(at);
        entry.shot = trimmed(ahead.substr(0, at));
        return true;
    }
    const std::size_t from = text.rfind("from "), to = text.rfind(" to ");
    if (from == std::string_view::npos || to == std::string_view::npos || to < from) return false;
    entry.shot = trimmed(text.substr(0, from));
    entry.from = trimmed(text.substr(from + 5, to - from - 5));
    entry.to = trimmed(text.substr(to + 4));
    return true;
}

} // namespace

std::vector<RollEntry> read_rolls(const ListPages& pages, std::vector<ReadFault>& faults) {
    ListLines lines(pages, faults);
    std::vector<RollEntry> rolls;
    while (!lines.at_end()) {
        const PrintedLine& line = lines.next();
        const std::string_view roll = trimmed(line.text);
        if (line.text.find_first_not_of(' ') != roll_indent) lines.unreadable(line);
        rolls.push_back({line.place, roll});
    }
    return rolls;
}

std::vector<ReuseEntry> read_reuse(const ListPages& pages, std::vector<ReadFault>& faults) {
    ListLines lines(pages, faults);
    std::vector<ReuseEntry> cases;
    while (!lines.at_end()) {
        const PrintedLine& line = lines.next();
        const ReuseForm* form = form_of(line.text);
        ReuseEntry entry;
        entry.place = line.place;
        entry.unnumbered = form && form->unnumbered;
        if (form) entry.roll = trimmed(line.text.substr(form->roll.size(), roll_width));
        const std::size_t shot = form ? form->roll.size() + roll_width + form->shot.size() : 0;
        if (!form || !read_film(line.text.substr(shot), entry)) lines.unreadable(line);
        cases.push_back(entry);
    }
    return cases;
}

} // namespace film
