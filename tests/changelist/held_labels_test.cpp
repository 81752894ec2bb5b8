// Labels that stay when they are written to a row and read again, and those that don't.

#include "changelist/held_labels.h"

#include "changelist/load_cutlists.h"
#include "changelist/run_state.h"
#include "tests/changelist/film_events.h"
#include "tests/support/made_cut.h"

#include <rapidcheck.h>

#include <gtest/gtest.h>

namespace {

using made_cut::Cut;
using made_cut::Shot;

constexpr label_t film = label_key_35mm_4p;

/// Of a record that is written to a row.
bool are_held(const ChangeRecord& record) {
    EventTable rows;
    append(rows.table, record);
    return HeldLabels(film).are_held(record, *rows.table.get_record(0));
}

ChangeRecord usual_record() {
    FilmEvent event{"KJ1234560010+00", 24};
    event.ink = "AA010010+00";
    return record_of(event);
}

TEST(HeldLabelsTest, UsualFilmIsHeld) { EXPECT_TRUE(are_held(usual_record())); }

TEST(HeldLabelsTest, FilmWithoutInkOrTimecodeIsHeld) {
    ChangeRecord record = usual_record();
    record.inkcode_in = record.inkcode_out = record.prim_tc_in = record.prim_tc_out = LabelPoint();
    record.prim_tc_out.sample = 24;
    EXPECT_TRUE(are_held(record));
}

TEST(HeldLabelsTest, ABracketWithoutAKindIsntHeld) {
    EventTable rows;
    ChangeRecord record = usual_record();
    append(rows.table, record);
    EXPECT_TRUE(HeldLabels(film).is_bracket_in_held(record, *rows.table.get_record(0)));
    record.bracket_in = LabelPoint();
    append(rows.table, record);
    EXPECT_FALSE(HeldLabels(film).is_bracket_in_held(record, *rows.table.get_record(1)));
}

/// A change of the usual record that its row doesn't give back as it is.
using Change = void (*)(ChangeRecord&);
class LabelsThatArentHeld : public testing::TestWithParam<Change> {};

TEST_P(LabelsThatArentHeld, AreTold) {
    ChangeRecord record = usual_record();
    GetParam()(record);
    EXPECT_FALSE(are_held(record));
}

INSTANTIATE_TEST_SUITE_P(Each, LabelsThatArentHeld,
                         testing::Values(
                             +[](ChangeRecord& record) { record.keycode_in.set_type(label_tc_24); },
                             +[](ChangeRecord& record) { record.keycode_out = LabelPoint(); },
                             +[](ChangeRecord& record) { record.keycode_in.set_prefix("K\xc3\xa4sten"); },
                             +[](ChangeRecord& record) { record.inkcode_in.set_type(film); },
                             +[](ChangeRecord& record) { record.inkcode_out.set_prefix("A\t"); },
                             +[](ChangeRecord& record) { record.prim_tc_in.set_sample(24 * 86400 + 1); },
                             +[](ChangeRecord& record) { record.prim_tc_out.set_sample(24 * 86400 + 1); },
                             +[](ChangeRecord& record) { record.shot_name = made_cut::wide(std::string(1024, 'x')); }));

// Flattened cutlists against the plain way: each row is written, and read and written again once its neighbour is
// known.

int number(int from, int to) { return *rc::gen::inRange(from, to + 1); }

template <class T> T any_of(std::initializer_list<T> values) { return *rc::gen::elementOf(std::vector<T>(values)); }

Shot any_shot() {
    if (number(0, 5) == 0) return made_cut::black(number(0, 3));
    Shot shot;
    const std::vector<std::string> odd = {"",         "+",      "k j",     "KJ123456789", "K\xc3\xa4se",
                                          "12345678", "a|b\tc", "-0000000"};
    shot.roll = number(0, 40) == 0 ? *rc::gen::elementOf(odd) : "KJ12345" + std::to_string(number(0, 3));
    shot.frame = number(0, 60) == 0 ? any_of({-3, 200000000, 15999999}) : number(0, 3000);
    shot.length = number(0, 30);
    shot.ink = any_of({-1, -1, 0, 700});
    shot.missing = number(0, 20) == 0;
    shot.name = any_of<std::string>({"shot", "shot", "", "\xc3\xa9t\xc3\xa9", "a\xff", "x\ty"});
    shot.speed = any_of({1.0, 1.0, -1.0, 0.0, 0.3, 2.0});
    shot.in_op = any_of<std::string>({"", "", "C", "DI", "FI"});
    shot.in_length = number(0, 9);
    if (number(0, 9) == 0) shot.optical_record = 1, shot.track = 0, shot.layers = 1;
    return shot;
}

class Flattened {
public:
    explicit Flattened(const Cut& cut, label_t kind)
        : kind_(kind), list_(&log_), rows(kind, &log_), plain(kind, &log_) {
        int edit_in = 0;
        for (const Shot& shot : cut) {
            made_cut::cut_of(shot, edit_in, kind)
                .to_record(*list_.get_record(static_cast<unsigned>(list_.add_records(1))));
            edit_in += shot.length;
        }
        list_.add_param("channel", "V00");
        change_run() = ChangeRun();
        int length = 0;
        flatten_cutlist(&length, 7, 1, rows, list_, kind);
        labels_held = change_run().labels_held;
        flatten_plainly();
    }

private:
    void flatten_plainly() {
        LabelPoint last;
        int previous = -1;
        for (unsigned index = 0; index < list_.get_num_records(); ++index) {
            cut_report cut;
            cut.load(*list_.get_record(index), 1, 1, 0);
            ChangeRecord record(kind_);
            if (cut.optical_record == 1) {
                record.optical = record.reel_seq = 1;
                record.edit_in = 7 + cut.edit_in;
                record.edit_length = cut.edit_out - cut.edit_in;
                append(plain, record);
                continue;
            }
            fill_change_record(7, 1, record, cut);
            if (record.edit_length < 1) continue;
            link(record, previous, last);
            append(plain, record);
            previous = static_cast<int>(plain.get_num_records()) - 1;
        }
    }
    void link(ChangeRecord& record, int previous, LabelPoint& last) {
        record.bracket_in = last;
        last = record.keycode_in;
        last.set_sample(record.key_last());
        if (previous < 0 || !record.keycode_in.is_valid() || is_filler(record.keycode_in)) return;
        dbrecord& row = *plain.get_record(static_cast<unsigned>(previous));
        ChangeRecord before = read_row(plain, static_cast<unsigned>(previous));
        before.bracket_out = record.keycode_in;
        before.write(row);
    }

