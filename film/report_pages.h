#pragma once
// A printed report taken apart: sheets, lists and the lines of their bodies, from the text alone.

#include <string>
#include <string_view>
#include <vector>

namespace film {

/// The lists of a report, in the order in which it may hold them.
enum class PrintedList { rolls, pulls, optical_pulls, reuse, assembly, timecodes, opticals, doubts };

/// "pull list", as messages name it.
const char* name_of(PrintedList list);

/// Where something stands: the page that the list's own heading counts, and the line of the file, both from 1.
struct Place {
    int page = 0;
    int line = 0;
};

struct PrintedLine {
    std::string_view text; ///< without its line end
    Place place;
};

/// What the heading of a list's first page says.
struct ListHeading {
    std::string_view edit;
    std::string_view project;
    std::string_view dated;  ///< the edit
    std::string_view format; ///< the name of the film's format
    bool cutting_copy = false;
    int sound_track = -1; ///< -1: a picture list
};

struct ListPages {
    PrintedList list{};
    ListHeading heading;
    std::string_view title;
    std::vector<PrintedLine> lines; ///< the body, without blank lines, rules, and headings
    bool ended = false;             ///< its last line was met; the list of opticals has none
    Place end;
};

/// Something that is no report of ours.
struct ReadFault {
    std::string list; ///< empty ahead of the first list
    Place place;
    std::string what;
};

struct ReportPages {
    std::vector<ListPages> lists;
    std::vector<ReadFault> faults;
};

/// Takes a report apart. Never fails: what it can't read is a fault. The views look into `report`.
ReportPages read_pages(std::string_view report);

/// The text between two columns of a line, without the blanks around it. Bytes from 0x80 on take no column, as the
/// pages are laid out without counting them. `to` -1 is the end of the line.
std::string_view cell(std::string_view line, int from, int to);
/// The same with its blanks.
std::string_view raw_cell(std::string_view line, int from, int to);

std::string_view trimmed(std::string_view text);

} // namespace film
