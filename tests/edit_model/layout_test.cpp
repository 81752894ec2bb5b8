// What becomes of items and the transitions between them. Times are seconds.

#include "made_edits.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <optional>

using namespace edit_model;

namespace {

// One picture channel with sources A, B and C.
class Layout : public ::testing::Test {
protected:
    Layout() : builder(edit_named("Reel 1")) {
        for (const char* name : {"A", "B", "C"})
            builder.add_source(source_named(name));
        builder.add_channel(1);
    }

    void clip(SourceId source, const Fraction& duration, const Fraction& in = 0, const Fraction& speed = 1) {
        builder.add_event(0, event_of(source, duration, in, speed));
    }
    void gap(const Fraction& duration) { builder.add_gap(0, duration); }
    void fx(const Fraction& in, const Fraction& out) { builder.add_transition(0, dissolve(in, out)); }

    std::string list() { return drawn(*cel()); }
    std::string without_crossfades() {
        const Qb::Ptr<Cel> with_crossfades = cel();
        Cel whole(0, edit->getCelResolution());
        EXPECT_EQ(with_crossfades->crossfade_removal_whole(&whole), 0);
        return drawn(whole);
    }
    Qb::Ptr<Cel> cel() {
        if (!edit) edit = builder.finish();
        return edit->get_edit_cel_p(0);
    }
    ChannelEvent point(int index) { return ce_handle(cel().get(), index).get_channel_event(); }
    std::size_t warnings() { return builder.warnings().size(); }

    EditBuilder builder;
    EditPtr edit;
};

} // namespace

// | A . . . | B . . |
TEST_F(Layout, ClipsMeetAtTheCut) {
    clip(0, 4), clip(1, 3);
    EXPECT_EQ(list(), "A 0-4 | B 4-7");
    EXPECT_EQ(cel()->num_events, 4);
}

// | A . . . |--x--| B . . |
TEST_F(Layout, BothSidesGiveUpTheirShareToATransition) {
    clip(0, 4, 10), fx(1, 2), clip(1, 5, 20);
    EXPECT_EQ(list(), "A 0-3 | x 3-6 | B 6-9");
    EXPECT_EQ(point(1).source_time, 13.0);
    EXPECT_EQ(point(4).source_time, 22.0);
    EXPECT_EQ(point(2).source_time, 0.0);
    EXPECT_EQ(point(2).speed, 1.0F);
}

// b|--x--| A . . . |--x--|b
TEST_F(Layout, TransitionsAtTheEndsComeFromAndGoToBlackWithoutLength) {
    fx(5, 1), clip(0, 4), fx(1, 5);
    EXPECT_EQ(list(), "b 0-0 | x 0-1 | A 1-3 | x 3-4 | b 4-4");
    EXPECT_EQ(warnings(), 0U);
}

// . gap . b|--x--| A . |--x--|b . gap .
TEST_F(Layout, BesideAGapBlackStandsAtTheOuterEndOfTheTransition) {
    gap(10), fx(1, 1), clip(0, 4), fx(1, 2), gap(5);
    EXPECT_EQ(list(), "b 9-9 | x 9-11 | A 11-13 | x 13-16 | b 16-16");
}

// | A . |--x--|b . b|--x--| B . |     the second takes what the first left of the gap
TEST_F(Layout, TwoTransitionsShareTheGapBetweenThem) {
    clip(0, 4), fx(1, 2), gap(3), fx(2, 1), clip(1, 4);
    EXPECT_EQ(list(), "A 0-3 | x 3-6 | b 6-6 | b 6-6 | x 6-8 | B 8-11");
    EXPECT_EQ(warnings(), 1U);
}

TEST_F(Layout, ATransitionBetweenTwoGapsIsDropped) {
    gap(2), fx(1, 1), gap(2), clip(0, 3);
    EXPECT_EQ(list(), "A 4-7");
    EXPECT_EQ(warnings(), 1U);
}

TEST_F(Layout, ATransitionBetweenTheHeadAndAGapIsDropped) {
    fx(1, 1), gap(2), clip(0, 3);
    EXPECT_EQ(list(), "A 2-5");
}

