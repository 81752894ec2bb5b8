// The list of transitions in the new cut.

#include "tests/changelist/reports_fixture.h"

#include <limits>

using namespace reports_test;

namespace {

class TransitionsTest : public ChangeListTest {
protected:
    static std::string section() {
        return "\n\n\n\n\n\nTRANSITIONS IN NEW SEQUENCE:\n\n"
               "   First/Last      First/Last           First/Last          Length\n"
               "       Seq TC         Elapsed                  Key" +
               rule() + "\n";
    }
    static MadeRow dissolved() {
        return {.length = 30,
                .key_in = "KJ1234560300+00",
                .edit_in = 100,
                .fx_op1 = "D",
                .fx_len1 = 8,
                .fx_op2 = "F",
                .fx_len2 = 12};
    }
};

} // namespace

TEST_F(TransitionsTest, BothEndsOfAnEventHaveABlock) {
    add(dissolved());
    // 100 = 4 * 24 + 4; the fade begins at 100 + 30 - 12; 18 frames are 16 + 2
    EXPECT_EQ(transitions(), section() + R"(                 Transition IN-COMING
 01:00:04:04         0000100      KJ1234560300+00         0000008
 01:00:04:11         0000107      KJ1234560300+07     
                 Fade OUT_GOING
 01:00:04:22         0000118      KJ1234560301+02         0000012
 01:00:05:09         0000129      KJ1234560301+13     
)" + rule());
    EXPECT_TRUE(logger.said("Writing list of transitions", 0));
}

TEST_F(TransitionsTest, FadesInAndDissolvesOut) {
    MadeRow event = dissolved();
    event.fx_op1 = "F";
    event.fx_op2 = "D";
    use_feet();
    add(event);
    EXPECT_EQ(below_heads(transitions()), R"(                 Fade IN-COMING
 01:00:04:04         0006+04      KJ1234560300+00         0000+08
 01:00:04:11         0006+11      KJ1234560300+07     
                 Transition OUT_GOING
 01:00:04:22         0007+06      KJ1234560301+02         0000+12
 01:00:05:09         0008+01      KJ1234560301+13     
)" + rule());
}

TEST_F(TransitionsTest, InTimecodeElapsedTimeCountsFromZero) {
    MadeRow event = dissolved();
    event.fx_op2 = "";
    use_timecode();
    add(event);
    EXPECT_EQ(below_heads(transitions()), R"(                 Transition IN-COMING
 01:00:04:04     00:00:04:04      KJ1234560300+00     00:00:00:08
 01:00:04:11     00:00:04:11      KJ1234560300+07     
)" + rule());
}

TEST_F(TransitionsTest, AnEventWithoutAKeyNumberSaysSo) {
    MadeRow event = dissolved();
    event.fx_op1 = "";
    event.missing = 2; // any number but 0
    add(event);
    EXPECT_EQ(below_heads(transitions()), R"(                 Fade OUT_GOING
 01:00:04:22         0000118      NO KEYKODE              0000012
 01:00:05:09         0000129      NO KEYKODE          
)" + rule());
}

TEST_F(TransitionsTest, EventsComeByReelAndPosition) {
    for (const auto& [reel, edit_in] : {std::pair(2, 0), {1, 500}, {1, 20}}) {
        MadeRow event = dissolved();
        event.fx_op2 = "";
        event.reel = reel;
        event.edit_in = edit_in;
        add(event);
    }
    const std::string list = transitions();
    EXPECT_LT(list.find("0000020"), list.find("0000500"));
    EXPECT_LT(list.find("0000500"), list.find(" 0000000 "));
    EXPECT_NE(list.find(" 0000000 "), std::string::npos);
}

TEST_F(TransitionsTest, ShowsRowsThatAnEarlierPassHid) {
    add(dissolved());
    table.set_all_tags(0);
    table.set_show_tags_only(1);
    EXPECT_NE(transitions().find("Transition IN-COMING"), std::string::npos);
}

TEST_F(TransitionsTest, OpticalsAndPlainEventsPrintNothing) {
    MadeRow optical = dissolved();
    optical.optical = 1;
    add(optical);
    add({.length = 30, .key_in = "KJ1234560300+00"});
    EXPECT_EQ(transitions(), section() + "There are no transitions in the new edit\n" + rule());
}

TEST_F(TransitionsTest, OfAnEmptyCutHaveNoClosingRule) {
    EXPECT_EQ(transitions(), section() + "There are no transitions in the new edit\n");
}

TEST_F(TransitionsTest, WildLengthsWrap) {
    MadeRow event = dissolved();
    event.length = std::numeric_limits<int>::min();
    event.fx_len1 = std::numeric_limits<int>::min();
    event.fx_len2 = std::numeric_limits<int>::max();
    event.edit_in = std::numeric_limits<int>::max();
    add(event);
    EXPECT_NE(transitions().find("Fade OUT_GOING"), std::string::npos);
}
