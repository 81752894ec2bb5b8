// Strips of small edits.

#include "film/find.h"
#include "tests/film/made_film.h"
#include "tests/generator/made_edit.h"

#include <gmock/gmock.h>

using namespace generator_test;
using film::Role;
using film::Strips;
using film::Sureness;
using film::UseOptions;
using film_test::drawn;
using testing::ElementsAre;

namespace {

struct FilmUses : testing::Test {
    Strips uses(const UseOptions& options = {}) { return film::uses_of_edit(builder.finish(), options); }

    EditBuilder builder{plain_edit()};
    int v1 = builder.add_channel(picture);
    SourceId a = builder.add_source(shot("a"));
    SourceId b = builder.add_source(shot("b", "KJ9876540200+00"));
};

TEST_F(FilmUses, ACutTakesItsFilmFromTheFirstFrameOn) {
    builder.add_event(v1, event_of(a, 48, 5));
    const Strips strips = uses();
    EXPECT_THAT(drawn(strips), ElementsAre("1 cut 0-48 A001 KJ1234560100+05"));
    EXPECT_EQ(strips[0].key.text_at(47), "KJ1234560103+04");
    EXPECT_EQ(strips[0].timecode.text_at(47), "01:00:02:04");
    EXPECT_EQ(strips[0].source.frame_at(47), 52);
    EXPECT_EQ(strips[0].sureness, Sureness::exact);
    EXPECT_EQ(strips[0].rolls.tape, "Ta");
}

TEST_F(FilmUses, BothSidesOfATransitionGoOnOverItsFrames) {
    builder.add_event(v1, event_of(a, 48, 0));
    builder.add_transition(v1, dissolve(8, 16));
    builder.add_event(v1, event_of(b, 48, 32));
    EXPECT_THAT(drawn(uses()), ElementsAre("1 cut 0-40 A001 KJ1234560100+00", "1 out 40-64 A001 KJ1234560102+08",
                                           "2 in 40-64 A001 KJ9876540201+08", "2 cut 64-96 A001 KJ9876540203+00"));
}

TEST_F(FilmUses, ReverseBeginsWithTheLastFrameOfItsStretch) {
    builder.add_event(v1, event_of(a, 10, 100, -1));
    const Strips strips = uses();
    ASSERT_EQ(strips.size(), 1U);
    EXPECT_EQ(strips[0].source.frame_at(0), 109);
    EXPECT_EQ(strips[0].source.frame_at(9), 100);
    EXPECT_EQ(strips[0].sureness, Sureness::exact);
}

TEST_F(FilmUses, AFreezeStaysAndAnUnevenSpeedMayBeAFrameOff) {
    builder.add_event(v1, event_of(a, 10, 7, 0));
    builder.add_event(v1, event_of(a, 10, 0, Fraction(3, 2)));
    const Strips strips = uses();
    EXPECT_EQ(strips[0].source.frame_at(9), 7);
    EXPECT_EQ(strips[0].sureness, Sureness::exact);
    EXPECT_EQ(strips[1].source.at(3), Fraction(9, 2));
    EXPECT_EQ(strips[1].sureness, Sureness::within);
    EXPECT_EQ(strips[1].off, 1);
}

TEST_F(FilmUses, UpperTracksAreLayersWhereAnOpticalDrawsOnThem) {
    const int v2 = builder.add_channel(picture);
    const int fx = builder.add_channel(picture, chan_fx);
    builder.add_event(v1, event_of(a, 48));
    builder.add_event(v2, event_of(b, 24));
    builder.add_event(v2, event_of(b, 24));
    builder.add_gap(fx, frames(10), {lab_effect("Blur", {0, 1})});
    const Strips strips = uses();
    EXPECT_THAT(drawn(strips), ElementsAre("1 cut 0-48 A001 KJ1234560100+00", "0 layer 0-24 V2 A001 KJ9876540200+00",
                                           "0 cut 24-48 V2 A001 KJ9876540200+00"));
    EXPECT_EQ(strips[0].optical, 1);
    EXPECT_EQ(strips[1].optical, 1);
    EXPECT_EQ(strips[2].optical, 0);
}

// The first effect and the transition hold both events together. The second effect begins where they end, so they
// leave it behind without a number:
//
//     V2  |                          | b  |
//     FX  | |Blur|           |   Blur       |
//     V1  | a  x  b          |
TEST_F(FilmUses, AnEffectWithoutANumberListsNoUpperTrack) {
    const int v2 = builder.add_channel(picture);
    const int fx = builder.add_channel(picture, chan_fx);
    builder.add_event(v1, event_of(a, 24));
    builder.add_transition(v1, dissolve(4, 4));
    builder.add_event(v1, event_of(b, 24));
    builder.add_gap(v2, frames(50));
    builder.add_event(v2, event_of(b, 10));
    builder.add_gap(fx, frames(4));
    builder.add_gap(fx, frames(4), {lab_effect("Blur", {0, 1})});
    builder.add_gap(fx, frames(40));
    builder.add_gap(fx, frames(24), {lab_effect("Blur", {0, 1})});
    const Strips strips = uses();
    ASSERT_FALSE(strips.empty());
    EXPECT_EQ(drawn(strips.back()), "0 cut 50-60 V2 A001 KJ9876540200+00");
    EXPECT_EQ(strips.back().optical, 0);
}

TEST_F(FilmUses, AnOpticalHasOneNumberInANegCut) {
    builder.add_event(v1, event_of(a, 24));
    builder.add_transition(v1, dissolve(4, 4));
    builder.add_event(v1, event_of(b, 24));
    builder.add_event(v1, event_of(a, 24));
    UseOptions options;
    options.neg_cut = true;
    std::vector<int> numbers;
    for (const film::Strip& strip : uses(options))
        numbers.push_back(strip.event);
    EXPECT_THAT(numbers, ElementsAre(1, 1, 1, 1, 2));
}

TEST_F(FilmUses, AnOpticalThatBeginsWhereAnEventEndsIsTheNextOnes) {
    const int fx = builder.add_channel(picture, chan_fx);
    builder.add_event(v1, event_of(a, 24));
    builder.add_event(v1, event_of(b, 24));
    builder.add_gap(fx, frames(24));
    builder.add_gap(fx, frames(24), {lab_effect("Blur", {0})});
    const Strips strips = uses();
    EXPECT_EQ(strips[0].optical, 0);
    EXPECT_EQ(strips[1].optical, 1);
}

TEST_F(FilmUses, SoundKeepsItsCrossfadesOut) {
    const int a1 = builder.add_channel(sound);
    builder.add_event(a1, event_of(a, 48));
    builder.add_transition(a1, dissolve(8, 16));
    builder.add_event(a1, event_of(b, 48));
    EXPECT_THAT(drawn(uses({sound, 1})),
                ElementsAre("1 cut 0-48 A001 KJ1234560100+00", "2 cut 48-96 A001 KJ9876540200+00"));
}

TEST_F(FilmUses, WithoutANumberTheFramesAreStillCounted) {
    builder.add_event(v1, event_of(builder.add_source(bare_source("c")), 10, 3));
    builder.add_black(v1, frames(5));
    const Strips strips = uses();
    EXPECT_FALSE(strips[0].key);
    EXPECT_EQ(strips[0].sureness, Sureness::counted);
    EXPECT_EQ(strips[0].source.frame_at(0), 3);
    EXPECT_TRUE(strips[1].black);
    EXPECT_FALSE(strips[1].has_film());
}

// Timecode at 50 frames a second counts two for each frame of film at 25.
TEST(UsesOfTables, TimecodeOfVideoCountsItsOwnFramesToTheFilms) {
    struct Kind {
        int type, frames_of_24;
    };
    for (const Kind& kind : {Kind{label_tc_24, 24}, {5, 30}, {7, 48}, {9, 48}, {1, 60}}) {
        EditBuilder builder(plain_edit());
        const int v1 = builder.add_channel(picture);
        embedded::SourceDescription source = shot("a");
        source.video_timecode = label(kind.type, "01:00:00:00");
        builder.add_event(v1, event_of(builder.add_source(source), 48));
        const film_test::MadeList list(builder.finish(), {});
        ASSERT_TRUE(list.made);
        const Strips strips = film::uses_of_table(*list.table);
        ASSERT_EQ(strips.size(), 1U);
        ASSERT_TRUE(strips[0].timecode) << kind.type;
        EXPECT_EQ(strips[0].timecode.frame_at(24) - strips[0].timecode.frame_at(0), kind.frames_of_24) << kind.type;
    }
}

std::vector<std::string> told(const film::Findings& findings) {
    std::vector<std::string> lines;
    for (const film::Finding& finding : findings)
        lines.push_back(finding.place.name + ", " + std::to_string(finding.place.frame) + ": " + finding.what);
    return lines;
}

// An effect over nothing, and film without a number.
TEST(FindingsOfTables, AreThoseOfTheirEdits) {
    EditBuilder builder(plain_edit());
    const int v1 = builder.add_channel(picture), fx = builder.add_channel(picture, chan_fx);
    embedded::SourceDescription unnumbered = shot("b");
    unnumbered.key.reset();
    builder.add_gap(v1, frames(20));
    builder.add_event(v1, event_of(builder.add_source(shot("a")), 48));
    builder.add_event(v1, event_of(builder.add_source(unnumbered), 30, 5));
    builder.add_gap(fx, frames(2));
    builder.add_gap(fx, frames(7), {lab_effect("Blur", {0})});
    const EditPtr edit = builder.finish();
    const film_test::MadeList list(edit, {});
    ASSERT_TRUE(list.made);
    const std::vector<std::string> by_table = told(film::check_table(*list.table, {}));
    EXPECT_THAT(by_table, ElementsAre("Blur, 2: optical 1 of 7 frames can't be described: it lies over no event of the "
                                      "lowest track, or another optical has those",
                                      "b, 68: 30 frames of tape Tb from 01:00:00:05 have no key number"));
    EXPECT_EQ(by_table, told(film::check_edit(edit, {}, nullptr, {})));
}

} // namespace
