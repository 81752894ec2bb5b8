// Rolls of selects, by hand and random ones.

#include "film/select_rolls.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <map>

using film::OrderPiece;
using film::OrderPieces;
using film::RollBuilding;
using film::SelectRolls;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

OrderPiece piece(std::int64_t length, const char* kind = "35mm-4p") {
    OrderPiece made;
    made.run = {"A001", edlstr_to_label_type(kind), "KJ123456", 0};
    made.frames = {1600, 1600 + length - 1};
    return made;
}

RollBuilding rolls_of(int feet, int leader, const char* loss = nullptr) {
    RollBuilding building;
    building.feet = feet;
    building.leader_feet = leader;
    if (loss) building.splices.own = film::splice_loss_of(loss);
    building.start = 86400;
    return building;
}

/// "SEL001 96-195 01:00:04:00" for each piece.
std::vector<std::string> laid(const OrderPieces& pieces, const RollBuilding& building) {
    const SelectRolls rolls = film::build_rolls(pieces, building);
    if (!rolls.fault.empty()) return {rolls.fault};
    EXPECT_THAT(film::prove_rolls(rolls, pieces), IsEmpty());
    std::vector<std::string> texts;
    for (const film::RollPlace& place : rolls.places)
        texts.push_back(rolls.rolls[place.roll].name + ' ' + std::to_string(place.frames.first) + '-' +
                        std::to_string(place.frames.last) + ' ' + rolls.timecode_at(place.frames.first));
    return texts;
}

TEST(SelectRolls, LieBehindTheLeaderWithAFrameForEachSplice) {
    EXPECT_THAT(laid({piece(100), piece(50)}, rolls_of(100, 6)),
                ElementsAre("SEL001 96-195 01:00:04:00", "SEL001 197-246 01:00:08:05"));
    EXPECT_THAT(laid({piece(100), piece(50)}, rolls_of(100, 0, "0")),
                ElementsAre("SEL001 0-99 01:00:00:00", "SEL001 100-149 01:00:04:04"));
    EXPECT_THAT(laid({piece(40, "16mm-1p"), piece(50, "16mm-1p")}, rolls_of(100, 1)),
                ElementsAre("SEL001 40-79 01:00:01:16", "SEL001 82-131 01:00:03:10"));
}

TEST(SelectRolls, BeginAnewWhereAPieceHasNoRoom) {
    // 10 feet are 160 frames: 16 of leader, 71, one for the splice, 72.
    EXPECT_THAT(laid({piece(71), piece(72), piece(1)}, rolls_of(10, 1)),
                ElementsAre("SEL001 16-86 01:00:00:16", "SEL001 88-159 01:00:03:16", "SEL002 16-16 01:00:00:16"));
    EXPECT_THAT(laid({piece(71), piece(73)}, rolls_of(10, 1)),
                ElementsAre("SEL001 16-86 01:00:00:16", "SEL002 16-88 01:00:00:16"));
    EXPECT_THAT(laid({piece(144)}, rolls_of(10, 1)), ElementsAre("SEL001 16-159 01:00:00:16"));
}

TEST(SelectRolls, HoldOneKindOfFilmEach) {
    EXPECT_THAT(laid({piece(10), piece(10, "16mm-1p"), piece(10)}, rolls_of(100, 0)),
                ElementsAre("SEL001 0-9 01:00:00:00", "SEL002 0-9 01:00:00:00", "SEL001 11-20 01:00:00:11"));
}

TEST(SelectRolls, OfFilmThatFeetDontDivideRoundTheLeaderUp) {
    // 64 perforations are 21 frames of 3 and a third, 12 of 5 and four fifths.
    EXPECT_THAT(laid({piece(20, "35mm-3p"), piece(1, "35mm-3p")}, rolls_of(2, 1)),
                ElementsAre("SEL001 22-41 01:00:00:22", "SEL002 22-22 01:00:00:22"))
        << "2 feet are 42 frames";
    EXPECT_THAT(laid({piece(12, "65mm-5p80")}, rolls_of(2, 1)), ElementsAre("SEL001 13-24 01:00:00:13"));
}

TEST(SelectRolls, CantHoldALongerPieceOrFilmWithoutFeet) {
    EXPECT_THAT(laid({piece(145)}, rolls_of(10, 1)),
                ElementsAre("A001 KJ1234560100+00 to KJ1234560109+00: 145 frames and the leader's 16 are longer than a "
                            "roll of 10 feet, which holds 160"));
    const SelectRolls rolls = film::build_rolls({piece(10, "24fps"), piece(10)}, rolls_of(10, 1));
    EXPECT_FALSE(rolls.places[0].is_laid());
    EXPECT_TRUE(rolls.places[1].is_laid());
    EXPECT_THAT(film::prove_rolls(rolls, {piece(10, "24fps"), piece(10)}), IsEmpty());
}

