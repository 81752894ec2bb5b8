// Orders by hand, and random ones against a model that looks at single frames.

#include "film/order.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <map>
#include <set>

using film::ChangeOrder;
using film::FilmNeed;
using film::FilmNeeds;
using film::FrameRange;
using film::HadPiece;
using film::OrderOptions;
using film::OrderPiece;
using film::OrderPieces;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

film::FilmRun roll(const std::string& name) { return {name, label_key_35mm_4p, "KJ123456", 0}; }

FilmNeed need(std::int64_t first, std::int64_t last, const std::string& on = "A001") {
    FilmNeed made;
    made.run = roll(on);
    made.frames = {first, last};
    return made;
}

FilmNeed within(std::int64_t first, std::int64_t last, const FrameRange& take) {
    FilmNeed made = need(first, last);
    made.take = take;
    return made;
}

OrderOptions handles(int frames, int join = 1) {
    OrderOptions options;
    options.handles = frames;
    options.join = join;
    return options;
}

/// "A001 92-155 needed 100-147".
std::vector<std::string> drawn(const OrderPieces& pieces) {
    std::vector<std::string> texts;
    for (const OrderPiece& piece : pieces)
        texts.push_back(piece.run.roll + ' ' + std::to_string(piece.frames.first) + '-' +
                        std::to_string(piece.frames.last) + " needed " + std::to_string(piece.needed.first) + '-' +
                        std::to_string(piece.needed.last));
    return texts;
}

std::vector<std::string> ordered(const FilmNeeds& needs, const OrderOptions& options) {
    const OrderPieces pieces = film::order_of(needs, options);
    EXPECT_THAT(film::prove_order(pieces, needs, options).failures, IsEmpty());
    return drawn(pieces);
}

TEST(Orders, AShotBecomesAPieceWithHandles) {
    EXPECT_THAT(ordered({need(100, 147)}, handles(8)), ElementsAre("A001 92-155 needed 100-147"));
}

TEST(Orders, HandlesThatMeetMakeOnePiece) {
    EXPECT_THAT(ordered({need(170, 180), need(100, 147)}, handles(12)), ElementsAre("A001 88-192 needed 100-180"));
    EXPECT_THAT(ordered({need(100, 147), need(172, 180)}, handles(12)), ElementsAre("A001 88-192 needed 100-180"))
        << "pieces that touch";
    EXPECT_THAT(ordered({need(100, 147), need(173, 180)}, handles(12)),
                ElementsAre("A001 88-159 needed 100-147", "A001 161-192 needed 173-180"));
}

TEST(Orders, PiecesWithFewFramesBetweenAreJoined) {
    EXPECT_THAT(ordered({need(0, 9), need(20, 29)}, handles(0, 11)), ElementsAre("A001 0-29 needed 0-29"));
    EXPECT_THAT(ordered({need(0, 9), need(20, 29)}, handles(0, 10)),
                ElementsAre("A001 0-9 needed 0-9", "A001 20-29 needed 20-29"));
    EXPECT_THAT(ordered({need(0, 9), need(10, 29)}, handles(0, 0)),
                ElementsAre("A001 0-9 needed 0-9", "A001 10-29 needed 10-29"))
        << "touching pieces stay apart where nothing is to be joined";
    EXPECT_THAT(ordered({need(0, 9), need(9, 29)}, handles(0, 0)), ElementsAre("A001 0-29 needed 0-29"))
        << "no frame is pulled twice";
}

TEST(Orders, HandlesStopWhereTheTakeEnds) {
    EXPECT_THAT(ordered({within(4, 147, {0, 150})}, handles(8)), ElementsAre("A001 0-150 needed 4-147"));
}

TEST(Orders, WhatIsNeededBehindTheTakeIsOrderedAllTheSame) {
    EXPECT_THAT(ordered({within(-3, 155, {0, 150})}, handles(8)), ElementsAre("A001 -3-155 needed -3-155"));
}

TEST(Orders, ATakeThatHoldsNothingOfTheShotGivesNoHandles) {
    EXPECT_THAT(ordered({within(100, 110, {50, 95})}, handles(8)), ElementsAre("A001 100-110 needed 100-110"));
}

TEST(Orders, WholeTakesArePulledWhereTheyAreKnown) {
    OrderOptions whole = handles(8);
    whole.whole_takes = true;
    EXPECT_THAT(ordered({within(100, 147, {10, 900})}, whole), ElementsAre("A001 10-900 needed 100-147"));
    EXPECT_THAT(ordered({need(100, 147)}, whole), ElementsAre("A001 92-155 needed 100-147"));
}

