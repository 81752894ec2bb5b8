// Cuts held against the negative, by hand.

#include "film/conform_texts.h"
#include "tests/conform/made_uses.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using film::CutUses;
using film::SpliceRules;
using testing::ElementsAre;
using testing::IsEmpty;

using namespace conform_test;

namespace {

/// What stands against a cut, after others were carried out.
std::vector<std::string> held(const CutUses& uses, const std::vector<CutUses>& cuts, const SpliceRules& rules = {}) {
    return drawn(film::conform_of(uses, negative(cuts, rules)));
}

TEST(SpliceLosses, AreReadAsFramesOrPerforations) {
    EXPECT_EQ(film::splice_loss_of("2")->count, 2);
    EXPECT_FALSE(film::splice_loss_of("2")->perforations);
    EXPECT_TRUE(film::splice_loss_of("3p")->perforations);
    EXPECT_TRUE(film::splice_loss_of("0"));
    for (const char* text : {"", "p", "-1", "2 p", "2pp", "2.5", "1001", "two"})
        EXPECT_FALSE(film::splice_loss_of(text)) << text;
}

TEST(SpliceLosses, AreHalfAFrameOf35mmAndAFrameOf16mmOnASide) {
    const SpliceRules usual;
    const auto spent = [&](const char* kind) { return usual.spent_on_a_side(edlstr_to_label_type(kind)); };
    EXPECT_EQ(spent("35mm-4p"), 2);
    EXPECT_EQ(spent("35mm-3p"), 2);
    EXPECT_EQ(spent("35mm-8p"), 2);
    EXPECT_EQ(spent("65mm-5p80"), 2);
    EXPECT_EQ(spent("16mm-1p"), 1);
    EXPECT_EQ(spent("24fps"), 1);
    EXPECT_EQ(rules("2").spent_on_a_side(edlstr_to_label_type("35mm-3p")), 6);
    EXPECT_EQ(rules("5p").spent_on_a_side(edlstr_to_label_type("35mm-3p")), 5);
}

TEST(SpentFilm, IsTheFrameOnEitherSide) {
    EXPECT_THAT(held({use(99, 147)}, {{use(100, 147)}}), ElementsAre("0 gone 99 at head: shorten 0 head 1, print 0"));
    EXPECT_THAT(held({use(100, 148)}, {{use(100, 147)}}), ElementsAre("0 gone 148 at tail: shorten 0 tail 1, print 0"));
    EXPECT_THAT(held({use(149, 200)}, {{use(100, 147)}}), IsEmpty()) << "its splice takes the other half of 148";
}

TEST(SpentFilm, OfPartOfAFrameIsThatFrame) {
    EXPECT_THAT(held({use(148, 160)}, {{use(100, 147)}}, rules("1p")),
                ElementsAre("0 gone 148 at head: shorten 0 head 1, print 0"));
    EXPECT_THAT(held({use(149, 160)}, {{use(100, 147)}}, rules("5p")),
                ElementsAre("0 gone 149 at head: shorten 0 head 2, print 0"))
        << "148 and a perforation of 149; then the new splice's 5 perforations";
    EXPECT_THAT(held({use(148, 160)}, {{use(100, 147)}}, rules("0")), IsEmpty());
}

TEST(SpentFilm, OfAllCutsCarriedOutAddsUp) {
    const std::vector<CutUses> cuts{{use(100, 147)}, {use(110, 147)}, {use(120, 130)}};
    EXPECT_THAT(held({use(100, 147)}, cuts), ElementsAre("0 gone 109 119 131: print 0, shorten 0 head 32"));
    EXPECT_THAT(held({use(120, 130)}, cuts), IsEmpty());
}

TEST(SpentFilm, IsNoneWhereASpliceStands) {
    EXPECT_THAT(held({use(100, 120)}, {{use(100, 147)}}), IsEmpty());
    const film::Conform conform = film::conform_of({use(100, 120)}, negative({{use(100, 147)}}, {}));
    EXPECT_EQ(conform.standing_ends, 1);
    EXPECT_EQ(conform.new_ends, 1);
    const std::vector<CutUses> again{{use(100, 147)}, {use(100, 130)}, {use(100, 147)}};
    EXPECT_THAT(held({use(100, 147)}, again), ElementsAre("0 gone 131 at tail: shorten 0 tail 17, print 0"))
        << "its ends stand, and the second cut's lies between";
}

TEST(SpentFilm, IsNothingThatTheSameCutUses) {
    EXPECT_THAT(held({use(100, 147), use(148, 200, 500)}, {{use(100, 147), use(148, 200, 500)}}), IsEmpty());
}

TEST(Gone, InTheMidstIsPrintedRatherThanShortened) {
    EXPECT_THAT(held({use(80, 118)}, {{use(101, 147)}}), ElementsAre("0 gone 100 at tail: shorten 0 tail 19, print 0"));
    EXPECT_THAT(held({use(80, 119)}, {{use(101, 147)}}), ElementsAre("0 gone 100: print 0, shorten 0 tail 20"));
}

TEST(Gone, EndsWhereAnOldSpliceStandsOrANewOneHasItsFilm) {
    EXPECT_THAT(held({use(90, 130)}, {{use(100, 147)}}, rules("3")),
                ElementsAre("0 gone 97-99 at head: shorten 0 head 10, print 0"));
    EXPECT_THAT(held({use(150, 180)}, {{use(100, 147)}}, rules("3")),
                ElementsAre("0 gone 150 at head: shorten 0 head 4, print 0"))
        << "148 to 150 are spent, 151 to 153 go into the new splice";
}

TEST(Gone, WholeIsPrinted) {
    EXPECT_THAT(held({use(148, 149)}, {{use(100, 147)}}, rules("2")), ElementsAre("0 gone 148-149: print 0"));
    EXPECT_THAT(held({use(148, 150)}, {{use(100, 147)}}, rules("2")), ElementsAre("0 gone 148-149: print 0"))
        << "150 has no film for its splice";
}

TEST(Printed, FilmIsNotCut) {
    EXPECT_THAT(held({use(120, 130)}, {{printed(100, 125)}}), IsEmpty());
    EXPECT_THAT(held({use(100, 125), printed(110, 140), printed(110, 140)}, {}), IsEmpty());
    EXPECT_EQ(film::conform_of({printed(0, 9)}, negative({}, {})).new_ends, 0);
}

TEST(Printed, FilmHasToBeWholeUnlessAnEarlierOpticalHoldsIt) {
    EXPECT_THAT(held({printed(140, 160)}, {{use(100, 147)}}), ElementsAre("0 gone 148: print 0"));
    EXPECT_THAT(held({printed(140, 160)}, {{use(100, 147), printed(140, 160)}}), IsEmpty());
    EXPECT_THAT(held({printed(140, 160)}, {{use(100, 147), printed(150, 160)}}), ElementsAre("0 gone 148: print 0"));
}

TEST(Twice, UsedFramesNeedADupeOfTheShorterUse) {
    EXPECT_THAT(held({use(100, 147), use(140, 170, 500)}, {}),
                ElementsAre("1 twice 140-147 with 0: duplicate 1, shorten 1 head 9, shorten 0 tail 9"));
    EXPECT_THAT(held({use(100, 147), use(110, 120, 500)}, {}),
                ElementsAre("1 twice 110-120 with 0: duplicate 1, shorten 0 tail 39"));
    EXPECT_THAT(held({use(110, 120), use(110, 120, 500)}, {}), ElementsAre("1 twice 110-120 with 0: duplicate 1"));
}

TEST(Close, UsesLackTheFramesThatTheirSplicesNeed) {
    EXPECT_THAT(held({use(100, 147), use(148, 170, 500)}, {}),
                ElementsAre("1 close head lacks 1 with 0: shorten 1 head 1, shorten 0 tail 1, duplicate 1"));
    EXPECT_THAT(held({use(100, 147), use(149, 170, 500)}, {}), IsEmpty());
    EXPECT_THAT(held({use(100, 147), use(149, 170, 500)}, {}, rules("2")),
                ElementsAre("1 close head lacks 3 with 0: shorten 1 head 3, shorten 0 tail 3, duplicate 1"));
    EXPECT_THAT(held({use(100, 147, 0, "16mm-1p"), use(149, 170, 500, "16mm-1p")}, {}),
                ElementsAre("1 close head lacks 1 with 0: shorten 1 head 1, shorten 0 tail 1, duplicate 1"))
        << "two frames at a cut back";
    EXPECT_THAT(held({use(100, 147, 0, "16mm-1p"), use(150, 170, 500, "16mm-1p")}, {}), IsEmpty());
}

TEST(Close, ThreePerforationsCountAsTheyLie) {
    // 2 perforations a side are 4, more than a frame of 3.
    EXPECT_THAT(held({use(0, 9, 0, "35mm-3p"), use(11, 20, 50, "35mm-3p")}, {}),
                ElementsAre("1 close head lacks 1 with 0: shorten 1 head 1, shorten 0 tail 1, duplicate 1"));
    CutUses shifted{use(0, 9, 0, "35mm-3p"), use(11, 20, 50, "35mm-3p")};
    shifted[1].run.perforation = 1;
    EXPECT_THAT(held(shifted, {}), IsEmpty()) << "a perforation further off the numbers";
}

TEST(Close, ToASpliceOfAnEarlierCut) {
    EXPECT_THAT(held({use(151, 180)}, {{use(100, 147)}}, rules("3")),
                ElementsAre("0 close head lacks 3: shorten 0 head 3, duplicate 0"));
    EXPECT_THAT(held({use(60, 96)}, {{use(100, 147)}}, rules("3")),
                ElementsAre("0 close tail lacks 3: shorten 0 tail 3, duplicate 0"));
    EXPECT_THAT(held({use(151, 152)}, {{use(100, 147)}}, rules("3")), ElementsAre("0 close head lacks 3: duplicate 0"));
}

TEST(Strands, AreOfOneNumberWhateverTheRollIsCalled) {
    CutUses uses{use(100, 147), use(140, 170, 500)};
    uses[1].run.roll = "B7";
    EXPECT_EQ(held(uses, {}).size(), 1U);
    uses[1].run.prefix = "KJ999999";
    EXPECT_THAT(held(uses, {}), IsEmpty());
}

TEST(Strands, OfTimecodeAreTheTapes) {
    CutUses uses{use(100, 147, 0, "24fps"), use(140, 170, 500, "24fps")};
    EXPECT_EQ(held(uses, {}).size(), 1U);
    uses[1].run.roll = "B7";
    EXPECT_THAT(held(uses, {}), IsEmpty());
}

TEST(UsesInWords, NameTheirPlaceTheirFilmAndWhetherTheyArePrinted) {
    film::ConformToTell told;
    film::CutUse one = use(100, 147, 24);
    one.event = one.last_event = 3;
    one.name = "Weir";
    EXPECT_EQ(film::use_text(told, one), "event 3, 24 to 71, \"Weir\", A001 KJ1234560006+04 to KJ1234560009+03");
    one.last_event = 4;
    one.printed = true;
    one.off = 1;
    told.reels.resize(2);
    EXPECT_EQ(film::use_text(told, one), "R1 events 3 to 4, 24 to 71, \"Weir\", A001 KJ1234560006+04 to "
                                         "KJ1234560009+03, printed, give or take 1 frame");
    one.event = 0;
    one.layer = 1;
    one.run.roll.clear();
    EXPECT_THAT(film::use_text(told, one), testing::HasSubstr("R1 V2 at 24, 24 to 71, \"Weir\", no roll KJ"));
}

} // namespace
