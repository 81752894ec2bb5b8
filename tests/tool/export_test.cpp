// "quillbrook export" as a process.

#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace {

class Export : public ToolTest {
protected:
    Export() { write_edit("reel.otio"); }

    std::string table_of(const std::string& edit) {
        const ToolResult made = run({"cutlist", edit, "-o", "lists.txt", "--overwrite", "--quiet"});
        EXPECT_EQ(made.status, 0) << made.err;
        return read("lists.cdb");
    }

    /// An event of tape at 29.97, and a log whose only row begins with an hour and a cycle.
    void write_pulled_down(const std::string& places) {
        write("a.edl", "TITLE: A\nFCM: NON-DROP FRAME\n001  VT1 V C " + places + "\n");
        write("log.csv", "reel,start time,end time,cam reel,start keycode,film label_std\n"
                         "VT1,01:00:00:00,01:01:00:00,A001,KJ1234560100+00,35mm-4p\n");
        EXPECT_EQ(run({"log", "import", "log.csv", "-o", "log.RDB", "--rate", "29.97"}).status, 0);
    }
};

TEST_F(Export, WritesAnEditWhoseTableIsTheSame) {
    const ToolResult result = run({"export", "reel.otio", "-o", "again.otio"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(table_of("again.otio"), table_of("reel.otio"));
}

TEST_F(Export, WritesToStandardOutputOnceTheFormatIsNamed) {
    EXPECT_EQ(run({"export", "reel.otio", "-o", "file.otio"}).status, 0);
    const ToolResult result = run({"export", "reel.otio", "-o", "-", "--as", "otio"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, read("file.otio"));
    const ToolResult unnamed = run({"export", "reel.otio", "-o", "-"});
    EXPECT_EQ(unnamed.status, 1);
    EXPECT_NE(unnamed.err.find("-: its name tells no format; name one with --as (otio"), std::string::npos)
        << unnamed.err;
}

TEST_F(Export, TellsItsFormatByTheNameInAnyCase) {
    EXPECT_EQ(run({"export", "reel.otio", "-o", "A.OTIO"}).status, 0);
    const ToolResult result = run({"export", "reel.otio", "-o", "reel.mov"});
    EXPECT_EQ(result.status, 1);
    EXPECT_FALSE(exists("reel.mov"));
    EXPECT_EQ(run({"export", "reel.otio", "-o", "reel.mov", "--as", "otio"}).status, 0);
    EXPECT_EQ(run({"export", "reel.otio", "-o", "x.otio", "--as", "mov"}).status, 2);
}

TEST_F(Export, ReplacesAFileOnlyWhereItIsTold) {
    write("there.otio", "mine");
    EXPECT_EQ(run({"export", "reel.otio", "-o", "there.otio"}).status, 1);
    EXPECT_EQ(read("there.otio"), "mine");
    EXPECT_EQ(run({"export", "reel.otio", "-o", "there.otio", "--overwrite"}).status, 0);
    EXPECT_NE(read("there.otio"), "mine");
    const std::string edit = read("reel.otio");
    EXPECT_EQ(run({"export", "reel.otio", "-o", "reel.otio", "--overwrite"}).status, 1);
    EXPECT_EQ(read("reel.otio"), edit);
}

TEST_F(Export, LeavesNoFileOfAnEditThatCantBeRead) {
    write("bad.otio", "{");
    const ToolResult result = run({"export", "bad.otio", "-o", "out.otio"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("bad.otio: line 1"), std::string::npos) << result.err;
    EXPECT_EQ(run({"export", "none.otio", "-o", "out.otio"}).status, 1);
    EXPECT_FALSE(exists("out.otio"));
}

constexpr const char* rendered_edit = R"({"OTIO_SCHEMA": "Track.1", "children": [{"OTIO_SCHEMA": "Clip.1",
  "name": "comp", "source_range": {"OTIO_SCHEMA": "TimeRange.1",
    "start_time": {"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": 0},
    "duration": {"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": 48}},
  "metadata": {"quillbrook": {"rendered": true, "rendered_from": {"OTIO_SCHEMA": "Track.1", "children": [
    {"OTIO_SCHEMA": "Clip.1", "name": "inner", "metadata": {"quillbrook": {"keycode": "KJ 12 3456-0100+05"}},
     "source_range": {"OTIO_SCHEMA": "TimeRange.1",
       "start_time": {"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": 0},
       "duration": {"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": 48}}}]}}}}]})";

