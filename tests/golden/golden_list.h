#pragma once
// Makes one list of an example the way the command does, in a process of its own: options and the state of a
// mixed list outlive a run, and no list may lean on the one before.

#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace golden {

/// One table and report that an example has on disc.
struct List {
    std::string folder; ///< below examples/
    std::string edit;   ///< the edit file's name without its extension
    std::string suffix; ///< of the files' names: "-neg"
    int channel_kind = 1;
    int channel_number = 1; ///< from 1
    bool neg_cut = false;
    bool frames = false;
    bool by_timecode = false;
    bool single_layer = false; ///< the four single-layer lists too

    std::string name() const { return edit + suffix; }
};

/// How GoogleTest shows one.
void PrintTo(const List& list, std::ostream* out);
/// The name of a test of one list: letters, digits and "_".
std::string test_name_of(const List& list);

/// All lists of all examples.
std::vector<List> all_lists();

std::string examples_folder();
/// `examples/FOLDER/expected/NAME`, without extension.
std::string expected_stem(const List& list);

/// The extensions of the files that a list is made of.
std::vector<std::string> extensions_of(const List& list);

/// The clock, the zone and the host's settings of all files in expected/; working files go to `work_folder`.
void pin_surroundings(const std::string& work_folder, bool by_timecode);
/// Does the work in a process of its own. True when it was done and says so.
bool in_own_process(const std::function<bool()>& work);

/// Makes `stem` with each of its extensions. False when that fails, the reason is on stderr.
bool make_list(const List& list, const std::string& stem);

/// What the reader has to say of an example's edit: its error or its warnings, one a line.
std::string complaints_about(const List& list);

} // namespace golden
