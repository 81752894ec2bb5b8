// The passes on tables of any kind come to what the plain ones come to, row by row.

#include "tests/changelist/moves_fixture.h"
#include "tests/changelist/plain_moves.h"

#include <rapidcheck.h>

#include <algorithm>
#include <climits>
#include <random>

namespace {

/// Cheap numbers behind one that rapidcheck can name and shrink.
class Dice {
public:
    Dice() : engine_(*rc::gen::arbitrary<std::uint32_t>()) {}

    int number(int least, int above) { return std::uniform_int_distribution(least, above - 1)(engine_); }
    bool one_in(int sides) { return number(0, sides) == 0; }
    template <class T> T of(std::initializer_list<T> choices) {
        return choices.begin()[number(0, static_cast<int>(choices.size()))];
    }
    template <class T> void shuffle(std::vector<T>& list) { std::shuffle(list.begin(), list.end(), engine_); }

private:
    std::mt19937 engine_;
};

Lines row_texts(chgdb& table) {
    Lines result;
    ChangeRecord record(table.film_std());
    for (unsigned i = 0; i < table.get_num_records(); ++i) {
        chgdb one(table.film_std(), nullptr);
        dbrecord& as_read = *one.get_record(static_cast<unsigned>(one.add_records(1)));
        record = ChangeRecord(table.film_std());
        record.read(*table.get_record(i));
        record.write(as_read);
        std::string line;
        for (unsigned short field = 0; field < hf_count; ++field) {
            const char* text = as_read.get_field(field);
            line += std::string(text ? text : "") + '|';
        }
        result.push_back(line);
    }
    return result;
}

/// What is seen of a table, and then all of it.
std::pair<Lines, Lines> content(chgdb& table) {
    Lines seen = row_texts(table);
    table.set_show_tags_only(0);
    return {seen, row_texts(table)};
}

class MovesPropertiesTest : public MovesTest {
protected:
    static LabelPoint point(label_t kind, const char* prefix, int sample) {
        LabelPoint made(sample, kind);
        made.set_prefix(prefix);
        return made;
    }

    static ChangeRecord any_film(Dice& dice, label_t film_std) {
        ChangeRecord row(film_std);
        row.keycode_missing = dice.one_in(6);
        if (row.keycode_missing) row.keycode_in.modify_count_length(4);
        row.keycode_in.set_prefix(dice.of({"KJ123456", "kj123456", "ZZ000001"}));
        row.keycode_in.set_sample(dice.number(0, 200000));
        if (dice.one_in(3)) {
            row.inkcode_in = get_invalid_label()->get_label_point(0);
        } else {
            row.inkcode_in.set_prefix("AB12");
            row.inkcode_in.set_sample(dice.number(0, 100000));
        }
        row.speed = dice.one_in(8) ? dice.of({2.0, -1.0, 0.0, 0.5}) : 1.0;
        row.keycode_out = row.keycode_in;
        row.inkcode_out = row.inkcode_in;
        row.prim_tc_in = point(label_tc_24, "", dice.number(0, 5000));
        row.prim_tc_out = point(label_tc_24, "", dice.number(0, 5000));
        put_text(row.cam_reel, dice.of({"A001", "B002"}));
        put_text(row.scene, std::to_string(dice.number(0, 1000)).c_str());
        return row;
    }

