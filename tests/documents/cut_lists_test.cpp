// The lists of small cuts.

#include "documents/film_cells.h"
#include "documents/optical_drawing.h"
#include "documents/table_head.h"
#include "tests/documents/made_cut_film.h"

#include <gmock/gmock.h>

#include <set>

using namespace documents;
using namespace documents_test;
using namespace generator_test;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

struct CutLists : testing::Test {
    CutFilmPtr cut(bool neg_cut = false, CutOptions options = {}) { return cut_of(builder.finish(), neg_cut, options); }

    EditBuilder builder{plain_edit()};
    int v1 = builder.add_channel(picture);
    SourceId a = builder.add_source(shot("a"));
    SourceId b = builder.add_source(shot("b", "KJ9876540200+00"));
};

std::string cell_text(const List& list, const Row& row, const char* key) {
    for (std::size_t i = 0; i < list.columns.size(); ++i)
        if (std::string(list.columns[i].key) == key && i < row.cells.size()) return text_of(row.cells[i].lines);
    return "no column";
}

} // namespace

TEST_F(CutLists, AnAssemblyNamesTheFirstAndTheLastFrameOfEachPiece) {
    builder.add_event(v1, event_of(a, 48, 5));
    builder.add_event(v1, event_of(b, 24));
    const List list = assembly_list(*cut());
    EXPECT_THAT(
        drawn(list, {"event", "start", "length", "roll", "key_first", "key_last"}),
        ElementsAre("1 0 48 A001 KJ1234560100+05 KJ1234560103+04", "2 48 24 A001 KJ9876540200+00 KJ9876540201+07"));
    const Row row = items_of(list)[0];
    EXPECT_EQ(cell_text(list, row, "key"), "KJ 12 3456 0100+05 KJ 12 3456 0103+04");
    EXPECT_EQ(cell_text(list, row, "length"), "3+00 48 fr");
    EXPECT_EQ(cell_text(list, row, "film_length"), "");
    EXPECT_EQ(text_of(list.totals.at(0).cells.at(2).values.at(0)), "72");
}

TEST_F(CutLists, BothSidesOfATransitionHaveHalfOfItAtTheBench) {
    builder.add_event(v1, event_of(a, 48, 0));
    builder.add_transition(v1, dissolve(8, 17));
    builder.add_event(v1, event_of(b, 48, 32));
    const List list = assembly_list(*cut());
    EXPECT_THAT(drawn(list, {"start", "length", "key_first", "key_last", "transition_start", "transition_length"}),
                ElementsAre("0 53 KJ1234560100+00 KJ1234560103+04 40 25", "53 43 KJ9876540202+05 KJ9876540204+15 - -"));
    EXPECT_THAT(bands_of(list), ElementsAre("Cross 25 frames, from KJ 12 3456 0102+08, see optical 1"));
}

TEST_F(CutLists, ANegativeAssemblyHasARowForWhatTheLabMakes) {
    builder.add_event(v1, event_of(a, 20, 0));
    builder.add_event(v1, event_of(a, 48, 100));
    builder.add_transition(v1, dissolve(8, 16));
    builder.add_event(v1, event_of(b, 48, 32));
    const CutFilmPtr neg = cut(true);
    const List list = assembly_list(*neg);
    EXPECT_THAT(drawn(list, {"event", "start", "length", "shot", "optical"}),
                ElementsAre("1 0 20 a -", "2 20 96 Optical 1 1"));
    const List sheets = optical_list(*neg);
    ASSERT_EQ(sheets.parts.size(), 1U);
    EXPECT_THAT(drawn(sheets, {"film_length", "first_frame", "last_frame", "transition_in", "transition_out"}),
                ElementsAre("64 0 63 - cross 40 - 63", "56 40 95 cross 40 - 63 -"));
}

TEST_F(CutLists, SpeedIsExactAndSaysHowMuchFilmItTakes) {
    builder.add_event(v1, event_of(a, 72, 0, 2));
    builder.add_event(v1, event_of(a, 48, 200, Fraction(2, 3)));
    builder.add_event(v1, event_of(b, 10, 100, -1));
    builder.add_event(v1, event_of(b, 30, 7, 0));
    const List list = assembly_list(*cut());
    EXPECT_THAT(drawn(list, {"length", "film_length", "speed"}),
                ElementsAre("72 143 2", "48 32 2/3", "10 10 -1", "30 1 0"));
    const std::vector<Row> rows = items_of(list);
    EXPECT_THAT(notes_of(rows[0]), ElementsAre("Speed 200%. 143 frames of film (8+15) make 72 frames of the reel."));
    EXPECT_THAT(notes_of(rows[1]), ElementsAre("Speed 66 2/3%. 32 frames of film (2+00) make 48 frames of the reel."));
    EXPECT_THAT(notes_of(rows[2]),
                ElementsAre("Backwards at 100%. 10 frames of film (0+10) make 10 frames of the reel."));
    EXPECT_THAT(notes_of(rows[3]), ElementsAre("Held frame. 1 frame of film (0+01) makes 30 frames of the reel."));
    EXPECT_THAT(cell_text(list, rows[1], "key"), HasSubstr("within 1 frame"));
}

