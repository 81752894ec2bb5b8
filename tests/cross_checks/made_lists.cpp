#include "tests/cross_checks/made_lists.h"

#include "reports/cutdb.h"
#include "tests/support/plain_lines.h"

#include <regex>
#include <sstream>

namespace cross_checks {
namespace {

embedded::settings_block block_of(const ListOptions& options, const std::string& report) {
    embedded::settings_block block;
    block.set("chan_type", "1");
    block.set("chan_num", "0");
    block.set("edit_units", "1");
    block.set("pull_match_assembly", options.neg_cut ? "0" : "1");
    block.set("pull_handle", std::to_string(options.handles));
    block.set("pull_sort_by_keycode", options.sort_by_key ? "1" : "0");
    block.set("output_file", report);
    return block;
}

/// The lines of one list, from its title to its end.
std::vector<std::string> lines_of_list(const std::string& report, const std::string& title, const std::string& end) {
    const std::size_t first = report.find(title);
    std::vector<std::string> lines;
    if (first == std::string::npos) return lines;
    std::istringstream text(report.substr(first, report.find(end, first) - first));
    for (std::string line; std::getline(text, line);)
        lines.push_back(line);
    return lines;
}

std::string trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

/// The code at the left of a line that may hold an ink number too.
std::string first_code(const std::string& line) {
    static const std::regex code(R"(^\s*(NO KEYKODE|\S+))");
    std::smatch found;
    return std::regex_search(line, found, code) ? found[1].str() : "";
}

} // namespace

MadeLists::MadeLists(const EditPtr& edit, const ListOptions& options) {
    const ScratchDirectory scratch;
    RecordingLogger logger;
    cutlist_options() = CutlistOptions();
    const std::string report = scratch.file("list.txt");
    const embedded::settings_block block = block_of(options, report);
    made = make_cutlist_from_edit(edit, logger, 0, &block, nullptr, true);
    cutlist_options() = CutlistOptions();
    if (!made) return;
    read_table(scratch.file("list.cdb"));
    const std::string text = plain_lines(bytes_of_file(report));
    read_rolls(text);
    read_pull(text, "PULL LIST BY", pull);
    read_pull(text, "OPTICALS PULL LIST BY", opticals_pull);
    read_assembly(text);
}

void MadeLists::read_table(const std::string& path) {
    RecordingLogger logger;
    const cutdb table(fromUTF8(path.c_str(), -1), &logger);
    records.resize(table.get_num_records());
    for (unsigned row = 0; row < records.size(); ++row)
        records[row].from_record(*table.get_record(row));
}

void MadeLists::read_rolls(const std::string& report) {
    static const std::regex roll("^     (\\S+) *$");
    for (const std::string& line : lines_of_list(report, "LIST OF ROLLS USED", "End of list of rolls used")) {
        std::smatch found;
        if (std::regex_match(line, found, roll)) rolls.insert(found[1]);
    }
}

void MadeLists::read_pull(const std::string& report, const std::string& title,
                          std::map<std::string, PulledShot>& entries) {
    const bool opticals = title[0] == 'O';
    static const std::regex entry(R"(^(OPTICAL#\d+|\d+) +(?:(A\d+) +)?(shot\d+) +(-?\d+) +(?:\*\* +)?(.*)$)");
    const auto lines = lines_of_list(report, title, opticals ? "End of opticals pull list" : "End of pull list");
    for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
        std::smatch found;
        if (!std::regex_match(lines[i], found, entry)) continue;
        const PulledShot shot = {found[1], found[2], std::stoi(found[4]), first_code(found[5]),
                                 first_code(trimmed(lines[i + 1]))};
        if (!entries.emplace(found[3], shot).second) ++repeated;
    }
}

void MadeLists::read_assembly(const std::string& report) {
    static const std::regex shot(R"(^(\d+) +\d+ +(-?\d+) +(\S+) +(shot\d+) .*$)");
    static const std::regex other(R"(^(\d+) +(?:\d+ +-?\d+ +-- OPTICAL#(\d+) --|\d+ +-?\d+ .*|(\*\* In).*)$)");
    for (const std::string& line : lines_of_list(report, "ASSEMBLY LIST", "End of assembly list")) {
        std::smatch found;
        AssembledEvent event;
        if (std::regex_match(line, found, shot)) {
            event.length = std::stoi(found[2]);
            event.roll = found[3];
            event.shot = found[4];
        } else if (std::regex_match(line, found, other)) {
            if (found[2].matched) event.optical = std::stoi(found[2]);
            event.reduced = found[3].matched;
        } else {
            continue;
        }
        if (!assembly.emplace(std::stoi(found[1]), event).second) ++repeated;
    }
}

} // namespace cross_checks
