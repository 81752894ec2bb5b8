// Lists of shots from logging tables.

#include "logging/log_shot_columns.h"
#include "logging/log_shot_list.h"
#include "tests/logging/film_tables.h"
#include "tests/support/recording_logger.h"

#include <gmock/gmock.h>
#include <memory>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const Params full_params = {{"FILMDB", "Rev 16"}, {"label_std", "25fps"}, {"film label_std", "35mm-4p"}};
const Columns plain = {"name", "reel", "start time", "end time", "cam reel", "start keycode"};

class Shots : public testing::Test {
protected:
    LogShotList& read(const Params& params, const Columns& columns, const Records& records, int film_reel = 2,
                      int long_keycode = -1) {
        logger.lines.clear();
        MadeTable table(params, columns, records);
        list = std::make_unique<LogShotList>(table, long_keycode, logger, film_reel);
        return *list;
    }
    /// One row of a start and an end time, and more columns.
    LogShot& shot(const Params& params, const Columns& more, const std::vector<std::string>& texts,
                  const char* start = "10:00:00:00", const char* end = "10:00:10:00") {
        Columns columns = plain;
        std::vector<std::string> record = {"1-1", "vt001", start, end, "a001", "KJ1234560100+00"};
        columns.insert(columns.end(), more.begin(), more.end());
        record.insert(record.end(), texts.begin(), texts.end());
        read(params, columns, {record});
        return *list->shots.at(0);
    }
    std::string said() const {
        std::string all;
        for (const LoggedLine& line : logger.lines)
            all += line.text + "|";
        return all;
    }

    RecordingLogger logger;
    std::unique_ptr<LogShotList> list;
};

std::string text_of(LabelPoint point) { return point.get_string(); }

TEST_F(Shots, HoldWhatTheRowSays) {
    const LogShot& one =
        shot(full_params, {"snd reel", "24p reel", "snd start", "snd label_std", "start 24p code", "start inkcode"},
             {"s1", "p1", "01:00:00:00", "24fps", "02:00:00:00", "AB120012+03"});
    EXPECT_STREQ(one.name, "1-1");
    EXPECT_STREQ(one.reel, "VT001");
    EXPECT_STREQ(one.snd_reel, "S1");
    EXPECT_STREQ(one.reel_24p, "P1");
    EXPECT_STREQ(one.film_roll, "a001");
    EXPECT_EQ(one.start.type(), 4);
    EXPECT_EQ(one.start.sample, 900000);
    EXPECT_EQ(one.end.sample, 900250);
    EXPECT_EQ(one.snd_label_type, 8);
    EXPECT_EQ(text_of(one.snd_start), "01:00:00:00");
    EXPECT_EQ(one.code_24p_label_type, 8);
    EXPECT_EQ(text_of(one.start_24p), "02:00:00:00");
    EXPECT_EQ(text_of(one.keycode), "KJ1234560100+00");
    EXPECT_EQ(text_of(one.inkcode), "AB120012+03");
    EXPECT_EQ(one.valid, 1);
    EXPECT_EQ(one.message, nullptr);
    EXPECT_EQ(list->result, 0);
    EXPECT_STREQ(describe_shot(one), "name <1-1> from <10:00:00:00> to <10:00:10:00>\n");
    EXPECT_THAT(logger.lines, IsEmpty());
}

TEST_F(Shots, CutTextsToTheirFields) {
    const std::string text(40, 'x');
    read(full_params, plain,
         {{text, text, "1:00:00:00", "01:00:00:00", text, ""}, {text, text, "01:00:00:00", "02:00:00:00", text, ""}});
    ASSERT_EQ(list->num_shots, 1);
    EXPECT_EQ(list->shots[0]->name, std::string(31, 'x'));
    EXPECT_EQ(list->shots[0]->reel, std::string(15, 'X'));
    EXPECT_EQ(list->shots[0]->film_roll, std::string(15, 'x'));
}

TEST_F(Shots, TheRowsStandardWinsOverTheTables) {
    EXPECT_EQ(shot(full_params, {"label_std"}, {"29.97df"}).start.type(), 6);
    EXPECT_EQ(shot(full_params, {"label_std"}, {""}).start.type(), 4);
}

TEST_F(Shots, NoRowsMakeNoList) { EXPECT_EQ(read(full_params, plain, {}).result, -1); }

TEST_F(Shots, OfBadRowsAreCounted) {
    read(full_params, plain,
         {{"a", "1", "01:00:00:00", "01:00:01:00", "", ""},
          {"b", "1", "01:00:00:00", "x", "", ""},
          {"c", "1", "02:00:00:00", "02:00:01:00", "", ""}});
    EXPECT_EQ(list->num_shots, 2);
    EXPECT_EQ(list->num_bad, 1);
    EXPECT_EQ(list->result, 1);
    EXPECT_STREQ(list->shots[1]->name, "c");
    EXPECT_THAT(logger.lines, ElementsAre(LoggedLine{"ERROR: entry 2 in database is BAD - Faulty timecode: IGNORED\n"
                                                     "\tname <b> from <01:00:00:00> to <00:00:00:00>\n\n",
                                                     0}));
}