TEST_F(CutLists, FilmWithoutANumberIsNamedByTapeAndTimecode) {
    SourceDescription bare = shot("c");
    bare.key.reset();
    builder.add_event(v1, event_of(builder.add_source(bare), 24, 12));
    const List list = assembly_list(*cut());
    const Row row = items_of(list)[0];
    EXPECT_EQ(cell_text(list, row, "key"), "no key number tape Tc 01:00:00:12 to 01:00:01:11");
    EXPECT_EQ(text_in(list, row, "key_first"), "-");
    EXPECT_EQ(text_in(list, row, "film_known"), "counted");
}

TEST_F(CutLists, PullsStandByRollAndByKeyWithWhatEachTakes) {
    SourceDescription other = shot("o", "AA1111110001+00");
    other.reels[{2, 1}] = "B002";
    builder.add_event(v1, event_of(builder.add_source(other), 16));
    builder.add_event(v1, event_of(b, 24));
    builder.add_event(v1, event_of(a, 48, 5));
    const CutFilmPtr made = cut();
    const List rolls = pull_list(*made, PullOrder::roll);
    ASSERT_EQ(rolls.parts.size(), 2U);
    EXPECT_EQ(rolls.parts[0].title, "A001");
    EXPECT_EQ(rolls.parts[0].about, "2 pieces, 4+08, 72 frames");
    EXPECT_THAT(drawn(rolls, {"event", "key_first"}),
                ElementsAre("3 KJ1234560100+05", "2 KJ9876540200+00", "1 AA1111110001+00"));
    EXPECT_EQ(text_of(rolls.totals[0].cells[3].values[0]), "88");
    EXPECT_THAT(drawn(pull_list(*made, PullOrder::key), {"event"}), ElementsAre("1", "3", "2"));
}

TEST_F(CutLists, HandlesLengthenAPullAtBothEnds) {
    builder.add_event(v1, event_of(a, 48, 16));
    builder.add_event(v1, event_of(b, 10, 100, -1));
    CutOptions options;
    options.handles = 8;
    const List list = pull_list(*cut(false, options), PullOrder::roll);
    EXPECT_THAT(drawn(list, {"film_length", "key_first", "key_last"}),
                ElementsAre("64 KJ1234560100+08 KJ1234560104+07", "26 KJ9876540207+05 KJ9876540205+12"));
    EXPECT_THAT(list.counting, HasSubstr("With 8 frames more at each end."));
}

TEST_F(CutLists, ScenesAndTakesGoByTheirNumbers) {
    for (const char* take : {"10", "2", ""}) {
        SourceDescription source = shot(std::string("t") + take);
        source.scene = "12";
        source.take = take;
        builder.add_event(v1, event_of(builder.add_source(source), 10));
    }
    const CutFilmPtr made = cut();
    const List list = pull_list(*made, PullOrder::scene);
    EXPECT_THAT(drawn(list, {"scene", "take"}), ElementsAre("12 -", "12 2", "12 10"));
    EXPECT_EQ(list.parts.at(0).title, "Scene 12");
}

TEST_F(CutLists, EachShotIsOneSceneAndEachRollOneRow) {
    builder.add_event(v1, event_of(a, 48, 5));
    builder.add_event(v1, event_of(b, 24));
    builder.add_event(v1, event_of(a, 10, 100));
    const CutFilmPtr made = cut();
    EXPECT_THAT(drawn(scene_list(*made), {"shot", "pieces", "film_length", "events"}),
                ElementsAre("a 2 58 1, 3", "b 1 24 2"));
    EXPECT_THAT(drawn(roll_list(*made), {"roll", "pieces", "film_length", "tapes"}), ElementsAre("A001 3 82 Ta, Tb"));
}