    label_t kind_;
    RecordingLogger log_;
    cutdb list_;

public:
    chgdb rows;
    chgdb plain;
    bool labels_held = false;
};

/// Without the brackets, which stand last: they say where black lies, and are read from the cuts alone.
std::string own_fields(const chgdb& table, unsigned index) {
    std::string line;
    for (unsigned field = 0; field < hf_bracket_in; ++field)
        line += std::string(table.getField(index, field).view()) + "|";
    return line;
}

TEST(HeldLabelsTest, OneShotWhoseRollIsntPlainIsToldWhereverItStands) {
    const Shot plain{.frame = 0, .length = 20};
    const Shot odd{.roll = "K\xc3\xa4se", .frame = 0, .length = 20};
    EXPECT_TRUE(Flattened({plain, made_cut::black(5), plain}, film).labels_held);
    EXPECT_FALSE(Flattened({odd, plain}, film).labels_held);
    EXPECT_FALSE(Flattened({plain, odd, plain}, film).labels_held);
    EXPECT_FALSE(Flattened({plain, odd, made_cut::black(5), plain}, film).labels_held);
    EXPECT_FALSE(Flattened({plain, odd}, film).labels_held);
}

TEST(HeldLabelsTest, AFlattenedCutHasTheRowsOfThePlainWay) {
    EXPECT_TRUE(rc::check("rows", [] {
        const Cut cut = *rc::gen::container<Cut>(rc::gen::exec(any_shot));
        const Flattened made(cut, any_of({film, edlstr_to_label_type("16mm-1p"), edlstr_to_label_type("35mm-3p")}));
        RC_ASSERT(lines_of(made.rows) == lines_of(made.plain));
    }));
}

TEST(HeldLabelsTest, RowsOfACutThatSaysSoStayWhenTheyAreReadAndWrittenAgain) {
    EXPECT_TRUE(rc::check("rows", [] {
        const Cut cut = *rc::gen::container<Cut>(rc::gen::exec(any_shot));
        const Flattened made(cut, film);
        RC_CLASSIFY(made.labels_held, "held");
        if (!made.labels_held) return;
        for (unsigned index = 0; index < made.rows.get_num_records(); ++index) {
            if (made.rows.getField(index, hf_optical).view() == "1") continue;
            const std::string before = own_fields(made.rows, index);
            read_row(made.rows, index).write(*made.rows.get_record(index));
            RC_ASSERT(own_fields(made.rows, index) == before);
        }
    }));
}

} // namespace
