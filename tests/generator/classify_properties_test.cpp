// What holds of every classified table.

#include "tests/generator/classify_fixture.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <set>

using namespace generator_test;

namespace {

int number(int least, int above) { return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange(least, above)); }

/// V1 without gaps, transitions at random.
std::vector<cut_s> random_v1() {
    std::vector<cut_s> cuts;
    int now = 0;
    for (int left = number(1, 12); left > 0; --left) {
        const int out = now + number(1, 10);
        cuts.push_back(v1(now, out, *rc::gen::element("", "", "DO", "WO", "FO")));
        now = out;
    }
    return cuts;
}

std::vector<cut_s> random_opticals(int least, int above) {
    std::vector<cut_s> opticals;
    for (int left = number(0, 8); left > 0; --left) {
        const int in = number(least, above);
        opticals.push_back(optical(in, in + number(1, 15), number(0, 16)));
    }
    return opticals;
}

std::vector<cut_s> random_upper_cuts() {
    std::vector<cut_s> cuts;
    for (int left = number(0, 15); left > 0; --left) {
        const int in = number(-5, 60);
        cuts.push_back(cut(number(2, 6), in, in + number(-3, 20)));
    }
    return cuts;
}

bool is_v1_cut(const cut_s& record) { return record.optical_record == 0 && record.track == 1; }

std::vector<cut_s> classified(bool neg_cut, const std::vector<std::vector<cut_s>>& parts) {
    const ListKind kind(neg_cut);
    MadeTable made;
    for (const std::vector<cut_s>& part : parts)
        made.add(part);
    classify_opticals(made.table, made.logger);
    return made.records();
}

TEST(ClassificationProperties, InACuttingCopyListTheCutsOfV1AloneAreNumberedInOrder) {
    EXPECT_TRUE(rc::check([] {
        int next = 1;
        for (const cut_s& record : classified(false, {random_v1(), random_opticals(-5, 80), random_upper_cuts()}))
            RC_ASSERT(record.event == (is_v1_cut(record) ? next++ : 0));
    }));
}

// A cut outside opticals has a number, one under an optical has none, and of the opticals with one reference
// a single one has it for them all; errors have none.
TEST(ClassificationProperties, InANegCutListNumbersRunWithoutGapsOverLoneCutsAndOpticals) {
    EXPECT_TRUE(rc::check([] {
        const auto records = classified(true, {random_v1(), random_opticals(-5, 80), random_upper_cuts()});
        std::set<int> events;
        std::multiset<int> numbered_refs;
        std::set<int> refs;
        for (const cut_s& record : records) {
            if (record.event != 0) RC_ASSERT(events.insert(record.event).second);
            if (is_v1_cut(record)) RC_ASSERT((record.event == 0) == (record.optical_ref != 0));
            if (!is_v1_cut(record) && record.optical_record == 0) RC_ASSERT(record.event == 0);
            if (record.optical_record == 0 || record.optical_ref == 0 || record.optical_error != 0) {
                if (record.optical_record != 0) RC_ASSERT(record.event == 0);
                continue;
            }
            refs.insert(record.optical_ref);
            if (record.event != 0) numbered_refs.insert(record.optical_ref);
        }
        RC_ASSERT(events.empty() || (*events.begin() == 1 && *events.rbegin() == static_cast<int>(events.size())));
        RC_ASSERT(std::vector<int>(numbered_refs.begin(), numbered_refs.end()) ==
                  std::vector<int>(refs.begin(), refs.end()));
    }));
}

TEST(ClassificationProperties, EveryOpticalThatBeginsOverV1HasAReference) {
    EXPECT_TRUE(rc::check([] {
        const std::vector<cut_s> cuts = random_v1();
        const auto records = classified(*rc::gen::arbitrary<bool>(),
                                        {cuts, random_opticals(-5, cuts.back().edit_out), random_upper_cuts()});
        for (const cut_s& record : records)
            if (record.optical_record != 0) RC_ASSERT(record.optical_ref > 0);
    }));
}

// What is under an optical is spanned by it, and no number depends on the kind of the list but the events.
TEST(ClassificationProperties, ReferencesAndSpansAreTheSameInBothKindsOfList) {
    EXPECT_TRUE(rc::check([] {
        const std::vector<std::vector<cut_s>> parts = {random_v1(), random_opticals(-5, 80), random_upper_cuts()};
        auto copy = classified(false, parts);
        auto neg = classified(true, parts);
        RC_ASSERT(copy.size() == neg.size());
        for (std::size_t i = 0; i < copy.size(); ++i) {
            RC_ASSERT(copy[i].optical_ref == neg[i].optical_ref);
            RC_ASSERT(copy[i].optical_in == neg[i].optical_in && copy[i].optical_out == neg[i].optical_out);
            RC_ASSERT(copy[i].optical_error == neg[i].optical_error);
        }
    }));
}

TEST(ClassificationProperties, EveryReferenceOfACutIsThatOfAnOpticalOverIt) {
    EXPECT_TRUE(rc::check([] {
        const auto records = classified(false, {random_v1(), random_opticals(-5, 80)});
        for (const cut_s& record : records) {
            if (!is_v1_cut(record) || record.optical_ref == 0) continue;
            RC_ASSERT(std::any_of(records.begin(), records.end(), [&](const cut_s& other) {
                return other.optical_record != 0 && other.optical_ref == record.optical_ref &&
                       other.optical_in <= record.edit_in && record.edit_out <= other.optical_out;
            }));
        }
    }));
}

void assign_by_double_loop(std::vector<cut_s>& records) {
    for (const cut_s& over : records) {
        if (over.optical_record == 0) continue;
        for (cut_s& under : records) {
            const bool upper = under.optical_record == 0 && under.track > 1;
            if (upper && (over.optical_tracks >> (under.track - 1) & 1) != 0 && under.edit_in < over.edit_out &&
                under.edit_out > over.edit_in)
                under.optical_ref = over.optical_ref;
        }
    }
}

TEST(ClassificationProperties, UpperTracksAreAssignedAsByLookingAtEveryPair) {
    EXPECT_TRUE(rc::check([] {
        std::vector<cut_s> opticals = random_opticals(-5, 60);
        for (cut_s& record : opticals) {
            record.optical_ref = number(1, 9);
            record.optical_tracks = *rc::gen::arbitrary<int>();
        }
        MadeTable made;
        made.add(random_upper_cuts());
        made.add(opticals);
        int order[] = {cf_optical_record, cf_track, cf_edit_in, -1};
        made.table.set_sortfields(order);
        made.table.sort(1, 0);
        std::vector<cut_s> expected = made.records();
        assign_by_double_loop(expected);
        assign_upper_tracks(made.table);
        const std::vector<cut_s> got = made.records();
        for (std::size_t i = 0; i < got.size(); ++i)
            RC_ASSERT(got[i].optical_ref == expected[i].optical_ref);
    }));
}

} // namespace