TEST_F(Export, WritesRenderedClipsAsTheListsShowThem) {
    write("rendered.otio", rendered_edit);
    const ToolResult result = run({"export", "rendered.otio", "-o", "again.otio"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.err.find("rendered clips are written as what they were rendered from"), std::string::npos);
    EXPECT_NE(read("again.otio").find("KJ1234560100+05"), std::string::npos);
    EXPECT_EQ(table_of("again.otio"), table_of("rendered.otio"));
    EXPECT_EQ(run({"export", "rendered.otio", "-o", "kept.otio", "--config", "allow_auto_unrender=0"}).err, "");
    EXPECT_EQ(read("kept.otio").find("KJ1234560100+05"), std::string::npos);
}

TEST_F(Export, SaysNothingWhereItIsQuiet) {
    write("rendered.otio", rendered_edit);
    EXPECT_EQ(run({"export", "rendered.otio", "-o", "again.otio", "--quiet"}).err, "");
}

TEST_F(Export, WritesAnEditListThatMeansTheSameFilm) {
    const ToolResult result = run({"export", "reel.otio", "-o", "reel.edl"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.err.find("reel.edl: holds V1 alone: A1 need lists of their own"), std::string::npos) << result.err;
    EXPECT_EQ(result.err.find("read again as other film"), std::string::npos) << result.err;
    EXPECT_EQ(read("reel.edl").find("TITLE:"), 0U);
    EXPECT_EQ(run({"cutlist", "reel.edl", "-o", "lists.txt"}).status, 0);
    const ToolResult sound = run({"export", "reel.otio", "-o", "-", "--as", "edl", "--channel", "A1"});
    EXPECT_EQ(sound.status, 0) << sound.err;
    EXPECT_NE(sound.out.find(" A     C "), std::string::npos) << sound.out;
    const ToolResult none = run({"export", "reel.otio", "-o", "v7.edl", "--channel", "V7"});
    EXPECT_EQ(none.status, 1);
    EXPECT_NE(none.err.find("the edit has no channel V7"), std::string::npos) << none.err;
}

constexpr const char* slow_edit = R"({"OTIO_SCHEMA": "Timeline.1", "name": "Slow film",
  "global_start_time": {"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": 0},
  "tracks": {"OTIO_SCHEMA": "Stack.1", "children": [{"OTIO_SCHEMA": "Track.1", "children": [{"OTIO_SCHEMA": "Clip.1",
  "name": "A", "source_range": {"OTIO_SCHEMA": "TimeRange.1",
    "start_time": {"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": 3},
    "duration": {"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": 50}},
  "metadata": {"quillbrook": {"reel": "V012", "keycode": "KJ 12 3456-0100+05", "film_rate": 18}}}]}]}})";

