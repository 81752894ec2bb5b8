// The lists of an order, by an order that is put together by hand.

#include "documents/order_lists.h"

#include "documents/list_kinds.h"
#include "tests/documents/made_cut_film.h"

#include <gmock/gmock.h>

using namespace documents;
using documents_test::drawn;
using documents_test::items_of;
using documents_test::notes_of;
using documents_test::text_in;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

film::FilmRun key_roll(const std::string& roll, label_t kind = label_key_35mm_4p) {
    return {roll, kind, "KJ123456", 0};
}

/// Event `event` of a reel shows frames `first` to `last`.
film::FilmNeed need(const film::FilmRun& run, std::int64_t first, std::int64_t last, int reel, int event) {
    film::FilmNeed made;
    made.run = run;
    made.frames = {first, last};
    made.reel = reel;
    film::Strip& strip = made.strip;
    strip.event = event;
    strip.name = "Shot " + std::to_string(event);
    strip.rolls.lab = "L7";
    strip.rolls.tape = "VT1";
    strip.timecode.kind = label_tc_24;
    strip.timecode.first = film::Fraction(86400 + first);
    if (run.has_key()) strip.key = {run.kind, run.prefix, film::Fraction(first), 1, 0};
    return made;
}

OrderFilm order_of(const film::FilmNeeds& needs, int handles) {
    OrderFilm film;
    film.order.reels = {{"one.otio", "One", 0}, {"two.otio", "Two", 0}};
    film.order.options.handles = handles;
    film.order.all_needs = film.order.needs = needs;
    film.order.pieces = film::order_of(needs, film.order.options);
    film.title = title_of(film.order);
    return film;
}

const std::vector<std::string> scan_fields = {"scan", "roll",     "key_first",   "key_last",     "frames",
                                              "head", "tail",     "timecode_in", "timecode_out", "events",
                                              "tape", "lab_roll", "cut_first",   "cut_last"};

} // namespace

TEST(OrderList, HasThePiecesOfEachRollWithTheirHandlesAndUses) {
    const OrderFilm film = order_of(
        {need(key_roll("A1"), 16, 31, 0, 1), need(key_roll("A1"), 30, 47, 1, 4), need(key_roll("B2"), 160, 175, 0, 2)},
        8);
    const List list = order_list_of(film);
    EXPECT_THAT(drawn(list, scan_fields),
                ElementsAre("1 A1 KJ1234560000+08 KJ1234560003+07 48 8 8 01:00:00:08 01:00:02:08 R1 1, R2 4 VT1 L7 "
                            "KJ1234560001+00 KJ1234560002+15",
                            "2 B2 KJ1234560009+08 KJ1234560011+07 32 8 8 01:00:06:08 01:00:07:16 R1 2 VT1 L7 "
                            "KJ1234560010+00 KJ1234560010+15"));
    ASSERT_EQ(list.parts.size(), 2U);
    EXPECT_EQ(list.parts[0].title, "A1");
    EXPECT_EQ(list.parts[0].about, "35mm 4-perf, 1 piece, 3+00, 48 frames");
    EXPECT_EQ(text_in(list, list.totals.at(0), "frames"), "80");
    EXPECT_EQ(film.title.edit, "R1 One, R2 Two");
    EXPECT_EQ(film.title.gauge, "35mm 4-perf");
}

TEST(OrderList, ThatIsntSortedByRollNamesItsRollsInItsRows) {
    OrderFilm film = order_of({need(key_roll("A1"), 16, 31, 0, 1), need(key_roll("B2"), 160, 175, 0, 2)}, 0);
    film.order.by_roll = false;
    const List list = order_list_of(film);
    ASSERT_EQ(list.parts.size(), 1U);
    EXPECT_EQ(list.columns[1].title, "Roll");
    EXPECT_EQ(text_of(items_of(list)[1].cells[1].lines[0]), "B2");
}

TEST(OrderList, TellsHandlesThatAreTooShort) {
    film::FilmNeed near_end = need(key_roll("A1"), 2, 31, 0, 1);
    near_end.take = film::FrameRange{0, 100};
    OrderFilm film = order_of({near_end}, 8);
    film.order.options.min_handles = 6;
    EXPECT_THAT(
        notes_of(items_of(order_list_of(film)).at(0)),
        ElementsAre(HasSubstr("Short handles. 2 frames ahead and 8 frames behind, where at least 6 are wanted")));
    film.order.options.min_handles = 2;
    EXPECT_THAT(notes_of(items_of(order_list_of(film)).at(0)), IsEmpty());
}

TEST(OrderList, SaysThatFilmHasNoKeyNumberAndNamesItsTape) {
    const OrderFilm film = order_of({need({"VT1", label_tc_24, "", 0}, 86400, 86447, 0, 3)}, 0);
    const List list = order_list_of(film);
    EXPECT_EQ(text_of(items_of(list).at(0).cells[2].lines), "no key number tape VT1 01:00:00:00 to 01:00:01:23");
    EXPECT_EQ(text_in(list, items_of(list)[0], "key_first"), "-");
    EXPECT_TRUE(items_of(list)[0].has(Mark::missing));
}

