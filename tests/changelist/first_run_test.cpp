// A process in which nothing has run yet: what the records of the runs hold when the library has just been loaded.

#include "changelist/changelist_options.h"
#include "changelist/run_state.h"
#include "changelist/steps/kept_steps.h"
#include "tests/changelist/cut_files.h"

namespace {

using namespace changelist_test;

// Taken before any test runs, as the fixtures set these records afresh.
const ChangelistOptions options_at_load = changelist_options();
const ChangeRun run_at_load = change_run();

TEST(FirstRun, OptionsThatNobodyGaveAskForNoListAndShowTheKeyColumns) {
    const ChangelistOptions& options = options_at_load;
    EXPECT_EQ(options.summary_list, 0);
    EXPECT_EQ(options.pull_list, 0);
    EXPECT_EQ(options.verbose_list, 0);
    EXPECT_EQ(options.dissolve_list, 0);
    EXPECT_EQ(options.bench_list, 0);
    EXPECT_EQ(options.use_scene_take, 0U);
    EXPECT_TRUE(options.show_edge_codes);
    EXPECT_EQ(options.units_frames, 1);
    EXPECT_EQ(options.units_feet, 0);
    EXPECT_EQ(options.units_timecode, 0);
    EXPECT_EQ(options.chan_type, 1U);
    EXPECT_EQ(options.chan_num, 0U);
    EXPECT_EQ(options.old_cookie, Cookie());
    EXPECT_EQ(options.new_cookie, Cookie());
}

TEST(FirstRun, NoTrackHasBeenSeen) {
    EXPECT_EQ(run_at_load.track_seen, 0);
    EXPECT_EQ(run_at_load.sound_list, 0);
    EXPECT_EQ(run_at_load.sound_track, 0);
    EXPECT_EQ(run_at_load.reel_max, 0);
    EXPECT_EQ(run_at_load.multi_reel, 0);
    EXPECT_EQ(run_at_load.old_side.film_std, label_none);
    EXPECT_EQ(run_at_load.new_side.reel_start[0], 0);
}

/// Doesn't set the records afresh, but puts them back as they were when the library was loaded.
class FirstRunOfAll : public ChangelistTest {
protected:
    FirstRunOfAll() {
        changelist_options() = options_at_load;
        change_run() = run_at_load;
        kept_run() = KeptRun();
    }
};

TEST_F(FirstRunOfAll, PrintsTheListThatItIsAskedForAndNoOther) {
    block.set("chg_verbose_list", "1");
    const std::string text = changes({{.frame = 0, .length = 100}}, {{.frame = 0, .length = 130}});
    EXPECT_NE(text.find("DETAILED LIST OF CHANGES:"), std::string::npos);
    EXPECT_NE(text.find("First/Last KEY"), std::string::npos);
    EXPECT_NE(text.find("0000100"), std::string::npos) << "in frames";
    EXPECT_NE(text.find("          Track: V1\n"), std::string::npos);
    for (const char* other : {"SUMMARY", "NEW MATERIAL", "TRANSITIONS IN NEW SEQUENCE:"})
        EXPECT_EQ(text.find(other), std::string::npos) << other;
}

} // namespace
