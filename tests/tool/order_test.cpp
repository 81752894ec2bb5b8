// "quillbrook order" from outside.

#include "tests/support/project_paths.h"
#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

#include <filesystem>

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

class Order : public ToolTest {
protected:
    static std::string recut(const std::string& name) { return project_folder() + "/examples/recut/" + name; }

    ToolResult order(const std::vector<std::string>& more) {
        std::vector<std::string> line{"order", "-o", "order.txt", "--overwrite", "--quiet"};
        line.insert(line.end(), more.begin(), more.end());
        return run(line);
    }
    std::string ordered(const std::vector<std::string>& more) {
        const ToolResult result = order(more);
        EXPECT_EQ(result.status, 0) << result.err;
        return read("order.txt");
    }
    void expect_refused(const std::vector<std::string>& more, const std::string& text) {
        const std::vector<std::string> before = names();
        const ToolResult result = order(more);
        EXPECT_EQ(result.status, 1) << result.out;
        EXPECT_THAT(result.err, HasSubstr(text));
        EXPECT_EQ(names(), before);
    }
};

TEST_F(Order, HoldsThePiecesOfAllReelsByRoll) {
    const std::string text = ordered({recut("weir-old-r1.otio"), recut("weir-old-r2.otio"), "--handles", "8"});
    EXPECT_THAT(text, HasSubstr("ROLL A001  35mm-4p\n"));
    // Event 1 is 1/2 from KJ102001 1002+00, 96 frames.
    EXPECT_THAT(text, HasSubstr("    1  KJ1020011001+08  KJ1020011008+07     112  0007+00     8     8 "));
    EXPECT_THAT(text, HasSubstr("IN ALL  35mm-4p  17 pieces, 1911 frames, 0119+07 feet\n"));
}

