// What the lists of one edit say of the same film.

#include "tests/cross_checks/made_lists.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace cross_checks;

constexpr EditKind any_edit{};
constexpr EditKind one_track{false, true, true};

bool is_optical(const cut_s& record) { return record.optical_record == 1; }
bool is_main_cut(const cut_s& record) { return !is_optical(record) && record.track == 1; }
bool is_film(const cut_s& record) { return record.special == special_none; }

std::string name_of(const cut_s& record) { return toUTF8(record.shot_name).c_str(); }

MadeLists made(const EditKind& kind, const ListOptions& options) {
    RandomEdit random(kind);
    MadeLists lists(random.builder.finish(), options);
    RC_ASSERT(lists.made);
    RC_ASSERT(lists.repeated == 0);
    return lists;
}

std::set<std::string> rolls_of(const std::map<std::string, PulledShot>& entries) {
    std::set<std::string> rolls;
    for (const auto& [shot, entry] : entries)
        if (!entry.roll.empty()) rolls.insert(entry.roll);
    return rolls;
}

bool stands_in(const std::map<std::string, PulledShot>& entries, const cut_s& record) {
    return entries.count(name_of(record)) != 0;
}

// In a cutting-copy list the main track alone is assembled and pulled; black is assembled only.
TEST(ListsAgree, CuttingCopyAssemblesEachCutOfTheMainTrackOnceAndPullsItWhereItIsFilm) {
    EXPECT_TRUE(rc::check([] {
        const MadeLists lists = made(any_edit, {});
        std::size_t assembled = 0;
        std::size_t pulled = 0;
        for (const cut_s& record : lists.records) {
            if (is_optical(record) || !is_film(record)) {
                assembled += is_main_cut(record) ? 1 : 0;
                RC_ASSERT(is_optical(record) || lists.assembly.count(record.event) == 1);
                continue;
            }
            RC_ASSERT(stands_in(lists.pull, record) == is_main_cut(record));
            if (!is_main_cut(record)) continue;
            ++assembled;
            ++pulled;
            RC_ASSERT(lists.pull.at(name_of(record)).number == std::to_string(record.event));
            const AssembledEvent& event = lists.assembly.at(record.event);
            RC_ASSERT(event.reduced || event.shot == name_of(record));
        }
        RC_ASSERT(lists.assembly.size() == assembled);
        RC_ASSERT(lists.pull.size() == pulled);
        RC_ASSERT(lists.opticals_pull.empty());
    }));
}

// In a neg-cut list an optical stands for what it covers: its components, on whatever track, are pulled for the lab
// alone. A piece of an upper track that no optical takes up stands nowhere.
TEST(ListsAgree, NegCutAssemblesAndPullsCutsOutsideOpticalsAndPullsThoseWithinForTheLab) {
    EXPECT_TRUE(rc::check([] {
        const MadeLists lists = made(any_edit, {true, 0, true});
        std::size_t pulled = 0;
        std::size_t for_the_lab = 0;
        for (const cut_s& record : lists.records) {
            if (is_optical(record) || !is_film(record)) continue;
            const bool alone = is_main_cut(record) && record.optical_ref == 0;
            RC_ASSERT(stands_in(lists.pull, record) == alone);
            RC_ASSERT(stands_in(lists.opticals_pull, record) == (record.optical_ref != 0));
            RC_ASSERT((record.event != 0) == alone);
            if (alone) RC_ASSERT(lists.assembly.at(record.event).shot == name_of(record));
            pulled += alone ? 1 : 0;
            for_the_lab += record.optical_ref != 0 ? 1 : 0;
        }
        RC_ASSERT(lists.pull.size() == pulled);
        RC_ASSERT(lists.opticals_pull.size() == for_the_lab);
    }));
}

// An optical is one line of the assembly, under the number of its first master without an error.
TEST(ListsAgree, NegCutAssemblesEachOpticalWithANumberOnce) {
    EXPECT_TRUE(rc::check([] {
        const MadeLists lists = made(any_edit, {true, 0, true});
        std::size_t numbered = 0;
        for (const cut_s& record : lists.records) {
            if (!is_optical(record) || record.event == 0 || record.optical_error != 0) continue;
            ++numbered;
            RC_ASSERT(lists.assembly.at(record.event).optical == record.optical_ref);
        }
        RC_ASSERT(
            static_cast<std::size_t>(std::count_if(lists.assembly.begin(), lists.assembly.end(), [](const auto& event) {
                return event.second.optical != 0;
            })) == numbered);
    }));
}

// Both lists widen an event by the same share of its transitions. An event that its transitions reduce to nothing has
// no length in the assembly.
TEST(ListsAgree, PulledLengthsAreThoseOfTheAssemblyAndTwoHandles) {
    EXPECT_TRUE(rc::check([] {
        const bool neg_cut = *rc::gen::arbitrary<bool>();
        const int handles = *rc::gen::inRange(0, 50);
        const MadeLists lists = made(any_edit, {neg_cut, handles, *rc::gen::arbitrary<bool>()});
        for (const auto& [shot, entry] : lists.pull) {
            const AssembledEvent& event = lists.assembly.at(std::stoi(entry.number));
            if (event.reduced) continue;
            RC_ASSERT(event.shot == shot);
            RC_ASSERT(entry.length == event.length + 2 * handles);
        }
    }));
}

