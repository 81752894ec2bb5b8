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

inline embedded::settings_block block_of(const Form& form, const std::string& report) {
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
};

/// The report of an edit's table from which one row was taken out, and its film by what is left.
class PrintedWithout {
public:
    PrintedWithout(const EditPtr& edit, const Form& form, unsigned row) {
        const ScratchDirectory scratch;
        RecordingLogger logger;
        const embedded::settings_block block = block_of(form, scratch.file("list.txt"));
        const auto path = [&scratch](const char* name) { return fromUTF8(scratch.file(name).c_str(), -1); };
        cutlist_options() = CutlistOptions();
        make_cutlist_from_edit(edit, logger, 0, &block, nullptr, true);
        recdb table(path("list.cdb"), INT_MAX, false);
        table.delete_records(row, 1);
        table.save_text();
        print_cutlist_reports(path("list.cdb"), path("list.txt"), logger, true, &block);
        cutlist_options() = CutlistOptions();
        report = bytes_of_file(scratch.file("list.txt"));
        strips = film::uses_of_table(table);
        film::take_header(table, options);
    }

    std::string report;
    film::Strips strips;
    film::ProofOptions options;
};

} // namespace list_proof
