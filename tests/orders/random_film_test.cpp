// Orders of random films against a model that knows single frames only.

#include "film/order.h"
#include "tests/orders/random_film.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using namespace orders_test;
using film::ChangeOrder;
using film::HadPiece;

namespace {

/// The film that passes the gate, frame by frame: what is shown, and all that lies on the way to the next. A strip of
/// an event goes on from the strip before it.
class Gate {
public:
    void walk(const film::Strip& strip) {
        const film::Count& count = strip.key ? strip.key : strip.timecode;
        if (strip.black || !count) return;
        const auto before = at_.find(strip.item);
        const bool goes_on = before != at_.end() && before->second.first == strip.start;
        std::int64_t at = goes_on ? before->second.second : count.frame_at(0);
        for (std::int64_t k = 0; k < strip.length(); ++k) {
            const std::int64_t shown = count.frame_at(k);
            for (const std::int64_t way = shown < at ? -1 : 1; at != shown; at += way)
                add(strip, count, at);
            add(strip, count, shown);
        }
        at_[strip.item] = {strip.end, at};
    }
    Frames frames;

private:
    void add(const film::Strip& strip, const film::Count& count, std::int64_t frame) {
        frames.emplace(strip.key ? strip.rolls.listed : strip.rolls.tape, count.kind, count.prefix, count.perforation,
                       frame);
    }
    std::map<int, std::pair<std::int64_t, std::int64_t>> at_; ///< by event: where its strip ended, and on which frame
};

Frames walked(const EditPtr& edit) {
    Gate gate;
    for (const film::Strip& strip : film::film_of_edit(edit, {}, nullptr).strips)
        gate.walk(strip);
    return gate.frames;
}

bool holds_all(const Frames& frames, const Frames& some) {
    return std::includes(frames.begin(), frames.end(), some.begin(), some.end());
}

bool lies_beside(const Frame& frame, const Frames& frames) {
    Frame before = frame, behind = frame;
    --std::get<4>(before);
    ++std::get<4>(behind);
    return frames.count(before) > 0 || frames.count(behind) > 0;
}

Frames held_by(const std::vector<HadPiece>& had) {
    Frames frames;
    for (const HadPiece& piece : had)
        add_frames(piece.run, piece.frames, frames);
    return frames;
}

bool meet(const Frames& a, const Frames& b) {
    return std::any_of(a.begin(), a.end(), [&b](const Frame& frame) { return b.count(frame) > 0; });
}

} // namespace

RC_GTEST_PROP(RandomFilm, NeedsTheFramesThatAreWalkedOver, ()) {
    const RandomFilm random;
    const EditPtr edit = random.reel();
    const Frames needed = frames_of(needs_of(edit).needs), on_the_way = walked(edit);
    RC_ASSERT(holds_all(needed, on_the_way));
    // With pulldown the picture of a shot at another speed may hold a part of the next frame.
    constexpr int with_pulldown = 30;
    for (const Frame& frame : needed)
        RC_ASSERT(on_the_way.count(frame) > 0 ||
                  (random.rate()->nominal == with_pulldown && lies_beside(frame, on_the_way)));
}

RC_GTEST_PROP(RandomFilm, IsOrderedOnceWithItsHandlesAndJoins, ()) {
    const RandomFilm random;
    const FilmNeeds needs = random.version(between(1, 3));
    const film::OrderOptions options = any_options();
    const film::OrderPieces pieces = film::order_of(needs, options);
    RC_ASSERT(film::prove_order(pieces, needs, options).failures.empty());
    std::size_t in_pieces = 0;
    for (const film::OrderPiece& piece : pieces)
        in_pieces += static_cast<std::size_t>(piece.frames.length());
    const Frames ordered = frames_of(pieces);
    RC_ASSERT(ordered.size() == in_pieces); // none twice
    RC_ASSERT(holds_all(ordered, frames_of(needs)));
}

// What was ordered for each version, and all before it, holds the version; nothing is ordered that one piece holds, and
// the discard list has what no frame is wanted of.
RC_GTEST_PROP(RandomFilm, IsCoveredInEachVersionByAllOrdersSoFar, (bool ends_alone)) {
    const RandomFilm random;
    const film::OrderOptions options = any_options();
    const int reels = between(1, 2);
    std::vector<HadPiece> had;
    for (int version = 0; version < 4; ++version) {
        const FilmNeeds needs = random.version(reels);
        const ChangeOrder order = film::change_order(needs, had, options, ends_alone);
        RC_ASSERT(film::prove_order(order.pieces, order.needs, options).failures.empty());
        RC_ASSERT(film::prove_cover(order.pieces, had, needs).failures.empty());

        const Frames wanted = frames_of(needs), held = held_by(had);
        Frames missing;
        for (const film::FilmNeed& need : needs) {
            const Frames own = frames_of(need.run, need.frames);
            const bool whole = std::any_of(had.begin(), had.end(), [&](const HadPiece& piece) {
                return holds_all(frames_of(piece.run, piece.frames), own);
            });
            for (const Frame& frame : own)
                if (ends_alone ? held.count(frame) == 0 : !whole) missing.insert(frame);
        }
        RC_ASSERT(frames_of(order.needs) == missing);

        for (std::size_t i = 0; i < had.size(); ++i) {
            const bool used = meet(frames_of(had[i].run, had[i].frames), wanted);
            const bool told = std::count(order.unused.begin(), order.unused.end(), i) == 1;
            RC_ASSERT(used != told);
        }
        for (const ChangeOrder::Longer& longer : order.longer)
            RC_ASSERT(order.pieces[longer.piece].run == had[longer.had].run);
        for (const film::OrderPiece& piece : order.pieces)
            had.push_back({piece.run, piece.frames});
        RC_ASSERT(holds_all(held_by(had), wanted));
    }
}

