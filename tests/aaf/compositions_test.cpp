// Which composition of a file is the edit, its rate and timecode, its channels and markers.

#include "formats/edit_readers.h"
#include "tests/aaf/aaf_edits.h"

#include <gmock/gmock.h>

using namespace aaf_edits;
using testing::HasSubstr;

namespace {

constexpr Rate ntsc{30000, 1001};

std::string start_of(const formats::ReadResult& result) {
    return result.edit ? result.edit->getLabel(user_label_timecode, {medium_video, 1})->get_string(0) : result.error;
}

/// The cues of a channel as "text@frame".
std::vector<std::string> cues(const formats::ReadResult& result, int channel = 0) {
    std::vector<std::string> all;
    if (!result.edit) return all;
    CueList* found = embedded::EditBuilder::cues_of(result.edit)->extract(0, 1e6, result.edit->getId(channel));
    for (unsigned i = 0; found && found->getCuePoint(i, 0); ++i)
        all.push_back(std::string(toUTF8(found->getCuePoint(i, 0)->text).c_str()) + "@" +
                      number(embedded::EditBuilder::time_of_cue(*found, i) * 24));
    delete found;
    return all;
}

TEST(AafCompositions, OfSeveralOneMustBeNamed) {
    Made made = track(clip(1, 0, 10));
    made.mobs.push_back(composition(101, "Reel 2", {slot(1, {25}, filler(10))}));
    const auto unnamed = read(made);
    EXPECT_TRUE(unnamed.sequence_missing);
    EXPECT_THAT(unnamed.error, HasSubstr("holds 2 sequences: \"Reel\" (composition 1), \"Reel 2\" (composition 2)"));
    formats::ReadOptions options;
    options.sequence = "Reel 2";
    EXPECT_EQ(drawn(read(made, options)), "b 0-10");
    options.list_only = true;
    const auto listed = read(made, options);
    ASSERT_EQ(listed.sequences.size(), 2u);
    EXPECT_FALSE(listed.edit);
    EXPECT_EQ(listed.sequences[1].name, "Reel 2");
    EXPECT_EQ(listed.sequences[1].place, "composition 2");
    EXPECT_EQ(listed.sequences[1].rate->nominal, 25);
}

TEST(AafCompositions, WithoutMarksThoseCountThatNoOtherUses) {
    Made made;
    made.mobs = {composition(50, "Nest", {slot(1, {24}, clip(1, 0, 10))}, false),
                 composition(100, "Reel", {slot(1, {24}, sequence({clip(50, 0, 10)}))}, false)};
    add(made.mobs, shot(1, "A"));
    const auto result = read(made);
    EXPECT_EQ(drawn(result), "A 0-10 @0");
    EXPECT_EQ(toUTF8(result.edit->getName()).size(), 4u);
}

TEST(AafCompositions, MarkersOfANestAreLeftOutWithAWarning) {
    const auto read_with = [](Objects markers) {
        Made made;
        Objects slots{slot(1, {24}, sequence({clip(1, 0, 10), clip(2, 0, 10)}))};
        if (!markers.empty()) slots.push_back(markers_slot(9, {24}, std::move(markers)));
        made.mobs = {composition(50, "Nest", std::move(slots), false),
                     composition(100, "Reel", {slot(1, {24}, sequence({clip(50, 0, 20)}))})};
        add(made.mobs, shot(1, "A"));
        add(made.mobs, shot(2, "B"));
        return read(made);
    };
    EXPECT_TRUE(read_with({}).warnings.empty());
    const auto told = read_with({marker(4, "look", {1})});
    ASSERT_EQ(told.warnings.size(), 1u);
    EXPECT_EQ(told.warnings[0].kind, embedded::WarningKind::dropped);
    EXPECT_THAT(told.warnings[0].text, HasSubstr("its own markers are left out"));
}

TEST(AafCompositions, FilesWithoutOneAreRefused) {
    Made made;
    made.mobs = shot(1, "A");
    EXPECT_EQ(read(made).error, "reel.aaf: it holds no composition");
    const std::string other = compound_writer::written({"Root Entry", true, {}, {}, {}});
    EXPECT_EQ(formats::read_aaf_bytes(other, "a.doc", 0).error, "a.doc: is a compound file, but no AAF");
    EXPECT_EQ(formats::read_aaf_bytes("no", "a.aaf", 0).error, "a.aaf: is no compound file");
}

TEST(AafCompositions, RatesOfWritersAreTheListedOnes) {
    for (const Rate& rate : {Rate{24000, 1001}, Rate{23976, 1000}, Rate{2997, 125}})
        EXPECT_EQ(read(reel({slot(1, rate, clip(1, 0, 10))}, rate)).edit->getSourceFrameRate(),
                  embedded::nearest_rate(24000.0 / 1001)->code);
    EXPECT_EQ(read(reel({slot(1, {2997, 100}, clip(1, 0, 10))}, ntsc)).edit->getSourceFrameRate(),
              embedded::nearest_rate(30000.0 / 1001)->code);
    formats::ReadOptions options;
    options.rate = embedded::nearest_rate(25.0);
    EXPECT_EQ(read(track(clip(1, 0, 10)), options).edit->getSourceFrameRate(), options.rate->code);
}

TEST(AafCompositions, ARateOfZeroIsRefusedWithItsSlot) {
    const auto result = read(reel({slot(1, {0}, clip(1, 0, 10)), slot(2, {24}, clip(1, 0, 10))}));
    EXPECT_EQ(result.error, "reel.aaf: composition \"Reel\", slot 1: its rate isn't above 0");
}

TEST(AafCompositions, SoundAloneHasTheRateOfItsTimecode) {
    Made made;
    made.mobs = {composition(
        100, "Mix", {slot(1, {48000}, clip(1, 96000, 48000, 1, sound)), slot(2, {25}, timecode(90000, 25, 1000), 1)})};
    add(made.mobs, shot(1, "A", {48000}, 0));
    const auto result = read(made);
    ASSERT_EQ(result.error, "");
    EXPECT_EQ(start_of(result), "01:00:00:00");
    EXPECT_EQ(drawn(result), "A 0-25 @50");
    made.mobs[0] = composition(
        100, "Mix",
        {slot(1, {48000}, clip(1, 96000, 48000, 1, sound)), slot(2, {48000}, timecode(90000, 25, 48000), 1)});
    EXPECT_EQ(drawn(made), "A 0-25 @50") << "that of its counting, where its slot has the rate of the sound";
    made.mobs[0] = composition(100, "Mix", {slot(1, {48000}, clip(1, 0, 48000, 1, sound))});
    EXPECT_TRUE(read(made).rate_missing);
}

TEST(AafCompositions, TimecodeIsThatOfTrackOneElseOfTheLowestElseTheFirst) {
    const Object pictures = slot(1, {24}, clip(1, 0, 10));
    const Object hour1 = slot(2, {24}, timecode(86400, 24, 10), 1), hour2 = slot(3, {24}, timecode(172800, 24, 10), 8);
    const Object first = slot(4, {24}, timecode(24, 24, 10)), second = slot(5, {24}, timecode(48, 24, 10));
    EXPECT_EQ(start_of(read(reel({pictures, hour2, hour1}))), "01:00:00:00");
    EXPECT_EQ(start_of(read(reel({pictures, hour2}))), "02:00:00:00");
    EXPECT_EQ(start_of(read(reel({pictures, first, second}))), "00:00:01:00");
}

TEST(AafCompositions, DropFrameAndTwentyFourFrameTimecode) {
    Object film_count = pulldown(10, false, timecode(86400, 24, 10)).weak(pid::data_definition, timecode_data);
    const auto result = read(reel(
        {slot(1, ntsc, clip(1, 0, 10)), slot(2, ntsc, timecode(17982, 30, 10, true), 1), slot(3, ntsc, film_count, 3)},
        ntsc));
    EXPECT_EQ(start_of(result), "00:10:00;00");
    EXPECT_STREQ(result.edit->getLabel(user_label_timecode, {medium_edit_24p, 1})->get_string(0), "01:00:00:00");
}

TEST(AafCompositions, TimecodeOfAnotherCountingIsConvertedWithAWord) {
    const auto result = read(reel({slot(1, {24}, clip(1, 0, 10)), slot(2, {24}, timecode(108000, 30, 10), 1)}));
    EXPECT_EQ(start_of(result), "01:00:00:00");
    EXPECT_TRUE(warns_of(result, "its timecode counts 30 frames a second, not 24"));
}

TEST(AafCompositions, PictureTracksStandInOrderOfTheirNumbers) {
    const auto result = read(reel({slot(3, {24}, clip(1, 0, 10), 2), slot(7, {24}, clip(2, 0, 10), 1),
                                   slot(4, {24}, clip(3, 0, 10, 1, sound), 1)}));
    EXPECT_EQ(drawn(result, 0), "B 0-10 @0");
    EXPECT_EQ(drawn(result, 1), "A 0-10 @0");
    EXPECT_EQ(drawn(result, 2), "C 0-10 @0");
}

TEST(AafCompositions, EmptyPlacesOfUpperTracksAreNoBlack) {
    const auto result = read(reel({slot(1, {24}, sequence({filler(5), clip(1, 0, 10)}), 1),
                                   slot(2, {24}, sequence({filler(5), clip(2, 0, 10)}), 2)}));
    EXPECT_EQ(drawn(result, 0), "b 0-5 | A 5-15 @0");
    EXPECT_EQ(drawn(result, 1), "B 5-15 @0");
}

TEST(AafCompositions, OldIdsOfPictureAndSoundAreKnownAndOthersAreToldOf) {
    Object old = clip(1, 0, 10);
    old.weak(pid::data_definition, auid("6f3c8ce1-6cef-11d2-807d-006008143e6f"));
    Object strange = clip(2, 0, 10);
    strange.weak(pid::data_definition, auid("01234567-89ab-cdef-0123-456789abcdef"));
    const auto result = read(reel({slot(1, {24}, old), slot(2, {24}, strange)}));
    EXPECT_EQ(drawn(result), "A 0-10 @0");
    EXPECT_EQ(result.edit->getNumChans(), 1);
    EXPECT_TRUE(warns_of(result, "slot 2: it is neither picture nor sound"));
}

TEST(AafCompositions, EdgecodeOfTheCutIsNotFilm) {
    const auto result = read(reel({slot(1, {24}, clip(1, 0, 10)), slot(2, {24}, edge_code("001", 0, 10), 1)}));
    EXPECT_EQ(label_at(result, user_label_key), "-");
    EXPECT_TRUE(result.warnings.empty());
}

TEST(AafCompositions, MarkersStandOnTheirTracks) {
    Made made = reel({slot(1, {24}, clip(1, 0, 100), 1), slot(2, {24}, clip(2, 0, 100), 2),
                      markers_slot(9, {24}, {marker(30, "dirt", {2}), marker(10, "start", {1}), marker(50, "all")})});
    const auto result = read(made);
    EXPECT_THAT(cues(result, 0), testing::ElementsAre("start@10", "all@50"));
    EXPECT_THAT(cues(result, 1), testing::ElementsAre("dirt@30", "all@50"));
}

TEST(AafCompositions, TheTextOfAMarkerMayStandInAPropertyOfTheFilesOwn) {
    Object own = marker(10, "", {1});
    Objects tags;
    tags.push_back(Object(auid("0d010101-0101-3f00-060e-2b3402060101"))
                       .text(pid::tag_name, "_ATN_CRM_COM")
                       .indirect_text(pid::tag_value, "look"));
    own.vector(0xfff8, std::move(tags));
    Made made = reel({slot(1, {24}, clip(1, 0, 100)), markers_slot(9, {24}, {own})});
    EXPECT_THAT(cues(read(made)), testing::ElementsAre("@10"));
    made.classes.push_back(defined_property(auid("60958184-47b1-11d4-a01c-0004ac969f50"), 0xfff8));
    EXPECT_THAT(cues(read(made)), testing::ElementsAre("look@10"));
}

TEST(AafCompositions, MarkersOfABinsClipGoWithIt) {
    Made made = track(sequence({clip(1, 20, 30), clip(1, 100, 30)}));
    made.mobs[1] = master(1, "A",
                          {slot(1, {24}, clip(1001, 0, 10000)),
                           markers_slot(5, {24}, {marker(25, "in"), marker(60, "out"), marker(110, "next")})});
    EXPECT_THAT(cues(read(made)), testing::ElementsAre("in@5", "next@40"));
}

TEST(AafCompositions, NamesMayBeOfAnyLetters) {
    Made made = track(clip(1, 0, 10));
    const std::string wide("N\0\xE9\0\xAC\x20\x22\x22\0\0", 10);
    made.mobs[1].raw(pid::mob_name, wide);
    EXPECT_EQ(drawn(made), "N\xC3\xA9\xE2\x82\xAC\xE2\x88\xA2 0-10 @0");
}

TEST(AafCompositions, TheTimeOfTheLastChangeIsTheMobs) {
    Made made = track(clip(1, 0, 10));
    made.mobs[0].raw(pid::last_modified, std::string("\xE8\x07\x02\x1D\x0C\x1E\x05\x00", 8)); // 2024-02-29 12:30:05
    int time = 0;
    EXPECT_EQ(read_edit_field(read(made).edit.get(), "modification_time", time), 0);
    EXPECT_EQ(time, 1709209805);
    made.mobs[0].raw(pid::last_modified, std::string("\xE8\x07\x0D\x1D\x0C\x1E\x05\x00", 8)); // no such month
    EXPECT_EQ(read_edit_field(read(made).edit.get(), "modification_time", time), 0);
    EXPECT_EQ(time, 1000);
}

TEST(AafCompositions, AnyProgramMayAskForThemByTheKindOfTheFile) {
    EXPECT_NE(formats::edit_reader_of(formats::FileKind::aaf, "reel.aaf"), nullptr);
    EXPECT_EQ(formats::kind_of_file(written(track(clip(1, 0, 10)))), formats::FileKind::aaf);
}

TEST(AafCompositions, MarkersOfABinsClipStandWhereASpeedShowsTheirFrames) {
    const auto cues_at = [](const Object& shown) {
        Made made = track(sequence({clip(2, 0, 5), shown}));
        made.mobs[1] = master(1, "A",
                              {slot(1, {24}, clip(1001, 0, 10000)),
                               markers_slot(5, {24}, {marker(10, "first"), marker(12, "third"), marker(19, "last")})});
        return cues(read(made));
    };
    const auto played = [](std::int64_t length, std::int64_t num, std::int64_t den) {
        return effect(speed_control, length, {clip(1, 10, 10)}, {constant(speed_ratio, num, den)});
    };
    EXPECT_THAT(cues_at(played(10, -1, 1)), testing::ElementsAre("last@5", "third@12", "first@14"));
    EXPECT_THAT(cues_at(played(20, -2, 1)), testing::ElementsAre("last@5", "third@19", "first@23"));
    EXPECT_THAT(cues_at(effect(repeat_control, 5, {clip(1, 10, 1)})), testing::ElementsAre("first@5"));
    EXPECT_THAT(cues_at(effect(repeat_control, 5, {clip(1, 11, 1)})), testing::IsEmpty());
}

TEST(AafCompositions, AScopesTracksKeepTheirNumbersOverOneOfReferences) {
    Objects shown;
    shown.push_back(below(10));
    shown.push_back(clip(2, 0, 20));
    const auto result = read(track(scope(30, {clip(1, 0, 30), sequence({below(30)}), sequence(shown), below(30)})));
    EXPECT_EQ(drawn(result, 0), "A 0-30 @0");
    EXPECT_EQ(drawn(result, 1), "");
    EXPECT_EQ(drawn(result, 2), "B 10-30 @0");
    EXPECT_EQ(result.edit->getNumChans(), 3) << "none for that on top";
}

TEST(AafCompositions, AnOriginOfATrackIsToldOf) {
    const auto result = read(reel({slot(1, {24}, clip(1, 0, 30)), slot(2, {24}, clip(2, 25, 20), 2, 10)}));
    EXPECT_EQ(drawn(result, 1), "B 0-20 @25");
    EXPECT_TRUE(warns_of(result, "slot 2: its origin, frame 10, doesn't count: it stands where the edit begins"));
}

} // namespace