TEST_F(Order, ProvesAndSaysSo) {
    const ToolResult result = order({recut("weir-old-r1.otio"), "--prove"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "proved: 9 pieces, 919 needed frames\n");
}

TEST_F(Order, OfAnEditsFolderIsThatOfItsFile) {
    std::filesystem::create_directory(path("r1.otiod"));
    std::filesystem::copy_file(recut("weir-old-r1.otio"), path("r1.otiod/content.otio"));
    std::filesystem::copy_file(recut("weir-old-r1.otio"), path("r1.otio"));
    const auto without = [](std::string text, const std::string& name) {
        return text.erase(text.find(name), name.size());
    };
    EXPECT_EQ(without(ordered({"r1.otiod", "--json", "folder.json"}), "r1.otiod"),
              without(ordered({"r1.otio", "--json", "file.json"}), "r1.otio"));
    EXPECT_EQ(without(read("folder.json"), "r1.otiod"), without(read("file.json"), "r1.otio"));
    EXPECT_EQ(run({"conform", "r1.otiod", "-o", "folder.txt", "--quiet"}).status, 0);
    EXPECT_EQ(run({"conform", "r1.otio", "-o", "file.txt", "--quiet"}).status, 0);
    EXPECT_EQ(without(read("folder.txt"), "r1.otiod"), without(read("file.txt"), "r1.otio"));
}

TEST_F(Order, OfATableIsThatOfItsEdit) {
    const std::string of_edit = ordered({recut("weir-old-r1.otio"), "--handles", "4"});
    const std::string of_table = ordered({recut("expected/weir-old-r1.cdb"), "--handles", "4"});
    for (const char* stretch : {"KJ1020011001+12  KJ1020011008+03", "KN6300443101+12  KN6300443108+02"}) {
        EXPECT_THAT(of_edit, HasSubstr(stretch));
        EXPECT_THAT(of_table, HasSubstr(stretch));
    }
}

TEST_F(Order, AfterARecutIsOnlyWhatWasNotHad) {
    ordered({recut("weir-old-r1.otio"), recut("weir-old-r2.otio"), "--handles", "8", "--json", "one.json"});
    const ToolResult result = order({recut("weir-new-r1.otio"), recut("weir-new-r2.otio"), "--handles", "8", "--had",
                                     "one.json", "--json", "two.json", "--prove"});
    EXPECT_THAT(result.out, HasSubstr("proved: 3 pieces, "));
    const std::string text = read("order.txt");
    EXPECT_THAT(text, HasSubstr("ORDER OF WHAT IS MISSING\n"));
    EXPECT_THAT(text, HasSubstr("FN4401004001+08  FN4401004005+07"));
    EXPECT_THAT(text, HasSubstr("  piece 1: one.json: piece 3, A001 KJ1020011201+08 to KJ1020011206+07\n"));
    EXPECT_THAT(text, HasSubstr("USED BY NO REEL ANY MORE\n  one.json: piece 11: A005 KN6300515101+08 to "));
    EXPECT_THAT(ordered({recut("weir-new-r1.otio"), recut("weir-new-r2.otio"), "--had", "one.json", "two.json"}),
                HasSubstr("Nothing is to be pulled."));
}

TEST_F(Order, OfEndsAloneLeavesWhatIsThere) {
    ordered({recut("weir-old-r1.otio"), "--handles", "8", "--json", "one.json"});
    EXPECT_THAT(ordered({recut("weir-new-r1.otio"), "--had", "one.json", "--ends"}),
                HasSubstr("KJ1020011206+08  KJ1020011206+15"));
}

TEST_F(Order, OfFilesThatAreNoOrdersIsRefused) {
    write("cut.json", "{\"format\": \"quillbrook order\", \"version\": 1, \"pieces\": [{\"roll\": \"A\"}]}");
    expect_refused({recut("weir-old-r1.otio"), "--had", "cut.json"}, "cut.json: piece 1: \"prefix\" isn't a text");
    write("newer.json", "{\"format\": \"quillbrook order\", \"version\": 2, \"pieces\": []}");
    expect_refused({recut("weir-old-r1.otio"), "--had", "newer.json"}, "newer.json: is an order of a newer version, 2");
    write("other.json", "{\"format\": \"quillbrook changes\"}");
    expect_refused({recut("weir-old-r1.otio"), "--had", "other.json"}, "other.json: isn't an order");
    write("half.json", "{\"format\": \"quillbrook or");
    expect_refused({recut("weir-old-r1.otio"), "--had", "half.json"}, "half.json: isn't an order: line 1, byte ");
    write("turned.json",
          "{\"format\": \"quillbrook order\", \"version\": 1, \"pieces\": [{\"roll\": \"A\", \"prefix\": \"\", "
          "\"kind\": \"35mm-4p\", \"perforation\": 0, \"first_frame\": 5, \"last_frame\": 4}]}");
    expect_refused({recut("weir-old-r1.otio"), "--had", "turned.json"},
                   "turned.json: piece 1: its frames are no stretch");
}

TEST_F(Order, OfFilmWithoutKeyNumbersGoesByTapeAndTimecode) {
    write("a.edl", "TITLE: A\n001  VT1 V C 01:00:10:00 01:00:12:00 10:00:00:00 10:00:02:00\n");
    const std::string text = ordered({"a.edl", "--rate", "24", "--handles", "12"});
    EXPECT_THAT(text, HasSubstr("ROLL VT1  24fps\n"));
    EXPECT_THAT(text, HasSubstr("01:00:09:12  01:00:12:11"));
}

TEST_F(Order, TellsHandlesThatEndWithTheTake) {
    write("log.ale", "Heading\nFIELD_DELIM\tTABS\nFPS\t24\nFILM_FORMAT\t35mm,4perf\n\nColumn\n"
                     "Name\tTape\tStart\tEnd\tCamroll\tKN Start\n\nData\n"
                     "1-1\tVT1\t01:00:10:00\t01:00:20:00\tA7\tKJ 12 3456-1000+00\n");
    ASSERT_EQ(run({"log", "import", "log.ale", "-o", "log.RDB"}).status, 0);
    write("a.edl", "TITLE: A\n001  VT1 V C 01:00:10:04 01:00:12:00 10:00:00:00 10:00:01:20\n");
    const std::string text =
        ordered({"a.edl", "--rate", "24", "--log", "log.RDB", "--handles", "8", "--min-handles", "6"});
    EXPECT_THAT(text, HasSubstr("KJ1234561000+00  KJ1234561003+07      56  0003+08  4 short     8           0"));
}

TEST_F(Order, NamesWhatItCantOrder) {
    write("none.otio",
          R"({"OTIO_SCHEMA": "Track.1", "kind": "Video", "children": [{"OTIO_SCHEMA": "Clip.1", "name": "Lost",
              "source_range": {"OTIO_SCHEMA": "TimeRange.1",
                "start_time": {"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": 0},
                "duration": {"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": 10}}}]})");
    const std::string text = ordered({"none.otio", "--json", "none.json"});
    EXPECT_THAT(text, HasSubstr("CAN'T BE ORDERED: neither key number nor timecode\n"
                                "  reel 1, children[0] \"Lost\": frames 0 to 9\n"));
    EXPECT_THAT(read("none.json"), HasSubstr("\"where\": \"children[0] \\\"Lost\\\"\""));
}