TEST_F(CutLists, FilmUsedTwiceIsToldWithBothPlaces) {
    builder.add_event(v1, event_of(a, 48, 0));
    builder.add_event(v1, event_of(b, 24));
    builder.add_event(v1, event_of(a, 48, 40));
    const CutFilmPtr made = cut();
    const List list = reuse_list(*made);
    EXPECT_THAT(
        drawn(list, {"key_first", "shared", "apart", "event", "start", "other_event", "other_start", "reel_apart"}),
        ElementsAre("KJ1234560102+08 8 - 1 0 3 72 72"));
    EXPECT_THAT(notes_of(items_of(assembly_list(*made))[0]),
                ElementsAre("Used twice. 8 frames from KJ 12 3456 0102+08 on are also in event 3 (0004+08)."));
}

TEST_F(CutLists, FilmThatLeavesNoFrameForASpliceIsTold) {
    builder.add_event(v1, event_of(a, 48, 0));
    builder.add_event(v1, event_of(b, 24));
    builder.add_event(v1, event_of(a, 48, 48));
    EXPECT_THAT(drawn(reuse_list(*cut()), {"shared", "apart", "event", "other_event"}), ElementsAre("0 0 1 3"));
}

TEST_F(CutLists, HowCloseFilmMayLieIsAChoice) {
    builder.add_event(v1, event_of(a, 48, 0));
    builder.add_event(v1, event_of(b, 24));
    builder.add_event(v1, event_of(a, 48, 51));
    CutOptions options;
    options.butt = 4;
    const EditPtr edit = builder.finish();
    EXPECT_THAT(drawn(reuse_list(*cut_of(edit, false, options)), {"shared", "apart"}), ElementsAre("0 3"));
    EXPECT_THAT(notes_of(items_of(assembly_list(*cut_of(edit, false, options)))[0]),
                ElementsAre("Too close. On the negative 3 frames lie between it and event 3 (0004+08)."));
    options.butt = 3;
    EXPECT_THAT(items_of(reuse_list(*cut_of(edit, false, options))), IsEmpty());
}

TEST_F(CutLists, ACutThatRunsOnIsNoReuse) {
    builder.add_event(v1, event_of(a, 48, 0));
    builder.add_event(v1, event_of(a, 48, 48));
    EXPECT_THAT(items_of(reuse_list(*cut())), IsEmpty());
}

TEST_F(CutLists, FindingsStandInTheRowThatTheyAreAbout) {
    builder.add_event(v1, event_of(a, 48, 5));
    builder.add_event(v1, event_of(b, 24));
    film::Finding finding;
    finding.code = film::Code::key_conflict;
    finding.severity = film::Severity::wrong;
    finding.place.event = 2;
    finding.place.frame = 48;
    finding.place.channel = "V1";
    finding.what = "the log has another number";
    const CutFilmPtr made = cut_of(builder.finish(), false, {}, {finding});
    const List list = assembly_list(*made);
    EXPECT_THAT(notes_of(items_of(list)[0]), IsEmpty());
    EXPECT_THAT(notes_of(items_of(list)[1]), ElementsAre("Two key numbers. The log has another number."));
    EXPECT_TRUE(items_of(list)[1].has(Mark::wrong));
    EXPECT_THAT(drawn(doubt_list(*made), {"severity", "event", "frame", "code"}),
                ElementsAre("wrong 2 48 key-conflict"));
    EXPECT_EQ(text_of(facts_of(*made)[3].value), "1");
}

TEST_F(CutLists, FramesInPlaceOfFeet) {
    builder.add_event(v1, event_of(a, 48, 5));
    CutOptions options;
    options.frames = true;
    const List list = assembly_list(*cut(false, options));
    EXPECT_EQ(cell_text(list, items_of(list)[0], "length"), "48");
    EXPECT_THAT(list.counting, HasSubstr("in frames"));
}

TEST_F(CutLists, RowsHaveNamesThatNoOtherRowHas) {
    builder.add_event(v1, with_effect(event_of(a, 48, 0), lab_effect("Flop")));
    builder.add_transition(v1, dissolve(8, 16));
    builder.add_event(v1, event_of(b, 48, 32));
    const int v2 = builder.add_channel(picture);
    builder.add_event(v2, event_of(b, 20, 200));
    const EditPtr edit = builder.finish();
    for (const bool neg : {false, true}) {
        std::set<std::string> ids;
        std::size_t rows = 0;
        for (const List& list : all_lists_of(*cut_of(edit, neg)).lists)
            for (const Row& row : items_of(list)) {
                ids.insert(row.id);
                ++rows;
            }
        EXPECT_EQ(ids.size(), rows);
    }
}

