// The switches that choose lists, from outside.

#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {

class ListSwitchesTest : public ToolTest {
protected:
    void SetUp() override { write_edit("cut.otio"); }

    void expect_done(std::vector<std::string> arguments, const std::vector<std::string>& more) {
        arguments.insert(arguments.end(), more.begin(), more.end());
        const ToolResult result = run(arguments);
        EXPECT_EQ(result.status, 0) << result.err;
    }
    std::string listed(const std::vector<std::string>& switches) {
        expect_done({"cutlist", "cut.otio", "-o", "cut.txt", "--overwrite"}, switches);
        return read("cut.txt");
    }
    std::string printed(const std::vector<std::string>& switches) {
        expect_done({"print", "cut.cdb", "-o", "again.txt", "--overwrite"}, switches);
        return read("again.txt");
    }
    void expect_refused(const std::vector<std::string>& arguments, const std::string& text) {
        const std::vector<std::string> before = names();
        const ToolResult result = run(arguments);
        EXPECT_EQ(result.status, 1) << result.out;
        EXPECT_THAT(result.err, HasSubstr(text));
        EXPECT_EQ(names(), before);
    }
};

constexpr const char* list_ends[] = {"End of list of rolls", "End of pull list", "End of assembly list",
                                     "End of opticals list"};

/// Which of the lists a report holds: "rp" the list of rolls and the pull list.
std::string lists_in(const std::string& report) {
    std::string letters;
    for (std::size_t i = 0; i < 4; ++i)
        if (report.find(list_ends[i]) != std::string::npos) letters += "rpao"[i];
    return letters;
}

TEST_F(ListSwitchesTest, OnlyTheNamedListsArePrinted) {
    EXPECT_EQ(lists_in(listed({"--lists", "rolls"})), "r");
    EXPECT_EQ(lists_in(listed({"--lists", "pull,assembly"})), "pa");
    EXPECT_EQ(lists_in(listed({"--lists", "pull", "--lists", "rolls"})), "rp");
    EXPECT_EQ(lists_in(printed({"--lists", "assembly"})), "a");
    EXPECT_EQ(printed({"--lists", "rolls,pull,assembly,opticals"}), printed({}));
}

TEST_F(ListSwitchesTest, SetWinsOverThem) {
    EXPECT_EQ(lists_in(listed({"--lists", "rolls", "--set", "pull_list=1"})), "rp");
    EXPECT_EQ(lists_in(listed({"--set", "roll_list=0", "--lists", "rolls,pull"})), "p");
    EXPECT_EQ(listed({"--handles", "8", "--set", "pull_handle=0"}), listed({}));
    expect_done({"cutlist", "cut.otio", "-o", "set.txt"}, {"--single-layer", "3", "--set", "fsl_type3_file=0"});
    EXPECT_FALSE(exists("set.sl3"));
}

TEST_F(ListSwitchesTest, HandlesLengthenWhatIsPulled) {
    EXPECT_EQ(listed({"--handles", "8", "--frames"}), listed({"--set", "pull_handle=8", "--frames"}));
    EXPECT_THAT(listed({"--lists", "pull", "--handles", "8"}), HasSubstr("KJ1234560100+02"));
    EXPECT_THAT(listed({"--lists", "pull"}), HasSubstr("KJ1234560100+10"));
    EXPECT_THAT(printed({"--lists", "pull", "--handles", "8"}), HasSubstr("KJ1234560100+02"));
}

TEST_F(ListSwitchesTest, SortByKeyAndButtSetTheirOptions) {
    EXPECT_THAT(listed({"--lists", "pull", "--sort-by-key", "--neg-cut"}), HasSubstr("PULL LIST BY KEYKODE"));
    EXPECT_EQ(listed({"--butt", "40"}), listed({"--set", "butt=40"}));
}

TEST_F(ListSwitchesTest, SingleLayerListsGoBesideTheReport) {
    expect_done({"cutlist", "cut.otio", "-o", "cut.txt"}, {"--single-layer", "1,3"});
    EXPECT_THAT(names(), ElementsAre("cut.cdb", "cut.otio", "cut.sl3", "cut.txt"));
    EXPECT_THAT(read("cut.sl3"), HasSubstr("1\tclip\t1\t0\t\t\t\t\t48\tA001\tKJ1234560100+10\tKJ1234560103+09\t1\t"));
}

TEST_F(ListSwitchesTest, NoFileOfTheRunTakesThePlaceOfAnother) {
    expect_refused({"cutlist", "cut.otio", "-o", "cut.sl3", "--single-layer", "3"}, "cut.sl3");
    write("cut.sl4", read("cut.otio"));
    expect_refused({"cutlist", "cut.sl4", "-o", "cut.txt", "--set", "fsl_type4_file=1"}, "cut.sl4");
    expect_refused({"cutlist", "cut.sl4", "-o", "cut.txt", "--single-layer", "4"},
                   "cut.sl4: would replace what it is made from");
    std::filesystem::create_directory(path("cut.sl1"));
    expect_refused({"cutlist", "cut.otio", "-o", "cut.txt", "--single-layer", "1"}, "cut.sl1: is a directory");
    expect_done({"cutlist", "cut.otio", "-o", "cut.txt", "--overwrite"}, {"--single-layer", "3"});
}

} // namespace
