// Rolls of selects from outside: an order lays its pieces on new rolls, and edits go by those.

#include "embedded/rates.h"
#include "tests/support/project_paths.h"
#include "tests/tool/tool_process.h"
#include "tool/new_rolls.h"

#include <gmock/gmock.h>
#include <rapidcheck/gtest.h>

#include <set>
#include <sstream>

using testing::HasSubstr;
using testing::Not;
using tool::NewRolls;
using tool::PieceOnRoll;

namespace {

class OnRolls : public ToolTest {
protected:
    static std::string example(const std::string& name) { return project_folder() + "/examples/" + name; }

    ToolResult order(const std::vector<std::string>& more) {
        std::vector<std::string> line{"order",     "-o", "order.txt", "--json", "order.json", "--overwrite",
                                      "--handles", "8",  "--leader",  "6",      "--prove",    "--quiet"};
        line.insert(line.end(), more.begin(), more.end());
        return run(line);
    }
    ToolResult exported(const std::string& edit, const std::string& file, const std::vector<std::string>& more = {}) {
        std::vector<std::string> line{"export",     edit,          "-o",      file,     "--on-rolls",
                                      "order.json", "--overwrite", "--prove", "--quiet"};
        line.insert(line.end(), more.begin(), more.end());
        return run(line);
    }
};

TEST_F(OnRolls, PiecesHaveTheirPlacesInFeetAndTimecode) {
    const ToolResult result = order({example("recut/weir-old-r1.otio"), "--build-rolls", "40"});
    EXPECT_EQ(result.status, 0) << result.err;
    const std::string text = read("order.txt");
    EXPECT_THAT(text, HasSubstr("ROLLS OF SELECTS of at most 40 feet, with 6 feet of leader at the head\n"));
    EXPECT_THAT(text,
                HasSubstr("NEW ROLL SEL001  35mm-4p  4 pieces, 623 frames, 0038+15 feet, 1 frame at each splice\n"));
    // 6 feet are 96 frames; 112 frames of 1/2 and one for the splice behind them.
    EXPECT_THAT(text, HasSubstr("    209  0013+01  01:00:08:17  01:00:14:17     144      2  A001  KJ1020011102+08"));
    EXPECT_THAT(read("order.json"), HasSubstr("\"first_place\": 209,\n    \"last_place\": 352,"));
    EXPECT_THAT(read("order.json"), HasSubstr("\"first_timecode\": 86609,"));
}

TEST_F(OnRolls, TakeTheirNamesTimecodeAndSplicesFromTheLine) {
    EXPECT_EQ(order({example("recut/weir-old-r1.otio"), "--build-rolls", "400", "--roll-name", "WEIR-",
                     "--start-timecode", "10:00:00:00", "--splice-loss", "0"})
                  .status,
              0);
    EXPECT_THAT(read("order.txt"), HasSubstr("NEW ROLL WEIR-001  "));
    EXPECT_THAT(read("order.txt"), HasSubstr("    208  0013+00  10:00:08:16  "));
}

TEST_F(OnRolls, PiecesLieInTheOrderThatIsAskedFor) {
    write("a.edl", "TITLE: A\n001  VT2 V C 01:00:10:00 01:00:12:00 10:00:00:00 10:00:02:00\n"
                   "* KEY NUMBER: KJ1234560100+00 35mm-4p\n"
                   "002  VT1 V C 05:00:00:00 05:00:02:00 10:00:02:00 10:00:04:00\n"
                   "* KEY NUMBER: KJ1234560200+00 35mm-4p\n");
    const auto first_laid = [&](const char* sorting) {
        EXPECT_EQ(order({"a.edl", "--rate", "24", "--build-rolls", "400", "--sort", sorting}).status, 0);
        const std::string text = read("order.txt");
        const std::string row = text.substr(text.find("\n     96  0006+00  ") + 1);
        return row.substr(0, row.find('\n'));
    };
    EXPECT_THAT(first_laid("edit"), HasSubstr("KJ1234560099+08"));
    EXPECT_THAT(first_laid("scan"), HasSubstr("KJ1234560199+08"));
}

TEST_F(OnRolls, RefuseWhatNoRollHolds) {
    const ToolResult result = order({example("recut/weir-old-r1.otio"), "--build-rolls", "12"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("A001 KJ1020011001+08 to KJ1020011008+07: 112 frames and the leader's 96 are "
                                      "longer than a roll of 12 feet, which holds 192"));
    EXPECT_FALSE(exists("order.txt"));
    EXPECT_EQ(order({example("recut/weir-old-r1.otio"), "--build-rolls", "400", "--start-timecode", "1:00"}).status, 1);
}

TEST_F(OnRolls, FilmWithoutKeyNumbersStaysOnItsReel) {
    EXPECT_EQ(order({example("16mm/heron.otio"), "--build-rolls", "400"}).status, 0);
    EXPECT_THAT(read("order.txt"), HasSubstr("ON NO NEW ROLL, for without key numbers they have no length in feet"));
    const ToolResult result = exported(example("16mm/heron.otio"), "heron.edl");
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(read("heron.edl"), HasSubstr("001  VT101 "));
    EXPECT_THAT(read("heron.edl"), HasSubstr("SEL001 "));
}

TEST_F(OnRolls, EditsShowTheSameFilmInEachFormat) {
    const std::vector<std::string> edits{"recut/weir-old-r1.otio", "3perf/harbour.otio", "65mm/desert.otio",
                                         "reel/reel.otio"};
    for (const std::string& edit : edits) {
        ASSERT_EQ(order({example(edit), "--build-rolls", "400"}).status, 0) << edit;
        for (const char* file : {"out.edl", "out.ale", "out.otio"}) {
            const ToolResult result = exported(example(edit), file);
            EXPECT_EQ(result.status, 0) << edit << ' ' << file << '\n' << result.err;
            EXPECT_THAT(result.out, HasSubstr(" frames on new rolls\n"));
        }
    }
    ASSERT_EQ(order({example("recut/weir-old-r1.otio"), "--build-rolls", "400"}).status, 0);
    EXPECT_EQ(exported(example("recut/weir-old-r1.otio"), "weir.edl").out, "proved: 872 frames on new rolls\n");
    EXPECT_THAT(read("weir.edl"), HasSubstr("002  SEL001   V     C        01:00:09:01 01:00:14:09 01:00:04:00 "));
}

TEST_F(OnRolls, EditsKeepTheCuesOfClipsAndOfTheWholeEdit) {
    ASSERT_EQ(order({example("reel/reel.otio"), "--build-rolls", "400"}).status, 0);
    ASSERT_EQ(exported(example("reel/reel.otio"), "out.otio").status, 0);
    const auto cues_of = [this](const std::string& edit) {
        std::multiset<std::string> cues;
        std::istringstream shown(run({"edit", "show", edit}).out);
        for (std::string line, number, word; std::getline(shown, line);) {
            if (line.find("  cue  ") == std::string::npos) continue;
            std::istringstream words(line);
            words >> number; // rendered film that is listed by its contents has more events
            std::string cue;
            while (words >> word)
                cue += word + ' ';
            cues.insert(cue);
        }
        return cues;
    };
    EXPECT_EQ(cues_of("out.otio"), cues_of(example("reel/reel.otio")));
    EXPECT_EQ(cues_of("out.otio").count("700 01:00:29:04 cue Reel note printed "), 1U);
    EXPECT_EQ(cues_of("out.otio").size(), 6U);
}

TEST_F(OnRolls, EditsTakeKeyNumbersFromALog) {
    ASSERT_EQ(
        run({"log", "import", example("edl/days.ale"), example("edl/night.flx"), "-o", "show.RDB", "--quiet"}).status,
        0);
    const std::vector<std::string> reading{"--rate", "25", "--log", "show.RDB"};
    std::vector<std::string> line{example("edl/ferryman.edl"), "--build-rolls", "400"};
    line.insert(line.end(), reading.begin(), reading.end());
    ASSERT_EQ(order(line).status, 0);
    for (const char* file : {"out.edl", "out.ale", "out.otio"}) {
        const ToolResult result = exported(example("edl/ferryman.edl"), file, reading);
        EXPECT_EQ(result.status, 0) << file << '\n' << result.err;
        EXPECT_EQ(result.out, "proved: 4188 frames on new rolls\n");
    }
}

// Dissolves from one tape to the other, from each frame of a cycle on.
TEST_F(OnRolls, EditsFollowThePulldownOfALog) {
    const auto places = [](int source, int record, int length) {
        std::string text;
        for (const int frame : {source, source + length, record, record + length})
            text += " " + std::string(LabelPoint(frame, embedded::nearest_rate(30.0)->timecode).get_string());
        return text + "\n";
    };
    std::string list = "TITLE: A\nFCM: NON-DROP FRAME\n";
    int sources[] = {108000, 108000}, record = 1080000;
    for (int event = 0; event < 30; ++event) {
        int &source = sources[event % 2], &before = sources[(event + 1) % 2];
        const std::string number = std::to_string(event + 1), tape = event % 2 == 0 ? " VT1 V " : " VT2 V ";
        const int length = 25 + 7 * event % 37;
        if (event > 0) list += number + (event % 2 == 0 ? " VT2 V C" : " VT1 V C") + places(before, record, 0);
        list += number + tape + (event == 0 ? "C" : "D 008") + places(source, record, length);
        before += 60 + event % 5;
        source += length;
        record += length;
    }
    write("cut.edl", list);
    write("log.csv", "reel,start time,end time,cam reel,start keycode,film label_std\n"
                     "VT1,01:00:00:00,01:10:00:00,A001,KJ1234560100+00,35mm-4p\n"
                     "VT2,01:00:00:00,01:10:00:00,A002,KJ7654320100+00,35mm-4p\n");
    ASSERT_EQ(run({"log", "import", "log.csv", "-o", "log.RDB", "--rate", "30"}).status, 0);
    ASSERT_EQ(run({"order", "cut.edl", "--rate", "30", "--log", "log.RDB", "-o", "order.txt", "--json", "order.json",
                   "--build-rolls", "200"})
                  .status,
              0);
    const ToolResult moved = run({"export", "cut.edl", "--rate", "30", "--log", "log.RDB", "-o", "moved.otio",
                                  "--on-rolls", "order.json", "--prove"});
    EXPECT_EQ(moved.status, 0) << moved.out << moved.err;
    EXPECT_EQ(moved.err, "");
}

TEST_F(OnRolls, AnEditListThatCountsOtherwiseThanTheRollsIsntProved) {
    ASSERT_EQ(order({example("29.97df/newsroom.otio"), "--build-rolls", "400"}).status, 0);
    const ToolResult result = exported(example("29.97df/newsroom.otio"), "out.edl");
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.out, HasSubstr("export: from film frame 0 on, 80 frames are read again as other film: "));
    EXPECT_EQ(exported(example("29.97df/newsroom.otio"), "out.otio").status, 0);
}

TEST_F(OnRolls, FilmOfAnotherCutIsRefused) {
    ASSERT_EQ(order({example("recut/weir-old-r1.otio"), "--build-rolls", "400"}).status, 0);
    const ToolResult other = exported(example("recut/weir-new-r1.otio"), "out.edl");
    EXPECT_EQ(other.status, 1);
    EXPECT_THAT(other.err, HasSubstr("\"11/1\": its film, from FN4401004002+00 on, lies on no new roll"));
    ASSERT_EQ(order({example("recut/weir-old-r1.otio")}).status, 0);
    EXPECT_THAT(exported(example("recut/weir-old-r1.otio"), "out.edl").err,
                HasSubstr("order.json: none of its pieces lies on a new roll; order with --build-rolls"));
    EXPECT_EQ(run({"export", example("recut/weir-old-r1.otio"), "-o", "a.edl", "--prove"}).status, 2);
    EXPECT_EQ(exported(example("reel/reel.otio"), "a.edl", {"--channel", "A1"}).status, 1);
}

// 60 frames, of which the rolls have 48 and a handle of 8 behind them.
TEST_F(OnRolls, FilmThatRunsOnBehindItsPieceIsRefused) {
    const auto list = [](const std::string& length) {
        return "TITLE: A\n001  A1 V C 01:00:00:00 01:00:" + length + " 10:00:00:00 10:00:" + length +
               "\n* KJ 12 3456-0100+00\n";
    };
    write("short.edl", list("02:00"));
    write("long.edl", list("02:12"));
    ASSERT_EQ(order({"short.edl", "--rate", "24", "--build-rolls", "400"}).status, 0);
    EXPECT_EQ(exported("short.edl", "out.otio", {"--rate", "24"}).status, 0);
    EXPECT_THAT(exported("long.edl", "out.otio", {"--rate", "24"}).err, HasSubstr("lies on no new roll as a whole"));
}

TEST_F(OnRolls, PiecesThatLieOnOnePlaceAreRefused) {
    ASSERT_EQ(order({example("recut/weir-old-r1.otio"), "--build-rolls", "400"}).status, 0);
    std::string text = read("order.json");
    const std::string second = "\"first_timecode\": 86609,";
    text.replace(text.find(second), second.size(), "\"first_timecode\": 86607,");
    write("order.json", text);
    EXPECT_THAT(exported(example("recut/weir-old-r1.otio"), "out.edl").err,
                HasSubstr("order.json: two of its pieces lie on one place of the roll SEL001"));
}

/// Every frame of every piece goes to a timecode of its own, and back.
RC_GTEST_PROP(NewRolls, MapEachFrameToOneTimecodeAndBack, ()) {
    film::OrderPieces pieces;
    std::int64_t first = *rc::gen::inRange(-20, 20);
    for (const auto& [gap, length] : *rc::gen::nonEmpty(rc::gen::container<std::vector<std::pair<int, int>>>(
             rc::gen::pair(rc::gen::inRange(0, 30), rc::gen::inRange(1, 40))))) {
        film::OrderPiece piece;
        piece.run = {"A1", edlstr_to_label_type("35mm-3p"), gap % 2 == 0 ? "KJ111111" : "KJ222222", gap % 3};
        piece.frames = {first + gap, first + gap + length - 1};
        first = piece.frames.last + 1;
        pieces.push_back(piece);
    }
    film::RollBuilding building;
    building.feet = *rc::gen::inRange(3, 30);
    building.start = 86400;
    const film::SelectRolls selects = film::build_rolls(pieces, building);
    RC_PRE(selects.fault.empty());
    std::vector<PieceOnRoll> laid;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        PieceOnRoll piece;
        piece.run = pieces[i].run;
        piece.frames = pieces[i].frames;
        piece.roll = selects.rolls[selects.places[i].roll].name;
        piece.timecode = label_tc_24;
        piece.first = building.start + selects.places[i].frames.first;
        laid.push_back(piece);
    }
    const NewRolls rolls(laid);
    std::set<std::pair<std::string, std::int64_t>> taken;
    for (const film::OrderPiece& piece : pieces)
        for (std::int64_t frame = piece.frames.first; frame <= piece.frames.last; ++frame) {
            const PieceOnRoll* holds = rolls.holding(piece.run, {frame, frame});
            RC_ASSERT(holds != nullptr);
            const std::int64_t timecode = holds->first + frame - holds->frames.first;
            RC_ASSERT(taken.emplace(holds->roll, timecode).second);
            RC_ASSERT(rolls.at(holds->roll, timecode) == holds);
            film::Strip strip;
            strip.end = 1;
            strip.rolls.tape = holds->roll;
            strip.timecode.kind = label_tc_24;
            strip.timecode.first = timecode;
            const film::Strips back = rolls.back_to_film({strip});
            RC_ASSERT(back.front().key.text_at(0) == piece.run.text_at(frame));
            RC_ASSERT(back.front().key.perforation == piece.run.perforation);
        }
    for (const PieceOnRoll& piece : laid)
        for (const std::int64_t beside : {piece.first - 1, piece.first + piece.frames.length()})
            RC_ASSERT(taken.count({piece.roll, beside}) == 1 || rolls.at(piece.roll, beside) == nullptr);
}

} // namespace