// | b b b b |--x--| A . . |
TEST_F(Layout, BlackIsShortenedLikeAnyEvent) {
    builder.add_black(0, 4), fx(1, 1), clip(0, 4);
    EXPECT_EQ(list(), "b 0-3 | x 3-5 | A 5-8");
    EXPECT_EQ(point(1).source_time, 3.0);
}

TEST_F(Layout, TwoGapsInARowOfBlackAreTwoEvents) {
    builder.add_black(0, 1), builder.add_black(0, 2);
    EXPECT_EQ(list(), "b 0-1 | b 1-3");
}

TEST_F(Layout, AGapLeavesAHoleAndNothingIsAddedAtTheEnd) {
    clip(0, 1), gap(2), clip(1, 1), gap(3);
    EXPECT_EQ(list(), "A 0-1 | B 3-4");
}

TEST_F(Layout, OffsetsAreCutToTheItemsTheyEatFrom) {
    clip(0, 2), fx(5, 5), clip(1, 3), fx(2, 1), clip(2, 4);
    EXPECT_EQ(list(), "A 0-0 | x 0-5 | B 5-5 | x 5-6 | C 6-9");
    EXPECT_EQ(warnings(), 3U);
}

TEST_F(Layout, NegativeOffsetsCountAsNothing) {
    clip(0, 4), fx(-1, 2), clip(1, 4);
    EXPECT_EQ(list(), "A 0-4 | x 4-6 | B 6-8");
}

TEST_F(Layout, ATransitionWithoutLengthAndTheSecondInARowAreDropped) {
    clip(0, 4), fx(0, 0), clip(1, 4), fx(1, 1), fx(2, 2), clip(2, 4);
    EXPECT_EQ(list(), "A 0-4 | B 4-7 | x 7-9 | C 9-12");
    EXPECT_EQ(warnings(), 2U);
}

TEST_F(Layout, AnItemWithoutLengthIsAnEventOnlyBesideATransition) {
    clip(0, 0), clip(1, 4), fx(1, 0), clip(2, 0);
    EXPECT_EQ(list(), "B 0-3 | x 3-4 | C 4-4");
    EXPECT_EQ(without_crossfades(), "B 0-4");
}

TEST_F(Layout, AtDoubleSpeedAShareTakesTwiceItsLengthOfTheSource) {
    clip(0, 4, 10, 2), fx(1, 1), clip(1, 4, 20, Fraction(1, 2));
    EXPECT_EQ(list(), "A 0-3 | x 3-5 | B 5-8");
    EXPECT_EQ(point(1).source_time, 16.0);
    EXPECT_EQ(point(4).source_time, 20.5);
    EXPECT_EQ(point(5).source_time, 22.0);
    EXPECT_EQ(point(4).speed, 0.5F);
}

TEST_F(Layout, AFreezeStaysOnItsFrame) {
    clip(0, 4, 10, 0), fx(1, 1), clip(1, 4);
    EXPECT_EQ(point(0).source_time, 10.0);
    EXPECT_EQ(point(1).source_time, 10.0);
    EXPECT_EQ(point(1).speed, 0.0F);
}

// The stretch 10 to 14 backward: its last frame first.
TEST_F(Layout, BackwardBothPointsLieOneFrameLower) {
    clip(0, 4, 10, -1), clip(1, 4, 10, -2), fx(1, 0), clip(2, 4, 100, -1);
    const double frame = 1.0 / 24.0;
    EXPECT_DOUBLE_EQ(point(0).source_time, 14.0 - frame);
    EXPECT_DOUBLE_EQ(point(1).source_time, 10.0 - frame);
    EXPECT_DOUBLE_EQ(point(2).source_time, 18.0 - frame);
    EXPECT_DOUBLE_EQ(point(3).source_time, 12.0 - frame);
    EXPECT_EQ(point(3).speed, -2.0F);
    EXPECT_DOUBLE_EQ(point(6).source_time, 104.0 - frame);
}