TEST(Orders, RollsArePulledOneByOneByNumber) {
    EXPECT_THAT(ordered({need(50, 59, "B1"), need(0, 9, "B1"), need(20, 29, "A9")}, handles(0)),
                ElementsAre("A9 20-29 needed 20-29", "B1 0-9 needed 0-9", "B1 50-59 needed 50-59"));
}

TEST(Orders, AProofFindsAFrameThatIsInNoPieceTwiceOrTooMuch) {
    const FilmNeeds needs{need(100, 147), need(200, 210)};
    const OrderOptions options = handles(8);
    const OrderPieces good = film::order_of(needs, options);
    const auto failures = [&](auto change) {
        OrderPieces pieces = good;
        change(pieces);
        return film::prove_order(pieces, needs, options).failures;
    };
    EXPECT_EQ(film::prove_order(good, needs, options).frames, 59);
    EXPECT_THAT(failures([](OrderPieces& p) { p[0].frames.last = 146; }),
                ElementsAre("A001 KJ1234560006+04 to KJ1234560009+03: is needed, and no piece holds all of it"));
    EXPECT_THAT(failures([](OrderPieces& p) { p[1].frames.last = 219; }),
                ElementsAre("A001 KJ1234560012+00 to KJ1234560013+11: goes beyond what is needed and its handles"));
    EXPECT_THAT(failures([](OrderPieces& p) { p.push_back(p[1]); }),
                ElementsAre("A001 KJ1234560012+00 to KJ1234560013+10: its head is pulled twice"));
    EXPECT_EQ(failures([](OrderPieces& p) { p.pop_back(); }).size(), 1U);
}

TEST(ChangeOrders, WhatWasHadIsntOrderedAgain) {
    const ChangeOrder order = film::change_order({need(100, 147)}, {{roll("A001"), {92, 155}}}, handles(8), false);
    EXPECT_THAT(order.pieces, IsEmpty());
    EXPECT_THAT(order.unused, IsEmpty());
}

TEST(ChangeOrders, AShotThatGrewIsOrderedWholeOrByItsEnd) {
    const std::vector<HadPiece> had{{roll("A001"), {92, 155}}};
    const ChangeOrder whole = film::change_order({need(100, 160)}, had, handles(2), false);
    EXPECT_THAT(drawn(whole.pieces), ElementsAre("A001 98-162 needed 100-160"));
    EXPECT_THAT(whole.longer, ElementsAre(ChangeOrder::Longer{0, 0}));
    const ChangeOrder end = film::change_order({need(100, 160)}, had, handles(2), true);
    EXPECT_THAT(drawn(end.pieces), ElementsAre("A001 154-162 needed 156-160"));
    EXPECT_THAT(end.longer, ElementsAre(ChangeOrder::Longer{0, 0}));
}

TEST(ChangeOrders, AnEndThatAnotherPieceHoldsIsntOrdered) {
    const std::vector<HadPiece> had{{roll("A001"), {90, 130}}, {roll("A001"), {120, 170}}};
    EXPECT_THAT(film::change_order({need(100, 160)}, had, handles(2), true).pieces, IsEmpty());
    EXPECT_THAT(drawn(film::change_order({need(80, 180)}, had, handles(0), true).pieces),
                ElementsAre("A001 80-89 needed 80-89", "A001 171-180 needed 171-180"));
}

TEST(ChangeOrders, WhatNoReelUsesAnyMoreIsTold) {
    const std::vector<HadPiece> had{{roll("A001"), {0, 50}}, {roll("B7"), {0, 50}}, {roll("A001"), {60, 70}}};
    EXPECT_THAT(film::change_order({need(40, 45)}, had, handles(2), false).unused, ElementsAre(1U, 2U));
}

struct Random {
    FilmNeeds needs;
    OrderOptions options;
};

rc::Gen<FilmNeeds> some_needs() {
    return rc::gen::map(rc::gen::container<std::vector<std::tuple<int, int, int, int, int>>>(
                            rc::gen::tuple(rc::gen::inRange(0, 2), rc::gen::inRange(-20, 120), rc::gen::inRange(1, 25),
                                           rc::gen::inRange(0, 30), rc::gen::inRange(0, 3))),
                        [](const std::vector<std::tuple<int, int, int, int, int>>& all) {
                            FilmNeeds needs;
                            for (const auto& [on, first, length, room, kind] : all) {
                                FilmNeed made = need(first, first + length - 1, on == 0 ? "A" : "B");
                                if (kind > 0) made.take = FrameRange{first - room / 2, first + length - 1 + room / 3};
                                if (kind > 1) made.take->last -= 5;
                                needs.push_back(made);
                            }
                            return needs;
                        });
}

