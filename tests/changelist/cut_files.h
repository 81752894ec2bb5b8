#pragma once
// Cutlist files of made cuts, and runs of the changelist over them.

#include "changelist/changelist_options.h"
#include "changelist/run_state.h"
#include "embedded/services.h"
#include "quillbrook/changelist.h"
#include "tests/support/made_cut.h"
#include "tests/support/plain_lines.h"
#include "tests/support/recording_logger.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace changelist_test {

using made_cut::black;
using made_cut::Cut;
using made_cut::Shot;

using made_cut::Header;
using made_cut::wide;

/// Runs with fresh options in a directory of their own.
class ChangelistTest : public testing::Test {
protected:
    ChangelistTest() {
        changelist_options() = ChangelistOptions();
        change_run() = ChangeRun();
        embedded::set_lists_directory(scratch.path());
    }
    ~ChangelistTest() override { changelist_options() = ChangelistOptions(); }

    void ask_for_all() {
        for (const char* key : {"chg_summary_list", "chg_pull_list", "chg_verbose_list", "chg_dissolve_list"})
            block.set(key, "1");
    }

    std::string write(const std::string& name, const Cut& cut, const Header& header = {}) const {
        EXPECT_TRUE(made_cut::write_cut(scratch.file(name), cut, header));
        return scratch.file(name);
    }

    /// The error's text, empty where the run succeeded.
    std::string run(const std::vector<std::string>& old_files, const std::vector<std::string>& new_files) {
        changelist_reels reels(std::max(old_files.size(), new_files.size()));
        for (std::size_t reel = 0; reel < reels.size(); ++reel) {
            reels[reel].first = reel < old_files.size() ? wide(old_files[reel]) : wide(".CDB");
            reels[reel].second = reel < new_files.size() ? wide(new_files[reel]) : wide(".CDB");
        }
        const char* error = mr_make_changelist(reels, wide(scratch.file("changes.txt")), &block, logger);
        return error ? error : "";
    }

    /// The report on one reel of each cut.
    std::string changes(const Cut& old_cut, const Cut& new_cut) {
        EXPECT_EQ(run({write("old.cdb", old_cut)}, {write("new.cdb", new_cut)}), "");
        return report();
    }

    std::string report() const { return plain_lines(bytes_of_file(scratch.file("changes.txt"))); }

    ScratchDirectory scratch;
    RecordingLogger logger;
    embedded::settings_block block;
};

} // namespace changelist_test
