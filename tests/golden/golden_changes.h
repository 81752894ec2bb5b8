#pragma once
// Makes one changelist of examples/recut the way the command does, in a process of its own: options of a changelist
// outlive a run.

#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

namespace golden {

/// One changelist on disc: cut 3 to cut 4 of "The Weir", both reels.
struct Changes {
    std::string name; ///< of its file in expected/, without the extension
    std::vector<std::pair<std::string, std::string>> options;
};

/// How GoogleTest shows one.
void PrintTo(const Changes& changes, std::ostream* out);
/// The name of a test of one: letters, digits and "_".
std::string test_name_of(const Changes& changes);

std::vector<Changes> all_changes();
/// The bench list alone, planned for each cost.
std::vector<Changes> all_costs();

std::string recut_folder();
/// The report in expected/.
std::string expected_file(const Changes& changes);

/// Makes `file` out of the four tables in expected/, with the steps of both lists proved. `file` with ".proof" behind
/// it tells what came of that, a list a line. False when the list couldn't be made, the reason is on stderr.
bool make_changes(const Changes& changes, const std::string& file);

/// The rows of a list in a report, each as its words with one blank between: `title` is the list's, and a row stands
/// on `lines` lines. Empty when the report has no such list.
std::vector<std::string> rows_of_list(const std::string& file, const std::string& title, std::size_t lines);

} // namespace golden
