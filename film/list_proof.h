#pragma once
// Holds a printed report against the film that its edit needs, frame by frame.

#include "film/film_strip.h"
#include "host/recdb.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace film {

/// A rule of the lists by which they print something else than the film's frames.
struct ListRule {
    const char* name; ///< a word, as docs name it
    const char* text; ///< one line
};

/// All rules, in the order in which docs list them.
const std::vector<ListRule>& list_rules();

/// Where report and film part.
struct ProofFinding {
    std::string list;
    int page = 0, line = 0;         ///< 0: the list has no entry for it
    std::string entry;              ///< "event 12", "OPTICAL#3"; empty: the list as a whole
    std::int64_t frame = -1;        ///< of the edit; -1: none in particular
    std::string what;               ///< what stands there and what should
    const ListRule* rule = nullptr; ///< the rule that makes it so; null: none does
};

struct ListProof {
    std::vector<ProofFinding> failures;   ///< by a rule that loses film, or by none
    std::vector<ProofFinding> exceptions; ///< what a rule prints otherwise, no film being lost
    std::size_t events = 0;
    std::int64_t frames = 0;

    bool proved() const { return failures.empty(); }
};

struct ProofOptions {
    int handles = 0;
    int butt = 1;
    label_t film = label_none; ///< the film standard of the report
    label_t timecode = label_none;
    std::string timecode_start;              ///< of the edit, for timecode lists
    std::string edit;                        ///< its name; empty: not looked at
    std::string dated;                       ///< its date, as headings print it; empty: not looked at
    std::multimap<int, std::string> effects; ///< their names by optical; empty: not looked at
};

/// What the header of a table and its rows of effects say of these; the rest stays as it is.
void take_header(const recdb& table, ProofOptions& options);

/// Proves each list that the report holds. Never fails: a report that can't be read is a failure of its own. Time goes
/// with entries and strips, times their logarithm.
ListProof prove_report(std::string_view report, const Strips& strips, const ProofOptions& options);

/// One line, as people read it.
std::string line_of(const ProofFinding& finding);
/// "proved: 1,204 events, 86,400 frames", or how many failures there are.
std::string summary_of(const ListProof& proof);

} // namespace film
