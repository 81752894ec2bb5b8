#pragma once
// Cuts that a changelist is given as edits: their tables are made on the way.

#include "host/edit.h"
#include "tool/film_check.h"
#include "tool/job_parts.h"
#include "tool/option_table.h"
#include "tool/table_run.h"

#include <string>
#include <vector>

namespace tool {

/// How edits become tables.
struct CutTables {
    EditInput edit{};                       ///< without paths
    std::string old_sequence, new_sequence; ///< empty: that of `edit`
    TableChoices choices;
    CheckChoices checks;
    Settings settings;
};

/// The old cut or the new one.
struct CutSide {
    const char* name; ///< that the names of its tables begin with
    std::string CutTables::*sequence;
};
extern const CutSide old_side, new_side;

/// --rate, --sequence and all else that `cutlist` takes for its table.
void add_cut_options(OptionTable& options, CutTables& cuts);

/// Whether a reader of edits takes the file; neither tables nor what can't be read are.
bool is_edit(const std::string& path);

/// Where the tables of reels go, should these be edits: "FOLDER/old2-NAME.cdb" for the second one. Which are isn't
/// looked up: outputs are held before any input is read.
std::vector<std::string> tables_to_make(const std::vector<std::string>& reels, const CutSide& side,
                                        const std::string& folder);

/// Puts tables in the places of edits. These stay open in `kept_open`, so that their names are found.
void make_tables(std::vector<std::string>& reels, const CutSide& side, const CutTables& cuts, const std::string& folder,
                 bool quiet, std::vector<EditPtr>& kept_open);

} // namespace tool
