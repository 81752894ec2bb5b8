#include "tool/cut_tables.h"

#include "formats/edit_readers.h"
#include "formats/file_names.h"
#include "tool/key_values.h"
#include "tool/output_files.h"
#include "tool/shared_options.h"
#include "tool/wrong_file.h"

namespace tool {
namespace {

std::string table_name(const std::vector<std::string>& reels, std::size_t index, const CutSide& side,
                       const std::string& folder) {
    return folder + '/' + side.name + std::to_string(index + 1) + '-' + formats::stem_of(reels[index]);
}

} // namespace

const CutSide old_side{"old", &CutTables::old_sequence}, new_side{"new", &CutTables::new_sequence};

void add_cut_options(OptionTable& options, CutTables& cuts) {
    add_edit_reading(options, cuts.edit);
    options.add({
        {"--old-sequence", "NAME", "The sequence of the old cut, in place of --sequence", cuts.old_sequence},
        {"--new-sequence", "NAME", "The sequence of the new cut, in place of --sequence", cuts.new_sequence},
        log_table(cuts.choices.log),
        {"--cut-set", "KEY=VALUE", "An option of the library for the tables of edits, as --set of cutlist",
         EachText{[&cuts](const std::vector<std::string>& pairs) { cuts.choices.options.set = parse_options(pairs); }}},
        host_setting(cuts.settings),
    });
    add_log_matching(options, cuts.edit, cuts.choices.log);
    add_check_options(options, cuts.checks);
}

bool is_edit(const std::string& path) {
    return fault_of_input(path).empty() && formats::edit_reader_of(kind_of(path), path) != nullptr;
}

std::vector<std::string> tables_to_make(const std::vector<std::string>& reels, const CutSide& side,
                                        const std::string& folder) {
    std::vector<std::string> tables;
    for (std::size_t i = 0; i < reels.size(); ++i)
        tables.push_back(table_name(reels, i, side, folder) + ".cdb");
    return tables;
}

void make_tables(std::vector<std::string>& reels, const CutSide& side, const CutTables& cuts, const std::string& folder,
                 bool quiet, std::vector<EditPtr>& kept_open) {
    for (std::size_t i = 0; i < reels.size(); ++i) {
        if (!is_edit(reels[i])) continue;
        EditInput input = cuts.edit;
        input.paths = {reels[i]};
        if (!(cuts.*side.sequence).empty()) input.sequence = cuts.*side.sequence;
        const std::string made = table_name(reels, i, side, folder);
        kept_open.push_back(make_table(input, cuts.choices, cuts.checks, made, quiet));
        reels[i] = made + ".cdb";
    }
}

} // namespace tool
