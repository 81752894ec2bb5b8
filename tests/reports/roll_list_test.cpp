#include "reports/roll_list.h"
#include "tests/reports/list_fixture.h"

namespace {

class RollList : public ListTest {
protected:
    RollList() { add_header(); }

    void add_roll(const char* roll) {
        cut_s cut;
        cut.event = 1;
        put_text(cut.cam_reel, roll);
        add(cut);
    }
    std::string list() {
        return printed([this](report& out) { print_roll_list(out, table, logger); });
    }
    std::string rolls() {
        const std::string text = below_heading(list());
        return text.substr(0, text.find("\nEnd of"));
    }
};

TEST_F(RollList, PrintsEachRollOnceInTheOrderOfTheTable) {
    for (const char* roll : {"B002", "A001", "B002", "C003", "A001"})
        add_roll(roll);
    EXPECT_EQ(rolls(), "\n     B002                          \n     A001                          \n"
                       "     C003                          \n");
}

TEST_F(RollList, LeavesOutWhatIsNoRoll) {
    for (const char* roll : {"__BLACK", "RENDERED", "", "__NOLOG"})
        add_roll(roll);
    EXPECT_EQ(rolls(), "\n     RENDERED                      \n");
}

TEST_F(RollList, IsAPageOfItsOwn) {
    add_roll("A001");
    const std::string rule = std::string(129, '_') + "\n";
    EXPECT_EQ(list(), "Edit:         REEL 1                    Project: HARBOUR \n"
                      "Edit dated:   1 January 2026 10:00:00   Format:  35mm 4perf\n"
                      "Report dated: 9 September 2001 01:46:40 CUTTING-COPY version 9 \n"
                      "\n"
                      "                                PICTURE TRACK 1\n"
                      "                               LIST OF ROLLS USED\n" +
                          rule +
                          "\n"
                          "     A001                          \n"
                          "\n"
                          "End of list of rolls used\n" +
                          rule + "<FF>\n");
}

TEST_F(RollList, BreaksIntoPagesWithoutAHeading) {
    for (int roll = 0; roll < 60; ++roll)
        add_roll(("R" + std::to_string(roll)).c_str());
    const std::string text = list();
    const std::string rule = std::string(129, '_') + "\n";
    EXPECT_NE(text.find("<FF>\n\n" + rule + "     R"), std::string::npos);
}

TEST_F(RollList, LeavesTheWholeTableToTheNextList) {
    for (const char* roll : {"A001", "A001"})
        add_roll(roll);
    list();
    EXPECT_EQ(table.get_num_records(), 2U);
    EXPECT_FALSE(table.get_show_tags_only());
    EXPECT_TRUE(table.get_tag(0));
    EXPECT_FALSE(table.get_tag(1));
}

} // namespace
