// The entry: its two sets of reels, its options and its errors.

#include "changelist/cutlist_set.h"
#include "embedded/long_runs.h"
#include "tests/changelist/cut_files.h"
#include "tests/support/memory_files.h"

#include <string>

namespace {

using namespace changelist_test;

class ChangelistEntry : public ChangelistTest {
protected:
    std::string refused_tracks(const Header& old_header, const Header& new_header) {
        return run({write("a.cdb", one_shot, old_header)}, {write("b.cdb", one_shot, new_header)});
    }

    const Cut one_shot = {{.frame = 0, .length = 100}};
    const Cut longer_shot = {{.frame = 0, .length = 120}};
    const Header picture{.channel = "V00"};
    const Header sound{.channel = "A05"};
};

TEST_F(ChangelistEntry, AnEmptyListIsRefusedWithoutReadingTheOptions) {
    block.set("chg_summary_list", "1");
    EXPECT_EQ(run({}, {}), "No edits in list\n");
    EXPECT_EQ(changelist_options().summary_list, 0);
}

TEST_F(ChangelistEntry, ASideWithoutReelsIsRefused) {
    const std::string a = write("a.cdb", one_shot);
    EXPECT_EQ(run({a}, {}), "Error in reel count\n");
    EXPECT_EQ(run({}, {a}), "Error in reel count\n");
}

TEST_F(ChangelistEntry, TheOptionsAreReadBeforeTheReelsAreCounted) {
    block.set("chg_summary_list", "7");
    EXPECT_EQ(run({write("a.cdb", one_shot)}, {}), "Error in reel count\n");
    EXPECT_EQ(changelist_options().summary_list, 7);
}

TEST_F(ChangelistEntry, OnlyThePlainUpperCaseWordEndsASide) {
    ask_for_all();
    const std::string a = write("a.cdb", one_shot);
    EXPECT_EQ(run({".cdb"}, {a}), "Unable to read CUTDB database .cdb");
}

TEST_F(ChangelistEntry, TheWordInTheMiddleEndsOneSideAndTheOtherGoesOn) {
    ask_for_all();
    const std::string a = write("a.cdb", one_shot);
    EXPECT_EQ(run({a, ".CDB", a}, {a, a, a}), "");
    EXPECT_EQ(change_run().reel_max, 3);
    EXPECT_EQ(change_run().multi_reel, 1);
    EXPECT_EQ(change_run().old_side.reel_start[1], 100);
    EXPECT_EQ(change_run().old_side.reel_start[49], 100);
    EXPECT_EQ(change_run().new_side.reel_start[1], 100);
    EXPECT_EQ(change_run().new_side.reel_start[3], 300);
    EXPECT_EQ(run({a}, {a}), "");
    EXPECT_EQ(change_run().reel_max, 1);
    EXPECT_EQ(change_run().multi_reel, 0);
}

TEST_F(ChangelistEntry, TheWatchdogIsToldOfTheEndOnEveryWayOut) {
    const std::string a = write("a.cdb", one_shot);
    const std::string other_film = write("b.cdb", one_shot, {.film = "16mm-1p"});
    const auto ends = [&](const std::string& error, const std::vector<std::string>& old_files,
                          const std::vector<std::string>& new_files) {
        const embedded::LongRuns before = embedded::long_runs();
        EXPECT_EQ(run(old_files, new_files), error);
        EXPECT_EQ(embedded::long_runs().begun, before.begun + 1) << error;
        EXPECT_EQ(embedded::long_runs().ended, before.ended + 1) << error;
    };
    ends("No reports have been requested!\n", {a}, {a});
    ask_for_all();
    ends("", {a}, {a});
    ends("maximum cutting-copy reel count exceeded\n", std::vector<std::string>(50, a), {a});
    ends("Unable to read CUTDB database none.cdb", {"none.cdb"}, {a});
    ends("Unable to read CUTDB database none.cdb", {a}, {"none.cdb"});
    ends("The old and new cutlists have different film standards!\n", {a}, {other_film});
    embedded::set_lists_directory(scratch.file("none"));
    ends("Error opening the changelist database files\n", {a}, {a});
    embedded::set_lists_directory(scratch.path());
    MemoryFileSystem memory;
    memory.disc.refuses = true;
    ends("ERROR: Couldn't create changelist report file\n", {a}, {a});
}

TEST_F(ChangelistEntry, UnitsThatAreNotGivenAreFramesWhateverTheLastRunChose) {
    ask_for_all();
    block.set("chg_lengthunits", "1");
    const std::string in_feet = changes(one_shot, longer_shot);
    EXPECT_NE(in_feet.find(" 0006+04"), std::string::npos);
    block = embedded::settings_block();
    const std::string in_frames = changes(one_shot, longer_shot);
    EXPECT_EQ(in_frames.find(" 0006+04"), std::string::npos);
    EXPECT_NE(in_frames.find("0000100"), std::string::npos);
    EXPECT_EQ(changelist_options().units_frames, 1);
}

TEST_F(ChangelistEntry, WithoutABlockTheOptionsStayButForTheUnits) {
    ask_for_all();
    block.set("chg_lengthunits", "1");
    changes(one_shot, longer_shot);
    changelist_reels reels{{wide(scratch.file("old.cdb")), wide(scratch.file("new.cdb"))}};
    EXPECT_EQ(mr_make_changelist(reels, wide(scratch.file("changes.txt")), nullptr, logger), nullptr);
    EXPECT_NE(report().find("DETAILED LIST OF CHANGES:"), std::string::npos);
    EXPECT_EQ(changelist_options().units_feet, 0);
    EXPECT_EQ(changelist_options().units_frames, 1);
}

TEST_F(ChangelistEntry, UnitsAboveOneAreTimecode) {
    ask_for_all();
    block.set("chg_lengthunits", "7");
    EXPECT_NE(changes(one_shot, longer_shot).find("00:00:04:04"), std::string::npos);
    EXPECT_EQ(changelist_options().units_timecode, 1);
    EXPECT_EQ(changelist_options().units_feet + changelist_options().units_frames, 0);
}

TEST_F(ChangelistEntry, TheVeryFirstRunShowsKeyColumns) {
    ask_for_all();
    EXPECT_NE(changes(one_shot, longer_shot).find("First/Last KEY"), std::string::npos);
}

TEST_F(ChangelistEntry, KeyColumnsThatWereTurnedOffStayOff) {
    ask_for_all();
    block.set("chg_showedgecodes", "0");
    changes(one_shot, longer_shot);
    block = embedded::settings_block();
    EXPECT_EQ(changes(one_shot, longer_shot).find("First/Last KEY"), std::string::npos);
}

TEST_F(ChangelistEntry, TransitionsStayOffAfterSoundUntilAskedForAgain) {
    ask_for_all();
    EXPECT_EQ(run({write("a.cdb", one_shot, sound)}, {write("b.cdb", longer_shot, sound)}), "");
    block = embedded::settings_block();
    EXPECT_EQ(changes(one_shot, longer_shot).find("TRANSITIONS"), std::string::npos);
    block.set("chg_dissolve_list", "1");
    EXPECT_NE(changes(one_shot, longer_shot).find("TRANSITIONS IN NEW SEQUENCE:"), std::string::npos);
}

TEST_F(ChangelistEntry, SoundWithTransitionsAloneHasNothingToPrint) {
    block.set("chg_dissolve_list", "1");
    EXPECT_EQ(refused_tracks(sound, sound), "No reports have been requested!\n");
    EXPECT_EQ(refused_tracks(picture, picture), "");
}

TEST_F(ChangelistEntry, PictureIsNotComparedWithSoundWhicheverComesFirst) {
    ask_for_all();
    const std::string refusal = "Cutlists were made for different picture/sound tracks";
    EXPECT_EQ(refused_tracks(picture, sound), refusal);
    EXPECT_EQ(refused_tracks(sound, picture), refusal);
    EXPECT_EQ(refused_tracks({.channel = ""}, sound), refusal);
}

TEST_F(ChangelistEntry, EachRunFindsOutAfreshWhetherItIsOfSound) {
    ask_for_all();
    EXPECT_NE(refused_tracks(sound, picture), "");
    EXPECT_EQ(change_run().sound_track, 5);
    EXPECT_EQ(refused_tracks(picture, picture), "");
    EXPECT_EQ(change_run().sound_list, 0);
    EXPECT_EQ(change_run().sound_track, 0);
    EXPECT_EQ(refused_tracks(sound, {.channel = "A07"}), "");
    EXPECT_EQ(change_run().sound_list, 1);
    EXPECT_EQ(change_run().sound_track, 7);
}

TEST_F(ChangelistEntry, FilmIsComparedBeforeTheListsAreLookedAt) {
    const std::string a = write("a.cdb", one_shot);
    const std::string b = write("b.cdb", one_shot, {.film = "16mm-1p"});
    EXPECT_EQ(run({a}, {b}), "The old and new cutlists have different film standards!\n");
    EXPECT_EQ(run({a}, {a}), "No reports have been requested!\n");
}

TEST_F(ChangelistEntry, ProgressIsToldInTheOrderOfTheWork) {
    ask_for_all();
    const std::string a = write("a.cdb", one_shot);
    const std::string b = write("b.cdb", longer_shot);
    ASSERT_EQ(run({a, b}, {b}), "");
    const auto text = [](ResId id) { return std::string(toUTF8(resourceStrW(id)).c_str()); };
    EXPECT_EQ(logger.lines, (std::vector<LoggedLine>{{"Reading cutlist " + a, 0},
                                                     {"Reading cutlist " + b, 0},
                                                     {"Reading cutlist " + b, 0},
                                                     {text(10266), 5},
                                                     {text(10267), 0},
                                                     {text(10269), 0},
                                                     {text(10268), 0},
                                                     {"Writing", 0},
                                                     {text(10260), 0},
                                                     {text(10264), 0},
                                                     {text(10272), 0},
                                                     {text(10265), 0}}));
}

TEST_F(ChangelistEntry, OnlyTheListsThatAreWrittenAreTold) {
    block.set("chg_verbose_list", "1");
    changes(one_shot, longer_shot);
    EXPECT_EQ(logger.lines.back(), (LoggedLine{toUTF8(resourceStrW(10272)).c_str(), 0}));
    EXPECT_FALSE(logger.said(toUTF8(resourceStrW(10260)).c_str(), 0));
}

TEST_F(ChangelistEntry, WorkingFilesAreReplacedBeforeTheReportIsOpened) {
    ask_for_all();
    const std::string a = write("a.cdb", one_shot);
    MemoryFileSystem memory;
    ASSERT_EQ(run({a}, {a}), "");
    EXPECT_EQ(memory.disc.calls, (std::vector<std::string>{"remove " + scratch.file("oldcut__.chg"),
                                                           "remove " + scratch.file("newcut__.chg"),
                                                           "open " + scratch.file("changes.txt") + " 2 3 0 0"}));
    EXPECT_TRUE(memory.disc.files.at(scratch.file("changes.txt"))->closed);
    memory.disc.refuses = true;
    EXPECT_EQ(run({a}, {a}), "ERROR: Couldn't create changelist report file\n");
}

TEST_F(ChangelistEntry, AListThatIsNotWantedOpensNothing) {
    const std::string a = write("a.cdb", one_shot);
    MemoryFileSystem memory;
    EXPECT_NE(run({a}, {a}), "");
    EXPECT_EQ(memory.disc.calls.size(), 2U);
}

TEST_F(ChangelistEntry, ARunThatDoesNotStartLeavesNoStepsOfTheOneBefore) {
    ask_for_all();
    const auto steps = [] {
        unsigned count = 0;
        change_steps(detailed_changes, count);
        return count;
    };
    changes(one_shot, longer_shot);
    ASSERT_EQ(steps(), 1U);
    EXPECT_EQ(run({}, {}), "No edits in list\n");
    EXPECT_EQ(steps(), 0U);
    changes(one_shot, longer_shot);
    EXPECT_EQ(run({scratch.file("old.cdb")}, {}), "Error in reel count\n");
    EXPECT_EQ(steps(), 0U);
}

TEST_F(ChangelistEntry, WithoutAListNothingIsMade) {
    EXPECT_EQ(run({write("a.cdb", one_shot)}, {write("b.cdb", longer_shot)}), "No reports have been requested!\n");
    EXPECT_FALSE(std::filesystem::exists(scratch.file("changes.txt")));
}

// A host that doesn't know of the bench list, behind one that does.
TEST_F(ChangelistEntry, TheBenchListOfOneRunIsNotThatOfTheNext) {
    block.set("chg_bench_list", "1");
    EXPECT_NE(changes(one_shot, longer_shot).find("BENCH LIST"), std::string::npos);
    block = embedded::settings_block();
    block.set("chg_lengthunits", "1");
    const std::string a = scratch.file("old.cdb"), b = scratch.file("new.cdb");
    EXPECT_EQ(run({a}, {b}), "No reports have been requested!\n");
    changelist_reels reels{{wide(a), wide(b)}};
    changelist_options().bench_list = 1;
    EXPECT_STREQ(mr_make_changelist(reels, wide(scratch.file("changes.txt")), nullptr, logger),
                 "No reports have been requested!\n");
}

TEST_F(ChangelistEntry, TakesFortyNineReelsASideAndNoMore) {
    ask_for_all();
    const std::string a = write("a.cdb", one_shot);
    EXPECT_EQ(run(std::vector<std::string>(49, a), {a}), "");
    EXPECT_EQ(run(std::vector<std::string>(50, a), {a}), "maximum cutting-copy reel count exceeded\n");
    EXPECT_EQ(run({a}, std::vector<std::string>(50, a)), "maximum cutting-copy reel count exceeded\n");
}

TEST_F(ChangelistEntry, TooManyReelsAreRefusedBeforeAnyIsRead) {
    run({"none.cdb"}, std::vector<std::string>(50, "none.cdb"));
    EXPECT_TRUE(logger.lines.empty());
}

TEST_F(ChangelistEntry, AReportThatCannotBeMadeIsToldOf) {
    ask_for_all();
    const std::string a = write("a.cdb", one_shot);
    changelist_reels reels{{wide(a), wide(a)}};
    const char* error = mr_make_changelist(reels, wide(scratch.file("none/changes.txt")), &block, logger);
    EXPECT_STREQ(error, "ERROR: Couldn't create changelist report file\n");
}

TEST_F(ChangelistEntry, WorkingFilesThatCannotBeKeptAreToldOf) {
    ask_for_all();
    embedded::set_lists_directory(scratch.file("none"));
    const std::string a = write("a.cdb", one_shot);
    EXPECT_EQ(run({a}, {a}), "Error opening the changelist database files\n");
    embedded::set_lists_directory(scratch.path());
}

TEST(CutlistSets, ARecordWithAReelBelowOneIsNotValid) {
    const CutlistSetRec none(L"a.cdb", 0);
    EXPECT_EQ(none.valid, 0);
    EXPECT_EQ(none.reel, 1);
    const CutlistSetRec third(L"a.cdb", 3);
    EXPECT_EQ(third.valid, 1);
    EXPECT_EQ(third.reel, 3);
    EXPECT_EQ(third.subreel, 1);
}

TEST(CutlistSets, RecordsOrderByReelThenByPart) {
    const CutlistSetRec first(L"b.cdb", 1);
    const CutlistSetRec second(L"a.cdb", 2);
    CutlistSetRec part(L"c.cdb", 1);
    part.subreel = 2;
    EXPECT_EQ(first.compare(second), -1);
    EXPECT_EQ(second.compare(first), 1);
    EXPECT_EQ(first.compare(part), -1);
    EXPECT_EQ(first.compare(CutlistSetRec(L"other.cdb", 1)), 0);
    EXPECT_TRUE(first == CutlistSetRec(L"other.cdb", 1));
    EXPECT_TRUE(first != part);
}

TEST(CutlistSets, ADoubledOrInvalidReelIsRefused) {
    CutlistSet set;
    EXPECT_EQ(set.add_reel(std::make_unique<CutlistSetRec>(L"b.cdb", 2)), nullptr);
    EXPECT_EQ(set.add_reel(std::make_unique<CutlistSetRec>(L"a.cdb", 1)), nullptr);
    EXPECT_STREQ(set.add_reel(std::make_unique<CutlistSetRec>(L"c.cdb", 2)), "Error in reel number assignment\n");
    EXPECT_STREQ(set.add_reel(std::make_unique<CutlistSetRec>(L"d.cdb", 0)), "Error in reel number assignment\n");
    ASSERT_EQ(set.size(), 2U);
    EXPECT_EQ(set.reel(0).reel, 1);
    EXPECT_EQ(set.reel(1).reel, 2);
}

TEST(CutlistSets, AreNotPrinted) {
    GrowString text;
    CutlistSet().printOn(text);
    CutlistSetRec(L"a.cdb", 1).printOn(text);
    EXPECT_STREQ(text.c_str(), "printOn not supportedprintOn not supported");
}

TEST_F(ChangelistEntry, TheOptionKeysAreListed) {
    int lists = 0;
    int texts = 0;
    int all = 0;
    for (const changelist_option_key* key = changelist_option_keys(); key->name; ++key, ++all) {
        lists += key->is_list;
        texts += key->is_text;
    }
    EXPECT_EQ(all, 13);
    EXPECT_EQ(lists, 5);
    EXPECT_EQ(texts, 2);
}

} // namespace
