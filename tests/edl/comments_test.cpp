// What comments say of clips.

#include "formats/edl/edl_list.h"
#include "tests/edl/listed_edit.h"

#include <gmock/gmock.h>

using namespace edl_tests;
using testing::IsEmpty;

namespace {

const std::string event = "001 ZZ100_50 V C 01:00:04:00 01:00:05:00 10:00:00:00 10:00:01:00\n";

std::string dissolve(const std::string& comments) {
    return "001 A V C     01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n"
           "002 A V C     01:00:01:00 01:00:01:00 10:00:01:00 10:00:01:00\n"
           "002 B V D 010 02:00:00:00 02:00:01:00 10:00:01:00 10:00:02:00\n" +
           comments;
}

TEST(Comments, ClipsAreNamedWithOrWithoutTheBlankAndTheStar) {
    for (const char* comment : {"* FROM CLIP NAME:  take_1 ", "*FROM CLIP NAME: take_1", "FROM CLIP NAME: take_1",
                                "* from clip name: take_1"})
        EXPECT_EQ(drawn(read(event + comment).edit, 0), "0-24 take_1@01:00:04:00") << comment;
}

TEST(Comments, FromAndToNameBothSidesOfATransition) {
    EXPECT_EQ(drawn(read(dissolve("* FROM CLIP NAME: One\n* TO CLIP NAME: Two\n")).edit, 0),
              "0-24 One@01:00:00:00 | 24-34 diss | 34-48 Two@02:00:00:10");
}

TEST(Comments, SourceFilesAreTheIdentityOfTheirClip) {
    const formats::ReadResult result = read(event + "* FROM CLIP NAME: X\n* SOURCE FILE: S:\\shots\\a.mov\n" +
                                            "002 Y V C 01:00:04:00 01:00:05:00 10:00:01:00 10:00:02:00\n"
                                            "* SOURCE FILE: S:\\shots\\a.mov\n");
    EXPECT_EQ(drawn(result.edit, 0), "0-24 X@01:00:04:00 | 24-48 a@01:00:04:00");
    const auto text = [&](int at) {
        return std::string(source_at(result.edit, 0, at)->cookie.asString(false).c_str());
    };
    EXPECT_EQ(text(0), text(1));
    const formats::ReadResult other = read(event + "* FROM CLIP NAME: X\n");
    EXPECT_NE(text(0), std::string(source_at(other.edit, 0, 0)->cookie.asString(false).c_str()));
}

TEST(Comments, EarliestUseOfASourceIsItsBeginning) {
    const formats::ReadResult result = read("001 A V C 01:00:10:00 01:00:11:00 10:00:00:00 10:00:01:00\n"
                                            "002 A V C 01:00:02:00 01:00:03:00 10:00:01:00 10:00:02:00\n");
    EXPECT_EQ(drawn(result.edit, 0), "0-24 A@01:00:10:00 | 24-48 A@01:00:02:00");
    EXPECT_EQ(timecode_at(source_at(result.edit, 0, 0), 0), "01:00:02:00");
}

TEST(Comments, LocatorsAreCuesAtTheirRecordTimecode) {
    const formats::ReadResult result =
        read(event + "* LOC: 10:00:00:12 RED     ANIM FIX NEEDED \n* LOC: 10:00:00:18 GREEN\n");
    ASSERT_THAT(result.warnings, IsEmpty());
    CueList* cues = embedded::EditBuilder::cues_of(result.edit);
    ASSERT_EQ(cues->getNumCuePoints(0), 2);
    const std::unique_ptr<CueList> early(cues->extract(0.0, 0.7, result.edit->getId(0)));
    ASSERT_EQ(early->getNumCuePoints(0), 1);
}

TEST(Comments, LocatorBeforeTheProgrammeIsReported) {
    const formats::ReadResult result = read(event + "* LOC: 09:59:59:00 RED EARLY\n");
    ASSERT_EQ(result.warnings.size(), 1U);
    EXPECT_EQ(result.warnings[0], "a.edl: line 2: a mark before the programme begins, left out");
}

TEST(Comments, KeyNumbersAreOfTheEventsFirstFrame) {
    const formats::ReadResult result = read(event + "* KEYCODE: KJ 12 3456-7890+12\n" +
                                            "002 A V C 01:00:10:00 01:00:11:00 10:00:01:00 10:00:02:00\n"
                                            "* neg ke123456 0100 16mm\n");
    EXPECT_EQ(key_at(source_at(result.edit, 0, 0), 0), "KJ1234567890+12");
    EXPECT_EQ(key_at(source_at(result.edit, 0, 0), 1), "KJ1234567892+04");
    EXPECT_EQ(key_at(source_at(result.edit, 0, 1), 1), "KE1234560101+04");
    EXPECT_THAT(result.warnings, IsEmpty());
}

TEST(Comments, KeyNumberPatterns) {
    using formats::edl::find_key_number;
    const auto text = [](const char* comment) {
        const auto key = find_key_number(comment, false);
        return key ? key->text + " " + key->film : "";
    };
    EXPECT_EQ(text("KJ 29 1234 5678+00"), "KJ2912345678+00 35mm-4p");
    EXPECT_EQ(text("neg KX654321-0000+00, ok"), "KX6543210000+00 35mm-4p");
    EXPECT_EQ(text("3-perf KJ 12 1234-3456-10.3"), "KJ1212343456+10.3 35mm-3p");
    EXPECT_EQ(text("KN24 4675 1234&00"), "KN2446751234+00 35mm-4p");
    EXPECT_EQ(text("KQ123456 1234+00(1)"), "KQ1234561234+00.1 35mm-4p");
    EXPECT_EQ(text("KJ123456 008845+02"), "KJ123456008845+02 35mm-4p");
    for (const char* comment :
         {"A001C004_130917", "XKJ 29 1234 5678+00", "KJ 29 1234", "TC 01:00:00:00", "", "KJ 29 1234 5678901"})
        EXPECT_EQ(text(comment), "") << comment;
    EXPECT_FALSE(find_key_number("VF123456 7890", true));
    EXPECT_FALSE(find_key_number("KJ123456 789+01", true)) << "a count has four digits at least";
    EXPECT_TRUE(find_key_number("KJ123456 123456+01", true));
    EXPECT_FALSE(find_key_number("KJ123456 1234567+01", true)) << "and six at most";
    EXPECT_TRUE(find_key_number("VF123456 7890+01", true));
    EXPECT_FALSE(find_key_number("VF123456 7890+001", false)) << "frames have two digits at most";
    EXPECT_FALSE(find_key_number("VF123456 7890.01", false));
    EXPECT_TRUE(find_key_number("VF123456 7890-7900", false)) << "a stretch";
    EXPECT_TRUE(find_key_number("VF123456 7890.", false));
}

TEST(Comments, EffectsAreTheLabsOnlyWhenAsked) {
    const std::string list = event + "* AVX2 EFFECT, RESIZE\n";
    for (const bool all : {false, true}) {
        const formats::ReadResult result = read(std::vector<std::string>{list}, 24, all);
        Vector<Qb::Ptr<FXGraphNodeBase>> nodes;
        EditGraphIterator(result.edit, 0, 0.0, 0).findComponentsForCurrentEffect(nodes);
        EXPECT_EQ(nodes.size(), all ? 1U : 0U);
    }
}

TEST(Comments, UnknownOnesAreNoConcern) {
    EXPECT_THAT(read(event + "* ASC_SOP (1 1 1)(0 0 0)(1 1 1)\n>>> SOURCE\nREM so\n* COMMENT:\n").warnings, IsEmpty());
}

} // namespace
