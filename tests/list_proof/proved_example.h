#pragma once
// The reports of examples/, and the proof of one of them by its table.

#include "film/film_uses.h"
#include "film/list_proof.h"
#include "tests/support/project_paths.h"
#include "tests/support/scratch_directory.h"

#include <climits>
#include <map>
#include <string>

namespace list_proof {

/// "reel/reel-neg" is examples/reel/expected/reel-neg.txt, and its table the file beside it.
struct Example {
    std::string report;
    film::Strips strips;
    film::ProofOptions options;
};

inline std::string expected_path(const std::string& name) {
    const std::size_t slash = name.find('/');
    return project_folder() + "/examples/" + name.substr(0, slash) + "/expected" + name.substr(slash);
}

inline Example example(const std::string& name) {
    Example made;
    made.report = bytes_of_file(expected_path(name) + ".txt");
    const recdb table(fromUTF8((expected_path(name) + ".cdb").c_str(), -1), INT_MAX, false);
    made.strips = film::uses_of_table(table);
    film::take_header(table, made.options);
    return made;
}

inline film::ListProof proof_of(const Example& example, const std::string& report) {
    return film::prove_report(report, example.strips, example.options);
}

/// "roll-carried 3", by rule; what no rule explains stands with its text.
inline std::string rules_of(const std::vector<film::ProofFinding>& findings) {
    std::map<std::string, int> counts;
    for (const film::ProofFinding& finding : findings)
        ++counts[finding.rule ? finding.rule->name : film::line_of(finding)];
    std::string text;
    for (const auto& [rule, count] : counts)
        text += (text.empty() ? "" : ", ") + rule + ' ' + std::to_string(count);
    return text;
}

} // namespace list_proof