    /// A recut as it comes about: the old cut in pieces, most of them somewhere in the new one.
    static void add_recut(Dice& dice, chgdb& table, int reels) {
        std::vector<ChangeRecord> kept;
        for (int reel = 1; reel <= reels; ++reel) {
            int frame = 0;
            for (int left = dice.number(0, 12); left > 0; --left) {
                ChangeRecord row = any_film(dice, table.film_std());
                row.edit_length = dice.number(1, 40);
                row.old_reel_seq = row.reel_seq = reel;
                row.old_edit_in = frame;
                frame += row.edit_length;
                if (dice.one_in(3)) {
                    put_text(row.record_type, "DU");
                    add_to(table, row);
                } else {
                    kept.push_back(row);
                }
            }
        }
        lay_out(dice, table, reels, kept);
    }
    static void lay_out(Dice& dice, chgdb& table, int reels, std::vector<ChangeRecord>& kept) {
        for (int swaps = dice.of({0, 1, 2, 20}); swaps > 0 && !kept.empty(); --swaps) {
            const auto size = static_cast<int>(kept.size());
            std::swap(kept[static_cast<std::size_t>(dice.number(0, size))],
                      kept[static_cast<std::size_t>(dice.number(0, size))]);
        }
        std::vector<int> ends(static_cast<std::size_t>(reels) + 1);
        for (ChangeRecord row : kept) {
            if (dice.one_in(8)) row.reel_seq = dice.number(1, reels + 1);
            if (dice.one_in(5)) {
                ChangeRecord fresh = any_film(dice, table.film_std());
                put_text(fresh.record_type, "I");
                fresh.edit_length = dice.number(1, 40);
                place(fresh, row.reel_seq, ends);
                add_to(table, fresh);
            }
            place(row, row.reel_seq, ends);
            add_to(table, row);
        }
    }
    static void place(ChangeRecord& row, int reel, std::vector<int>& ends) {
        int& end = ends[static_cast<std::size_t>(reel)];
        row.reel_seq = reel;
        row.edit_in = end;
        end += row.edit_length;
    }

    static int any_number(Dice& dice) {
        if (dice.one_in(12)) return dice.of({INT_MAX, INT_MIN, -1, INT_MAX - 10});
        return dice.number(-3, 60);
    }
    /// Rows that no analysis makes.
    static void add_anything(Dice& dice, chgdb& table, std::initializer_list<const char*> kinds) {
        for (int left = dice.number(0, 25); left > 0; --left) {
            ChangeRecord row = any_film(dice, table.film_std());
            put_text(row.record_type, dice.of(kinds));
            row.event1 = dice.one_in(5);
            row.edit_in = any_number(dice);
            row.old_edit_in = any_number(dice);
            row.edit_length = any_number(dice);
            row.old_reel_seq = dice.one_in(15) ? any_number(dice) : dice.number(0, 4);
            row.reel_seq = dice.one_in(3) ? dice.number(0, 4) : row.old_reel_seq;
            add_to(table, row);
        }
    }

