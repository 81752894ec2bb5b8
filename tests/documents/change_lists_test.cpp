// The lists of a recut, from steps as a run leaves them.

#include "documents/change_lists.h"
#include "tests/documents/made_cut_film.h"

#include <gmock/gmock.h>

using namespace documents;
using namespace documents_test;
using namespace generator_test;
using testing::ElementsAre;

namespace {

LabelPoint key_of(const std::string& text) {
    LabelPoint point(0, label_key_35mm_4p);
    point.set_sample(text.c_str());
    return point;
}

change_step step(int number, change_action action, int position, int length, const char* first, const char* last) {
    change_step made;
    made.step = number;
    made.action = action;
    made.reel = 1;
    made.position = position;
    made.length = length;
    made.first_key = key_of(first);
    made.last_key = key_of(last);
    made.shot_name = fromUTF8("Lamp", -1);
    return made;
}

struct ChangeLists : testing::Test {
    ChangeLists() {
        film.film = label_key_35mm_4p;
        film.bench = {step(1, change_insert, 0, 16, "KJ1234560100+00", "KJ1234560100+15"),
                      step(2, change_remove, 16, 32, "KJ6543210200+00", "KJ6543210201+15"),
                      step(3, change_insert, 16, 8, "KA1234560100+00", "KA1234560100+07")};
        film.bench[0].reel_length = 116;
        film.bench[1].reel_length = 84;
        film.bench[1].old_reel = 1;
        film.bench[1].old_frame = 40;
        film.bench[2].reel_length = 92;
        film.changes = film.bench;
    }
    ChangeFilm film;
};

} // namespace

TEST_F(ChangeLists, TheBenchListSaysWhatToDoWhereAndHowLongTheReelIsThen) {
    EXPECT_THAT(
        drawn(bench_list_of(film), {"step", "action", "position", "length", "key_first", "key_last", "reel_length"}),
        ElementsAre("1 insert 0 16 KJ1234560100+00 KJ1234560100+15 116",
                    "2 delete 16 32 KJ6543210200+00 KJ6543210201+15 84",
                    "3 insert 16 8 KA1234560100+00 KA1234560100+07 92"));
}

TEST_F(ChangeLists, WhatMovesSaysWhichStepItComesFromOrGoesTo) {
    film.bench = {step(1, change_pick_up, 40, 16, "KJ1234560100+00", "KJ1234560100+15"),
                  step(2, change_put_down, 0, 16, "KJ1234560100+00", "KJ1234560100+15"),
                  step(3, change_pick_up, 0, 8, "KA1234560100+00", "KA1234560100+07")};
    film.bench[0].other_step = 2;
    film.bench[1].other_step = 1;
    const List list = bench_list_of(film);
    std::vector<std::string> told;
    for (const Row& row : items_of(list)) {
        told.push_back(text_of(row.cells[1].lines));
        EXPECT_TRUE(row.has(Mark::moved));
    }
    EXPECT_THAT(told, ElementsAre("Pick up to step 2", "Put down from 1", "Pick up"));
    EXPECT_THAT(drawn(list, {"step", "action", "other_step"}),
                ElementsAre("1 pick up 2", "2 put down 1", "3 pick up -"));
}

TEST_F(ChangeLists, OfMoreThanAHundredStepsHaveNoPictures) {
    const auto codes = [](const List& list) {
        std::string all;
        for (const Note& note : list.notes)
            all += note.code;
        return all;
    };
    EXPECT_EQ(codes(bench_list_of(film)) + codes(reel_list_of(film)), "");
    film.bench.resize(101, film.bench[0]);
    EXPECT_EQ(codes(bench_list_of(film)) + codes(reel_list_of(film)), "not-drawn");
}

TEST_F(ChangeLists, NewFilmIsPulledByKeyNumber) {
    const List list = change_pull_of(film);
    EXPECT_THAT(drawn(list, {"key_first", "length", "step"}),
                ElementsAre("KA1234560100+00 8 3", "KJ1234560100+00 16 1"));
    EXPECT_EQ(text_of(list.totals[0].cells[2].values[0]), "24");
    EXPECT_TRUE(items_of(list)[0].has(Mark::fresh));
}

TEST_F(ChangeLists, WhatComesOutHasItsOldPlace) {
    EXPECT_THAT(drawn(discard_list_of(film), {"key_first", "length", "old_reel", "old_start"}),
                ElementsAre("KJ6543210200+00 32 1 40"));
}

TEST_F(ChangeLists, FilmWithoutANumberAndBlackHaveNone) {
    film.bench[0].first_key_missing = film.bench[0].last_key_missing = 1;
    film.bench[1].first_key.set_prefix("__BLACK_");
    const List list = bench_list_of(film);
    EXPECT_EQ(text_of(items_of(list)[0].cells[5].lines), "no key number no key number");
    EXPECT_EQ(text_of(items_of(list)[1].cells[5].lines), "black, no film KJ 65 4321 0201+15");
    EXPECT_EQ(text_in(list, items_of(list)[1], "key_first"), "-");
}

TEST_F(ChangeLists, ReelLengthsFollowEachStep) {
    EXPECT_THAT(drawn(reel_list_of(film), {"step", "reel_length"}), ElementsAre("1 116", "2 84", "3 92"));
    EXPECT_EQ(reel_list_of(film).parts.at(0).title, "Reel 1");
}

TEST_F(ChangeLists, ReelLengthsAreOfEachReelByItself) {
    film.bench[1].reel = 3;
    const List list = reel_list_of(film);
    ASSERT_EQ(list.parts.size(), 2U);
    EXPECT_EQ(list.parts[0].id, "reel-1");
    EXPECT_EQ(list.parts[1].id, "reel-3");
    EXPECT_THAT(drawn(list, {"step", "reel_length"}), ElementsAre("1 116", "3 92", "2 84"));
}

TEST_F(ChangeLists, TransitionsOfTheNewCutHaveTheFilmOfBothSides) {
    EditBuilder builder{plain_edit()};
    const int v1 = builder.add_channel(picture);
    builder.add_event(v1, event_of(builder.add_source(shot("a")), 48, 0));
    builder.add_transition(v1, dissolve(8, 16));
    builder.add_event(v1, event_of(builder.add_source(shot("b", "KJ9876540200+00")), 48, 32));
    film.new_reels = {cut_of(builder.finish())};
    EXPECT_THAT(drawn(transition_list_of(film),
                      {"reel", "start", "kind", "length", "from_first", "from_last", "to_first", "to_last"}),
                ElementsAre("1 40 Cross 24 KJ1234560102+08 KJ1234560103+15 KJ9876540201+08 KJ9876540202+15"));
}
