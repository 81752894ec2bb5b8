#include "changelist/matching/match_event.h"
#include "tests/changelist/film_events.h"
#include "tests/changelist/plain_analysis.h"

#include <rapidcheck.h>

#include <gtest/gtest.h>

namespace {

constexpr double speeds[] = {1, 1, 1, 1, 1, 0.995, 1.005, 1.009, 1.012, 2, 2.005, -1, -1, 0, 0.004, -0.004, 0.5};

template <class T> T any_of(std::initializer_list<T> values) { return *rc::gen::elementOf(std::vector<T>(values)); }

int number(int from, int to) { return *rc::gen::inRange(from, to + 1); }

/// A key number within a few counts of a roll, on a frame line or now and then beside it.
std::string key_on(const std::string& roll) {
    LabelPoint key(0, label_key_35mm_4p);
    key.set_prefix(roll.c_str());
    key.set_sample(number(0, 40) * 4 + (number(0, 5) == 0 ? number(0, 3) : 0));
    return key.get_string();
}

FilmEvent any_event(bool black) {
    FilmEvent event;
    event.key =
        black ? "__BLACK_0000+00" : key_on(any_of<std::string>({"KJ123456", "KJ123456", "kj123456", "KL00001"}));
    event.length = number(0, 9) == 0 ? number(-2, 1) : number(1, 24);
    if (black) event.length = number(1, 3);
    event.edit_in = number(0, 300);
    event.reel = number(1, 3);
    event.speed = *rc::gen::elementOf(std::vector<double>(std::begin(speeds), std::end(speeds)));
    event.cam_reel = any_of<std::string>({"A001", "A001", "a001", "B002"});
    event.fx_op1 = any_of<std::string>({"", "", "C", "D", "F"});
    event.fx_len1 = number(-1, 12);
    event.fx_op2 = any_of<std::string>({"", "", "C", "D", "F"});
    event.fx_len2 = number(-1, 12);
    event.ink = any_of<std::string>({"", "AA010010+00", "AB010020+04"});
    event.behind = any_of<std::string>({"", "KJ1234560001+00", "KJ1234560002+00", "__BLACK_0000+00"});
    event.ahead_of = any_of<std::string>({"", "KJ1234560003+00", "KJ1234560004+00", "__BLACK_0000+00"});
    event.timecode = number(0, 100000);
    event.optical = number(0, 15) == 0 ? 1 : 0;
    return event;
}

std::vector<FilmEvent> any_events(int most) {
    std::vector<FilmEvent> events;
    const int blacks = number(0, 3);
    for (int left = number(0, most); left > 0; --left) {
        events.push_back(any_event(number(0, 3) < blacks - 1));
        for (int again = number(0, 9) - 7; again > 0; --again)
            events.push_back(events.back());
    }
    return events;
}

/// The old cut, with some of its events changed.
std::vector<FilmEvent> recut(std::vector<FilmEvent> events) {
    for (FilmEvent& event : events) {
        const int change = number(0, 7);
        if (change == 0) event = any_event(false);
        if (change == 1) event.length += number(-3, 3);
        if (change == 2) event.edit_in += 100;
        if (change == 3) event.reel = number(1, 3);
    }
    return events;
}

TEST(AnalysisPropertiesTest, TheIndexFindsWhatAWalkFinds) {
    const bool holds = rc::check("the same candidate", [] {
        EventTable rows(any_events(120));
        Candidates candidates(rows.table, rows.logger);
        for (unsigned index = 0; index < rows.table.get_num_records(); ++index)
            candidates.load(*rows.table.get_record(index));
        EventTable left(any_events(120));
        std::vector<int> places;
        for (unsigned index = 0; index < rows.table.get_num_records(); ++index)
            places.push_back(static_cast<int>(index));
        for (unsigned index = 0; index < left.table.get_num_records(); ++index) {
            const ChangeRecord x = read_row(left.table, index);
            int found = -1;
            if (x.varispeed()) {
                find_varispeed_match(&found, x, candidates);
            } else {
                find_match(&found, x, candidates);
            }
            const int plain = x.varispeed() ? plain_find_varispeed(x, rows.table) : plain_find_match(x, rows.table);
            RC_ASSERT(found == (plain < 0 ? -1 : places[static_cast<std::size_t>(plain)]));
            if (plain < 0) continue;
            candidates.remove(found);
            rows.table.delete_records(static_cast<unsigned>(plain), 1);
            places.erase(places.begin() + plain);
        }
    });
    EXPECT_TRUE(holds);
}

void hold_against_plain(const std::vector<FilmEvent>& old_events, const std::vector<FilmEvent>& new_events) {
    const Comparison made(old_events, new_events);
    EventTable old_cut(old_events);
    EventTable new_cut(new_events);
    EventTable plain;
    plain_merge_events(old_cut.table, new_cut.table, plain.table);
    RC_ASSERT(lines_of(made.changes.table) == lines_of(plain.table));
    RC_ASSERT(are_labels_held(old_cut.table) && are_labels_held(new_cut.table));
    const Comparison copied(old_events, new_events, true);
    RC_ASSERT(lines_of(copied.changes.table) == lines_of(plain.table));
}

TEST(AnalysisPropertiesTest, AnyTwoCutsFallIntoThePiecesOfThePlainWay) {
    EXPECT_TRUE(rc::check("unrelated cuts", [] { hold_against_plain(any_events(40), any_events(40)); }));
}

TEST(AnalysisPropertiesTest, ARecutFallsIntoThePiecesOfThePlainWay) {
    EXPECT_TRUE(rc::check("a cut and its recut", [] {
        const std::vector<FilmEvent> old_events = any_events(40);
        hold_against_plain(old_events, recut(old_events));
    }));
}

} // namespace