OrderOptions some_options() {
    OrderOptions options = handles(*rc::gen::inRange(0, 12), *rc::gen::inRange(0, 6));
    options.whole_takes = *rc::gen::arbitrary<bool>();
    return options;
}

/// How often the pieces hold each frame.
std::map<std::pair<std::string, std::int64_t>, int> counted(const OrderPieces& pieces) {
    std::map<std::pair<std::string, std::int64_t>, int> counts;
    for (const OrderPiece& piece : pieces)
        for (std::int64_t frame = piece.frames.first; frame <= piece.frames.last; ++frame)
            ++counts[{piece.run.roll, frame}];
    return counts;
}

/// The frames that pieces may hold, without those between joined ones.
std::set<std::pair<std::string, std::int64_t>> allowed(const FilmNeeds& needs, const OrderOptions& options) {
    std::set<std::pair<std::string, std::int64_t>> frames;
    for (const FilmNeed& one : needs)
        for (std::int64_t frame = one.frames.first - 200; frame <= one.frames.last + 200; ++frame) {
            const bool needed = one.frames.first <= frame && frame <= one.frames.last;
            const bool near = one.frames.first - options.handles <= frame && frame <= one.frames.last + options.handles;
            const bool holds = one.take && one.take->first <= one.frames.last && one.frames.first <= one.take->last;
            const bool there = !one.take || (holds && one.take->first <= frame && frame <= one.take->last);
            const bool whole = options.whole_takes && one.take && there;
            if (needed || whole || (near && there && !(options.whole_takes && one.take)))
                frames.insert({one.run.roll, frame});
        }
    return frames;
}

RC_GTEST_PROP(Orders, HoldEachNeededFrameOnceAndNothingBeyondHandlesAndJoins, ()) {
    const FilmNeeds needs = *some_needs();
    const OrderOptions options = some_options();
    const OrderPieces pieces = film::order_of(needs, options);
    for (const FilmNeed& one : needs)
        RC_LOG() << one.frames.first << '-' << one.frames.last << " of "
                 << (one.take ? std::to_string(one.take->first) + '-' + std::to_string(one.take->last) : "") << '\n';
    RC_ASSERT(film::prove_order(pieces, needs, options).failures == std::vector<std::string>());
    const auto counts = counted(pieces);
    for (const auto& [frame, count] : counts)
        RC_ASSERT(count == 1);
    const auto may = allowed(needs, options);
    for (const auto& frame : may)
        RC_ASSERT(counts.count(frame) == 1);
    for (const auto& [frame, count] : counts) {
        if (may.count(frame)) continue;
        std::int64_t low = frame.second, high = frame.second;
        while (!may.count({frame.first, low}))
            --low;
        while (!may.count({frame.first, high}))
            ++high;
        RC_ASSERT(high - low - 1 < options.join);
    }
}

RC_GTEST_PROP(ChangeOrders, OfAVersionCoverItWithAllBefore, (bool ends_alone)) {
    const OrderOptions options = some_options();
    std::vector<HadPiece> had;
    for (int version = 0; version < 4; ++version) {
        const FilmNeeds needs = *some_needs();
        const ChangeOrder order = film::change_order(needs, had, options, ends_alone);
        RC_ASSERT(film::prove_order(order.pieces, order.needs, options).failures.empty());
        RC_ASSERT(film::prove_cover(order.pieces, had, needs).failures.empty());
        std::set<std::pair<std::string, std::int64_t>> there, wanted;
        for (const FilmNeed& one : needs)
            for (std::int64_t frame = one.frames.first; frame <= one.frames.last; ++frame)
                wanted.insert({one.run.roll, frame});
        for (const std::size_t unused : order.unused)
            for (std::int64_t frame = had[unused].frames.first; frame <= had[unused].frames.last; ++frame)
                RC_ASSERT(!wanted.count({had[unused].run.roll, frame}));
        for (const OrderPiece& piece : order.pieces)
            had.push_back({piece.run, piece.frames});
        for (const HadPiece& piece : had)
            for (std::int64_t frame = piece.frames.first; frame <= piece.frames.last; ++frame)
                there.insert({piece.run.roll, frame});
        for (const auto& frame : wanted)
            RC_ASSERT(there.count(frame) == 1);
    }
}

} // namespace
