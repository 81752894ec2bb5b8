#include "cutlist/convert_labels.h"
#include "tests/generator/generator_fixture.h"

using namespace generator_test;

namespace {

class SourceLabels : public GeneratorTest {
protected:
    EditBuilder builder{plain_edit()};

    /// One event a source, of a second each from the source's 10th frame on.
    void list_each(std::vector<SourceDescription> sources) {
        builder.add_channel(picture);
        for (SourceDescription& source : sources)
            builder.add_event(0, event_of(builder.add_source(std::move(source)), 24, 10));
        EXPECT_TRUE(make(builder));
    }
    void list_event(const SourceDescription& source, int length, int source_in, const Fraction& speed) {
        builder.add_channel(picture);
        builder.add_event(0, event_of(builder.add_source(source), length, source_in, speed));
        EXPECT_TRUE(make(builder));
    }
    static std::string cookie_text(const std::string& identity) {
        char text[9];
        std::snprintf(text, sizeof text, "%08X", embedded::fnv1a(identity));
        return text;
    }
};

TEST_F(SourceLabels, AnEventIsCountedFromTheStartOfItsSource) {
    SourceDescription source = shot("one");
    source.sound_timecode = label(label_tc_24, "02:00:00:00");
    source.timecode_24p = label(label_tc_24, "03:00:00:00");
    source.ink = label(43, "AB120100+00");
    source.scene = "12A";
    source.take = "3";
    source.description = "Harbour, wide";
    list_each({source});
    EXPECT_EQ(field(0, cf_keycode_in), "KJ1234560100+10");
    EXPECT_EQ(field(0, cf_keycode_out), "KJ1234560102+02");
    EXPECT_EQ(field(0, cf_keylabeltype), "35mm-4p");
    EXPECT_EQ(field(0, cf_keycode_missing), "0");
    EXPECT_EQ(field(0, cf_inkcode_in), "AB120100+10");
    EXPECT_EQ(field(0, cf_inkcode_out), "AB120102+02");
    EXPECT_EQ(field(0, cf_prim_tc_in), "01:00:00:10");
    EXPECT_EQ(field(0, cf_prim_tc_out), "01:00:01:10");
    EXPECT_EQ(field(0, cf_aud_tc_in), "02:00:00:10");
    EXPECT_EQ(field(0, cf_src24P_tc_in), "03:00:00:10");
    EXPECT_EQ(field(0, cf_src24P_tc_out), "03:00:01:10");
    EXPECT_EQ(field(0, cf_scene), "12A");
    EXPECT_EQ(field(0, cf_take), "3");
    EXPECT_EQ(field(0, cf_description), "Harbour, wide");
    EXPECT_EQ(field(0, cf_shot_name), "one");
    EXPECT_EQ(field(0, cf_cookie), cookie_text("name:one"));
    EXPECT_EQ(field(0, cf_speed), "1");
    EXPECT_EQ(field(0, cf_special), "0");
}

TEST_F(SourceLabels, ReelsComeFromTheirMediaAndAreCutToEightCharacters) {
    SourceDescription source = shot("one");
    source.reels = {{{1, 2}, "PICTUREREEL"}, {{4, 3}, "S1"}, {{15, 1}, "P24"}, {{2, 1}, "A001"}};
    list_each({source});
    EXPECT_EQ(field(0, cf_src_reelid), "PICTURER");
    EXPECT_EQ(field(0, cf_aud_reelid), "S1");
    EXPECT_EQ(field(0, cf_src24P_reelid), "P24");
    EXPECT_EQ(field(0, cf_cam_reel), "A001");
}

TEST_F(SourceLabels, TheOptionChoosesTheMediumOfTheCameraReel) {
    SourceDescription source = shot("one");
    source.reels = {{{2, 1}, "CAMERA"}, {{10, 1}, "LAB"}};
    block.set("film_reel", "10");
    list_each({source});
    EXPECT_EQ(field(0, cf_cam_reel), "LAB");
}

TEST_F(SourceLabels, AMediumOfZeroReadsTheCameraReel) {
    SourceDescription source = shot("one");
    source.reels = {{{2, 1}, "CAMERA"}, {{10, 1}, "LAB"}};
    block.set("film_reel", "0");
    list_each({source});
    EXPECT_EQ(field(0, cf_cam_reel), "CAMERA");
}

TEST_F(SourceLabels, TheFirstKeyNumberSetsTheStandardAndALaterOneOfAnotherKindMixesIt) {
    list_each({shot("one", "KJ1234560100+00", 11), shot("two", "KJ1234560100+00", 10)});
    EXPECT_EQ(param("film label_std"), "16mm-1p");
    EXPECT_EQ(param("mixed_kc_standard"), "1");
    EXPECT_EQ(field(0, cf_keycode_in), "KJ1234560100+10");
    EXPECT_EQ(field(0, cf_keycode_out), "KJ1234560101+14");
    EXPECT_EQ(field(1, cf_keycode_out), "KJ1234560102+02");
    EXPECT_EQ(field(1, cf_keylabeltype), "35mm-4p");
    EXPECT_EQ(column(cf_edit_out), "24 48");
}

TEST_F(SourceLabels, SourcesOfOneKindDontMix) {
    list_each({shot("one"), shot("two")});
    EXPECT_EQ(param("mixed_kc_standard"), "0");
}

TEST_F(SourceLabels, TheStandardComesBehindAnEventWithoutFilmNumbers) {
    list_each({bare_source("zero"), shot("one", "KJ1234560100+00", 12)});
    EXPECT_EQ(param("film label_std"), "35mm-3p");
    EXPECT_EQ(field(0, cf_keylabeltype), "35mm-4p-4d");
    EXPECT_EQ(param("mixed_kc_standard"), "0");
}

TEST_F(SourceLabels, ASourceWithAnInkNumberAloneSetsTheStandardThroughIt) {
    SourceDescription source = bare_source("one");
    source.ink = label(44, "AB120100+00");
    list_each({source});
    EXPECT_EQ(param("film label_std"), "16mm-1p");
    EXPECT_EQ(field(0, cf_inkcode_in), "AB120100+10");
    EXPECT_EQ(field(0, cf_inklabeltype), "16mm-1p-ink");
    EXPECT_EQ(field(0, cf_keycode_missing), "1");
}

TEST_F(SourceLabels, AnInkNumberDoesntChangeAStandardThatIsSet) {
    SourceDescription source = shot("two");
    source.ink = label(44, "AB120100+00");
    list_each({shot("one"), source});
    EXPECT_EQ(param("film label_std"), "35mm-4p");
    EXPECT_EQ(param("mixed_kc_standard"), "0");
    EXPECT_EQ(field(1, cf_inklabeltype), "35mm-4p-ink");
}

TEST_F(SourceLabels, ASourceWithoutFilmNumbersCountsBehindItsCookie) {
    list_each({bare_source("one")});
    EXPECT_EQ(field(0, cf_keycode_in), cookie_text("name:one") + "0000+10");
    EXPECT_EQ(field(0, cf_keycode_out), cookie_text("name:one") + "0002+02");
    EXPECT_EQ(field(0, cf_keylabeltype), "35mm-4p-4d");
    EXPECT_EQ(field(0, cf_keycode_missing), "1");
    EXPECT_EQ(field(0, cf_inkcode_in), "");
    EXPECT_EQ(field(0, cf_prim_tc_in), "");
    EXPECT_EQ(field(0, cf_special), "0");
}

TEST_F(SourceLabels, BlackCountsItsOwnLengthFromZero) {
    builder.add_channel(picture);
    builder.add_event(0, event_of(builder.add_source(shot("one")), 24, 10));
    builder.add_black(0, frames(36));
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(field(1, cf_keycode_in), "__BLACK_0000+00");
    EXPECT_EQ(field(1, cf_keycode_out), "__BLACK_0002+04");
    EXPECT_EQ(field(1, cf_keycode_missing), "0");
    EXPECT_EQ(field(1, cf_special), "98");
    EXPECT_EQ(field(1, cf_src_reelid), "__BLACK");
    EXPECT_EQ(field(1, cf_aud_reelid), "__BLACK");
    EXPECT_EQ(field(1, cf_src24P_reelid), "__BLACK");
    EXPECT_EQ(field(1, cf_cam_reel), "__BLACK");
    EXPECT_EQ(field(1, cf_cookie), cookie_text("BLACK"));
    EXPECT_EQ(field(1, cf_shot_name), "");
}

TEST_F(SourceLabels, MaterialThatIsLostIsMarked) {
    SourceDescription source = shot("one");
    source.opens = false;
    list_event(source, 24, 10, 2);
    EXPECT_EQ(field(0, cf_special), "110");
    EXPECT_EQ(field(0, cf_src_reelid), "__NOLOG");
    EXPECT_EQ(field(0, cf_cam_reel), "__NOLOG");
    EXPECT_EQ(field(0, cf_keycode_missing), "1");
    EXPECT_EQ(field(0, cf_speed), "1");
    EXPECT_EQ(field(0, cf_keycode_in), cookie_text("name:one") + "0000+10");
    EXPECT_EQ(field(0, cf_keycode_out), cookie_text("name:one") + "0003+10");
}

TEST_F(SourceLabels, RenderedMaterialHasNoLabels) {
    embedded::set_host_setting("allow_auto_unrender", 0);
    SourceDescription source = shot("one");
    source.rendered = true;
    list_each({source});
    EXPECT_EQ(field(0, cf_src_reelid), "RENDERED");
    EXPECT_EQ(field(0, cf_special), "110");
    EXPECT_EQ(field(0, cf_keycode_missing), "1");
    EXPECT_EQ(field(0, cf_prim_tc_std), "");
    EXPECT_EQ(field(0, cf_inkcode_in), "");
}

TEST_F(SourceLabels, ThePositionInTheSourceIsCountedFromItsFirstFrame) {
    SourceDescription source = shot("one");
    source.start_strip = frames(6);
    list_each({source});
    EXPECT_EQ(field(0, cf_keycode_in), "KJ1234560100+04");
    EXPECT_EQ(field(0, cf_keycode_out), "KJ1234560101+12");
    EXPECT_EQ(field(0, cf_prim_tc_in), "01:00:00:04");
    EXPECT_EQ(field(0, cf_prim_tc_out), "01:00:01:04");
}

TEST_F(SourceLabels, ASpeedNearOneIsOne) {
    list_event(shot("one"), 200, 0, {1005, 1000});
    EXPECT_EQ(field(0, cf_speed), "1");
    EXPECT_EQ(field(0, cf_keycode_out), "KJ1234560112+09");
}

TEST_F(SourceLabels, AFastEventsOutPointIsRoundedUpOnFilmButNotInTimecode) {
    list_event(shot("one"), 25, 0, {3, 2});
    EXPECT_EQ(field(0, cf_speed), "1.5");
    EXPECT_EQ(field(0, cf_keycode_out), "KJ1234560102+06");
    EXPECT_EQ(field(0, cf_prim_tc_out), "01:00:01:13");
}

TEST_F(SourceLabels, ASpeedNearZeroIsAFreeze) {
    list_event(shot("one"), 40, 10, {1, 200});
    EXPECT_EQ(field(0, cf_speed), "0");
    EXPECT_EQ(field(0, cf_keycode_in), "KJ1234560100+10");
    EXPECT_EQ(field(0, cf_keycode_out), "KJ1234560100+11");
}

TEST_F(SourceLabels, ABackwardEventCountsDown) {
    list_event(shot("one"), 24, 32, -1);
    EXPECT_EQ(field(0, cf_speed), "-1");
    EXPECT_EQ(field(0, cf_keycode_in), "KJ1234560103+07");
    EXPECT_EQ(field(0, cf_keycode_out), "KJ1234560101+15");
}

TEST(RoundFrames, RoundsAwayFromZeroWhereMoreThanAHairIsCut) {
    EXPECT_EQ(round_frames(10.04), 10.04);
    EXPECT_EQ(round_frames(10.06), 11.0);
    EXPECT_EQ(round_frames(-10.06), -11.0);
    EXPECT_EQ(round_frames(-10.04), -10.04);
    EXPECT_EQ(round_frames(0.0), 0.0);
}

TEST_F(SourceLabels, ExtraDigitsOfTheKeyCountAreTheGeneratorsAlone) {
    block.set("long_keycode", "2");
    list_each({shot("one")});
    EXPECT_EQ(param("film label_std"), "35mm-4p-6d");
    EXPECT_EQ(param("mixed_kc_standard"), "0");
    EXPECT_EQ(field(0, cf_keylabeltype), "35mm-4p");
}

TEST_F(SourceLabels, KeyNumbersAreComparedWithTheListsAtTheListsCountOfDigits) {
    block.set("long_keycode", "2");
    list_each({shot("one"), shot("two")});
    EXPECT_EQ(param("film label_std"), "35mm-4p-6d");
    EXPECT_EQ(param("mixed_kc_standard"), "0");
}

TEST_F(SourceLabels, WithoutExtraDigitsTheStandardKeepsItsOwnCount) {
    for (const char* value : {"3", "-5"}) {
        block.set("long_keycode", value);
        EditBuilder other(plain_edit());
        other.add_channel(picture);
        other.add_event(0, event_of(other.add_source(shot("one", "KJ12345600100+00", 22)), 24));
        EXPECT_TRUE(make(other));
        EXPECT_EQ(param("film label_std"), "35mm-4p-5d") << value;
    }
}

TEST_F(SourceLabels, SoundIsListedByTheSameLabels) {
    block.set("chan_type", "2");
    SourceDescription source = shot("one");
    source.sound_timecode = label(label_tc_24, "02:00:00:00");
    source.reels[{4, 3}] = "S1";
    builder.add_channel(sound);
    builder.add_event(0, event_of(builder.add_source(source), 24, 10));
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(field(0, cf_aud_tc_in), "02:00:00:10");
    EXPECT_EQ(field(0, cf_aud_reelid), "S1");
    EXPECT_EQ(field(0, cf_keycode_in), "KJ1234560100+10");
}

TEST_F(SourceLabels, TheFirstCueThatIsToBePrintedIsTaken) {
    builder.add_channel(picture);
    const SourceId one = builder.add_source(shot("one"));
    builder.add_event(0, event_of(one, 24, 10));
    builder.add_event(0, event_of(one, 24, 100));
    builder.add_cue(0, EditBuilder::CueLevel::clip, cue(30, "later"));
    builder.add_cue(0, EditBuilder::CueLevel::clip, cue(26, "first printed", 6));
    builder.add_cue(0, EditBuilder::CueLevel::clip, cue(25, "not printed", 3));
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(column(cf_clip_cue), "0 1");
    EXPECT_EQ(field(1, cf_cue_description), "first printed");
}

TEST_F(SourceLabels, ACueIsCutToItsColumn) {
    builder.add_channel(picture);
    builder.add_event(0, event_of(builder.add_source(shot("one")), 24, 10));
    builder.add_stack_cue(cue(3, std::string(300, 'c')));
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(field(0, cf_cue_description), std::string(127, 'c'));
}

TEST_F(SourceLabels, WithoutACueListThereAreNoCues) {
    builder.add_channel(picture);
    builder.add_event(0, event_of(builder.add_source(shot("one")), 24, 10));
    builder.add_stack_cue(cue(3, "cue"));
    EXPECT_TRUE(make(builder.finish(), nullptr));
    EXPECT_EQ(field(0, cf_clip_cue), "0");
}

} // namespace
