// What counts as a document, and which roots, names and versions are read.

#include "tests/otio/otio_texts.h"

#include <gtest/gtest.h>

using namespace otio_texts;

namespace {

std::string simple(const Extra& extra = {}) { return timeline({track({clip("A", 0, 4)})}, extra); }

TEST(OtioText, InfinitiesNotNumbersAndLongIntegersAreLegal) {
    const std::string data = R"("metadata": {"a": NaN, "b": Inf, "c": Infinity, "d": -Inf, "e": -Infinity,
        "f": 170141183460469231731687303715884105728})";
    EXPECT_EQ(drawn(simple(data)), "A 0-4");
}

TEST(OtioText, WhatOnlyBeginsLikeAnInfinityIsAnErrorWhereItStands) {
    for (const std::string word : {"Infe5", "NaN.5", "Infinit", "N", "-NaN", "Inf0", "nan", "inf"})
        EXPECT_NE(error_of("{\"a\":\n[" + word + "]}").find("line 2, byte "), std::string::npos) << word;
    EXPECT_EQ(drawn(simple("\"metadata\": {\"Infe5\": \"NaN \\\"Inf\", \"N\": [-Inf,NaN]}")), "A 0-4");
}

TEST(OtioText, AByteOrderMarkIsAccepted) { EXPECT_EQ(drawn("\xEF\xBB\xBF" + simple()), "A 0-4"); }

TEST(OtioText, CommentsTrailingCommasAndTextBehindAreErrorsWithLineAndByte) {
    EXPECT_EQ(error_of("// x\n" + simple()).substr(0, 15), "line 1, byte 1:");
    EXPECT_NE(error_of("{\"a\": [1,\n]}").find("line 2, byte 11:"), std::string::npos);
    EXPECT_NE(error_of("{\"a\": 1,}").find("line 1, byte"), std::string::npos);
    EXPECT_NE(error_of(simple() + "\n x").find("line 2, byte"), std::string::npos);
    EXPECT_NE(error_of(simple() + std::string("\0x", 2)).find("text behind"), std::string::npos);
    EXPECT_NE(error_of("").find("line 1, byte 1:"), std::string::npos);
}

// Wherever in a text, and on whatever address that comes to lie.
TEST(OtioText, ControlCharactersInTextsAreErrorsWhereTheyStand) {
    for (std::size_t at = 0; at < 40; ++at)
        for (char control = 1; control < ' '; ++control) {
            std::string name(40, 'n');
            name[at] = control;
            EXPECT_NE(error_of("{\"name\": \"" + name + "\"}").find("line 1, byte " + std::to_string(at + 11) + ':'),
                      std::string::npos)
                << at << ' ' << int(control);
        }
}

TEST(OtioText, OfTwoEqualKeysTheFirstCounts) {
    const auto result = read(simple(R"("name": "first", "name": "second")"));
    EXPECT_EQ(name(result.edit), "first");
}

TEST(OtioText, ADepthOfAThousandIsReadAndOneMoreIsNot) {
    const auto deep = [](std::size_t arrays) {
        return simple("\"metadata\": {\"a\": " + std::string(arrays, '[') + std::string(arrays, ']') + "}");
    };
    EXPECT_EQ(drawn(deep(998)), "A 0-4");
    EXPECT_NE(error_of(deep(999)).find("1000 deep"), std::string::npos);
    EXPECT_NE(error_of(std::string(200000, '[')).find("1000 deep"), std::string::npos);
}

TEST(OtioText, OldNamesStandForTracksAndGaps) {
    const std::string old =
        object("Sequence.1", "\"children\": [" + object("Filler.1", source_range(0, 2)) + ", " + clip("A", 0, 4) + "]");
    EXPECT_EQ(drawn(timeline({old})), "b 0-2 | A 2-6");
}

TEST(OtioText, AHigherVersionIsAnErrorThatSaysSoEvenInData) {
    EXPECT_EQ(error_of(timeline({track({object("Clip.3", "\"name\": \"A\"")}, "\"name\": \"V1\"")})),
              "tracks/V1/children[0] \"A\": \"Clip.3\" has a higher version than this program reads (2)");
    EXPECT_NE(error_of(simple("\"metadata\": {\"x\": [{\"OTIO_SCHEMA\": \"Gap.99999999999999\"}]}"))
                  .find("metadata/x[0]: \"Gap.99999999999999\" has a higher version"),
              std::string::npos);
}

