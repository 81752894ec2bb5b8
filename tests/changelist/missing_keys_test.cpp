// Whether a piece has a real key number: each takes that from the side whose film it begins with.

#include "tests/changelist/film_events.h"

#include <gtest/gtest.h>

namespace {

/// What became of one old event that meets one new one: kind, length and the mark of a missing key number.
std::vector<std::string> pieces(const FilmEvent& old_event, int old_missing, const FilmEvent& new_event,
                                int new_missing) {
    EventTable old_cut, new_cut, changes;
    ChangeRecord x = record_of(old_event);
    ChangeRecord y = record_of(new_event);
    x.keycode_missing = old_missing;
    y.keycode_missing = new_missing;
    append(old_cut.table, x);
    append(new_cut.table, y);
    merge_events(old_cut.table, new_cut.table, changes.table, changes.logger);
    std::vector<std::string> found;
    for (unsigned index = 0; index < changes.table.get_num_records(); ++index) {
        const ChangeRecord row = read_row(changes.table, index);
        found.push_back((*row.record_type ? row.record_type : "==") + (" " + std::to_string(row.edit_length)) +
                        (row.keycode_missing ? " missing" : " known"));
    }
    return found;
}

using Pieces = std::vector<std::string>;

TEST(MissingKeys, AnOldEventThatTheNewOneCoversGivesItsOwn) {
    const FilmEvent inside{"KJ1234560011+00", 16, 100}, around{"KJ1234560010+00", 40, 200};
    EXPECT_EQ(pieces(inside, 1, around, 0), (Pieces{"== 16 missing", "I 16 known", "I 8 known"}));
    EXPECT_EQ(pieces(inside, 0, around, 1), (Pieces{"== 16 known", "I 16 missing", "I 8 missing"}));
}

TEST(MissingKeys, APieceThatBeginsWithTheOldEventHasTheOldOnes) {
    const FilmEvent later{"KJ1234560011+00", 32, 100}, earlier{"KJ1234560010+00", 24, 200};
    EXPECT_EQ(pieces(later, 1, earlier, 0), (Pieces{"== 8 missing", "DU 24 missing", "I 16 known"}));
    EXPECT_EQ(pieces(later, 0, earlier, 1), (Pieces{"== 8 known", "DU 24 known", "I 16 missing"}));
}

TEST(MissingKeys, APieceThatBeginsWithTheNewEventHasTheNewOnes) {
    const FilmEvent earlier{"KJ1234560010+00", 24, 100}, later{"KJ1234560011+00", 32, 200};
    EXPECT_EQ(pieces(earlier, 1, later, 0), (Pieces{"== 8 known", "DU 16 missing", "I 24 known"}));
    EXPECT_EQ(pieces(earlier, 0, later, 1), (Pieces{"== 8 missing", "DU 16 known", "I 24 missing"}));
}

// What lies ahead of the common piece, and behind it, is old film.
TEST(MissingKeys, WhatIsCutOffAShotAtAnotherSpeedHasTheOldOnes) {
    FilmEvent whole{"KJ1234560010+00", 40, 100}, part{"KJ1234560010+05", 10, 200};
    whole.speed = part.speed = 0.5;
    EXPECT_EQ(pieces(whole, 1, part, 0), (Pieces{"== 10 known", "DU 10 missing", "DU 20 missing"}));
    EXPECT_EQ(pieces(whole, 0, part, 1), (Pieces{"== 10 missing", "DU 10 known", "DU 20 known"}));
}

} // namespace
