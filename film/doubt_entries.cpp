#include "film/doubt_entries.h"

#include "film/doubt_texts.h"
#include "film/list_lines.h"
#include "film/plain_number.h"

#include <algorithm>
#include <iterator>

namespace film {
namespace {

class DoubtReader {
public:
    DoubtReader(const ListPages& pages, std::vector<ReadFault>& faults) : lines_(pages, faults) {}

    DoubtEntries read() {
        list_.by_table = lines_.take(doubt_texts::by_table);
        for (const char* head : doubt_texts::heads)
            if (!lines_.take(head)) lines_.unreadable(lines_.peek());
        list_.none = lines_.take(doubt_texts::none);
        while (!lines_.at_end())
            read_line(lines_.next());
        check_counts();
        return std::move(list_);
    }

private:
    void read_line(const PrintedLine& line) {
        const auto section = std::find(std::begin(doubt_texts::sections), std::end(doubt_texts::sections), line.text);
        if (section != std::end(doubt_texts::sections))
            section_ = static_cast<DoubtSection>(section - std::begin(doubt_texts::sections));
        else if (line.text.substr(0, doubt_texts::word_column) == doubt_texts::indent)
            read_what(line);
        else
            read_place(line);
    }

    void read_place(const PrintedLine& line) {
        DoubtEntry entry;
        entry.place = line.place;
        entry.channel = cell(line.text, 0, doubt_texts::position_column);
        entry.position = cell(line.text, doubt_texts::position_column, doubt_texts::roll_column);
        entry.in_no_list = section_ == DoubtSection::no_list;
        if (const auto event = plain_number(entry.channel)) {
            entry.event = *event;
            entry.channel = {};
        }
        if (section_ == DoubtSection::whole || entry.position.empty()) lines_.unreadable(line);
        list_.entries.push_back(entry);
    }

    /// Its further lines begin behind the word.
    void read_what(const PrintedLine& line) {
        const std::string_view word = cell(line.text, doubt_texts::word_column, doubt_texts::what_column);
        const bool known = std::find(std::begin(doubt_texts::words), std::end(doubt_texts::words), word) !=
                           std::end(doubt_texts::words);
        int* const count = section_ == DoubtSection::whole ? &list_.of_whole_edit
                           : list_.entries.empty()         ? nullptr
                                                           : &list_.entries.back().findings;
        if (!count || (!known && (!word.empty() || *count == 0))) return lines_.unreadable(line);
        *count += known ? 1 : 0;
    }

    void check_counts() {
        for (const DoubtEntry& entry : list_.entries)
            if (entry.findings == 0) lines_.fault(entry.place, "nothing is told of it");
        const bool empty = list_.entries.empty() && list_.of_whole_edit == 0;
        if (list_.none != empty) lines_.fault(lines_.peek().place, "says that nothing is missing, and what is");
    }

    ListLines lines_;
    DoubtEntries list_;
    DoubtSection section_ = DoubtSection::lists;
};

} // namespace

DoubtEntries read_doubts(const ListPages& pages, std::vector<ReadFault>& faults) {
    return DoubtReader(pages, faults).read();
}

} // namespace film
