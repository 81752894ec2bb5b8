#include "film/assembly_entries.h"

#include "film/list_lines.h"
#include "film/plain_number.h"

namespace film {
namespace {

/// Where the columns of an assembly list begin.
enum assembly_column : int { at_start = 5, at_length = 16, at_roll = 27, at_shot = 37, at_key = 47, at_ink = 67 };
enum timecode_column : int { at_edit = 5, at_source = 20, at_reel = 35, at_name = 50 };

constexpr std::string_view reduced_text = "** In cutting-copy, this event is reduced to nothing.";
constexpr std::string_view optical_text = "-- OPTICAL#";
constexpr std::string_view marked_text = "MARK FROM";

bool is_digit(char c) { return c >= '0' && c <= '9'; }

class AssemblyReader {
public:
    AssemblyReader(const ListPages& pages, std::vector<ReadFault>& faults)
        : lines_(pages, faults), inks_(pages.heading.cutting_copy || pages.heading.sound_track >= 0) {}

    AssemblyEntries read() {
        lines_.take(inks_ ? "     Start        Length   Roll      Shot      KeyKodes            Inkcodes"
                          : "     Start        Length   Roll      Shot      KeyKodes");
        while (!lines_.at_end())
            read_next(lines_.next());
        return std::move(list_);
    }

private:
    void read_next(const PrintedLine& line) {
        if (!list_.total.empty()) return lines_.unreadable(line);
        if (is_digit(line.text.front())) return read_event(line);
        if (is_total(line)) return read_total(line);
        const std::string_view text = trimmed(line.text);
        if (text.substr(0, 9) == "EFFECT - ") return read_effect(line);
        if (!list_.events.empty() && read_more(line, text, list_.events.back())) return;
        lines_.unreadable(line);
    }

    /// The last line holds a position alone, in the column of starts.
    bool is_total(const PrintedLine& line) const {
        return lines_.at_end() && cell(line.text, 0, at_start).empty() &&
               !cell(line.text, at_start, at_length).empty() && cell(line.text, at_length, -1).empty();
    }
    void read_total(const PrintedLine& line) {
        list_.total = cell(line.text, at_start, at_length);
        list_.total_place = line.place;
    }

    void read_event(const PrintedLine& line) {
        AssemblyEntry entry;
        entry.place = line.place;
        entry.event = lines_.number(cell(line.text, 0, at_start), line.place);
        entry.reduced = trimmed(raw_cell(line.text, at_start, -1)) == reduced_text;
        if (!entry.reduced) {
            entry.start = cell(line.text, at_start, at_length);
            entry.length = cell(line.text, at_length, at_roll);
            const std::string_view rest = cell(line.text, at_roll, -1);
            if (rest.substr(0, optical_text.size()) == optical_text)
                read_optical(line, rest, entry);
            else
                read_shot(line, entry);
        }
        list_.events.push_back(entry);
    }

    void read_optical(const PrintedLine& line, std::string_view rest, AssemblyEntry& entry) {
        const auto number = between(rest, optical_text, " --");
        if (!number || rest.size() != optical_text.size() + number->size() + 3) return lines_.unreadable(line);
        entry.optical = lines_.number(*number, line.place);
    }

    void read_shot(const PrintedLine& line, AssemblyEntry& entry) {
        entry.roll = cell(line.text, at_roll, at_shot);
        entry.shot = cell(line.text, at_shot, at_key);
        entry.key_in = cell(line.text, at_key, inks_ ? at_ink : -1);
        if (inks_) entry.ink_in = cell(line.text, at_ink, -1);
        const PrintedLine& second = lines_.next();
        if (!cell(second.text, 0, at_key).empty()) return lines_.unreadable(second);
        entry.key_out = cell(second.text, at_key, inks_ ? at_ink : -1);
        if (inks_) entry.ink_out = cell(second.text, at_ink, -1);
    }

    bool read_more(const PrintedLine& line, std::string_view text, AssemblyEntry& entry) {
        if (text.substr(0, 6) == "***** ") return read_mark(line, entry);
        if (text == "FREEZE-FRAME -- The shot above was frozen") {
            entry.speed = "0";
            return true;
        }
        const auto speed = between(text, "VARISPEED -- The shot above was run at ", " times play-speed");
        if (speed) entry.speed = *speed;
        return speed.has_value();
    }

    bool read_mark(const PrintedLine& line, AssemblyEntry& entry) {
        const std::size_t mark = line.text.rfind(marked_text);
        const std::size_t length = line.text.substr(0, mark).rfind(" Length ");
        if (mark == std::string_view::npos || length == std::string_view::npos) return false;
        const int frames = lines_.number(line.text.substr(length + 8, mark - length - 8), line.place);
        const std::string_view name = trimmed(line.text.substr(6, length - 6));
        const std::string_view from = trimmed(line.text.substr(mark + marked_text.size()));
        if (name == "FADE-IN" && from == "CUT") {
            entry.fade_in = frames;
            return true;
        }
        entry.mark_out = {line.place, name, frames, {}, {}};
        return read_codes(from, entry.mark_out);
    }

    /// Key and ink number part at a column of blanks, and either may be words with a blank.
    static bool read_codes(std::string_view from, PrintedMark& mark) {
        const std::size_t gap = from.find("  ");
        if (gap == std::string_view::npos) return false;
        mark.key = from.substr(0, gap);
        mark.ink = trimmed(from.substr(gap));
        return true;
    }

    void read_effect(const PrintedLine& line) {
        const PrintedLine& second = lines_.next();
        const std::string_view text = trimmed(line.text);
        const std::size_t behind = text.rfind(" - (OPTICAL#");
        const auto length = between(second.text, "Length ", "   MARK FROM ");
        if (behind == std::string_view::npos || behind < 9 || text.back() != ')' || !length)
            return lines_.unreadable(line);
        EffectEntry effect;
        effect.place = line.place;
        effect.name = text.substr(9, behind - 9);
        effect.optical = lines_.number(text.substr(behind + 12, text.size() - behind - 13), line.place);
        effect.length = lines_.number(*length, second.place);
        effect.from = second.text.substr(second.text.rfind(' ') + 1);
        list_.effects.push_back(effect);
    }

    ListLines lines_;
    bool inks_;
    AssemblyEntries list_;
};

} // namespace

AssemblyEntries read_assembly(const ListPages& pages, std::vector<ReadFault>& faults) {
    return AssemblyReader(pages, faults).read();
}

std::vector<TimecodeEntry> read_timecodes(const ListPages& pages, std::vector<ReadFault>& faults) {
    ListLines lines(pages, faults);
    std::vector<TimecodeEntry> entries;
    lines.take("     Edit IN        Source IN              Roll     Shot name");
    lines.take("     /OUT (excl)    /OUT (excl)");
    while (!lines.at_end()) {
        const PrintedLine& line = lines.next();
        const PrintedLine& second = lines.next();
        if (!cell(second.text, 0, at_edit).empty() || !cell(second.text, at_reel, -1).empty()) lines.unreadable(second);
        entries.push_back({line.place, lines.number(cell(line.text, 0, at_edit), line.place),
                           cell(line.text, at_edit, at_source), cell(second.text, at_edit, at_source),
                           cell(line.text, at_source, at_reel), cell(second.text, at_source, at_reel),
                           cell(line.text, at_reel, at_name), cell(line.text, at_name, -1)});
    }
    return entries;
}

} // namespace film
