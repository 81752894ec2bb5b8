// Speeds, effects, transitions and cues.

#include "tests/otio/otio_texts.h"

#include <gtest/gtest.h>

using namespace otio_texts;

namespace {

using Strings = std::vector<std::string>;

formats::ReadResult one(const Extra& extra, const formats::ReadOptions& options = {}) {
    return read(timeline({track({clip("A", 10, 4, extra)})}), options);
}

float speed(const Extra& extra) { return points(one(extra)).at(0).speed; }

Cookie transition_cookie(const Extra& extra) {
    return points(read(timeline({track({clip("A", 9, 4), transition(1, 1, extra), clip("B", 9, 4)})}))).at(2).cookie;
}

std::vector<std::string> components(const formats::ReadResult& result, int chan = 0, double at = 0.5) {
    Vector<Qb::Ptr<FXGraphNodeBase>> nodes;
    const EditGraphIterator graph(result.edit, chan, at, 0);
    if (graph.found) graph.findComponentsForCurrentEffect(nodes);
    Strings names;
    for (unsigned i = 0; i < nodes.size(); ++i)
        names.push_back(toUTF8(nodes[i]->getName()).c_str());
    return names;
}

std::vector<int> materials(const formats::ReadResult& result, int chan = 0) {
    Vector<int> tracks;
    EditGraphIterator(result.edit, chan, 0.5, 0).findMaterialTracks(tracks);
    std::vector<int> all;
    for (unsigned i = 0; i < tracks.size(); ++i)
        all.push_back(tracks[i]);
    return all;
}

TEST(OtioSpeed, IsTheProductOfTheTimeEffectsThatArentDisabled) {
    EXPECT_EQ(speed({}), 1.0F);
    EXPECT_EQ(speed(effects({warp(2), warp(-0.25)})), -0.5F);
    EXPECT_EQ(speed(effects({warp(2), effect("\"enabled\": false, \"time_scalar\": 3", "LinearTimeWarp.1")})), 2.0F);
    EXPECT_EQ(speed(effects({effect("", "LinearTimeWarp.1")})), 1.0F);
    EXPECT_EQ(speed(effects({effect("\"time_scalar\": 2", "FreezeFrame.1")})), 0.0F);
    EXPECT_EQ(speed(effects({effect("\"time_scalar\": 2", "TimeEffect.1")})), 1.0F);
}

TEST(OtioSpeed, UsesUpMediaAndNeverChangesTheLength) {
    const auto fast = one(effects({warp(2)}));
    EXPECT_EQ(channel(fast), "A 0-4");
    EXPECT_EQ(points(fast).at(0).source_time, 10.0);
    EXPECT_EQ(points(fast).at(1).source_time, 18.0);
    const auto frozen = one(effects({effect("", "FreezeFrame.1")}));
    EXPECT_EQ(points(frozen).at(1).source_time, 10.0);
}

TEST(OtioSpeed, BackwardPlaysTheSameStretchFromItsEnd) {
    const auto result = one(effects({warp(-0.5)}));
    EXPECT_DOUBLE_EQ(points(result).at(0).source_time, 12.0 - 1.0 / 24);
    EXPECT_DOUBLE_EQ(points(result).at(1).source_time, 10.0 - 1.0 / 24);
}

TEST(OtioSpeed, AScalarThatIsNoFiniteNumberIsAnErrorThatNamesTheObject) {
    for (const std::string value : {"NaN", "Inf", "\"2\"", "1e300"})
        EXPECT_EQ(error_of(timeline({track(
                               {clip("A", 0, 1, effects({effect("\"time_scalar\": " + value, "LinearTimeWarp.1")}))})}))
                      .find("tracks/children[0]/children[0]/effects[0]: \"time_scalar\""),
                  0u);
}

TEST(OtioEffect, IsTheLabsWithTracksOrOpticalOrByTheTool) {
    EXPECT_EQ(components(one(effects({effect("\"name\": \"E\", " + quillbrook("\"optical\": true"))}))), Strings{"E"});
    EXPECT_EQ(components(one(effects({effect("\"effect_name\": \"F\", " + quillbrook("\"tracks\": [0]"))}))),
              Strings{"F"});
    EXPECT_EQ(components(one(effects({effect("\"name\": \"G\"")}))), Strings{});
    formats::ReadOptions all;
    all.all_effects = true;
    EXPECT_EQ(components(one(effects({effect("\"name\": \"G\"")}), all)), Strings{"G"});
}

TEST(OtioEffect, MaterialTracksAreTheEffectsElseTheItemsElseItsOwn) {
    const auto lab = [](const std::string& fields) { return effect(quillbrook("\"optical\": true" + fields)); };
    EXPECT_EQ(materials(one(effects({lab(", \"tracks\": [2, 1]"), lab(", \"tracks\": [1, 3.0]")}))),
              (std::vector<int>{2, 1, 3}));
    EXPECT_EQ(materials(one(effects({lab("")}) + ", " + quillbrook("\"tracks\": [5]"))), std::vector<int>{5});
    EXPECT_EQ(materials(one(effects({lab("")}))), std::vector<int>{0});
}

TEST(OtioEffect, OnFxTracksItemsWithEffectsAreEventsAndNothingElse) {
    const std::string fx =
        track({clip("A", 0, 1), gap(2, effects({effect("\"name\": \"E\"")}))}, quillbrook("\"subtype\": 8"));
    const auto result = read(timeline({track({}), fx}));
    ASSERT_EQ(points(result, 1).size(), 2u);
    EXPECT_EQ(points(result, 1).at(0).edit_time, 1.0);
    EXPECT_EQ(components(result, 1, 2.0), Strings{"E"});
}

TEST(OtioEffect, OfTracksStacksAndGapsElsewhereAreLeftOutWithAWarning) {
    const Extra fx = effects({effect("\"name\": \"E\"")});
    EXPECT_TRUE(warns_of(read(timeline({track({}, fx)})), "tracks/children[0]: its effects"));
    EXPECT_TRUE(warns_of(read(timeline({}, {}, fx)), "tracks: its effects"));
    EXPECT_TRUE(warns_of(read(timeline({track({gap(1, fx)})})), "children[0]: its effects"));
    EXPECT_FALSE(warns_of(read(timeline({track({clip("A", 0, 1, fx)})})), "effects"));
}

TEST(OtioTransition, TypesDecideTheKind) {
    EXPECT_TRUE(transition_cookie("\"transition_type\": \"SMPTE_Dissolve\"").isDissolve());
    EXPECT_TRUE(transition_cookie("\"transition_type\": \"Film_Dissolve\"").isFilmDissolve());
    EXPECT_TRUE(transition_cookie("\"transition_type\": \"SMPTE_Wipe\"").isWipe());
    const Cookie other = transition_cookie("\"transition_type\": \"Burn\"");
    EXPECT_TRUE(other.isEffect() && !other.isDissolve() && !other.isFilmDissolve() && !other.isWipe());
}

TEST(OtioTransition, WipesTakeTheirNumberFromTheFirstThatHasOne) {
    const auto wipe = [](const Extra& extra) {
        const Cookie made = transition_cookie(extra);
        return std::string(made.isWipe() ? "" : "no ") + std::to_string(made.wipeType()) + "/" +
               std::to_string(made.wipeDirection());
    };
    const std::string list = R"("cmx_3600": {"transition": "W101"})";
    EXPECT_EQ(wipe(R"("transition_type": "SMPTE_Wipe")"), "1/0");
    EXPECT_EQ(wipe(R"("transition_type": "SMPTE_Wipe_27")"), "27/0");
    EXPECT_EQ(wipe("\"transition_type\": \"SMPTE_Wipe_27\", \"metadata\": {" + list + "}"), "1/1");
    EXPECT_EQ(wipe(R"("metadata": {"cmx_3600": {"transition": "W099"}})"), "99/0");
    EXPECT_EQ(wipe(R"("metadata": {"cmx_3600": {"transition": "W100"}})"), "0/1");
    EXPECT_EQ(wipe("\"metadata\": {\"quillbrook\": {\"wipe\": {\"pattern\": 7, \"reversed\": true}}, " + list + "}"),
              "7/1");
    EXPECT_EQ(wipe("\"metadata\": {\"quillbrook\": {\"wipe\": {\"pattern\": 7}}, " + list + "}"), "7/0");
}

TEST(OtioTransition, StaysBesideADisabledClip) {
    EXPECT_EQ(drawn(timeline({track({clip("A", 9, 2), transition(0.5, 0.5), clip("B", 9, 2, "\"enabled\": false")})})),
              "A 0-1.5 | x 1.5-2.5 | b 2.5-4");
}

TEST(OtioTransition, NegativeOffsetsAreNought) {
    EXPECT_EQ(drawn(timeline({track({clip("A", 9, 2), transition(-1, 0.5), clip("B", 9, 2)})})),
              "A 0-2 | x 2-2.5 | B 2.5-4");
}

TEST(OtioCue, ClipsMarkersStandAtTheirPlaceWhateverTheSpeedIfInside) {
    const Extra marks = markers({marker(10, "in"), marker(14, "end"), marker(9, "before")}) + ", " + effects({warp(3)});
    EXPECT_EQ(cues(read(timeline({track({gap(5), clip("A", 10, 4, marks)})}))), Strings{"in/4"});
    EXPECT_EQ(cues(read(timeline({track({gap(5), clip("A", 10, 4, marks)})})), 0, 5.0), Strings{});
    EXPECT_EQ(cues(read(timeline({track({gap(5), clip("A", 10, 4, marks)})})), 0, 5.1), Strings{"in/4"});
}

TEST(OtioCue, MarkersOfAClipWithoutARangeOfItsOwnAreCountedFromNought) {
    const std::string media = reference("\"available_range\": " + range(0, 4));
    const auto result = read(timeline(
        {track({bare_clip("\"name\": \"A\", \"media_reference\": " + media + ", " + markers({marker(1, "one")}))})}));
    EXPECT_EQ(cues(result, 0, 1.0), Strings{});
    EXPECT_EQ(cues(result, 0, 1.1), Strings{"one/4"});
}

TEST(OtioCue, OfEqualTimesTheStackComesBeforeTheTrackBeforeTheClip) {
    const auto result = read(timeline(
        {track({clip("A", 0, 4, markers({marker(1, "clip")}))}, markers({marker(1, "track"), marker(0, "early")})),
         track({clip("B", 0, 4)})},
        {}, markers({marker(1, "stack")})));
    EXPECT_EQ(cues(result), (Strings{"early/4", "stack/4", "track/4", "clip/4"}));
    EXPECT_EQ(cues(result, 1), Strings{"stack/4"});
}

TEST(OtioCue, FlagsAndTextsComeFromTheMarker) {
    EXPECT_EQ(
        cues(one(markers({marker(10, "a", quillbrook("\"flags\": 3")), marker(11, "", "\"comment\": \"said\"")}))),
        (Strings{"a/3", "said/4"}));
}

TEST(OtioCue, TheFirstSchemaCallsItsRangeDifferently) {
    const std::string old = object("Marker.1", "\"name\": \"old\", \"range\": " + range(11, 0));
    const std::string newest = object("Marker.3", "\"name\": \"new\", \"marked_range\": " + range(12, 0));
    EXPECT_EQ(cues(one(markers({old, newest}))), (Strings{"old/4", "new/4"}));
}

TEST(OtioCue, MarkersOfGapsAndDisabledItemsAreDropped) {
    const Extra marks = markers({marker(0, "x")});
    const Extra off = ", \"enabled\": false";
    EXPECT_EQ(cues(read(timeline({track({gap(1, marks), clip("A", 0, 1, marks + off)})}))), Strings{});
    EXPECT_EQ(cues(read(timeline({track({clip("A", 0, 1)})}, {}, marks + off))), Strings{});
}

TEST(OtioCue, ATrimmedTracksMarkersMoveWithItsContent) {
    const Extra marks = markers({marker(1, "before"), marker(3, "kept"), marker(5, "behind")});
    const auto result = read(timeline({track({clip("A", 0, 9)}, marks + ", " + source_range(2, 3))}));
    EXPECT_EQ(cues(result), Strings{"kept/4"});
    EXPECT_EQ(cues(result, 0, 0.9), Strings{});
}

TEST(OtioEffect, TracksThatAreNoArrayDontCount) {
    const auto result = one(effects({effect(quillbrook("\"optical\": true, \"tracks\": 3"))}));
    EXPECT_TRUE(warns_of(result, "its \"tracks\" aren't an array, so they don't count"));
    EXPECT_EQ(materials(result), std::vector<int>{0});
}

} // namespace
