// The list of new material.

#include "tests/changelist/reports_fixture.h"

#include <limits>

using namespace reports_test;

namespace {

class NewMaterialTest : public ChangeListTest {
protected:
    void add_material() {
        add({.kind = "I",
             .event2 = 12,
             .length = 40,
             .key_in = "KJ1234560300+00",
             .key_out = "KJ1234560302+07",
             .name = "Harbour at night, wide",
             .scene = "24",
             .take = "2 pick-up of the first",
             .clip_in = "10:00:00:00",
             .clip_out = "10:00:01:16"});
        add({.kind = "DC", .event1 = 1, .length = 40, .name = "Gone"});
        add({.kind = "I",
             .event2 = 3,
             .length = 24,
             .key_in = "KJ1234560100+00",
             .key_out = "KJ1234560101+07",
             .name = "Pier",
             .scene = "12A",
             .take = "3",
             .clip_in = "01:00:10:00",
             .clip_out = "01:00:11:00"});
    }
    static std::string section(const std::string& heads) { return "\n\n\n\n\n\nNEW MATERIAL:\n\n" + heads + rule(); }
};

} // namespace

TEST_F(NewMaterialTest, ByNameWithKeys) {
    add_material();
    EXPECT_EQ(new_material(),
              section("          Name          First/Last          First/Last           Length     Step\n"
                      "                           Clip TC               Key") +
                  R"(
  Pier                 01:00:10:00     KJ1234560100+00         0000024         3
                       01:00:11:00     KJ1234560101+07
  Harbour at night     10:00:00:00     KJ1234560300+00         0000040        12
                       10:00:01:16     KJ1234560302+07
)" + rule());
    EXPECT_TRUE(logger.said("Writing list of new material", 0));
}

TEST_F(NewMaterialTest, ByNameWithoutKeys) {
    options().show_edge_codes = false;
    add_material();
    EXPECT_EQ(new_material(), section("          Name          First/Last           Length     Step\n"
                                      "                           Clip TC") +
                                  R"(
  Pier                 01:00:10:00         0000024         3
                       01:00:11:00
  Harbour at night     10:00:00:00         0000040        12
                       10:00:01:16
)" + rule());
}

TEST_F(NewMaterialTest, BySceneAndTakeWithKeys) {
    options().use_scene_take = 1;
    add_material();
    EXPECT_EQ(new_material(), section("         Scene                 Take          First/Last          First/Last"
                                      "          Length      Step\n"
                                      "                                                Clip TC               Key") +
                                  R"(
  12A                  3                    01:00:10:00     KJ1234560100+00         0000024         3
                                            01:00:11:00     KJ1234560101+07
  24                   2 pick-up of the     10:00:00:00     KJ1234560300+00         0000040        12
                                            10:00:01:16     KJ1234560302+07
)" + rule());
}

TEST_F(NewMaterialTest, BySceneAndTakeWithoutKeys) {
    options().use_scene_take = 1;
    options().show_edge_codes = false;
    add_material();
    EXPECT_EQ(new_material(),
              section("         Scene                 Take          First/Last          Length      Step\n"
                      "                                                Clip TC") +
                  R"(
  12A                  3                    01:00:10:00         0000024         3
                                            01:00:11:00
  24                   2 pick-up of the     10:00:00:00         0000040        12
                                            10:00:01:16
)" + rule());
}

TEST_F(NewMaterialTest, LengthsInFeet) {
    use_feet();
    options().show_edge_codes = false;
    add_material();
    EXPECT_EQ(below_heads(new_material()),
              R"(  Pier                 01:00:10:00         0001+08         3
                       01:00:11:00
  Harbour at night     10:00:00:00         0002+08        12
                       10:00:01:16
)" + rule());
}

TEST_F(NewMaterialTest, LengthsInTimecodeCountAsTheClipDoes) {
    use_timecode();
    options().show_edge_codes = false;
    add({.kind = "I", .event2 = 1, .length = 40, .name = "Pier", .clip_kind = "30fps"});
    add({.kind = "I", .event2 = 2, .length = 40, .name = "Boat", .clip_kind = "24fps"});
    EXPECT_EQ(below_heads(new_material()),
              R"(  Pier                 01:00:00:00     00:00:01:10         1
                       01:00:00:00
  Boat                 01:00:00:00     00:00:01:16         2
                       01:00:00:00
)" + rule());
}

TEST_F(NewMaterialTest, WithoutAnyThereAreWordsAndNoClosingRule) {
    add({.kind = "DC", .event1 = 1, .length = 40, .name = "Gone"});
    options().show_edge_codes = false;
    EXPECT_EQ(new_material(), section("          Name          First/Last           Length     Step\n"
                                      "                           Clip TC") +
                                  "\n There are no new inserts\n");
}

TEST_F(NewMaterialTest, LeavesTheTableShowingNewMaterialInStepOrder) {
    add_material();
    new_material();
    ASSERT_EQ(table.get_num_records(), 2U);
    EXPECT_STREQ(table.get_record(0)->get_field(hf_event2), "3");
    EXPECT_STREQ(table.get_record(1)->get_field(hf_event2), "12");
}

TEST_F(NewMaterialTest, SixteenCharactersOfAWideNameMayBeMoreBytes) {
    options().show_edge_codes = false;
    add({.kind = "I", .event2 = 1, .length = 1, .name = "ÄÖÜäöüÄÖÜäöüÄÖÜäöü"});
    // Bytes of 128 and above take no column.
    EXPECT_EQ(below_heads(new_material()).substr(0, 34 + 32), "  ÄÖÜäöüÄÖÜäöüÄÖÜä                     01:00:00:00");
}

TEST_F(NewMaterialTest, ABarInANameTakesTheNextCharacterAlong) {
    options().show_edge_codes = false;
    add({.kind = "I", .event2 = 1, .length = 1, .name = "Pier|p|xs"});
    EXPECT_EQ(below_heads(new_material()).substr(0, 34), "  Pier1s               01:00:00:00");
}

TEST_F(NewMaterialTest, AKeyIsPrintedWhole) {
    add({.kind = "I", .event2 = 1, .length = 1, .key_in = "KJ1234561234567+05", .key_out = "KJ1234561234567+05"});
    EXPECT_NE(new_material().find("KJ1234561234567+05 "), std::string::npos);
}

TEST_F(NewMaterialTest, WildNumbersArePrintedAndCut) {
    options().show_edge_codes = false;
    add({.kind = "I", .event2 = std::numeric_limits<int>::max(), .length = std::numeric_limits<int>::min()});
    EXPECT_EQ(below_heads(new_material()).substr(0, 72),
              "                       01:00:00:00         -2147483648 2147483647\n      ");
    use_feet();
    EXPECT_EQ(below_heads(new_material()).find('\n'), std::string("                       01:00:00:00         0000+00 "
                                                                  "    2147483647")
                                                          .size());
}