TEST_F(Shots, OnlyBadRowsMakeNoList) {
    read(full_params, plain, {{"b", "1", "01:00:00:00", "x", "", ""}});
    EXPECT_EQ(list->result, -1);
    EXPECT_EQ(list->num_bad, 1);
}

TEST_F(Shots, AreCheckedInOrder) {
    read(full_params, plain,
         {{"a", "", "x", "01:00:00:00", "", ""},
          {"b", "", "02:00:00:00", "01:00:00:00", "", ""},
          {"c", "", "02:00:00:00", "02:00:00:00", "", ""}});
    EXPECT_THAT(said(), testing::HasSubstr("entry 1 in database is BAD - Faulty timecode: IGNORED"));
    EXPECT_THAT(said(), testing::HasSubstr("entry 2 in database is BAD - End time before start time: IGNORED"));
    EXPECT_THAT(said(), testing::HasSubstr("entry 3 in database is BAD - Zero-length shot: IGNORED"));
}

TEST_F(Shots, OverAnHourAreDubious) {
    const Params ntsc = {{"FILMDB", ""}, {"label_std", "30fps"}, {"film label_std", "16mm-1p"}};
    read(ntsc, plain,
         {{"a", "", "01:00:00:00", "02:00:00:00", "", ""}, {"b", "", "01:00:00:00", "02:00:00:01", "", ""}});
    EXPECT_EQ(list->num_shots, 2);
    EXPECT_EQ(list->num_dubious, 1);
    EXPECT_THAT(logger.lines, ElementsAre(LoggedLine{"WARNING: entry 2 in database is dubious - Very int32_t shot\n"
                                                     "\tname <b> from <01:00:00:00> to <02:00:00:01>\n\n",
                                                     0}));
}

TEST_F(Shots, NeedARevisionInTheHeader) {
    read({{"label_std", "25fps"}}, plain, {});
    EXPECT_THAT(logger.lines, ElementsAre(LoggedLine{"ERROR: Log database has no filmdb revision\n", 0}));
}

TEST_F(Shots, NameEachMissingColumn) {
    read(full_params, {"reel", "end time"}, {});
    EXPECT_THAT(logger.lines, ElementsAre(LoggedLine{"ERROR: Loglist has missing field: \"name\"\n", 0},
                                          LoggedLine{"ERROR: Loglist has missing field: \"start time\"\n", 0},
                                          LoggedLine{"ERROR: The database has no useful film labels\n", 0},
                                          LoggedLine{"ERROR: Loglist has no field for the requested REEL ID\n", 0},
                                          LoggedLine{"ERROR: log database does not contain all required fields", 0}));
    EXPECT_EQ(list->result, -1);
}

TEST_F(Shots, TheFilmRollNeedsItsColumn) {
    read(full_params, plain, {{"a", "vt1", "01:00:00:00", "02:00:00:00", "cam1", ""}}, 10);
    EXPECT_EQ(list->result, -1);
    EXPECT_TRUE(logger.said("ERROR: Loglist has no field for the requested REEL ID\n", 0));
}

TEST_F(Shots, TheFilmRollComesFromTheChosenColumn) {
    const Columns columns = {"name",     "reel",     "start time", "end time",     "cam reel",
                             "snd reel", "lab reel", "comp reel",  "start inkcode"};
    const Records one = {{"a", "vt", "01:00:00:00", "01:00:01:00", "cam", "snd", "lab", "comp", ""}};
    const std::pair<int, const char*> choices[] = {{2, "cam"}, {3, "vt"}, {4, "snd"}, {10, "lab"}, {11, "comp"}};
    for (const auto& [film_reel, roll] : choices) {
        EXPECT_STREQ(read(full_params, columns, one, film_reel).shots[0]->film_roll, roll);
        EXPECT_STREQ(read(full_params, columns, one, 99).shots[0]->film_roll, roll) << "the choice before stays";
    }
}

TEST_F(Shots, WithoutStandardsCountByDefaults) {
    const LogShot& one = shot({{"FILMDB", ""}, {"label_std", ""}}, {}, {});
    EXPECT_EQ(one.vid_label_type, 8);
    EXPECT_EQ(one.snd_label_type, 8);
    EXPECT_EQ(list->film_label_type, 10);
    EXPECT_THAT(logger.lines, ElementsAre(LoggedLine{"WARNING: No default video timecode specified", 0},
                                          LoggedLine{"WARNING: No global film standard: assuming 35mm for now\n", 0}));
}

TEST_F(Shots, TheFirstRowSettlesTheFilmStandard) {
    Columns columns = plain;
    columns.push_back("film label_std");
    read(full_params, columns,
         {{"a", "", "01:00:00:00", "01:00:01:00", "", "KJ12345600123+04", "16mm-1p"},
          {"b", "", "01:00:00:00", "01:00:01:00", "", "KJ12345600123+04", "35mm-3p"}},
         2, 1);
    EXPECT_EQ(list->film_label_type, 25) << "16mm with five digits";
    for (const auto& one : list->shots) {
        EXPECT_EQ(one->film_label_type, 25);
        EXPECT_EQ(text_of(one->keycode), "KJ12345600123+04");
    }
}