RC_GTEST_PROP(RandomFilm, ThatIsOrderedTwiceNeedsNothingMore, (bool ends_alone)) {
    const RandomFilm random;
    const FilmNeeds needs = random.version(2);
    std::vector<HadPiece> had;
    for (const film::OrderPiece& piece : film::order_of(needs, any_options()))
        had.push_back({piece.run, piece.frames});
    const ChangeOrder again = film::change_order(needs, had, any_options(), ends_alone);
    RC_ASSERT(again.pieces.empty());
    RC_ASSERT(again.unused.empty());
    RC_ASSERT(again.longer.empty());
}

// Of the whole shot, as far as the dissolve takes it, one piece; its end is what the dissolve takes more.
TEST(FilmNeeds, OfAShotReachOverItsTransitions) {
    const auto reel = [](int half) {
        embedded::EditBuilder builder(generator_test::plain_edit());
        const int channel = builder.add_channel(generator_test::picture);
        const embedded::SourceId house = builder.add_source(generator_test::shot("house")),
                                 kitchen = builder.add_source(generator_test::shot("kitchen", "KJ1234560200+00"));
        builder.add_event(channel, generator_test::event_of(house, 160, 32));
        builder.add_transition(channel, generator_test::dissolve(half, half));
        builder.add_event(channel, generator_test::event_of(kitchen, 96, 32));
        return needs_of(builder.finish()).needs;
    };
    constexpr std::int64_t house_at = 100 * 16, kitchen_at = 200 * 16;
    const FilmNeeds before = reel(12), after = reel(24);
    ASSERT_EQ(before.size(), 2U);
    EXPECT_EQ(before[0].frames, (film::FrameRange{house_at + 32, house_at + 203}));
    EXPECT_EQ(before[1].frames, (film::FrameRange{kitchen_at + 20, kitchen_at + 127}));
    EXPECT_EQ(before[0].strip.length(), 172);

    film::OrderOptions options;
    options.handles = 8;
    std::vector<HadPiece> had;
    for (const film::OrderPiece& piece : film::order_of(before, options))
        had.push_back({piece.run, piece.frames});
    const film::OrderPieces whole = film::change_order(after, had, options, false).pieces;
    ASSERT_EQ(whole.size(), 2U);
    EXPECT_EQ(whole[0].frames, (film::FrameRange{house_at + 24, house_at + 223}));
    EXPECT_EQ(whole[1].frames, (film::FrameRange{kitchen_at, kitchen_at + 135}));
    const film::OrderPieces ends = film::change_order(after, had, options, true).pieces;
    ASSERT_EQ(ends.size(), 2U);
    EXPECT_EQ(ends[0].frames, (film::FrameRange{house_at + 204, house_at + 223}));
    EXPECT_EQ(ends[1].frames, (film::FrameRange{kitchen_at, kitchen_at + 19}));
}

TEST(FilmNeeds, OfAShotAtTwiceTheSpeedHaveNoGapAtItsTransitions) {
    embedded::EditBuilder builder(generator_test::plain_edit());
    const int channel = builder.add_channel(generator_test::picture);
    const embedded::SourceId run = builder.add_source(generator_test::shot("run"));
    builder.add_event(channel, generator_test::event_of(run, 48, 32, 2));
    builder.add_transition(channel, generator_test::dissolve(6, 6));
    builder.add_event(channel, generator_test::event_of(builder.add_source(generator_test::shot("next")), 48, 32));
    const FilmNeeds needs = needs_of(builder.finish()).needs;
    EXPECT_EQ(needs.at(0).frames, (film::FrameRange{1632, 1632 + 53 * 2}));
}

// Four frames of film are five of tape: the last one ends with frame 59.
TEST(FilmNeeds, WithoutKeyNumbersTakeAllTimecodeOfTheLastFrame) {
    embedded::EditDescription about = generator_test::plain_edit();
    about.rate = embedded::nearest_rate(30.0);
    for (const int speed : {1, -1}) {
        embedded::EditBuilder builder(about);
        embedded::SourceDescription tape = generator_test::shot("tape");
        tape.key.reset();
        tape.rate = about.rate;
        tape.video_timecode = embedded::LabelDescription{about.rate->timecode, {}, 9000, about.rate->rate()};
        embedded::EventDescription event;
        event.source = builder.add_source(tape);
        event.duration = 2;
        event.speed = speed;
        builder.add_event(builder.add_channel(generator_test::picture), event);
        EXPECT_EQ(needs_of(builder.finish()).needs.at(0).frames, (film::FrameRange{9000, 9059})) << speed;
    }
}

// Each slip is less than the handles, both together are more.
TEST(ChangeOrders, CountSlipsFromWhatWasPulledAndNotFromTheCutBefore) {
    const auto slipped = [](std::int64_t frames) {
        film::FilmNeed need;
        need.run = {"A001", label_key_35mm_4p, "KJ102001", 0};
        need.frames = {32 - frames, 111 - frames};
        return FilmNeeds{need};
    };
    film::OrderOptions options;
    options.handles = 8;
    std::vector<HadPiece> had;
    for (const auto& [slip, pieces] : {std::pair(0, 1U), {4, 0U}, {10, 1U}, {12, 0U}, {19, 1U}}) {
        const ChangeOrder order = film::change_order(slipped(slip), had, options, false);
        EXPECT_EQ(order.pieces.size(), pieces) << slip;
        for (const film::OrderPiece& piece : order.pieces)
            had.push_back({piece.run, piece.frames});
    }
}