TEST_F(Order, SortsPiecesAsAsked) {
    EXPECT_THAT(ordered({recut("weir-new-r1.otio"), "--sort", "edit"}), HasSubstr("    3  A004  FN4401004002+00"));
    EXPECT_THAT(ordered({recut("weir-new-r1.otio"), "--sort", "scene"}), HasSubstr("    1  A001  KJ1020011002+00"));
    EXPECT_EQ(order({recut("weir-new-r1.otio"), "--sort", "colour"}).status, 2);
}

TEST_F(Order, StandsOnPagesAndInTablesForScripts) {
    std::filesystem::create_directory(path("csv"));
    ordered({recut("weir-old-r1.otio"), "--json", "one.json"});
    ordered({recut("weir-new-r1.otio"), "--handles", "8", "--had", "one.json", "--json", "two.json", "--html", "o.html",
             "--pdf", "o.pdf", "--text", "o.txt", "--csv", "csv", "--lists-json", "lists.json"});
    EXPECT_THAT(read("csv/order.csv"),
                AllOf(StartsWith("row,part,scan,roll,lab_roll,key_first,key_last,offset,tape,timecode_in,timecode_out,"
                                 "frames,frame_in,head,tail,cut_first,cut_last,events,clip,scene,take,file,"),
                      HasSubstr("KJ1020011201+08,KJ1020011207+07,,WR001,01:20:01:00,01:20:05:00,96,24,8,8,")));
    EXPECT_THAT(read("csv/order-longer.csv"), HasSubstr(",KJ1020011202+00,KJ1020011205+15,64,16,one.json: piece 3"));
    EXPECT_TRUE(exists("csv/order-discard.csv"));
    EXPECT_THAT(read("o.html"), AllOf(StartsWith("<!DOCTYPE html>"), HasSubstr("Order of what is missing")));
    EXPECT_THAT(read("o.pdf"), StartsWith("%PDF-"));
    EXPECT_THAT(read("o.txt"), HasSubstr("| Longer than what was had. one.json: piece 3"));
    EXPECT_THAT(read("lists.json"), HasSubstr("\"format\": \"quillbrook lists\""));
    EXPECT_THAT(read("two.json"), HasSubstr("\"format\": \"quillbrook order\""));
}

TEST_F(Order, OnNewRollsHasAListOfThem) {
    std::filesystem::create_directory(path("csv"));
    ordered({recut("weir-old-r1.otio"), "--handles", "8", "--build-rolls", "40", "--leader", "6", "--csv", "csv"});
    EXPECT_THAT(read("csv/order-rolls.csv"),
                AllOf(StartsWith("row,part,start,timecode_in,timecode_out,scan,roll,key_first,key_last,frames,clip,"),
                      HasSubstr("SEL001,96,01:00:04:00,01:00:08:16,1,A001,KJ1020011001+08,KJ1020011008+07,112,1/2,")));
    EXPECT_FALSE(exists("csv/order-longer.csv"));
}