    void expect_same(chgdb& quick, chgdb& plain) {
        const auto [quick_seen, quick_all] = content(quick);
        const auto [plain_seen, plain_all] = content(plain);
        RC_ASSERT(quick_seen == plain_seen);
        RC_ASSERT(quick_all == plain_all);
    }
    label_t any_standard(Dice& dice) const { return static_cast<label_t>(dice.of({10, 10, 22, 24, 12, 36})); }
};

TEST_F(MovesPropertiesTest, RecutsComeOutAsByThePlainPasses) {
    EXPECT_TRUE(rc::check([this] {
        Dice dice;
        const int reels = dice.number(1, 5);
        set_reels(reels);
        chgdb quick(any_standard(dice), &logger);
        add_recut(dice, quick, reels);
        chgdb plain(quick, &logger, 1);
        classify_moves(quick, logger);
        plain_classify_moves(plain);
        expect_same(quick, plain);
        merge_rows(quick, logger);
        plain_merge_rows(plain);
        expect_same(quick, plain);
        number_steps(quick, logger);
        plain_number_steps(plain, reels);
        expect_same(quick, plain);
    }));
}

TEST_F(MovesPropertiesTest, AnyRowsAreClassifiedAsByThePlainPass) {
    EXPECT_TRUE(rc::check([this] {
        Dice dice;
        chgdb quick(label_key_35mm_4p, &logger);
        add_anything(dice, quick, {"", "", "", "", "DU", "I", "FX"});
        chgdb plain(quick, &logger, 1);
        classify_moves(quick, logger);
        plain_classify_moves(plain);
        expect_same(quick, plain);
    }));
}

TEST_F(MovesPropertiesTest, AnyRowsAreMergedAsByThePlainPass) {
    EXPECT_TRUE(rc::check([this] {
        Dice dice;
        chgdb quick(any_standard(dice), &logger);
        add_anything(dice, quick, {"MO", "MO", "MF", "DU", "DU", "I", "FX"});
        chgdb plain(quick, &logger, 1);
        merge_rows(quick, logger);
        plain_merge_rows(plain);
        expect_same(quick, plain);
    }));
}

TEST_F(MovesPropertiesTest, AnyRowsAreNumberedAsByThePlainPass) {
    EXPECT_TRUE(rc::check([this] {
        Dice dice;
        const int reels = dice.number(0, 5);
        set_reels(reels);
        chgdb quick(label_key_35mm_4p, &logger);
        add_anything(dice, quick, {"MO", "MF", "MB", "MF", "MB", "DU", "DU", "DC", "DC", "I", "FX"});
        chgdb plain(quick, &logger, 1);
        number_steps(quick, logger);
        plain_number_steps(plain, reels);
        expect_same(quick, plain);
    }));
}

TEST_F(MovesPropertiesTest, ReusedFilmIsFoundAsByThePlainPass) {
    EXPECT_TRUE(rc::check([this] {
        Dice dice;
        const label_t film_std = any_standard(dice);
        const int step = get_static_label_cvt(film_std)->samples_per_frame();
        chgdb quick(film_std, &logger);
        chgdb old_events(film_std, &logger);
        const auto film = [&](const char* kind) {
            ChangeRecord row = any_film(dice, film_std);
            put_text(row.record_type, kind);
            row.keycode_missing = 0;
            row.keycode_in = point(film_std, dice.of({"KJ123456", "kj123456", "ZZ000001", "__BLACK_"}), 0);
            row.keycode_in.set_sample(step * dice.number(0, 300));
            row.edit_length = dice.number(1, 60);
            row.optical = dice.one_in(5);
            row.set_outs();
            return row;
        };
        for (int left = dice.number(0, 6); left > 0; --left)
            add_to(quick, film(dice.one_in(5) ? "DU" : "I"));
        // Old film that overlaps itself is cut at each find; enough of it would meet the limit.
        for (int left = dice.number(0, 8); left > 0; --left)
            add_to(old_events, film(""));
        chgdb plain(quick, &logger, 1);
        chgdb plain_events(old_events, &logger, 1);
        chgdb quick_found(film_std, &logger);
        chgdb plain_found(film_std, &logger);
        find_reused_material(quick, old_events, quick_found, logger);
        plain_find_reused(plain, plain_events, plain_found);
        RC_PRE(plain_found.get_num_records() < quick.get_num_records() + old_events.get_num_records());
        expect_same(quick_found, plain_found);
    }));
}

// Outs that contradict their ins, and lengths below 0: a find must never leave as much as there was.
TEST_F(MovesPropertiesTest, LookingForAnyFilmComesToAnEnd) {
    EXPECT_TRUE(rc::check([this] {
        Dice dice;
        const label_t film_std = any_standard(dice);
        chgdb news(film_std, &logger);
        chgdb old_events(film_std, &logger);
        const auto film = [&](const char* kind) {
            ChangeRecord row = any_film(dice, film_std);
            put_text(row.record_type, kind);
            row.keycode_in.set_sample(dice.one_in(8) ? any_number(dice) : dice.number(-50, 300));
            row.keycode_out.set_sample(dice.one_in(8) ? any_number(dice) : dice.number(-50, 300));
            row.edit_length = any_number(dice);
            return row;
        };
        for (int left = dice.number(0, 10); left > 0; --left)
            add_to(news, film("I"));
        for (int left = dice.number(0, 10); left > 0; --left)
            add_to(old_events, film(""));
        const unsigned rows = news.get_num_records() + old_events.get_num_records();
        chgdb found(film_std, &logger);
        find_reused_material(news, old_events, found, logger);
        RC_ASSERT(found.get_num_records() <= 2 * rows);
    }));
}

} // namespace