// before b|-x-| A . |--x--| B . |-x-|b     after | A . . . | B . . . |
TEST_F(Layout, RemovingCrossfadesBringsEveryCutBack) {
    fx(0, 1), clip(0, 4, 10), fx(1, 1), clip(1, 4, 20, 2), fx(2, 0);
    EXPECT_EQ(without_crossfades(), "A 0-4 | B 4-8");
    Cel whole(0, 1.0);
    cel()->crossfade_removal_whole(&whole);
    EXPECT_EQ(whole.num_events, 4);
    EXPECT_EQ(ce_handle(&whole, 2).get_channel_event().source_time, 20.0);
    EXPECT_EQ(ce_handle(&whole, 3).get_channel_event().source_time, 28.0);
}

TEST_F(Layout, SimplifyingAndFlatteningChangeNothing) {
    clip(0, 4), fx(1, 1), clip(1, 4);
    const std::string before = list();
    EXPECT_EQ(drawn(*flatten(cel()->simplify(0, false, true), 3, 1)), before);
}

TEST_F(Layout, TimesAreMadeDoublesOnceAndNeverSnapped) {
    const Fraction frame(1001, 30000);
    for (int i = 0; i < 300; ++i)
        clip(0, frame);
    for (int i = 0; i < 300; ++i)
        EXPECT_EQ(point(2 * i + 1).edit_time, (frame * (i + 1)).to_double());
}

namespace {

Fraction drawn_time() { return {*rc::gen::inRange(-3, 40), *rc::gen::element(1, 3, 24, 1001)}; }

Fraction drawn_length() {
    const Fraction time = drawn_time();
    return time < 0 ? Fraction(0) : time;
}

void add_drawn_item(EditBuilder& builder) {
    switch (*rc::gen::inRange(0, 4)) {
    case 0:
        builder.add_gap(0, drawn_length());
        break;
    case 1:
        builder.add_black(0, drawn_length());
        break;
    case 2:
        builder.add_transition(0, dissolve(drawn_time(), drawn_time()));
        break;
    default:
        builder.add_event(0, event_of(0, drawn_length(), drawn_time(), *rc::gen::inRange(-2, 3)));
    }
}

bool effect(Cel& cel, int point) { return ce_handle(&cel, point).get_channel_event().cookie.isEffect(); }

// Points alternate, time never runs backward, an event's two points agree, and a transition stands between
// two events that touch it.
void check_walk(Cel& cel) {
    double time = 0.0;
    for (ce_handle at = cel.get_start_ceh(); at.valid(); at.increment(ce_all)) {
        const ChannelEvent event = at.get_channel_event();
        RC_ASSERT(at.is_in_point() == (at.index % 2 == 0));
        RC_ASSERT(event.edit_time >= time);
        time = event.edit_time;
        if (at.is_out_point()) {
            const ChannelEvent in = ce_handle(&cel, at.index - 1).get_channel_event();
            RC_ASSERT(in.cookie == event.cookie && in.speed == event.speed);
        } else if (event.cookie.isEffect()) {
            RC_ASSERT(at.index > 0 && at.index + 2 < cel.num_events);
            RC_ASSERT(!effect(cel, at.index - 1) && !effect(cel, at.index + 2));
            RC_ASSERT(ce_handle(&cel, at.index - 1).get_channel_event().edit_time == event.edit_time);
            const ChannelEvent out = ce_handle(&cel, at.index + 1).get_channel_event();
            RC_ASSERT(ce_handle(&cel, at.index + 2).get_channel_event().edit_time == out.edit_time);
        }
    }
}

} // namespace

TEST(LayoutOfAnything, TheWalkNeverBreaks) {
    EXPECT_TRUE(rc::check([] {
        EditBuilder builder(edit_named("any"));
        builder.add_source(source_named("A"));
        builder.add_channel(1);
        for (int items = *rc::gen::inRange(0, 12); items > 0; --items)
            add_drawn_item(builder);
        const EditPtr edit = builder.finish();
        check_walk(*edit->get_edit_cel_p(0));
        Cel whole(0, 1.0);
        edit->get_edit_cel_p(0)->crossfade_removal_whole(&whole);
        check_walk(whole);
        for (int point = 0; point < whole.num_events; ++point)
            RC_ASSERT(!effect(whole, point));
    }));
}