TEST_F(Order, ThatFailsLeavesNoPagesBehind) {
    write("o.html", "old");
    const ToolResult result =
        run({"order", recut("weir-old-r1.otio"), "-o", "o.txt", "--html", "o.html", "--json", "j"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("o.html: is there already"));
    EXPECT_EQ(read("o.html"), "old");
    EXPECT_FALSE(exists("j"));
    EXPECT_FALSE(exists("o.txt"));
    EXPECT_THAT(order({recut("weir-old-r1.otio"), "--text", "t", "--for", "sound"}).err,
                HasSubstr("the profile names no list of an order"));
}

TEST_F(Order, IsWrittenForScanners) {
    ordered({recut("weir-old-r1.otio"),
             "--handles",
             "8",
             "--edl",
             "s.edl",
             "--ale",
             "s.ale",
             "--otio",
             "s.otio",
             "--cut-file",
             "s.cut",
             "--keys",
             "dashed",
             "--edl-reel",
             "tape",
             "--file-name",
             "{roll}.{frame:6}.dpx",
             "--text",
             "s.txt",
             "--for",
             "scan"});
    EXPECT_THAT(read("s.edl"),
                HasSubstr("001  WR001    V     C        01:00:01:00 01:00:05:16 01:00:00:00 01:00:04:16\n"
                          "* FROM CLIP NAME: 1/2\n* KEY NUMBER: KJ 10 2001-1001+08 35mm-4p\n"
                          "* KEY OUT: KJ 10 2001-1008+07\n"));
    EXPECT_THAT(read("s.ale"), HasSubstr("1/2\tWR001\tV\t01:00:01:00\t01:00:05:16\t00:00:04:16\t24\t"
                                         "KJ 10 2001-1001+08\tKJ 10 2001-1008+08\t35mm,4perf\t"));
    EXPECT_THAT(read("s.otio"),
                AllOf(HasSubstr("\"name_prefix\": \"A001.\""), HasSubstr("\"start_frame\": 86424"),
                      HasSubstr("\"frame_zero_padding\": 6"), HasSubstr("\"keycode_last\": \"KJ 10 2001-1008+07\"")));
    EXPECT_THAT(read("s.cut"), HasSubstr("001  0000+00  0007+00   KJ 10 2001  1001+08   1008+08    A001\n"));
    for (const char* name : {" A001.{frame}.dpx", " A002.{frame}.dpx", " A003.{frame}.dpx"})
        EXPECT_THAT(read("s.txt"), HasSubstr(name));
}

// What is read again is ordered as the same pieces.
TEST_F(Order, OfItsOwnFilesIsTheSameOrder) {
    ordered({recut("weir-old-r1.otio"), "--handles", "8", "--json", "one.json", "--edl", "s.edl", "--otio", "s.otio"});
    EXPECT_THAT(ordered({"s.otio", "--whole-takes", "--had", "one.json"}), HasSubstr("Nothing is to be pulled."));
    const std::string again = ordered({"s.otio", "--whole-takes", "--set", "film_reel=2"});
    EXPECT_THAT(again, HasSubstr("KJ1020011001+08  KJ1020011008+07     112"));
    EXPECT_THAT(again, HasSubstr("IN ALL  35mm-4p  9 pieces, 1063 frames"));
    EXPECT_THAT(ordered({"s.edl"}), HasSubstr("IN ALL  35mm-4p  9 pieces, 1063 frames"));
}

TEST_F(Order, OfNothingWritesNoFileForScanners) {
    ordered({recut("weir-old-r1.otio"), "--json", "one.json"});
    const ToolResult result =
        run({"order", recut("weir-old-r1.otio"), "-o", "two.txt", "--had", "one.json", "--edl", "s.edl"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.err, HasSubstr("s.edl: isn't written, as nothing is to be pulled"));
    EXPECT_FALSE(exists("s.edl"));
}

TEST_F(Order, ForScannersIsRefusedAsItIsAsked) {
    EXPECT_EQ(order({recut("weir-old-r1.otio"), "--keys", "loud"}).status, 2);
    EXPECT_EQ(order({recut("weir-old-r1.otio"), "--edl-reel", "can"}).status, 2);
    EXPECT_EQ(order({recut("weir-old-r1.otio"), "--frames-from", "zero"}).status, 2);
    EXPECT_EQ(order({recut("weir-old-r1.otio"), "--file-name", "{roll}.dpx"}).status, 2);
    expect_refused({recut("weir-old-r1.otio"), "--edl", "order.txt"},
                   "order.txt: the run makes another file of that name");
    expect_refused({project_folder() + "/examples/23.976/ferry.otio", "--edl", "f.edl"}, "such a file has one rate");
}

// Lists for scanners by key number lack film that has none; what is told of many pieces is told once.
TEST_F(Order, FilmWithoutKeyNumbersIsLeftOutOfCutListsInOneLine) {
    std::string list = "TITLE: A\n";
    for (int i = 0; i < 10; ++i) {
        char line[100];
        std::snprintf(line, sizeof line, "%03d  VT1 V C 01:%02d:10:00 01:%02d:12:00 10:00:%02d:00 10:00:%02d:00\n",
                      i + 1, i, i, 2 * i, 2 * i + 2);
        list += line;
    }
    write("a.edl", list);
    const ToolResult many = run({"order", "a.edl", "--rate", "24", "-o", "a.txt", "--cut-file", "a.cut"});
    EXPECT_THAT(many.err, HasSubstr("pieces 1, 2, 3, 4, 5, 6, 7, 8 and 2 more: left out, as there is no key number"));
    write("b.edl", list.substr(0, list.find('\n', list.find("001")) + 1));
    const ToolResult one = run({"order", "b.edl", "--rate", "24", "-o", "b.txt", "--cut-file", "b.cut"});
    EXPECT_THAT(one.err, HasSubstr("piece 1: left out, as there is no key number"));
}

} // namespace
