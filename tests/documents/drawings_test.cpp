// The drawings of the example cuts, held against their film.

#include "documents/bench_reels.h"
#include "documents/change_drawing.h"
#include "documents/film_cells.h"
#include "documents/optical_drawing.h"
#include "documents/reel_drawing.h"
#include "documents/svg.h"
#include "embedded/services.h"
#include "film/film_uses.h"
#include "film/find.h"
#include "tests/documents/svg_picture.h"
#include "tests/support/project_paths.h"
#include "tests/support/recording_logger.h"
#include "tests/support/scratch_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <climits>
#include <set>

namespace {

using namespace documents;
using documents_test::SvgElement;
using documents_test::SvgPicture;
using testing::Contains;
using testing::HasSubstr;

LightweightString<wchar_t> wide(const std::string& path) { return fromUTF8(LightweightString<char>(path)); }

std::string table_path(const std::string& name) { return project_folder() + "/examples/" + name + ".cdb"; }

CutFilmPtr cut_of(const std::string& name) {
    const recdb table(wide(table_path(name)), INT_MAX, false);
    EXPECT_NE(table.get_valid(), 0) << name;
    return cut_film(film::uses_of_table(table), table, film::check_table(table, {}), {});
}

constexpr const char* all_cuts[] = {
    "opticals/expected/lantern", "opticals/expected/lantern-neg", "reel/expected/reel",   "reel/expected/reel-neg",
    "16mm/expected/heron",       "3perf/expected/harbour",        "65mm/expected/desert", "25fps/expected/market",
    "reel/expected/reel-a1",     "edl/expected/ferryman"};

/// What lies in a lane, in order: each begins where the one before ends.
void expect_no_overlap(const Drawing& drawing) {
    std::map<int, std::int64_t> ends;
    for (const DrawnPiece& piece : drawing.pieces) {
        const auto end = ends.emplace(piece.lane, drawing.begin).first;
        EXPECT_GE(piece.start, end->second) << drawing.id << ' ' << piece.told;
        EXPECT_GT(piece.length, 0) << drawing.id << ' ' << piece.told;
        EXPECT_GE(piece.start, drawing.begin);
        EXPECT_LE(piece.start + piece.length, drawing.end);
        end->second = piece.start + piece.length;
    }
}

/// The picture as read back has each piece, as long as its frames.
void expect_true_to_scale(const Drawing& drawing, const char* side) {
    const SvgPicture picture(svg_of(drawing));
    ASSERT_FALSE(picture.elements.empty());
    const long unit = picture.root().number("data-units");
    long drawn = 0, wanted = 0;
    for (const SvgElement& element : picture.elements) {
        const std::string kind = element.at("data-kind");
        if (element.name != "rect" || kind.empty() || kind == "optical" || kind == "band" || kind == "transition")
            continue;
        EXPECT_EQ(element.number(side), element.number("data-frames") * unit);
        drawn += element.number("data-frames");
    }
    for (const DrawnPiece& piece : drawing.pieces)
        wanted += piece.length;
    EXPECT_EQ(drawn, wanted) << drawing.id;
}

class DrawnCut : public testing::TestWithParam<const char*> {};

TEST_P(DrawnCut, TheReelsPiecesAndTransitionsFillItWithoutAGap) {
    const CutFilmPtr cut = cut_of(GetParam());
    const Drawing reel = reel_drawing(*cut);
    expect_no_overlap(reel);
    expect_true_to_scale(reel, "width");
    EXPECT_EQ(reel.length(), cut->length());
    std::int64_t frames = 0;
    for (const DrawnPiece& piece : reel.pieces)
        frames += piece.length;
    for (const DrawnTransition& transition : reel.transitions)
        frames += transition.length;
    EXPECT_EQ(frames, cut->length());
}

TEST_P(DrawnCut, TheRollsOfAnOpticalHoldAllItsFilmWhole) {
    const CutFilmPtr cut = cut_of(GetParam());
    for (const LabOptical& optical : cut->opticals) {
        std::multiset<std::int64_t> wanted, drawn;
        for (const film::Piece* piece : cut->pieces_of_optical(optical.number))
            wanted.insert(piece->end - piece->start);
        for (const Drawing& drawing : drawings_of(*cut, optical)) {
            expect_no_overlap(drawing);
            expect_true_to_scale(drawing, "height");
            for (const DrawnPiece& piece : drawing.pieces)
                if (piece.stuff == Stuff::film || piece.stuff == Stuff::black) drawn.insert(piece.length);
        }
        EXPECT_EQ(drawn, wanted) << "optical " << optical.number;
    }
}

std::string test_name(const testing::TestParamInfo<const char*>& cut) {
    std::string name(cut.param);
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Examples, DrawnCut, testing::ValuesIn(all_cuts), test_name);

Drawing first_optical() {
    const CutFilmPtr cut = cut_of("opticals/expected/lantern");
    return drawings_of(*cut, *cut->optical(1)).front();
}

// As the list of opticals has it: 41/2 on roll A, 42/3 on B, 43/1 on A behind a spacer of 52 frames.
TEST(OpticalDrawing, HasItsShotsByTurnsOnTwoRolls) {
    const Drawing drawing = first_optical();
    std::vector<std::string> told;
    for (const DrawnPiece& piece : drawing.pieces)
        told.push_back(drawing.lanes[static_cast<std::size_t>(piece.lane)].name + ": " + piece.name + ' ' +
                       std::to_string(piece.start) + '+' + std::to_string(piece.length));
    EXPECT_THAT(told, testing::ElementsAre("A roll: 41/2 · A040 48+72", "A roll: spacer 52 120+52",
                                           "A roll: 43/1 · A041 172+74", "B roll: spacer 48 48+48",
                                           "B roll: 42/3 · A041 96+92"));
}

TEST(OpticalDrawing, HasAKeyNumberAtEachCutAndTransition) {
    const Drawing drawing = first_optical();
    std::vector<std::string> told;
    for (const DrawnPiece& piece : drawing.pieces)
        for (const DrawnNumber& number : piece.numbers)
            told.push_back(std::to_string(number.edge) + ' ' + number.text);
    EXPECT_THAT(told, testing::ElementsAre("48 KJ 51 2040 1403+00", "96 1406+00", "120 1407+07",
                                           "172 KN 62 7001 2602+02", "188 2603+01", "246 2606+11",
                                           "96 KN 62 7001 2203+04", "120 2204+11", "172 2208+00", "188 2208+15"));
}

TEST(OpticalDrawing, HasItsTransitionsBetweenTheRolls) {
    const Drawing drawing = first_optical();
    ASSERT_EQ(drawing.transitions.size(), 2U);
    EXPECT_EQ(drawing.transitions[0].name, "Dissolve 24");
    EXPECT_EQ(drawing.transitions[0].detail, "48–71");
    EXPECT_EQ(drawing.transitions[1].name, "Wipe 4, 16");
    EXPECT_EQ(drawing.transitions[1].from, 1);
    EXPECT_EQ(drawing.transitions[1].to, 0);
}

TEST(OpticalDrawing, LayersHaveRollsOfTheirOwnAndTheFirstShowsTheEffect) {
    const CutFilmPtr cut = cut_of("opticals/expected/lantern");
    const std::vector<Drawing> layers = drawings_of(*cut, *cut->optical(2));
    ASSERT_EQ(layers.size(), 2U);
    EXPECT_EQ(layers[0].lanes[0].name, "A roll");
    EXPECT_EQ(layers[0].lanes.back().name, "Effect");
    EXPECT_EQ(layers[0].pieces.back().name, "Superimpose flame");
    EXPECT_EQ(layers[0].pieces.back().length, 428 - 290);
    EXPECT_EQ(layers[1].lanes[0].name, "C roll");
    EXPECT_EQ(layers[1].id, "optical-2-layer-2");
}

TEST(OpticalDrawing, FilmWithoutANumberIsSaidWithItsTape) {
    const CutFilmPtr cut = cut_of("opticals/expected/lantern");
    const std::string svg = svg_of(drawings_of(*cut, *cut->optical(9)).front());
    EXPECT_THAT(SvgPicture(svg).texts(), Contains("no key number"));
    EXPECT_THAT(svg, HasSubstr("tape LN03 "));
    EXPECT_EQ(svg.find("0FA80BAB"), std::string::npos) << "a number that is on no film";
}

TEST(ReelDrawing, NamesOpticalsAndDoubts) {
    const CutFilmPtr cut = cut_of("reel/expected/reel");
    const SvgPicture picture(svg_of(reel_drawing(*cut)));
    EXPECT_THAT(picture.texts(), Contains("optical 2, Superimpose title"));
    std::size_t bars = 0;
    for (const LabOptical& optical : cut->opticals)
        bars += optical.start < cut->length() ? 1 : 0;
    std::set<std::string> drawn;
    for (const SvgElement& bar : picture.of_kind("optical"))
        drawn.insert(bar.at("data-film"));
    EXPECT_EQ(drawn.size(), bars);
    EXPECT_THAT(picture.texts(), Contains(HasSubstr(head_of(film::Code::no_key))));
}

/// The recut of two reels, with the steps of its bench list.
Recut weir() {
    Recut recut;
    ScratchDirectory folder;
    changelist_reels reels;
    for (const char* reel : {"r1", "r2"}) {
        const std::string name = std::string("recut/expected/weir-");
        recut.old_reels.push_back(cut_of(name + "old-" + reel));
        recut.new_reels.push_back(cut_of(name + "new-" + reel));
        reels.emplace_back(wide(table_path(name + "old-" + reel)), wide(table_path(name + "new-" + reel)));
    }
    embedded::set_lists_directory(folder.path());
    embedded::settings_block block;
    block.set("CHAN_TYPE", "1");
    block.set("chg_bench_list", "1");
    RecordingLogger logger;
    EXPECT_EQ(mr_make_changelist(reels, wide(folder.file("changes.txt")), &block, logger), nullptr);
    unsigned count = 0;
    const change_step* const steps = change_steps(bench_changes, count);
    recut.steps.assign(steps, steps + count);
    EXPECT_GT(count, 3U);
    return recut;
}

std::int64_t frames_of(const Drawing& drawing, int lane) {
    std::int64_t frames = 0;
    for (const DrawnPiece& piece : drawing.pieces)
        if (piece.lane == lane) frames += piece.length;
    return frames;
}

TEST(ChangeDrawing, BothReelsAreWholeAndTiedByWhatStays) {
    const Recut recut = weir();
    const std::vector<Drawing> drawings = change_drawings(recut);
    ASSERT_EQ(drawings.size(), 2U);
    for (std::size_t reel = 0; reel < drawings.size(); ++reel) {
        const Drawing& drawing = drawings[reel];
        expect_true_to_scale(drawing, "width");
        EXPECT_EQ(frames_of(drawing, 0), recut.old_reels[reel]->length());
        EXPECT_EQ(frames_of(drawing, 1), recut.new_reels[reel]->length());
        EXPECT_EQ(drawing.description.find("don't make"), std::string::npos);
        std::int64_t tied = 0, fresh = 0, here = 0;
        for (const DrawnBand& band : drawing.bands)
            tied += band.length;
        for (const DrawnMark& mark : drawing.marks) {
            if (mark.lane == 1 && mark.text.rfind("new", 0) == 0) fresh += mark.length;
            if (mark.lane == 0 && mark.text.rfind("out", 0) == 0) here -= mark.length;
        }
        EXPECT_LE(tied, recut.new_reels[reel]->length() - fresh);
        EXPECT_LE(tied, recut.old_reels[reel]->length() + here);
        EXPECT_GT(tied, 0);
    }
}

// The names over the bands are those of the new table: the pictures of both ends are of one film.
TEST(ChangeDrawing, TheNewReelIsNamedAsItsTableNamesIt) {
    const Recut recut = weir();
    const std::vector<Drawing> drawings = change_drawings(recut);
    for (std::size_t reel = 0; reel < drawings.size(); ++reel)
        for (const DrawnPiece& piece : drawings[reel].pieces) {
            if (piece.lane != 1 || piece.stuff == Stuff::black || piece.name.empty()) continue;
            std::string name;
            for (const Share& share : recut.new_reels[reel]->shares)
                if (share.start <= piece.start && piece.start < share.end)
                    name = share.piece->black() ? "Black" : share.piece->first().name;
            EXPECT_EQ(piece.name, name) << piece.told;
        }
}

TEST(ChangeDrawing, TheReelBehindEachStepIsAsLongAsTheListSays) {
    const Recut recut = weir();
    const std::vector<Drawing> drawings = step_drawings(recut);
    ASSERT_EQ(drawings.size(), recut.steps.size());
    for (std::size_t i = 0; i < drawings.size(); ++i) {
        expect_true_to_scale(drawings[i], "width");
        expect_no_overlap(drawings[i]);
        EXPECT_EQ(drawings[i].id, "step-" + std::to_string(i + 1));
        EXPECT_THAT(drawings[i].lanes[1].about,
                    HasSubstr(", " + std::to_string(recut.steps[i].reel_length) + " frame"));
        ASSERT_EQ(drawings[i].marks.size(), 1U);
        EXPECT_EQ(drawings[i].marks[0].length, recut.steps[i].length);
        EXPECT_EQ(drawings[i].marks[0].start, recut.steps[i].position);
    }
}

TEST(ChangeDrawing, StepsThatDontMakeTheReelTieNothing) {
    Recut recut = weir();
    recut.steps.pop_back();
    recut.steps.back().position += 1 << 20;
    for (const Drawing& drawing : change_drawings(recut)) {
        EXPECT_TRUE(drawing.bands.empty());
        EXPECT_EQ(drawing.pieces.front().start, 0);
        EXPECT_THAT(drawing.description, HasSubstr("don't make"));
    }
    EXPECT_EQ(step_drawings(recut).size(), recut.steps.size() - 1);
}

std::string picture(const std::string& name) {
    return bytes_of_file(project_folder() + "/docs/pictures/" + name + ".svg");
}

// They were looked at; scripts/make_pictures.sh makes them anew.
TEST(Pictures, OfThePagesAreThoseOfTheExamples) {
    const CutFilmPtr cut = cut_of("opticals/expected/lantern");
    EXPECT_EQ(svg_of(reel_drawing(*cut)), picture("reel"));
    EXPECT_EQ(svg_of(first_optical()), picture("optical-1"));
    EXPECT_EQ(svg_of(drawings_of(*cut, *cut->optical(3))[1]), picture("optical-3-layer-2"));
    const Recut recut = weir();
    EXPECT_EQ(svg_of(change_drawings(recut)[0]), picture("changes-reel-1"));
    EXPECT_EQ(svg_of(step_drawings(recut)[5]), picture("step-6"));
}

change_step step(int number, change_action action, int position, int length, int other = 0) {
    change_step made;
    made.step = number;
    made.action = action;
    made.reel = 1;
    made.position = position;
    made.length = length;
    made.other_step = other;
    return made;
}

std::string runs_text(const BenchReel& reel) {
    std::string text;
    for (const BenchRun& run : reel)
        text += (run.old_reel > 0 ? "old " + std::to_string(run.old_start) : "new") + '+' + std::to_string(run.length) +
                ' ';
    return text;
}

TEST(Bench, CarriesStepsOut) {
    Bench bench({100}, 1);
    EXPECT_TRUE(bench.carry_out(step(1, change_pick_up, 20, 10)));
    EXPECT_TRUE(bench.carry_out(step(2, change_remove, 0, 5)));
    EXPECT_TRUE(bench.carry_out(step(3, change_insert, 15, 7)));
    EXPECT_TRUE(bench.carry_out(step(4, change_put_down, 50, 10, 1)));
    EXPECT_EQ(runs_text(bench.reels()[0]), "old 5+15 new+7 old 30+28 old 20+10 old 58+42 ");
    ASSERT_EQ(bench.gone().size(), 1U);
    EXPECT_EQ(bench.gone()[0].fetched, 2);
}

TEST(Bench, RefusesWhatCantBeDone) {
    Bench bench({100}, 1);
    EXPECT_FALSE(bench.carry_out(step(1, change_remove, 95, 6)));
    EXPECT_FALSE(bench.carry_out(step(1, change_remove, -1, 6)));
    EXPECT_FALSE(bench.carry_out(step(1, change_put_down, 0, 6, 3)));
    EXPECT_FALSE(bench.carry_out(step(1, change_insert, 101, 6)));
    change_step elsewhere = step(1, change_insert, 0, 6);
    elsewhere.reel = 2;
    EXPECT_FALSE(bench.carry_out(elsewhere));
    EXPECT_EQ(runs_text(bench.reels()[0]), "old 0+100 ");
}

} // namespace