TEST_F(Export, TellsWhereAnEditListMeansOtherFilm) {
    write("slow.otio", slow_edit);
    const ToolResult result = run({"export", "slow.otio", "-o", "slow.edl"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_NE(result.err.find("frames are read again as other film: KJ1234560100+"), std::string::npos) << result.err;
}

TEST_F(Export, TakesKeyNumbersOfAnEditListFromALog) {
    write("log.ale", "Heading\nFIELD_DELIM\tTABS\nFPS\t24\n\nColumn\nTape\tStart\tEnd\tKN Start\tKN End\n\nData\n"
                     "V012\t01:00:00:00\t01:10:00:00\tEA 11 0001-0003+00\tEA 11 0001-0903+00\n");
    EXPECT_EQ(run({"log", "import", "log.ale", "-o", "log.RDB"}).status, 0);
    write("cut.edl", "TITLE: Cut\nFCM: NON-DROP FRAME\n"
                     "001  V012     V     C        01:00:01:08 01:00:02:08 00:00:00:00 00:00:01:00\n");
    const ToolResult result = run({"export", "cut.edl", "--rate", "24", "--log", "log.RDB", "-o", "keys.edl"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    EXPECT_NE(read("keys.edl").find("* KEY NUMBER: EA1100010005+00 35mm-4p"), std::string::npos) << read("keys.edl");
    EXPECT_EQ(run({"export", "cut.edl", "--rate", "24", "--log", "log.RDB", "-o", "keys.otio"}).status, 1);
    EXPECT_EQ(run({"export", "cut.edl", "--rate", "24", "--log", "log.ale", "-o", "more.edl"}).status, 1);
    EXPECT_EQ(run({"export", "cut.edl", "--rate", "24", "--channel", "V1", "-o", "more.otio"}).status, 1);
}

TEST_F(Export, WritesALogThatGivesTheEditItsNumbers) {
    const ToolResult result = run({"export", "reel.otio", "-o", "shots.ale"});
    EXPECT_EQ(result.status, 0) << result.err;
    const ToolResult imported = run({"log", "import", "shots.ale", "-o", "shots.RDB"});
    EXPECT_EQ(imported.status, 0) << imported.err;
    EXPECT_NE(run({"log", "show", "shots.RDB"}).out.find("KJ"), std::string::npos);
    EXPECT_EQ(run({"export", "reel.otio", "-o", "a1.ale", "--channel", "A1"}).status, 0);
    EXPECT_NE(read("a1.ale"), read("shots.ale"));
    EXPECT_EQ(run({"export", "reel.otio", "-o", "a9.ale", "--channel", "A9"}).status, 1);
}

// The second frame of tape shows the second frame of film, as the lists say.
TEST_F(Export, KeyNumbersOfALogWithPulldownAreThoseOfTheLists) {
    write_pulled_down("01:00:00:01 01:00:00:11 10:00:00:00 10:00:00:10");
    EXPECT_EQ(run({"export", "a.edl", "--rate", "29.97", "--log", "log.RDB", "-o", "b.edl"}).status, 0);
    EXPECT_NE(read("b.edl").find("* KEY NUMBER: KJ1234560100+01 35mm-4p"), std::string::npos) << read("b.edl");
    EXPECT_EQ(run({"cutlist", "a.edl", "--rate", "29.97", "--log", "log.RDB", "-o", "l.txt", "--prove"}).status, 0);
    EXPECT_NE(read("l.cdb").find("\tKJ1234560100+01\t"), std::string::npos);
}

// The clips of a list without names are all one medium of their tape, whatever was spliced onto that.
TEST_F(Export, ALogOfALogKeepsItsRowsApart) {
    write("a.edl", "TITLE: A\nFCM: NON-DROP FRAME\n"
                   "001  VT1 V C 01:00:01:00 01:00:02:00 10:00:00:00 10:00:01:00\n"
                   "002  VT1 V C 01:05:01:00 01:05:02:00 10:00:01:00 10:00:02:00\n"
                   "003  VT1 V C 01:00:05:00 01:00:06:00 10:00:02:00 10:00:03:00\n"
                   "004  VT1 V C 02:00:00:00 02:00:01:00 10:00:03:00 10:00:04:00\n");
    write("log.csv", "reel,start time,end time,cam reel,start keycode,film label_std\n"
                     "VT1,01:00:00:00,01:01:00:00,A001,KJ1234560100+00,35mm-4p\n"
                     "VT1,01:05:00:00,01:06:00:00,A001,KJ7654320100+00,35mm-4p\n");
    EXPECT_EQ(run({"log", "import", "log.csv", "-o", "log.RDB", "--rate", "24"}).status, 0);
    EXPECT_EQ(run({"export", "a.edl", "--rate", "24", "--log", "log.RDB", "-o", "b.ale"}).status, 0);
    const std::string log = read("b.ale");
    const std::string row = "VT1\tVT1\tV\t";
    EXPECT_THAT(log, HasSubstr(row + "01:00:01:00\t01:00:06:00\t00:00:05:00\t24\tKJ1234560101+08\tKJ1234560109+00\t"));
    EXPECT_THAT(log, HasSubstr(row + "01:05:01:00\t01:05:02:00\t00:00:01:00\t24\tKJ7654320101+08\tKJ7654320103+00\t"));
    EXPECT_THAT(log, HasSubstr(row + "02:00:00:00\t02:00:01:00\t00:00:01:00\t24\t\t\t"));
}

// Rows of 01:00:00:00 to 01:01:00:00 and, of other film, from 01:00:50:00 to 01:02:00:00; and a shot in two rows.
TEST_F(Export, WhatALogDoesntSaySurelyIsToldOnceAKind) {
    write("a.edl", "TITLE: A\nFCM: NON-DROP FRAME\n"
                   "001  VT1 V C 01:00:01:00 01:00:02:00 10:00:00:00 10:00:01:00\n* FROM CLIP NAME: SURE\n"
                   "002  VT1 V C 01:00:55:00 01:00:56:00 10:00:01:00 10:00:02:00\n* FROM CLIP NAME: EITHER\n"
                   "003  VT1 V C 01:01:59:12 01:02:00:12 10:00:02:00 10:00:03:00\n* FROM CLIP NAME: OVER\n"
                   "004  VT2 V C 01:00:00:00 01:00:01:00 10:00:03:00 10:00:04:00\n* FROM CLIP NAME: NONE\n"
                   "005  VT3 V C 01:00:00:00 01:00:01:00 10:00:04:00 10:00:05:00\n* FROM CLIP NAME: NEITHER\n"
                   "006  VT4 V C 01:00:09:00 01:00:11:00 10:00:05:00 10:00:07:00\n* FROM CLIP NAME: ON\n");
    write("log.csv", "reel,start time,end time,cam reel,start keycode,film label_std\n"
                     "VT1,01:00:00:00,01:01:00:00,A001,KJ1234560100+00,35mm-4p\n"
                     "VT1,01:00:50:00,01:02:00:00,A001,KJ7654320100+00,35mm-4p\n"
                     "VT4,01:00:00:00,01:00:10:00,A002,KJ1111110100+00,35mm-4p\n"
                     "VT4,01:00:10:00,01:01:00:00,A002,KJ1111110115+00,35mm-4p\n");
    EXPECT_EQ(run({"log", "import", "log.csv", "-o", "log.RDB", "--rate", "24"}).status, 0);
    EXPECT_EQ(
        run({"export", "a.edl", "--rate", "24", "--log", "log.RDB", "-o", "b.edl"}).err,
        "warning: b.edl: V1 at 10:00:03:00, \"NONE\": the log has no key number for it (1 more)\n"
        "warning: b.edl: V1 at 10:00:02:00, \"OVER\": it reaches beyond its row of the log\n"
        "warning: b.edl: V1 at 10:00:01:00, \"EITHER\": rows of the log name different film for it, and the first "
        "of them counts\n");
    EXPECT_EQ(run({"export", "a.edl", "--rate", "24", "--log", "log.RDB", "-o", "b.ale"}).err,
              "warning: b.ale: source \"NONE\": the log has no key number for it (1 more)\n"
              "warning: b.ale: source \"OVER\": it reaches beyond its row of the log\n"
              "warning: b.ale: source \"EITHER\": rows of the log name different film for it, and the first of them "
              "counts\n");
}

// From a cycle's third frame, which shows the third of film: the list's own source begins there, the log's row doesn't.
TEST_F(Export, ALogOfALogBeginsWithACycleOfIt) {
    write_pulled_down("01:00:00:07 01:00:00:17 10:00:00:00 10:00:00:10");
    EXPECT_EQ(run({"export", "a.edl", "--rate", "29.97", "--log", "log.RDB", "-o", "b.ale"}).status, 0);
    EXPECT_THAT(read("b.ale"), HasSubstr("\t01:00:00:05\t01:00:00:17\t00:00:00:12\t29.97\tKJ1234560100+04\t"
                                         "KJ1234560100+14\t35mm,4perf\tA\t"));
    EXPECT_EQ(run({"log", "import", "b.ale", "-o", "b.RDB"}).status, 0);
    for (const std::string rows : {"log", "b"})
        EXPECT_EQ(run({"cutlist", "a.edl", "--rate", "29.97", "--log", rows + ".RDB", "-o", rows + ".txt"}).status, 0);
    EXPECT_THAT(read("b.txt"), HasSubstr("KJ1234560100+06"));
    EXPECT_THAT(read("log.txt"), HasSubstr("KJ1234560100+06"));
}

} // namespace