TEST(SelectRolls, AProofFindsPiecesThatOverlapOrLieBeyondTheEnd) {
    const OrderPieces pieces{piece(71), piece(72)};
    const SelectRolls good = film::build_rolls(pieces, rolls_of(10, 1));
    const auto failures = [&](auto change) {
        SelectRolls rolls = good;
        change(rolls);
        return film::prove_rolls(rolls, pieces);
    };
    const std::string second = "SEL001: A001 KJ1234560100+00 to KJ1234560104+07: ";
    EXPECT_THAT(failures([](SelectRolls& r) {
                    r.places[1].frames = {87, 158};
                }),
                ElementsAre(second + "leaves no room for its splice"));
    EXPECT_THAT(failures([](SelectRolls& r) {
                    r.places[1].frames = {89, 160};
                }),
                ElementsAre(second + "goes beyond the end of the roll"));
    EXPECT_THAT(failures([](SelectRolls& r) {
                    r.places[1].frames = {88, 158};
                }),
                ElementsAre(second + "is of another length there"));
    EXPECT_THAT(failures([](SelectRolls& r) {
                    r.places[0].frames = {15, 85};
                }),
                ElementsAre(HasSubstr("lies on the leader")));
    EXPECT_THAT(failures([](SelectRolls& r) { r.rolls[0].pieces.pop_back(); }),
                ElementsAre(HasSubstr("lies on no roll, or twice")));
    EXPECT_THAT(failures([](SelectRolls& r) { r.rolls[0].kind = edlstr_to_label_type("35mm-2p"); }).size(), 4U)
        << "and the leader and the splice are too short for it";
}

RC_GTEST_PROP(SelectRolls, HoldEachPieceOnceWithoutOverlapAndWithinTheirLength, ()) {
    static const std::vector<std::string> kinds{"35mm-4p", "35mm-3p", "35mm-2p", "35mm-8p", "16mm-1p", "65mm-15p120"};
    OrderPieces pieces;
    for (const auto& [kind, length] : *rc::gen::container<std::vector<std::pair<int, int>>>(
             rc::gen::pair(rc::gen::inRange(0, 6), rc::gen::inRange(1, 90))))
        pieces.push_back(piece(length, kinds[static_cast<std::size_t>(kind)].c_str()));
    RollBuilding building = rolls_of(*rc::gen::inRange(1, 60), *rc::gen::inRange(0, 4));
    building.splices.own = film::SpliceLoss{*rc::gen::inRange(0, 4), *rc::gen::arbitrary<bool>()};
    const SelectRolls rolls = film::build_rolls(pieces, building);
    if (!rolls.fault.empty()) {
        const OrderPiece& faulty = pieces[rolls.places.size()];
        const int s = get_static_label_cvt(faulty.run.kind)->samples_per_frame();
        const int foot = s == 1 ? 40 : 64;
        RC_ASSERT((building.leader_feet * foot + s - 1) / s + faulty.frames.length() > building.feet * foot / s);
        return;
    }
    RC_ASSERT(film::prove_rolls(rolls, pieces).empty());
    std::map<std::pair<std::size_t, std::int64_t>, std::size_t> holders; ///< of single perforations
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const film::RollPlace& place = rolls.places[i];
        RC_ASSERT(place.frames.length() == pieces[i].frames.length());
        RC_ASSERT(rolls.rolls[place.roll].kind == pieces[i].run.kind);
        const int s = get_static_label_cvt(pieces[i].run.kind)->samples_per_frame();
        const int loss = building.splices.spent_on_a_side(pieces[i].run.kind);
        const bool first = rolls.rolls[place.roll].pieces.front() == i;
        for (std::int64_t p = place.frames.first * s - (first ? 0 : loss); p < (place.frames.last + 1) * s + loss;
             ++p) {
            const bool beyond = p >= (place.frames.last + 1) * s;
            RC_ASSERT(beyond || p < std::int64_t{building.feet} * (s == 1 ? 40 : 64));
            RC_ASSERT(beyond || p >= std::int64_t{building.leader_feet} * (s == 1 ? 40 : 64));
            RC_ASSERT(holders.emplace(std::pair(place.roll, p), i).second);
        }
    }
}

} // namespace
