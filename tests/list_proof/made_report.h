#pragma once
// The lists of an edit that is made in code, and its film by the edit and by the table.

#include "cutlist/cutlist_options.h"
#include "embedded/services.h"
#include "quillbrook/cutlist.h"
#include "tests/generator/made_edit.h"
#include "tests/list_proof/proved_example.h"
#include "tests/support/recording_logger.h"

namespace list_proof {

struct Form {
    bool neg_cut = false, frames = false, by_key = false;
    int handles = 0;
};

class MadeReport {
public:
    MadeReport(const EditPtr& edit, const Form& form) {
        const ScratchDirectory scratch;
        RecordingLogger logger;
        cutlist_options() = CutlistOptions();
        const embedded::settings_block block = block_of(form, scratch.file("list.txt"));
        made = make_cutlist_from_edit(edit, logger, 0, &block, nullptr, true);
        cutlist_options() = CutlistOptions();
        if (!made) return;
        report = bytes_of_file(scratch.file("list.txt"));
        const recdb table(fromUTF8(scratch.file("list.cdb").c_str(), -1), INT_MAX, false);
        film::UseOptions use;
        use.neg_cut = form.neg_cut;
        by_edit = film::uses_of_edit(edit, use);
        by_table = film::uses_of_table(table);
        film::take_header(table, options);
        options.handles = form.handles;
    }

    bool made = false;
    std::string report;
    film::Strips by_edit, by_table;
    film::ProofOptions options;

private:
    static embedded::settings_block block_of(const Form& form, const std::string& report) {
        embedded::settings_block block;
        block.set("chan_type", "1");
        block.set("chan_num", "0");
        block.set("edit_units", form.frames ? "1" : "0");
        block.set("pull_match_assembly", form.neg_cut ? "0" : "1");
        block.set("pull_handle", std::to_string(form.handles));
        block.set("pull_sort_by_keycode", form.by_key ? "1" : "0");
        block.set("output_file", report);
        return block;
    }
};

} // namespace list_proof
