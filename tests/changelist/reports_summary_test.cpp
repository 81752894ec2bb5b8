// The banner and the summary of a change run.

#include "embedded/edit_builder.h"
#include "quillbrook/logging_tables.h"
#include "tests/changelist/reports_fixture.h"

#include <limits>

using namespace reports_test;

namespace {

constexpr int lowest = std::numeric_limits<int>::min();

class SummaryTest : public ChangeListTest {
protected:
    SummaryTest() {
        change_run().old_side.reel_start[1] = 1000;
        change_run().new_side.reel_start[1] = 1020;
    }

    void add_changes(int inserted, int deleted) {
        add({.kind = "I", .length = inserted});
        add({.kind = "DC", .length = deleted});
        add({.kind = "DU", .length = deleted});
        add({.kind = "MF", .length = 8});
        add({.kind = "MB", .length = 16});
        add({.kind = "MO", .length = 500});
        add({.length = 700});
    }
    /// The line of numbers.
    std::string sums() {
        const std::string rows = below_heads(summary());
        return rows.substr(0, rows.find('\n'));
    }
};

class BannerTest : public ChangeListTest {
protected:
    static std::string banner() { return printed(write_banner); }

    static std::string banner_of(const std::string& old_name, const std::string& new_name, const std::string& track) {
        return "\n\n          QUILLBROOK CHANGE LIST\n"
               "              Version 0.1 (quillbrook " +
               std::string(filmDllVersionStr()) +
               ")\n"
               "              Date: 9 September 2001 01:46:40\n\n"
               "          Old Sequence: " +
               old_name + "  \n          New Sequence: " + new_name + "  \n          Track: " + track + "\n";
    }
};

} // namespace

TEST_F(SummaryTest, PrintsTitleHeadsNumbersAndRule) {
    add_changes(44, 24);
    EXPECT_EQ(summary(),
              R"(





SUMMARY OF CHANGES:

    Original        Inserted         Deleted           Moved            Total              New
      Length                                                            Change          Length)" +
                  rule() +
                  R"(
      0001000         0000044         0000024         0000024          +0000020         0001020
)" + rule());
    EXPECT_TRUE(logger.said("Writing summary of changes", 0));
}

TEST_F(SummaryTest, OfNoChangesIsZeroWithAPlus) {
    EXPECT_EQ(sums(),
              "      0001000         0000000         0000000         0000000          +0000000         0001020");
}

TEST_F(SummaryTest, ALossInFramesShowsZeroAndNotTheAmount) {
    add_changes(24, 44);
    EXPECT_EQ(sums(),
              "      0001000         0000024         0000044         0000024          -0000000         0001020");
}

TEST_F(SummaryTest, ALossInFeetShowsItsAmount) {
    use_feet();
    add_changes(24, 44);
    // 1000 = 62 * 16 + 8, 24 = 16 + 8, 44 = 2 * 16 + 12, 20 = 16 + 4, 1020 = 63 * 16 + 12
    EXPECT_EQ(sums(), "     0062+08         0001+08         0002+12         0001+08          -0001+04         0063+12");
}

TEST_F(SummaryTest, AGainInFeetHasAPlus) {
    use_feet();
    add_changes(44, 24);
    EXPECT_EQ(sums(), "     0062+08         0002+12         0001+08         0001+08          +0001+04         0063+12");
}

TEST_F(SummaryTest, InTimecodeCountsFromZeroWhateverTheSequenceStartsAt) {
    use_timecode();
    add_changes(24, 44);
    EXPECT_EQ(sums(), " 00:00:41:16     00:00:01:00     00:00:01:20     00:00:01:00       -00:00:00:20    00:00:42:12");
    add({.kind = "I", .length = 20});
    EXPECT_EQ(sums(), " 00:00:41:16     00:00:01:20     00:00:01:20     00:00:01:00       +00:00:00:00    00:00:42:12");
}

TEST_F(SummaryTest, CountsOnlyTheRowsThatTheTableShows) {
    add_changes(44, 24);
    tag_kind(table, "I", 0);
    table.set_show_tags_only(1);
    EXPECT_EQ(sums(),
              "      0001000         0000044         0000000         0000000          +0000044         0001020");
}

TEST_F(SummaryTest, OfSeveralReelsShowsTheLengthOfTheFirst) {
    change_run().old_side.reel_start[2] = 9000;
    change_run().new_side.reel_start[2] = 9000;
    EXPECT_EQ(sums(),
              "      0001000         0000000         0000000         0000000          +0000000         0001020");
}

TEST_F(SummaryTest, FilmWithoutAFeetKindHasEmptyFeet) {
    use_feet();
    chgdb strange(label_none, &logger);
    add(strange, {.kind = "I", .length = 44});
    const std::string list = printed([&](report& out) { write_summary(out, strange, logger); });
    EXPECT_EQ(below_heads(list).substr(0, below_heads(list).find('\n')),
              "                                                                      +                ");
}

TEST_F(SummaryTest, WildLengthsWrapAndDoNotOverrunTheirColumns) {
    for (const int length : {lowest, lowest, std::numeric_limits<int>::max()}) {
        add({.kind = "I", .length = length});
        add({.kind = "DC", .length = -1});
        for (void (*unit)() : {+[] {}, +[] { use_feet(); }, +[] { use_timecode(); }}) {
            options() = ChangelistOptions();
            unit();
            EXPECT_EQ(summary().find("SUMMARY"), 6U);
        }
    }
}

TEST_F(BannerTest, NamesBothEditsAndThePictureTrack) {
    embedded::EditDescription old_cut, new_cut;
    old_cut.name = "Reel 1 v1";
    new_cut.name = "Fährmann";
    embedded::EditBuilder old_builder(old_cut), new_builder(new_cut);
    const EditPtr old_edit = old_builder.finish(), new_edit = new_builder.finish();
    options().old_cookie = old_edit->cookie;
    options().new_cookie = new_edit->cookie;
    EXPECT_EQ(banner(), banner_of("Reel 1 v1", "Fährmann", "V1"));
}

TEST_F(BannerTest, AnEditThatCannotBeOpenedHasNoName) { EXPECT_EQ(banner(), banner_of("", "", "V1")); }

TEST_F(BannerTest, AnyOtherKindOfTrackIsSound) {
    options().chan_num = 4;
    for (const unsigned kind : {0U, 2U, 7U}) {
        options().chan_type = kind;
        EXPECT_EQ(banner(), banner_of("", "", "A5"));
    }
}

TEST_F(BannerTest, ABarInANameTakesTheNextCharacterAlong) {
    embedded::EditDescription cut;
    cut.name = "Reel|x 1";
    embedded::EditBuilder builder(cut);
    const EditPtr edit = builder.finish();
    options().old_cookie = edit->cookie;
    EXPECT_EQ(banner(), banner_of("Reel 1", "", "V1"));
}

TEST_F(BannerTest, ATrackNumberBehindTheLastWraps) {
    options().chan_num = std::numeric_limits<unsigned>::max();
    EXPECT_EQ(banner(), banner_of("", "", "V0"));
}