TEST_F(Shots, InkNumbersAloneWillDo) {
    read(full_params, {"name", "start time", "end time", "cam reel", "start inkcode", "film label_std"},
         {{"a", "01:00:00:00", "01:00:01:00", "", "AB120012+03", ""}, {"b", "01:00:00:00", "01:00:01:00", "", "", ""}});
    ASSERT_EQ(list->num_shots, 2);
    for (const auto& one : list->shots)
        EXPECT_FALSE(one->keycode.is_valid());
    EXPECT_EQ(list->film_label_type, 10);
    EXPECT_EQ(list->shots[0]->inkcode.type(), 43);
    EXPECT_FALSE(list->shots[1]->inkcode.is_valid());
    EXPECT_STREQ(list->shots[0]->reel, "");
    EXPECT_EQ(text_of(list->shots[0]->snd_start), "00:00:00:00");
    EXPECT_FALSE(list->shots[0]->snd_start.is_useful());
}

struct PulldownCase {
    const char* header_pulldown;
    const char* header_sequence;
    Columns columns;
    std::vector<std::string> texts;
    int on, rate, sequence;
};

TEST_F(Shots, RollTheirPulldownToTheirStart) {
    // The start is frame 3 of a cycle.
    const PulldownCase cases[] = {
        {"Y", "1", {}, {}, 1, 7, 4},
        {"1", "-4", {}, {}, 1, 7, 3},
        {"N", "2", {}, {}, 0, 3, 0},
        {"other", "2", {}, {}, 0, 3, 0},
        {"", "2", {}, {}, 0, 7, 2},
        {"Y", "1", {"sequence"}, {"4"}, 1, 7, 2},
        {"Y", "1", {"sequence"}, {"-2"}, 1, 7, 3},
        {"Y", "1", {"pulldown"}, {"Y"}, 1, 7, 4},
        {"N", "1", {"pulldown"}, {"y"}, 1, 7, 3},
        {"Y", "1", {"pulldown"}, {"n"}, 0, 3, 0},
        {"Y", "1", {"pulldown"}, {"?"}, 1, 7, 4},
        {"Y", "1", {"pulldown"}, {""}, 1, 7, 4},
        {"N", "1", {"pulldown", "sequence"}, {"1", "2"}, 1, 7, 0},
        {"N", "1", {"pulldown", "sequence"}, {"Y", ""}, 1, 7, 3},
        {"Y", "1", {"pulldown", "sequence"}, {"Y", "-1"}, 0, 3, 0},
        {"Y", "1", {"pulldown", "sequence"}, {"N", "2"}, 0, 3, 2},
        {"Y", "1", {"pulldown", "sequence"}, {"0", "-2"}, 0, 3, 0},
        {"Y", "1", {"pulldown", "sequence"}, {"", "-2"}, 0, 3, 0},
    };
    int number = 0;
    for (const PulldownCase& one : cases) {
        Params params = full_params;
        params.emplace_back("pulldown", one.header_pulldown);
        params.emplace_back("sequence", one.header_sequence);
        const LogShotPulldown& got = shot(params, one.columns, one.texts, "00:00:00:23").pulldown;
        EXPECT_EQ(got.on, one.on) << number;
        EXPECT_EQ(got.rate, one.rate) << number;
        EXPECT_EQ(got.sequence, one.sequence) << number;
        ++number;
    }
}

TEST_F(Shots, TheHeadersPhaseServesRowsWithoutThatColumn) {
    Params params = full_params;
    params.emplace_back("sequence", "3");
    EXPECT_EQ(shot(params, {"pulldown"}, {"Y"}, "00:00:00:04").pulldown.sequence, 2);
}

TEST_F(Shots, PhasesNearTheEndOfTheRangeDoNotOverflow) {
    Params params = full_params;
    params.emplace_back("pulldown", "Y");
    params.emplace_back("sequence", "2147483647");
    EXPECT_EQ(shot(params, {}, {}, "00:00:00:04").pulldown.sequence, 2147483651LL % 5);
}

TEST_F(Shots, TheTableMayGoAfterwards) {
    auto table = std::make_unique<MadeTable>(full_params, plain,
                                             Records{{"a", "vt1", "01:00:00:00", "01:00:01:00", "cam", "KJ"}});
    LogShotList shots(*table, -1, logger, 2);
    table.reset();
    char reel[] = "vt1";
    const LogShot* found = find_shot(shots, shots.shots[0]->start, shots.shots[0]->end, reel);
    ASSERT_EQ(found, shots.shots[0].get());
    EXPECT_STREQ(found->film_roll, "cam");
}

TEST(HeaderValue, IsNullWhenAbsentOrEmpty) {
    MadeTable table({{"full", "x"}, {"empty", ""}}, {"name"});
    EXPECT_STREQ(log_param(table, "FULL"), "x");
    EXPECT_EQ(log_param(table, "empty"), nullptr);
    EXPECT_EQ(log_param(table, "absent"), nullptr);
}

} // namespace
