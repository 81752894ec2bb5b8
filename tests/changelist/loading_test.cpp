// Cutlists on their way into the table that is compared.

#include "base/substitute.h"
#include "changelist/change_record.h"
#include "changelist/load_cutlists.h"
#include "embedded/messages.h"
#include "host/fixed_text.h"
#include "tests/changelist/cut_files.h"

#include <memory>

namespace {

using namespace changelist_test;

class LoadingCutlists : public ChangelistTest {
protected:
    const char* load_files(const std::vector<std::string>& files) {
        CutlistSet set;
        for (std::size_t reel = 0; reel < files.size(); ++reel)
            set.add_reel(std::make_unique<CutlistSetRec>(wide(files[reel]), static_cast<int>(reel) + 1));
        const char* error =
            load_cutlist_set(side.reel_start, side.reel_label, &side.film_std, wide(chg_file()), set, logger);
        table = std::make_unique<chgdb>(wide(chg_file()), &logger);
        return error;
    }
    /// The only reel's file.
    const char* load(const Cut& cut, const Header& header = {}) { return load_files({write("cut.cdb", cut, header)}); }

    std::string chg_file() const { return scratch.file("cut.chg"); }

    ChangeRecord row(unsigned index) const {
        ChangeRecord record(table->film_std());
        record.read(*table->get_record(index));
        return record;
    }
    std::string name_of(unsigned index) const { return toUTF8(row(index).shot_name).c_str(); }
    const char* text(unsigned index, chgdb_field field) const {
        const char* found = table->get_record(index)->get_field(static_cast<unsigned short>(field));
        return found ? found : "";
    }

