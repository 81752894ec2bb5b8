// Which lists of a change run are printed, and in which order.

#include "tests/changelist/reports_fixture.h"

using namespace reports_test;

namespace {

class ReportOrderTest : public ChangeListTest {
protected:
    void ask_for_all() {
        options().summary_list = options().pull_list = options().verbose_list = options().dissolve_list = 1;
    }

    std::string reports(int page_length = 2000, int margin = 4) {
        return printed([&](report& out) {
            out.page_length = page_length;
            out.passthrough = 1;
            out.top_margin = out.bottom_margin = margin;
            write_change_reports(out, table, new_events, logger);
            margins = {out.top_margin,   out.bottom_margin, out.left_margin,
                       out.right_margin, out.page_width,    out.passthrough};
        });
    }
    static bool has(const std::string& text, const char* words) { return text.find(words) != std::string::npos; }

    chgdb new_events{label_key_35mm_4p, &logger};
    std::vector<int> margins;
};

} // namespace

TEST_F(ReportOrderTest, TheListsFollowTheBanner) {
    ask_for_all();
    const std::string text = reports();
    std::size_t last = 0;
    for (const char* title : {"QUILLBROOK CHANGE LIST", "SUMMARY OF CHANGES:", "NEW MATERIAL:",
                              "DETAILED LIST OF CHANGES:", "TRANSITIONS IN NEW SEQUENCE:"}) {
        const std::size_t place = text.find(title);
        ASSERT_NE(place, std::string::npos) << title;
        EXPECT_GT(place, last) << title;
        last = place;
    }
    EXPECT_EQ(logger.lines.front(), (LoggedLine{"Writing", 0}));
}

TEST_F(ReportOrderTest, OnlyWhatIsAskedForIsPrinted) {
    options().pull_list = 1;
    const std::string text = reports();
    EXPECT_TRUE(has(text, "NEW MATERIAL:"));
    EXPECT_FALSE(has(text, "SUMMARY") || has(text, "DETAILED") || has(text, "TRANSITIONS"));
}

TEST_F(ReportOrderTest, TheBenchListComesLast) {
    ask_for_all();
    EXPECT_FALSE(has(reports(), "BENCH LIST"));
    options().bench_list = 1;
    const std::string text = reports();
    EXPECT_LT(text.find("TRANSITIONS IN NEW SEQUENCE:"), text.find("BENCH LIST"));
    EXPECT_TRUE(has(text, "BENCH LIST"));
}

TEST_F(ReportOrderTest, SoundHasNoListOfTransitions) {
    ask_for_all();
    change_run().sound_list = 1;
    EXPECT_FALSE(has(reports(), "TRANSITIONS"));
}

TEST_F(ReportOrderTest, SetsUpThePage) {
    reports();
    EXPECT_EQ(margins, (std::vector<int>{1, 1, 2, 2, 130, 0}));
}

TEST_F(ReportOrderTest, AVeryShortPageKeepsItsMargins) {
    reports(3, 0);
    EXPECT_EQ(margins, (std::vector<int>{0, 0, 2, 2, 130, 0}));
}

TEST_F(ReportOrderTest, FollowingPagesHaveARuleAndNoHeading) {
    options().summary_list = 1;
    // The banner takes 9 lines from line 4 on, and the last of 14 is kept free.
    EXPECT_TRUE(has(reports(14), ("Track: V1\n<FF>\n" + rule()).c_str()));
}