TEST_F(CutLists, RowsHaveACellForEachColumnAndAValueForEachField) {
    builder.add_event(v1, with_effect(event_of(a, 48, 0), lab_effect("Flop")));
    builder.add_transition(v1, dissolve(8, 16));
    builder.add_event(v1, event_of(b, 48, 32));
    builder.add_event(v1, event_of(a, 30, 20));
    const int v2 = builder.add_channel(picture);
    builder.add_event(v2, event_of(b, 20, 200));
    const EditPtr edit = builder.finish();
    for (const bool neg : {false, true})
        for (const List& list : all_lists_of(*cut_of(edit, neg)).lists)
            for (const Row& row : items_of(list)) {
                ASSERT_EQ(row.cells.size(), list.columns.size()) << row.id;
                for (std::size_t i = 0; i < row.cells.size(); ++i)
                    EXPECT_EQ(row.cells[i].values.size(), list.columns[i].fields.size())
                        << row.id << ' ' << list.columns[i].key;
            }
}

TEST_F(CutLists, TransitionsThatMeetLeaveTheThirdShotOnTheRollOfTheFirst) {
    builder.add_event(v1, event_of(a, 48, 0));
    builder.add_transition(v1, dissolve(8, 10));
    builder.add_event(v1, event_of(b, 12, 32));
    builder.add_transition(v1, dissolve(10, 8));
    builder.add_event(v1, event_of(a, 48, 100));
    const CutFilmPtr made = cut(true);
    std::vector<std::string> laid;
    for (const Drawing& drawing : drawings_of(*made, *made->optical(1)))
        for (const DrawnPiece& piece : drawing.pieces)
            laid.push_back(drawing.lanes[static_cast<std::size_t>(piece.lane)].name + ' ' + piece.name + ' ' +
                           std::to_string(piece.start) + '-' + std::to_string(piece.start + piece.length));
    EXPECT_THAT(laid, ElementsAre("A roll a · A001 0-58", "A roll a · A001 58-108", "B roll spacer 40 0-40",
                                  "B roll b · A001 40-68"));
}

TEST(FilmCells, APartedPieceSaysWhereItsFilmChanges) {
    std::vector<FilmRun> runs(3);
    runs[0].start = 20, runs[0].end = runs[1].start = 21;
    runs[1].end = runs[2].start = 60, runs[2].end = 70;
    EXPECT_EQ(text_of(*parted_note(runs)),
              "In 3 stretches of film. Its numbers don't run on; the film changes after 1 frame, 40 frames.");
    runs.resize(1);
    EXPECT_FALSE(parted_note(runs));
}

TEST_F(CutLists, PullsByTapeGoByTimecode) {
    SourceDescription late = shot("late"), early = shot("early", "KJ9876540200+00");
    late.reels[{1, 2}] = early.reels[{1, 2}] = "T7";
    late.video_timecode = label(8, "10:00:00:00");
    early.video_timecode = label(8, "01:00:00:00");
    builder.add_event(v1, event_of(builder.add_source(late), 24, 0));
    builder.add_event(v1, event_of(builder.add_source(early), 24, 100));
    const List list = pull_list(*cut(), PullOrder::tape);
    EXPECT_EQ(list.parts.size(), 1U);
    EXPECT_THAT(drawn(list, {"event", "shot"}), ElementsAre("2 early", "1 late"));
}

TEST_F(CutLists, FilmUsedTwiceOnATrackAboveNamesTheTrack) {
    builder.add_event(v1, event_of(a, 48, 0));
    builder.add_event(v1, event_of(b, 48, 0));
    const int v2 = builder.add_channel(picture);
    builder.add_event(v2, event_of(a, 20, 10));
    const List list = reuse_list(*cut());
    EXPECT_THAT(drawn(list, {"shared", "event", "start", "other_event", "other_start"}), ElementsAre("20 1 0 - 0"));
    EXPECT_EQ(cell_text(list, items_of(list)[0], "second"), "track 2 0000+00");
}

TEST(TableHead, SaysGaugeAndRateInWords) {
    EXPECT_EQ(gauge_words("35mm-4p"), "35mm 4-perf");
    EXPECT_EQ(gauge_words("65mm-5p120"), "65mm 5-perf");
    EXPECT_EQ(gauge_words("frames"), "frames");
    EXPECT_EQ(rate_words("24fps"), "24 fps");
    EXPECT_EQ(rate_words("30df"), "30 fps drop frame");
}
