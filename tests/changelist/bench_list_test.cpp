#include "changelist/bench/bench_list.h"

#include "tests/changelist/bench_kit.h"
#include "tests/changelist/frame_by_frame.h"
#include "tests/changelist/reports_fixture.h"

#include <sstream>

namespace {

using bench_kit::Film;

class BenchList : public reports_test::ChangeListTest {
protected:
    BenchList() { change_run().old_side.film_std = label_key_35mm_4p; }

    void plan(const std::vector<Film>& old_films, const std::vector<Film>& new_films) {
        run.old_cut = bench_kit::cut_of(old_films);
        run.new_cut = bench_kit::cut_of(new_films);
        run.matched = frame_by_frame::match(run.old_cut, run.new_cut);
        plan_bench_steps(run);
    }
    /// A shot moves to the next reel, one goes and one comes.
    void plan_all_kinds() {
        Film moved{1, 0, 24, 160, "KJ123456", 1.0, 80, "harbour"};
        Film gone{1, 0, 17, 800, "EA000001", 1.0, -1, "quay"};
        Film kept{2, 0, 40, 0, "KJ123456", 1.0, -1, "sea"};
        Film fresh{2, 0, 8, 1600, "KJ123456", 1.0, 8, "a name of more than sixteen"};
        Film arrived = moved;
        arrived.reel = 2;
        plan({moved, gone, kept}, {kept, arrived, fresh});
    }
    std::string list() {
        return printed([&](report& out) { write_bench_list(out, run); });
    }

    KeptRun run;
};

TEST_F(BenchList, TellsEachStepInTwoLines) {
    plan_all_kinds();
    EXPECT_EQ(list(), "\n\n\n\n\n\nBENCH LIST:\n\n"
                      "   Step  Reel       At   Do This                Length   First/Last KEY       First/Last INK   "
                      "Shot Name            Reel\n"
                      "                  Feet   Camera Roll              Feet                                          "
                      "                  Length" +
                          reports_test::rule() +
                          "\n"
                          "      1     1  0000000   PICK UP  TO 3         0000024   KJ1234560010+00      AA120005+00   "
                          "   harbour           0000017\n"
                          "               0000+00   KJ12                  0001+08   KJ1234560011+07      AA120006+07   "
                          "                     0001+01\n"
                          "      2     1  0000000   DELETE                0000017   EA0000010050+00                    "
                          "   quay              0000000\n"
                          "               0000+00   EA00                  0001+01   EA0000010051+00                    "
                          "                     0000+00\n"
                          "      3     2  0000040   PUT DOWN FROM 1       0000024   KJ1234560010+00      AA120005+00   "
                          "   harbour           0000064\n"
                          "               0002+08   KJ12                  0001+08   KJ1234560011+07      AA120006+07   "
                          "                     0004+00\n"
                          "      4     2  0000064   INSERT                0000008   KJ1234560100+00      AA120000+08   "
                          "   a name of more t  0000072\n"
                          "               0004+00   KJ12                  0000+08   KJ1234560100+07      AA120000+15   "
                          "                     0004+08\n" +
                          reports_test::rule());
}

TEST_F(BenchList, SaysWhenThereIsNothingToDo) {
    plan({{1, 0, 10, 5}}, {{1, 0, 10, 5}});
    EXPECT_EQ(below_heads(list()), " THERE ARE NO CHANGES TO MAKE\n");
    EXPECT_TRUE(list().starts_with("\n\n\n\n\n\nBENCH LIST:\n\n   Step  Reel"));
}

TEST_F(BenchList, TellsThatNothingCostsNothing) {
    options().bench_cost = bench_fewest_moves;
    plan({{1, 0, 10, 5}}, {{1, 0, 10, 5}});
    EXPECT_EQ(below_heads(list()), " THERE ARE NO CHANGES TO MAKE\n\n"
                                   " FEWEST MOVES        THIS LIST    DELETE AND INSERT\n"
                                   " Moves                       0                    0\n"
                                   " Splices                     0                    0\n"
                                   " Frames                      0                    0\n"
                                   " Feet                  0000+00              0000+00\n");
}

TEST_F(BenchList, ShowsSceneAndTakeBelowEachOtherWhenAsked) {
    options().use_scene_take = 1;
    plan({}, {{1, 0, 10, 5}});
    EXPECT_EQ(below_heads(list()), "      1     1  0000000   INSERT                0000010   KJ1234560000+05           "
                                   "            12A               0000010\n"
                                   "               0000+00   KJ12                  0000+10   KJ1234560000+14           "
                                   "            3                 0000+10\n" +
                                       reports_test::rule());
}

TEST_F(BenchList, KeepsTheLinesThatANameWouldBreak) {
    plan({}, {{1, 0, 10, 5, "KJ123456", 1.0, -1, "a\nb\tc"}});
    EXPECT_NE(list().find(" a b c "), std::string::npos);
}

TEST_F(BenchList, NamesNoCameraRollForBlack) {
    Film black{1, 0, 10, 0, "__BLACK_"};
    plan({}, {black});
    EXPECT_EQ(list().find("__BL "), std::string::npos);
}

TEST_F(BenchList, ShowsKeysWhateverTheOptionSays) {
    plan_all_kinds();
    const std::string with_keys = list();
    options().show_edge_codes = false;
    EXPECT_EQ(list(), with_keys);
}

TEST_F(BenchList, CountsFramesWhereTheFilmHasNoFeet) {
    change_run().old_side.film_std = edlstr_to_label_type("65mm-5p80");
    plan({}, {{1, 0, 40, 0}});
    EXPECT_NE(list().find("\n               0         KJ12                  40 "), std::string::npos) << list();
}

TEST_F(BenchList, CutsLongNamesByCharacters) {
    Film film{1, 0, 10, 5};
    film.name = "\u00e4\u00f6\u00fc and more of the same";
    plan({}, {film});
    EXPECT_NE(list().find(" \u00e4\u00f6\u00fc and more of  "), std::string::npos) << list();
}

TEST_F(BenchList, FitsThePage) {
    Film film{1, 0, 10, 5};
    film.ink = 9999 * 16;
    film.name = std::string(40, 'W');
    plan({}, {film});
    std::istringstream lines(list());
    for (std::string line; std::getline(lines, line);)
        EXPECT_LT(line.size(), 130U) << line;
}

} // namespace
