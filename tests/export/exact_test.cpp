// What the dictionary says beyond the numbers of a file, and how long it is believed.

#include "embedded/edit_recipe.h"
#include "tests/otio/otio_texts.h"

#include <gtest/gtest.h>

using namespace otio_texts;
using embedded::Fraction;

namespace {

const embedded::EditRecipe& recipe(const formats::ReadResult& result) {
    static const embedded::EditRecipe none;
    EXPECT_EQ(result.error, "");
    const embedded::EditRecipe* found = embedded::recipe_of(result.edit);
    return found ? *found : none;
}

const embedded::EventDescription& first_event(const formats::ReadResult& result) {
    return recipe(result).channels.at(0).items.at(0).event;
}

const embedded::SourceDescription& first_source(const formats::ReadResult& result) {
    return recipe(result).sources.at(0);
}

TEST(ExactTimes, CountWhereTheNumbersOfTheFileComeToTheSame) {
    const auto result = read(timeline({track(
        {clip("A", 0.3333333333, 1.6666666667, quillbrook(R"("exact": {"length": "5/3", "source_in": "1/3"})"))})}));
    EXPECT_EQ(first_event(result).duration, Fraction(5, 3));
    EXPECT_EQ(first_event(result).source_in, Fraction(1, 3));
}

TEST(ExactTimes, CountNothingOnceTheFileWasChanged) {
    const auto result =
        read(timeline({track({clip("A", 0, 2, quillbrook(R"("exact": {"length": "5/3", "source_in": "1/3"})"))})}));
    EXPECT_EQ(first_event(result).duration, Fraction(2));
    EXPECT_EQ(first_event(result).source_in, Fraction(0));
}

TEST(ExactTimes, CountNothingWhereTheyAreNoFraction) {
    const auto length = [](const std::string& text) {
        return first_event(
                   read(timeline({track({clip("A", 0, 2.5, quillbrook(R"("exact": {"length": ")" + text + "\"}"))})})))
            .duration;
    };
    EXPECT_EQ(length("2500001/1000000"), Fraction(2500001, 1000000));
    const std::string zeros(36, '0');
    for (const std::string text : {"2500001/-1000000", "2500001", "/1000000", "2500001/", "x2500001/1000000",
                                   "2500001/1000000x", "2500001/0", ""})
        EXPECT_EQ(length(text), Fraction(5, 2)) << text;
    EXPECT_EQ(length("2500001" + zeros + "/1000000" + zeros), Fraction(5, 2));
}

TEST(ExactTimes, MakeSpeedsTransitionsAndMarksExact) {
    const std::string third = R"("quillbrook": {"exact": {)";
    const auto result = read(timeline({track({
        clip("A", 0, 2,
             effects({effect(R"("time_scalar": 0.3333333333, "metadata": {)" + third + R"("speed": "1/3"}}})",
                             "LinearTimeWarp.1")}) +
                 ", " + markers({marker(0.6666666667, "m", "\"metadata\": {" + third + R"("offset": "2/3"}}})")})),
        transition(0.3333333333, 0.1666666667,
                   "\"metadata\": {" + third + R"("in_offset": "1/3", "out_offset": "1/6"}}})"),
        clip("B", 0, 2),
    })}));
    EXPECT_EQ(first_event(result).speed, Fraction(1, 3));
    const embedded::TransitionDescription& made = recipe(result).channels.at(0).cuts.at(0).transition;
    EXPECT_EQ(made.in_offset, Fraction(1, 3));
    EXPECT_EQ(made.out_offset, Fraction(1, 6));
    EXPECT_EQ(recipe(result).cues.at(0).cue.time, Fraction(2, 3));
}

TEST(FilmRate, MayBeAFraction) {
    const auto result = read(timeline({track({clip("A", 0, 2, quillbrook(R"("film_rate": "96000/5005")"))})}));
    EXPECT_EQ(first_source(result).film_rate, Fraction(96000, 5005));
    EXPECT_EQ(error_of(timeline({track({clip("A", 0, 2, quillbrook(R"("film_rate": "-24/1")"))})})),
              "tracks/children[0]/children[0] \"A\": \"film_rate\" isn't a number above 0");
}

TEST(Source, IsLostWhereTheFileSaysSo) {
    const std::string numbers = R"("keycode": "KJ 12 3456-0100+05")";
    EXPECT_TRUE(first_source(read(timeline({track({clip("A", 0, 2, quillbrook(numbers))})}))).opens);
    EXPECT_FALSE(
        first_source(read(timeline({track({clip("A", 0, 2, quillbrook(numbers + R"(, "lost": true)"))})}))).opens);
}

TEST(Source, CountsInDropFrameOrNotWhateverTheProjectDoes) {
    const auto type_of = [](const std::string& own) {
        return first_source(
                   read(timeline({track({clip("A", 0, 2, quillbrook(own))})},
                                 quillbrook(R"("drop_frame": true)") + ", \"global_start_time\": " + moment(0, 29.97))))
            .video_timecode->type;
    };
    const embedded::RateInfo& rate = *embedded::nearest_rate(29.97);
    EXPECT_EQ(type_of(""), rate.drop_timecode);
    EXPECT_EQ(type_of(R"("drop": true)"), rate.drop_timecode);
    EXPECT_EQ(type_of(R"("drop": false)"), rate.timecode);
}

TEST(Source, IsWhatItsIdentitySaysBeforeItsAddress) {
    const std::string media = reference(R"("target_url": "a.mov")");
    EXPECT_EQ(first_source(read(timeline({track({clip("A", 0, 2, "", media)})}))).identity, "a.mov");
    EXPECT_EQ(
        first_source(read(timeline({track({clip("A", 0, 2, quillbrook(R"("identity": "comp:A")"), media)})}))).identity,
        "comp:A");
}

TEST(Gap, IsNoBlackOnTheLowestTrackWhereItSaysNothing) {
    EXPECT_EQ(drawn(timeline({track({clip("A", 0, 2), gap(1), clip("B", 0, 1)})})), "A 0-2 | b 2-3 | B 3-4");
    EXPECT_EQ(drawn(timeline({track({clip("A", 0, 2), gap(1, quillbrook(R"("nothing": true)")), clip("B", 0, 1)})})),
              "A 0-2 | B 3-4");
}

} // namespace
