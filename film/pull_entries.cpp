#include "film/pull_entries.h"

#include "film/list_lines.h"
#include "film/plain_number.h"

namespace film {
namespace {

/// Where the columns begin.
struct PullColumns {
    int roll, shot, length, key, ink;
};

constexpr PullColumns pull_columns = {5, 15, 34, 44, 65};
constexpr PullColumns optical_columns = {13, 23, 42, 52, -1};

/// The width of the mark of re-use and the blank behind it.
constexpr int mark_width = 3;

constexpr std::string_view heads[] = {
    "Evt  Roll      Shot name            length                        Inkcode",
    "                                                                 start/end",
    "Evt  Roll      Shot name            length          KeyKode       Inkcode",
    "                                                  start/end      start/end",
    "Evt  Roll      Shot name            length          KeyKode      ",
    "Evt  Roll      Shot name            length          KeyKode",
    "Evt          Roll      Shot name            length          KeyKode",
    "                                                  start/end",
    "                                                          start/end",
};

constexpr std::string_view note_text = "***NOTE: ";
constexpr std::string_view optical_text = "OPTICAL#";

class PullReader {
public:
    PullReader(const ListPages& pages, std::vector<ReadFault>& faults)
        : lines_(pages, faults), optical_(pages.list == PrintedList::optical_pulls),
          inks_(!optical_ && (pages.heading.cutting_copy || pages.heading.sound_track >= 0)),
          columns_(optical_ ? optical_columns : pull_columns) {}

    PullEntries read() {
        read_note();
        for (const std::string_view head : heads)
            lines_.take(head);
        while (!lines_.at_end())
            read_entry(lines_.next());
        return std::move(list_);
    }

private:
    void read_note() {
        if (!lines_.starts_with(note_text)) return;
        const PrintedLine& line = lines_.next();
        const auto number = between(line.text, note_text, " case");
        list_.reuse_cases = number ? lines_.number(*number, line.place) : 0;
        list_.note = line.place;
        const PrintedLine& second = lines_.next();
        if (second.text.substr(0, 27) != "***  see summary report aft") lines_.unreadable(second);
    }

    void read_entry(const PrintedLine& line) {
        PullEntry entry;
        entry.place = line.place;
        read_number(line, entry);
        read_roll(cell(line.text, columns_.roll, columns_.shot), entry);
        entry.shot = cell(line.text, columns_.shot, columns_.length);
        entry.length = cell(line.text, columns_.length, columns_.key);
        const std::string_view mark = cell(line.text, columns_.key, columns_.key + mark_width);
        entry.reused = mark == "**";
        if (!entry.reused && !mark.empty()) lines_.unreadable(line);
        entry.key_in = cell(line.text, columns_.key + mark_width, inks_ ? columns_.ink : -1);
        if (inks_) entry.ink_in = cell(line.text, columns_.ink, -1);
        read_second(lines_.next(), entry);
        list_.entries.push_back(entry);
    }

    void read_number(const PrintedLine& line, PullEntry& entry) {
        std::string_view text = cell(line.text, 0, columns_.roll);
        if (!optical_) {
            entry.event = lines_.number(text, line.place);
        } else if (text.substr(0, optical_text.size()) == optical_text) {
            entry.optical = lines_.number(text.substr(optical_text.size()), line.place);
        } else {
            lines_.unreadable(line);
        }
    }

    /// A roll is named once for all its entries, and again at the head of a page.
    void read_roll(std::string_view text, PullEntry& entry) {
        entry.roll_printed = !text.empty();
        const bool follows = !list_.entries.empty() && list_.entries.back().place.page == entry.place.page;
        entry.roll = text.empty() && follows ? list_.entries.back().roll : text;
    }

    void read_second(const PrintedLine& line, PullEntry& entry) {
        if (!cell(line.text, 0, columns_.key + mark_width).empty()) return lines_.unreadable(line);
        entry.key_out = cell(line.text, columns_.key + mark_width, inks_ ? columns_.ink : -1);
        if (inks_) entry.ink_out = cell(line.text, columns_.ink, -1);
    }

    ListLines lines_;
    bool optical_;
    bool inks_;
    const PullColumns& columns_;
    PullEntries list_;
};

} // namespace

PullEntries read_pulls(const ListPages& pages, std::vector<ReadFault>& faults) {
    return PullReader(pages, faults).read();
}

} // namespace film
