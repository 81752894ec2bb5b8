#pragma once
// The lines of a list on their way into entries.

#include "film/report_pages.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace film {

/// Walks the body of a list, and keeps what couldn't be read.
class ListLines {
public:
    ListLines(const ListPages& pages, std::vector<ReadFault>& faults) : pages_(pages), faults_(faults) {
        behind_.place = pages.end;
    }

    bool at_end() const { return at_ >= pages_.lines.size(); }
    /// The present line; an empty one behind the last.
    const PrintedLine& peek() const { return at_end() ? behind_ : pages_.lines[at_]; }
    const PrintedLine& next() { return at_end() ? behind_ : pages_.lines[at_++]; }
    bool starts_with(std::string_view text) const { return peek().text.substr(0, text.size()) == text; }
    /// Takes the present line where it is that one.
    bool take(std::string_view text);

    void fault(Place place, std::string what) { faults_.push_back({name_of(pages_.list), place, std::move(what)}); }
    void unreadable(const PrintedLine& line) { fault(line.place, '"' + std::string(line.text) + "\" can't be read"); }

    /// The number that a text is; 0 with a fault where it is none.
    int number(std::string_view text, Place place);

private:
    const ListPages& pages_;
    std::vector<ReadFault>& faults_;
    std::size_t at_ = 0;
    PrintedLine behind_;
};

/// The text between two texts of a line, `after` being looked for first; nothing where they don't stand there.
std::optional<std::string_view> between(std::string_view line, std::string_view after, std::string_view before);

} // namespace film