TEST(OtioText, TheNewestVersionOfEachNameIsReadAndNoneAboveIt) {
    const std::pair<const char*, int> newest[] = {{"Clip", 2},
                                                  {"ExternalReference", 1},
                                                  {"MissingReference", 1},
                                                  {"GeneratorReference", 1},
                                                  {"Gap", 1},
                                                  {"Transition", 1},
                                                  {"Marker", 3},
                                                  {"Effect", 1},
                                                  {"LinearTimeWarp", 1},
                                                  {"FreezeFrame", 1},
                                                  {"Track", 1},
                                                  {"Stack", 1},
                                                  {"Timeline", 1},
                                                  {"TimeTransform", 1},
                                                  {"ImageSequenceReference", 1}};
    const auto error_at = [](const std::string& name) {
        return error_of(simple("\"metadata\": {\"x\": {\"OTIO_SCHEMA\": \"" + name + "\"}}"));
    };
    for (const auto& [name, version] : newest) {
        const std::string above = std::string(name) + "." + std::to_string(version + 1);
        EXPECT_EQ(error_at(std::string(name) + "." + std::to_string(version)), "()") << name;
        EXPECT_EQ(error_at(above), "metadata/x: \"" + above + "\" has a higher version than this program reads (" +
                                       std::to_string(version) + ")");
    }
}

TEST(OtioText, AnUnknownNameMayStandInDataButNotInAComposition) {
    EXPECT_EQ(drawn(simple("\"metadata\": {\"x\": {\"OTIO_SCHEMA\": \"Shape.9\"}}")), "A 0-4");
    EXPECT_NE(error_of(timeline({track({object("Shape.1", "")})})).find("children[0]"), std::string::npos);
    EXPECT_NE(error_of(timeline({object("Shape.1", "")})).find("tracks/children[0]"), std::string::npos);
    EXPECT_NE(error_of(timeline({track({"null"})})).find("can't stand in a composition"), std::string::npos);
    EXPECT_NE(error_of(timeline({track({"{}"})})).find("no type"), std::string::npos);
}

TEST(OtioText, ATrackStackClipOrGapIsATimelineOfItsName) {
    EXPECT_EQ(name(read(track({clip("A", 0, 4)}, "\"name\": \"T\"")).edit), "T");
    EXPECT_EQ(drawn(track({clip("A", 0, 4)})), "A 0-4");
    EXPECT_EQ(drawn(stack({track({clip("A", 0, 4)}), track({clip("B", 0, 2)})}), 1), "B 0-2");
    EXPECT_EQ(drawn(clip("A", 0, 4)), "A 0-4");
    EXPECT_EQ(drawn(gap(3)), "b 0-3");
}

TEST(OtioText, TheFirstTimelineOfACollectionCounts) {
    const std::string collection =
        object("SerializableCollection.1", "\"children\": [" + clip("X", 0, 1) + ", " + simple("\"name\": \"one\"") +
                                               ", " + simple("\"name\": \"two\"") + "]");
    EXPECT_EQ(name(read(collection).edit), "one");
    EXPECT_NE(error_of(object("SerializableCollection.1", "")).find("no timeline"), std::string::npos);
}

TEST(OtioText, AnyOtherRootIsAnError) {
    for (const std::string root : {"{}", "[]", "3", "null", "\"x\""})
        EXPECT_NE(error_of(root).find("no timeline"), std::string::npos) << root;
    EXPECT_NE(error_of(transition(1, 1)).find("no timeline"), std::string::npos);
}

TEST(OtioText, WrongTypesOfFieldsThatMatterAreErrors) {
    EXPECT_NE(error_of(timeline({track({clip("A", 0, 1, "\"enabled\": 1")})})).find("\"enabled\""), std::string::npos);
    EXPECT_NE(error_of(timeline({object("Track.1", "\"children\": {}")})).find("\"children\""), std::string::npos);
    EXPECT_NE(error_of(timeline({track({bare_clip("\"source_range\": {\"start_time\": 1}")})})).find("TimeRange"),
              std::string::npos);
    EXPECT_NE(error_of(object("Timeline.1", "\"tracks\": " + track({}))).find("isn't a stack"), std::string::npos);
    EXPECT_NE(error_of(timeline({track({clip("A", 0, 1, "\"effects\": 3")})})).find("\"effects\""), std::string::npos);
}

TEST(OtioText, AFileThatIsNotThereIsNamed) {
    const auto result = formats::read_otio("/no/such/file.otio");
    EXPECT_FALSE(result.edit);
    EXPECT_EQ(result.error.substr(0, 18), "/no/such/file.otio");
}

} // namespace