TEST(OrderList, CountsFilmOfSeveralGaugesApart) {
    const OrderFilm film = order_of(
        {need(key_roll("A1"), 16, 31, 0, 1), need(key_roll("A1", edlstr_to_label_type("35mm-3p")), 16, 36, 0, 2)}, 0);
    const List list = order_list_of(film);
    ASSERT_EQ(list.parts.size(), 2U);
    EXPECT_EQ(list.totals.size(), 2U);
    EXPECT_EQ(text_of(list.facts[2].value), "37 frames");
    EXPECT_THAT(drawn(list, {"key_first", "offset"}), ElementsAre("KJ1234560001+00 -", "KJ1234560000+16.1 1"));
    EXPECT_EQ(film.title.gauge, "");
}

TEST(OrderLists, OfAChangeTellWhatIsLongerAndWhatIsntUsed) {
    const film::FilmNeeds needs = {need(key_roll("A1"), 16, 40, 0, 1)};
    const std::vector<film::HadPiece> had = {
        {key_roll("A1"), {16, 31}}, {key_roll("C3"), {0, 15}}, {key_roll("B9"), {4, 9}}};
    OrderFilm film = order_of(needs, 0);
    film::ChangeOrder change = film::change_order(needs, had, film.order.options, false);
    film.change = true;
    film.order.had = had;
    film.order.had_names = {"one.json: piece 1", "one.json: piece 2", "two.json: piece 1"};
    film.order.longer = change.longer;
    film.order.unused = change.unused;
    EXPECT_THAT(notes_of(items_of(order_list_of(film)).at(0)),
                ElementsAre("Longer than what was had. one.json: piece 1, A1 KJ1234560001+00 to KJ1234560001+15."));
    EXPECT_THAT(drawn(longer_list_of(film), {"scan", "key_last", "frames", "had_last", "had_frames", "missing", "had"}),
                ElementsAre("1 KJ1234560002+08 25 KJ1234560001+15 16 9 one.json: piece 1"));
    EXPECT_THAT(drawn(order_discard_of(film), {"roll", "key_first", "key_last", "frames", "had"}),
                ElementsAre("B9 KJ1234560000+04 KJ1234560000+09 6 two.json: piece 1",
                            "C3 KJ1234560000+00 KJ1234560000+15 16 one.json: piece 2"));
}

TEST(OrderLists, AreThoseOfTheProfileAndOfChangesOnlyWhereThereIsOne) {
    const std::vector<std::string> all = profile_named("all")->lists;
    EXPECT_THAT(order_list_ids(all, false, false), ElementsAre("order", "order-unknown"));
    EXPECT_THAT(order_list_ids(all, true, false),
                ElementsAre("order", "order-longer", "order-discard", "order-unknown"));
    EXPECT_THAT(order_list_ids(all, false, true), ElementsAre("order", "order-rolls", "order-unknown"));
    EXPECT_THAT(order_list_ids(profile_named("sound")->lists, true, true), IsEmpty());
    OrderFilm film = order_of({need(key_roll("A1"), 16, 31, 0, 1)}, 0);
    EXPECT_EQ(document_of(film, *profile_named("")).lists.size(), 2U);
    film.change = true;
    EXPECT_EQ(document_of(film, *profile_named("")).lists.size(), 4U);
}

TEST(OrderLists, SayWhereThePiecesLieOnNewRolls) {
    OrderFilm film = order_of({need(key_roll("A1"), 16, 31, 0, 1), need(key_roll("B2"), 160, 175, 0, 2),
                               need({"VT1", label_tc_24, "", 0}, 86400, 86447, 0, 3)},
                              8);
    film::RollBuilding building;
    building.feet = 4;
    building.leader_feet = 1;
    building.start = 24 * 3600;
    film.order.selects = film::build_rolls(film.order.pieces, building);
    ASSERT_EQ(film.order.selects.fault, "");
    const List list = select_roll_list_of(film);
    EXPECT_THAT(
        drawn(list, {"start", "timecode_in", "timecode_out", "scan", "roll", "key_first", "key_last", "frames"}),
        ElementsAre("16 01:00:00:16 01:00:02:00 1 A1 KJ1234560000+08 KJ1234560002+07 32",
                    "16 01:00:00:16 01:00:02:00 2 B2 KJ1234560009+08 KJ1234560011+07 32"));
    ASSERT_EQ(list.parts.size(), 2U);
    EXPECT_EQ(list.parts[1].title, film.order.selects.rolls[1].name);
    EXPECT_THAT(list.parts[0].about, HasSubstr("35mm 4-perf, 1 piece, 3+00, 48 frames, 1 frame at each splice"));
    EXPECT_EQ(text_of(list.facts[3].value), "1");
    EXPECT_EQ(document_of(film, *profile_named("")).lists.size(), 3U);
}

TEST(OrderLists, NameFilmThatCantBeOrdered) {
    OrderFilm film = order_of({}, 0);
    film::Strip lost;
    lost.start = 48;
    lost.end = 60;
    lost.name = "Lost";
    lost.where = "children[3]";
    film.order.unknown = {{1, lost}};
    EXPECT_THAT(drawn(not_ordered_of(film), {"reel", "start", "length", "shot", "where"}),
                ElementsAre("2 48 12 Lost children[3]"));
    EXPECT_THAT(not_ordered_of(film).counting, HasSubstr("lengths are frames of the reel"));
    EXPECT_EQ(order_list_of(film).empty, "Nothing is to be pulled.");
}