    ChangeSide side;
    std::unique_ptr<chgdb> table;
};

constexpr const char* blank_key = "        0000+00";

const Cut two_shots = {{.frame = 0, .length = 100}, {.frame = 500, .length = 50}};

// 0.3 has no exact form: what it is rounded to must not change on the way.
TEST_F(LoadingCutlists, ASpeedKeepsAllItsDigits) {
    ASSERT_EQ(load({{.frame = 0, .length = 100, .speed = 0.3}}), nullptr);
    EXPECT_EQ(row(0).speed, 0.3);
    EXPECT_STREQ(text(0, hf_speed), "0.3");
}

TEST_F(LoadingCutlists, TheTimecodeOfAReelIsOnTheMediumOfVideo) {
    ASSERT_EQ(load_files({write("a.cdb", two_shots), write("b.cdb", two_shots, {.start = "02:00:00:00"})}), nullptr);
    for (int reel = 0; reel < 2; ++reel) {
        EXPECT_EQ(side.reel_label[reel].get_MediumRoll().medium, 8);
        EXPECT_EQ(side.reel_label[reel].get_MediumRoll().roll, 1);
        EXPECT_EQ(side.reel_label[reel].type(), label_tc_24);
    }
    EXPECT_STREQ(side.reel_label[1].get_string(0), "02:00:00:00");
}

TEST_F(LoadingCutlists, TheNameOfBlackIsAHeading) {
    embedded::set_message(10061, true, L"A HEADING");
    embedded::set_message(10061, false, L"a line");
    ASSERT_EQ(load({black(20)}), nullptr);
    embedded::clear_messages();
    EXPECT_EQ(name_of(0), "A HEADING");
}

TEST_F(LoadingCutlists, TheTableHoldsTheEventsInOrderAndIsSaved) {
    ASSERT_EQ(load(two_shots), nullptr);
    ASSERT_TRUE(table->get_valid());
    ASSERT_EQ(table->get_num_records(), 2U);
    EXPECT_EQ(row(1).edit_in, 100);
    EXPECT_EQ(row(1).edit_length, 50);
    EXPECT_EQ(row(1).reel_seq, 1);
    EXPECT_STREQ(text(0, hf_keycode_in), "KJ1234560000+00");
    EXPECT_STREQ(text(0, hf_keycode_out), "KJ1234560006+03");
    EXPECT_STREQ(text(0, hf_prim_tc_in), "00:00:00:00");
    EXPECT_STREQ(text(0, hf_prim_tc_out), "00:00:04:04");
    EXPECT_STREQ(text(0, hf_prim_tc_std), "24fps");
}

TEST_F(LoadingCutlists, OneReelsLengthStandsAtEveryPlaceBehindIt) {
    ASSERT_EQ(load(two_shots), nullptr);
    EXPECT_EQ(side.reel_start[0], 0);
    EXPECT_EQ(side.reel_start[1], 150);
    EXPECT_EQ(side.reel_start[49], 150);
}

TEST_F(LoadingCutlists, TheSecondPlaceIsTheFirstReelsLengthWithTwo) {
    const std::string reel = write("cut.cdb", two_shots);
    ASSERT_EQ(load_files({reel, reel}), nullptr);
    EXPECT_EQ(side.reel_start[1], 150);
    EXPECT_EQ(side.reel_start[2], 300);
    EXPECT_EQ(row(2).reel_seq, 2);
    EXPECT_EQ(row(2).edit_in, 0);
}

TEST_F(LoadingCutlists, NeighboursBracketAnEvent) {
    ASSERT_EQ(load({{.frame = 0, .length = 100}, black(10), {.frame = 500, .length = 50}}), nullptr);
    EXPECT_STREQ(text(0, hf_bracket_in), "");
    EXPECT_STREQ(text(0, hf_bracket_out), blank_key);
    EXPECT_STREQ(text(1, hf_bracket_in), "KJ1234560006+03");
    EXPECT_STREQ(text(1, hf_bracket_out), "KJ1234560031+04");
    EXPECT_STREQ(text(2, hf_bracket_in), "__BLACK_0000+09");
    EXPECT_STREQ(text(2, hf_bracket_out), blank_key);
}

TEST_F(LoadingCutlists, ANeighbourOfFilmClosesTheBracket) {
    ASSERT_EQ(load(two_shots), nullptr);
    EXPECT_STREQ(text(0, hf_bracket_out), "KJ1234560031+04");
    EXPECT_STREQ(text(1, hf_bracket_in), "KJ1234560006+03");
}

TEST_F(LoadingCutlists, ACutlistForANegativeCutIsRefused) {
    EXPECT_STREQ(load(two_shots, {.type = "neg-cut"}), "The cutlist was made for a NEG-CUT - must be a CUTTING-COPY");
}

TEST_F(LoadingCutlists, WhatCannotBeComparedIsRefusedByItsName) {
    const std::string name = "CUTDB <" + scratch.file("cut.cdb") + ">";
    EXPECT_EQ(load(two_shots, {.film = "35mm-9p"}), name + " has an invalid film label standard");
    EXPECT_EQ(load(two_shots, {.mixed = "1"}), name + " has mixed film gauges - unsuitable for changelists");
    EXPECT_EQ(load(two_shots, {.film = "24fps"}),
              name + " - cannot currently generate changelists with this film gauge");
}

TEST_F(LoadingCutlists, OfSeveralReasonsTheFirstIsTold) {
    const std::string name = "CUTDB <" + scratch.file("cut.cdb") + ">";
    Header faults{.film = "none", .channel = "A05", .type = "neg-cut", .mixed = "1"};
    change_run().track_seen = 1;
    EXPECT_EQ(load(two_shots, faults), name + " has an invalid film label standard");
    faults.film = "24fps";
    EXPECT_EQ(load(two_shots, faults), name + " has mixed film gauges - unsuitable for changelists");
    faults.mixed = "0";
    EXPECT_EQ(load(two_shots, faults), name + " - cannot currently generate changelists with this film gauge");
    faults.film = "35mm-4p";
    EXPECT_STREQ(load(two_shots, faults), "The cutlist was made for a NEG-CUT - must be a CUTTING-COPY");
    faults.type = "cutting-copy";
    EXPECT_STREQ(load(two_shots, faults), "Cutlists were made for different picture/sound tracks");
}

TEST_F(LoadingCutlists, ARefusalLeavesTheWorkingFileOfBefore) {
    ASSERT_EQ(load(two_shots), nullptr);
    const std::string before = bytes_of_file(chg_file());
    ASSERT_NE(load({{.frame = 7, .length = 9}}, {.type = "neg-cut"}), nullptr);
    EXPECT_EQ(bytes_of_file(chg_file()), before);
}

TEST_F(LoadingCutlists, PictureAndSoundAreNotCompared) {
    ASSERT_EQ(load(two_shots, {.channel = "V00"}), nullptr);
    EXPECT_STREQ(load(two_shots, {.channel = "A05"}), "Cutlists were made for different picture/sound tracks");
    change_run() = ChangeRun();
    ASSERT_EQ(load(two_shots, {.channel = "A05"}), nullptr);
    EXPECT_STREQ(load(two_shots, {.channel = ""}), "Cutlists were made for different picture/sound tracks");
}

TEST_F(LoadingCutlists, TheChannelTextNamesTheTrack) {
    ASSERT_EQ(load(two_shots, {.channel = "A05"}), nullptr);
    EXPECT_EQ(change_run().sound_list, 1);
    EXPECT_EQ(change_run().sound_track, 5);
    change_run() = ChangeRun();
    ASSERT_EQ(load(two_shots, {.channel = "a17"}), nullptr);
    EXPECT_EQ(change_run().sound_track, 1);
    for (const char* picture : {"V99", "", "v02"}) {
        change_run() = ChangeRun();
        ASSERT_EQ(load(two_shots, {.channel = picture}), nullptr);
        EXPECT_EQ(change_run().sound_list, 0) << picture;
        EXPECT_EQ(change_run().sound_track, 0) << picture;
    }
}

TEST_F(LoadingCutlists, ASoundListClearsTheListOfTransitions) {
    changelist_options().dissolve_list = 1;
    ASSERT_EQ(load(two_shots, {.channel = "V00"}), nullptr);
    EXPECT_EQ(changelist_options().dissolve_list, 1);
    change_run() = ChangeRun();
    ASSERT_EQ(load(two_shots, {.channel = "A05"}), nullptr);
    EXPECT_EQ(changelist_options().dissolve_list, 0);
}

TEST_F(LoadingCutlists, PictureTakesItsFirstTrackAndSoundTakesAll) {
    const Cut cut = {{.frame = 0, .length = 100}, {.frame = 200, .length = 30, .track = 2}};
    ASSERT_EQ(load(cut), nullptr);
    EXPECT_EQ(table->get_num_records(), 1U);
    change_run() = ChangeRun();
    ASSERT_EQ(load(cut, {.channel = "A05"}), nullptr);
    EXPECT_EQ(table->get_num_records(), 2U);
}

TEST_F(LoadingCutlists, AnEventOfNoFramesLeavesNoRowAndNoMark) {
    ASSERT_EQ(load({{.frame = 0, .length = 100}, {.frame = 300, .length = 0}, {.frame = 500, .length = 50}}), nullptr);
    ASSERT_EQ(table->get_num_records(), 2U);
    EXPECT_STREQ(text(0, hf_bracket_out), "KJ1234560031+04");
    EXPECT_STREQ(text(1, hf_bracket_in), "KJ1234560006+03");
}

TEST_F(LoadingCutlists, AnOpticalIsKeptWithItsRangeAndDoesNotCount) {
    Shot optical{.frame = 900, .length = 40, .optical_record = 1, .track = 0, .layers = 2};
    ASSERT_EQ(load({{.frame = 0, .length = 100}, optical, {.frame = 500, .length = 50}}), nullptr);
    ASSERT_EQ(table->get_num_records(), 3U);
    EXPECT_EQ(row(1).optical, 1);
    EXPECT_EQ(row(1).edit_in, 100);
    EXPECT_EQ(row(1).edit_length, 40);
    EXPECT_STREQ(text(0, hf_bracket_out), "KJ1234560031+04");
    EXPECT_EQ(side.reel_start[1], 150);
    for (Shot other :
         {Shot{.length = 40, .optical_record = 1, .track = 1, .layers = 2},
          Shot{.length = 40, .optical_record = 1, .track = 0, .layers = 0}, Shot{.length = 40, .optical_record = 2}}) {
        ASSERT_EQ(load({{.frame = 0, .length = 100}, other}), nullptr);
        EXPECT_EQ(table->get_num_records(), 1U);
    }
}

TEST_F(LoadingCutlists, AShotWithoutANameIsNamedByWhatItIs) {
    Shot unknown{.frame = 0, .length = 10, .name = "", .special = 5};
    Shot nameless{.frame = 30, .length = 10, .name = ""};
    ASSERT_EQ(load({unknown, black(10), nameless}), nullptr);
    EXPECT_EQ(name_of(0), "?????");
    EXPECT_EQ(name_of(1), "Black");
    EXPECT_EQ(name_of(2), "");
}

//     |-- out --|  dissolve 24  |-- in --|      stored
//     |------ out ------|------ in ------|      cut
TEST_F(LoadingCutlists, PictureIsWidenedOverItsTransitions) {
    const Shot out{.frame = 0, .length = 100, .out_op = "DO", .out_length = 24};
    const Shot in{.frame = 500, .length = 50, .in_op = "DI", .in_length = 24};
    ASSERT_EQ(load({out, in}), nullptr);
    EXPECT_EQ(row(0).edit_length, 112);
    EXPECT_EQ(row(0).fx_len2, 12);
    EXPECT_STREQ(row(0).fx_op2, "DO");
    EXPECT_EQ(row(1).edit_in, 112);
    EXPECT_EQ(row(1).edit_length, 62);
    EXPECT_EQ(row(1).fx_len1, 12);
    ASSERT_EQ(load({{.frame = 0, .length = 100, .out_op = "FO", .out_length = 24}}), nullptr);
    EXPECT_EQ(row(0).fx_len2, 24);
    EXPECT_EQ(row(0).edit_length, 124);
}

TEST_F(LoadingCutlists, WhatIsNotKnownAsPictureIsNotWidened) {
    const Cut cut = {{.frame = 0, .length = 100, .out_op = "FO", .out_length = 24}};
    for (const char* channel : {"A05", ""}) {
        change_run() = ChangeRun();
        ASSERT_EQ(load(cut, {.channel = channel}), nullptr);
        EXPECT_EQ(row(0).edit_length, 100) << channel;
        EXPECT_EQ(row(0).fx_len2, 24) << channel;
    }
}

TEST_F(LoadingCutlists, AnUnreadableFileIsNamedAndALongNameIsCut) {
    EXPECT_EQ(load_files({scratch.file("none.cdb")}), "Unable to read CUTDB database " + scratch.file("none.cdb"));
    const std::string long_name = scratch.file(std::string(200, 'x'));
    EXPECT_EQ(load_files({long_name}), ("Unable to read CUTDB database " + long_name).substr(0, 127));
    EXPECT_STREQ(load(Cut{}), ("Unable to read CUTDB database " + scratch.file("cut.cdb")).c_str());
}

TEST_F(LoadingCutlists, AllReelsOfASideAreOfOneFilm) {
    const std::string a = write("a.cdb", two_shots);
    const std::string b = write("b.cdb", two_shots, {.film = "16mm-1p"});
    EXPECT_STREQ(load_files({a, b}), "The cutlists have different film standards\n");
}

TEST_F(LoadingCutlists, BothSidesAreOfOneFilm) {
    ask_for_all();
    const std::string a = write("a.cdb", two_shots);
    const std::string b = write("b.cdb", two_shots, {.film = "16mm-1p"});
    EXPECT_EQ(run({a}, {b}), "The old and new cutlists have different film standards!\n");
}

TEST_F(LoadingCutlists, AGapInTheReelNumbersIsRefused) {
    CutlistSet set;
    set.add_reel(std::make_unique<CutlistSetRec>(wide(write("a.cdb", two_shots)), 2));
    EXPECT_STREQ(load_cutlist_set(side.reel_start, side.reel_label, &side.film_std, wide(chg_file()), set, logger),
                 "Reel number sequence error\n");
}

TEST_F(LoadingCutlists, AFurtherPartGoesOnWhereItsReelStands) {
    CutlistSet set;
    const std::string file = write("a.cdb", two_shots);
    auto part = std::make_unique<CutlistSetRec>(wide(file), 1);
    part->subreel = 2;
    ASSERT_EQ(set.add_reel(std::make_unique<CutlistSetRec>(wide(file), 2)), nullptr);
    ASSERT_EQ(set.add_reel(std::move(part)), nullptr);
    ASSERT_EQ(set.add_reel(std::make_unique<CutlistSetRec>(wide(file), 1)), nullptr);
    ASSERT_EQ(load_cutlist_set(side.reel_start, side.reel_label, &side.film_std, wide(chg_file()), set, logger),
              nullptr);
    table = std::make_unique<chgdb>(wide(chg_file()), &logger);
    ASSERT_EQ(table->get_num_records(), 6U);
    EXPECT_EQ(row(2).reel_seq, 1);
    EXPECT_EQ(row(2).edit_in, 150);
    EXPECT_EQ(row(4).reel_seq, 2);
    EXPECT_EQ(row(4).edit_in, 0);
    EXPECT_EQ(side.reel_start[1], 300);
    EXPECT_EQ(side.reel_start[2], 450);
}

TEST_F(LoadingCutlists, EachFileIsAnnounced) {
    ASSERT_EQ(load(two_shots), nullptr);
    EXPECT_TRUE(logger.said("Reading cutlist " + scratch.file("cut.cdb"), 0));
}

TEST_F(LoadingCutlists, AFileIsAnnouncedBeforeItIsRefused) {
    const std::string good = write("a.cdb", two_shots);
    ASSERT_NE(load_files({good, scratch.file("none.cdb"), good}), nullptr);
    ASSERT_GE(logger.lines.size(), 2U);
    EXPECT_EQ(logger.lines[0], (LoggedLine{"Reading cutlist " + good, 0}));
    EXPECT_EQ(logger.lines[1], (LoggedLine{"Reading cutlist " + scratch.file("none.cdb"), 0}));
    EXPECT_FALSE(std::filesystem::exists(chg_file()));
}

TEST_F(LoadingCutlists, NamesStandInMessagesAsTheyAre) {
    const std::string name = scratch.file("F\xc3\xa4hre $FILE$ %s \xe5\x9b\x9b.cdb");
    EXPECT_STREQ(load_files({name}), ("Unable to read CUTDB database " + name).c_str());
    EXPECT_EQ(logger.lines.at(0), (LoggedLine{"Reading cutlist " + name, 0}));
    EXPECT_TRUE(made_cut::write_cut(name, two_shots, {.mixed = "1"}));
    EXPECT_EQ(load_files({name}), "CUTDB <" + name + "> has mixed film gauges - unsuitable for changelists");
}

TEST_F(LoadingCutlists, EachReelHasItsTimecode) {
    const std::string a = write("a.cdb", two_shots);
    const std::string b = write("b.cdb", two_shots, {.timecode = "25fps", .start = "02:00:00:00"});
    ASSERT_EQ(load_files({a, b}), nullptr);
    EXPECT_STREQ(side.reel_label[0].get_string(24), "01:00:01:00");
    EXPECT_STREQ(side.reel_label[1].get_string(25), "02:00:01:00");
}

cut_report any_event() {
    cut_report cut;
    cut.edit_in = 7;
    cut.cut_length = 30;
    cut.cut_key_in.set_type(label_key_35mm_4p);
    cut.cut_key_in.set_sample("KJ1234560010+00");
    cut.cut_ink_in.set_type(label_t_to_ink_label_t(label_key_35mm_4p));
    cut.cut_ink_in.set_sample("AA120020+00");
    cut.keycode_missing = 2;
    cut.prim_tc = EditLabel(label_tc_24, MediumRollIdent(medium_source_picture, 1));
    cut.prim_tc.set_start("01:00:00:00");
    cut.prim_tc.end = 24;
    return cut;
}

TEST(RowsOfEvents, HoldTheFilmOfTheCutlist) {
    ChangeRecord row(label_key_35mm_4p);
    EXPECT_EQ(fill_change_record(50, 3, row, any_event()), 0);
    EXPECT_EQ(row.reel_seq, 3);
    EXPECT_EQ(row.edit_in, 57);
    EXPECT_EQ(row.edit_length, 30);
    EXPECT_EQ(row.speed, 1.0);
    EXPECT_EQ(row.keycode_missing, 2);
    EXPECT_STREQ(row.keycode_in.get_string(), "KJ1234560010+00");
    EXPECT_STREQ(row.keycode_out.get_string(), "KJ1234560011+13");
    EXPECT_STREQ(row.inkcode_in.get_string(), "AA120020+00");
    EXPECT_STREQ(row.inkcode_out.get_string(), "AA120021+13");
    EXPECT_STREQ(row.prim_tc_in.get_string(), "01:00:00:00");
    EXPECT_STREQ(row.prim_tc_out.get_string(), "01:00:01:00");
}

TEST(RowsOfEvents, HoldTheWordsOfTheCutlist) {
    cut_report cut = any_event();
    put_text(cut.cam_reel, "A001");
    put_text(cut.description, "a wide shot");
    put_text(cut.scene, "12A");
    put_text(cut.take, "3");
    put_text(cut.fx_name_out, "Iris");
    cut.shot_name = L"Harbour";
    cut.special = special_black;
    ChangeRecord row(label_key_35mm_4p);
    fill_change_record(0, 1, row, cut);
    EXPECT_STREQ(row.cam_reel, "A001");
    EXPECT_STREQ(row.description, "a wide shot");
    EXPECT_STREQ(row.scene, "12A");
    EXPECT_STREQ(row.take, "3");
    EXPECT_STREQ(row.fx_name2, "Iris");
    EXPECT_EQ(row.shot_name, LightweightString<wchar_t>(L"Harbour"));
}

TEST(RowsOfEvents, HoldAllOfAFadeAndTheirHalfOfADissolve) {
    cut_report cut = any_event();
    put_text(cut.fx_op_in, "DI");
    cut.fx_len_in = 25;
    put_text(cut.fx_op_out, "FO");
    cut.fx_len_out = 25;
    ChangeRecord row(label_key_35mm_4p);
    fill_change_record(0, 1, row, cut);
    EXPECT_STREQ(row.fx_op1, "DI");
    EXPECT_EQ(row.fx_len1, 12);
    EXPECT_STREQ(row.fx_op2, "FO");
    EXPECT_EQ(row.fx_len2, 25);
}

TEST_F(LoadingCutlists, AnOpticalHasItsOwnNameAndStandsBehindTheFilmAhead) {
    cut_s optical =
        made_cut::cut_of({.length = 40, .optical_record = 1, .track = 0, .layers = 1}, 5, label_key_35mm_4p);
    put_text(optical.optical_name, "Wipe 7");
    cutdb list(&logger);
    optical.to_record(*list.get_record(static_cast<unsigned>(list.add_records(1))));
    chgdb rows(label_key_35mm_4p, &logger);
    int length = -1;
    EXPECT_EQ(flatten_cutlist(&length, 50, 3, rows, list, label_key_35mm_4p), nullptr);
    EXPECT_EQ(length, 0);
    ASSERT_EQ(rows.get_num_records(), 1U);
    EXPECT_EQ(rows.getField(0, hf_shot_name).view(), "Wipe 7");
    EXPECT_EQ(rows.getField(0, hf_edit_in).view(), "55");
    EXPECT_EQ(rows.getField(0, hf_reel_seq).view(), "3");
}

TEST(Substitution, ReplacesEachOccurrenceAndNotWhatItPutThere) {
    EXPECT_EQ(substitute(L"$A$ and $A$", L"$A$", L"x$A$"), LightweightString<wchar_t>(L"x$A$ and x$A$"));
    EXPECT_EQ(substitute(L"nothing", L"$A$", L"x"), LightweightString<wchar_t>(L"nothing"));
    EXPECT_EQ(substitute(L"$A$", L"$A$", L""), LightweightString<wchar_t>());
}

} // namespace