TEST(ListsAgree, PulledRollsStandInTheListOfRolls) {
    EXPECT_TRUE(rc::check([] {
        const MadeLists lists = made(any_edit, {*rc::gen::arbitrary<bool>(), 0, true});
        for (const std::map<std::string, PulledShot>* entries : {&lists.pull, &lists.opticals_pull})
            for (const std::string& roll : rolls_of(*entries))
                RC_ASSERT(lists.rolls.count(roll) == 1);
    }));
}

// The list of rolls goes over all records. Upper tracks may hold rolls that nothing pulls, so without them the pull
// lists together name each roll of the list, in both kinds of list.
TEST(ListsAgree, WithoutUpperTracksThePullListsNameEachRollOfTheListOfRolls) {
    EXPECT_TRUE(rc::check([] {
        const MadeLists lists = made(one_track, {*rc::gen::arbitrary<bool>(), 0, true});
        std::set<std::string> pulled = rolls_of(lists.pull);
        pulled.merge(rolls_of(lists.opticals_pull));
        RC_ASSERT(pulled == lists.rolls);
    }));
}

TEST(ListsAgree, AssembledRollsArePulledOnes) {
    EXPECT_TRUE(rc::check([] {
        const MadeLists lists = made(any_edit, {*rc::gen::arbitrary<bool>(), 0, true});
        for (const auto& [number, event] : lists.assembly)
            if (!event.shot.empty()) RC_ASSERT(lists.pull.at(event.shot).roll == event.roll);
    }));
}

struct BothKinds {
    explicit BothKinds(const EditPtr& edit) : copy(edit, {}), neg(edit, {true, 0, true}) {
        RC_ASSERT(copy.made && neg.made);
    }

    MadeLists copy, neg;
};

BothKinds made_both(const EditKind& kind) {
    RandomEdit random(kind);
    return BothKinds(random.builder.finish());
}

// Only the numbers of events differ between the tables of both kinds.
TEST(KindsOfListsAgree, TablesHoldTheSameFilm) {
    EXPECT_TRUE(rc::check([] {
        const BothKinds lists = made_both(any_edit);
        RC_ASSERT(lists.copy.records.size() == lists.neg.records.size());
        for (std::size_t i = 0; i < lists.copy.records.size(); ++i) {
            const cut_s& a = lists.copy.records[i];
            const cut_s& b = lists.neg.records[i];
            RC_ASSERT(name_of(a) == name_of(b) && std::string(a.cam_reel) == b.cam_reel);
            RC_ASSERT(a.keycode_in == b.keycode_in && a.keycode_out == b.keycode_out);
            RC_ASSERT(a.edit_in == b.edit_in && a.edit_out == b.edit_out && a.track == b.track);
            RC_ASSERT(a.optical_ref == b.optical_ref && a.special == b.special);
        }
    }));
}

TEST(KindsOfListsAgree, RollsAreTheSame) {
    EXPECT_TRUE(rc::check([] {
        const BothKinds lists = made_both(any_edit);
        RC_ASSERT(lists.copy.rolls == lists.neg.rolls);
    }));
}

// The cutting-copy list pulls the main track, the neg-cut lists also what opticals take from upper tracks.
TEST(KindsOfListsAgree, WhatTheCuttingCopyPullsTheNegCutPullsOrHandsToTheLab) {
    EXPECT_TRUE(rc::check([] {
        const BothKinds lists = made_both(any_edit);
        for (const auto& [shot, entry] : lists.copy.pull)
            RC_ASSERT(lists.neg.pull.count(shot) + lists.neg.opticals_pull.count(shot) == 1);
        for (const auto& [shot, entry] : lists.neg.pull)
            RC_ASSERT(lists.copy.pull.count(shot) == 1);
    }));
}

// A shot outside all opticals has no transition either, as joined shots are an optical; so nothing widens it.
TEST(KindsOfListsAgree, ShotsOutsideOpticalsHaveTheSameLengthsAndKeyNumbers) {
    EXPECT_TRUE(rc::check([] {
        const BothKinds lists = made_both(any_edit);
        for (const auto& [shot, neg] : lists.neg.pull) {
            const PulledShot& copy = lists.copy.pull.at(shot);
            RC_ASSERT(copy.roll == neg.roll && copy.length == neg.length);
            RC_ASSERT(copy.key_in == neg.key_in && copy.key_out == neg.key_out);
        }
    }));
}

// Without opticals and transitions both kinds assemble the same shots under the same numbers.
TEST(KindsOfListsAgree, EditsOfPlainCutsAreAssembledAlike) {
    EXPECT_TRUE(rc::check([] {
        const BothKinds lists = made_both({true, false, false});
        RC_ASSERT(lists.copy.assembly.size() == lists.neg.assembly.size());
        for (const auto& [number, copy] : lists.copy.assembly) {
            const AssembledEvent& neg = lists.neg.assembly.at(number);
            RC_ASSERT(copy.shot == neg.shot && copy.roll == neg.roll && copy.length == neg.length);
        }
    }));
}

} // namespace
