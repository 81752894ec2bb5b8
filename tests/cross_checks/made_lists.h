#pragma once
// The lists of one edit, read back out of the report's text.

#include "cutlist/cutlist_options.h"
#include "embedded/services.h"
#include "quillbrook/cutlist.h"
#include "reports/cut_s.h"
#include "tests/cross_checks/random_edit.h"
#include "tests/support/recording_logger.h"
#include "tests/support/scratch_directory.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace cross_checks {

/// An entry of a pull list.
struct PulledShot {
    std::string number; ///< "3", or "OPTICAL#2"
    std::string roll;   ///< empty when it is that of the entry above
    int length = 0;
    std::string key_in, key_out;
};

/// An event of the assembly list. Of an optical and of an event reduced to nothing only the number is known.
struct AssembledEvent {
    std::string shot;
    std::string roll;
    int length = 0;
    bool reduced = false;
    int optical = 0;
};

struct ListOptions {
    bool neg_cut = false;
    int handles = 0;
    bool sort_by_key = true; ///< an entry then always names its roll
};

/// All lists of one run, in frames.
class MadeLists {
public:
    MadeLists(const EditPtr& edit, const ListOptions& options);

    bool made = false;
    std::vector<cut_s> records;
    std::set<std::string> rolls;
    std::map<std::string, PulledShot> pull, opticals_pull; ///< by shot
    std::map<int, AssembledEvent> assembly;                ///< by number
    int repeated = 0;                                      ///< entries that stood in their list before

private:
    void read_table(const std::string& path);
    void read_rolls(const std::string& report);
    void read_pull(const std::string& report, const std::string& title, std::map<std::string, PulledShot>& entries);
    void read_assembly(const std::string& report);
};

} // namespace cross_checks
