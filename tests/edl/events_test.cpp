// What becomes of each kind of event.

#include "formats/edl/edl_tracks.h"
#include "tests/edl/listed_edit.h"

#include <gmock/gmock.h>

using namespace edl_tests;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using embedded::Warning;
using embedded::WarningKind;

namespace {

/// The channel of a list that must be read without a word.
std::string channel(const std::string& list, int number = 0, double rate = 24) {
    const formats::ReadResult result = read(list, rate);
    EXPECT_EQ(result.error, "");
    EXPECT_THAT(result.warnings, IsEmpty());
    return result.edit ? drawn(result.edit, number, rate) : "";
}

TEST(Events, CutsStandAtTheirRecordTimecode) {
    const formats::ReadResult result = read("TITLE: Reel\nFCM: NON-DROP FRAME\n"
                                            "001  A V C 01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n"
                                            "002  B V C 02:00:00:12 02:00:01:00 10:00:01:00 10:00:01:12\n");
    EXPECT_EQ(drawn(result.edit, 0), "0-24 A@01:00:00:00 | 24-36 B@02:00:00:12");
    EXPECT_STREQ(result.edit->getLabel(user_label_timecode, {medium_video, 1})->get_string(0), "10:00:00:00");
    EXPECT_STREQ(toUTF8(result.edit->getName()).c_str(), "Reel");
    EXPECT_EQ(reel_at(result.edit, 0, 1), "B");
}

TEST(Events, OrderOfTheLinesDoesNotMatter) {
    EXPECT_EQ(channel("002  B V C 02:00:00:00 02:00:00:12 10:00:01:00 10:00:01:12\n"
                      "001  A V C 01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n"),
              "0-24 A@01:00:00:00 | 24-36 B@02:00:00:00");
}

TEST(Events, GapsAreBlackOnTheLowestPictureTrack) {
    EXPECT_EQ(channel("001  A V C 01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n"
                      "002  B V C 02:00:00:00 02:00:01:00 10:00:02:00 10:00:03:00\n"),
              "0-24 A@01:00:00:00 | 24-48 black | 48-72 B@02:00:00:00");
}

TEST(Events, BlackHasNoSource) {
    EXPECT_EQ(channel("001  BL V C 00:00:00:00 00:00:01:00 10:00:00:00 10:00:01:00\n"
                      "002  B V C 02:00:00:00 02:00:01:00 10:00:01:00 10:00:02:00\n"),
              "0-24 black | 24-48 B@02:00:00:00");
}

TEST(Events, AuxiliaryMaterialHasATimecodeButNoReel) {
    const formats::ReadResult result = read("001  AX V C 01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n"
                                            "* FROM CLIP NAME: Logo\n");
    EXPECT_EQ(drawn(result.edit, 0), "0-24 Logo@01:00:00:00");
    EXPECT_EQ(reel_at(result.edit, 0, 0), "");
}

TEST(Events, DissolveLongerThanItsEventIsCutAndTold) {
    const formats::ReadResult result = read("001  A V C     01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n"
                                            "002  B V D 030 02:00:00:00 02:00:01:00 10:00:01:00 10:00:02:00\n");
    EXPECT_THAT(result.warnings,
                ElementsAre(Warning(WarningKind::dropped,
                                    "a.edl: line 2: the transition is 30 frames long and its event 24; cut to that")));
    EXPECT_EQ(drawn(result.edit, 0), "0-24 A@01:00:00:00 | 24-48 diss | 48-48 B@02:00:01:00");
}

TEST(Events, DissolveBeginsAtTheRecordInOfItsSecondLine) {
    EXPECT_EQ(channel("001  A V C     01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n"
                      "002  A V C     01:00:01:00 01:00:01:00 10:00:01:00 10:00:01:00\n"
                      "002  B V D 010 02:00:00:00 02:00:01:00 10:00:01:00 10:00:02:00\n"),
              "0-24 A@01:00:00:00 | 24-34 diss | 34-48 B@02:00:00:10");
}

TEST(Events, DissolveFromAnotherReelThanTheOneBefore) {
    EXPECT_EQ(channel("001  A V C     01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n"
                      "002  C V C     03:00:00:00 03:00:00:00 10:00:01:00 10:00:01:00\n"
                      "002  B V D 010 02:00:00:00 02:00:01:00 10:00:01:00 10:00:02:00\n"),
              "0-24 A@01:00:00:00 | 24-24 C@03:00:00:00 | 24-34 diss | 34-48 B@02:00:00:10");
}

TEST(Events, WipesKeepTheirNumberAndDirection) {
    EXPECT_EQ(channel("001  A V C        01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n"
                      "002  A V C        01:00:01:00 01:00:01:00 10:00:01:00 10:00:01:00\n"
                      "002  B V W019 010 02:00:00:00 02:00:01:00 10:00:01:00 10:00:02:00\n"
                      "003  B V C        02:00:01:00 02:00:01:00 10:00:02:00 10:00:02:00\n"
                      "003  A V W105    008 01:00:00:00 01:00:01:00 10:00:02:00 10:00:03:00\n"),
              "0-24 A@01:00:00:00 | 24-34 wipe19 | 34-48 B@02:00:00:10 | 48-56 wipe5r | 56-72 A@01:00:00:08");
}

TEST(Events, FadesFromAndToBlack) {
    EXPECT_EQ(channel("001  BL V C     00:00:00:00 00:00:00:00 10:00:00:00 10:00:00:00\n"
                      "001  A  V D 012 01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n"
                      "002  A  V C     01:00:01:00 01:00:01:00 10:00:01:00 10:00:01:00\n"
                      "002  BL V D 012 00:00:00:00 00:00:00:12 10:00:01:00 10:00:01:12\n"),
              "0-0 black | 0-12 diss | 12-24 A@01:00:00:12 | 24-36 diss | 36-36 black");
}

TEST(Events, FadeInBehindAClipHasItsOwnBlack) {
    EXPECT_EQ(channel("001  A  V C     01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n"
                      "002  BL V C     00:00:00:00 00:00:00:00 10:00:01:00 10:00:01:00\n"
                      "002  B  V D 012 02:00:00:00 02:00:01:00 10:00:01:00 10:00:02:00\n"),
              "0-24 A@01:00:00:00 | 24-24 black | 24-36 diss | 36-48 B@02:00:00:12");
}

TEST(Events, OneLineFadeComesFromTheClipAbove) {
    EXPECT_EQ(channel("001  A  V C     01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n"
                      "001  BL V D 012 00:00:00:00 00:00:01:00 10:00:01:00 10:00:02:00\n"),
              "0-24 A@01:00:00:00 | 24-36 diss | 36-48 black");
}

TEST(Events, TransitionBehindAGapComesFromBlack) {
    EXPECT_EQ(channel("001  A V C     01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n"
                      "002  B V D 010 02:00:00:00 02:00:01:00 10:00:02:00 10:00:03:00\n"),
              "0-24 A@01:00:00:00 | 24-48 black | 48-58 diss | 58-72 B@02:00:00:10");
}

TEST(Events, FilmDissolvesAreNamed) {
    EXPECT_EQ(channel("001  A V C     01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n"
                      "002  A V C     01:00:01:00 01:00:01:00 10:00:01:00 10:00:01:00\n"
                      "002  B V D 010 02:00:00:00 02:00:01:00 10:00:01:00 10:00:02:00\n"
                      "* EFFECT NAME: Film Dissolve\n"),
              "0-24 A@01:00:00:00 | 24-34 film | 34-48 B@02:00:00:10");
}

constexpr const char* keyed = "001  A V K B     01:00:00:00 01:00:04:00 10:00:00:00 10:00:04:00\n"
                              "001  T V K   012 05:00:00:00 05:00:02:00 10:00:01:00 10:00:03:00\n"
                              "002  T V KO  012 05:00:02:00 05:00:02:12 10:00:03:00 10:00:03:12\n"
                              "* KEY CLIP NAME: Title\n";

TEST(Events, KeysAreASecondTrack) {
    EXPECT_EQ(channel(keyed, 0), "0-96 A@01:00:00:00");
    EXPECT_EQ(channel(keyed, 1), "24-24 black | 24-36 diss | 36-72 T@05:00:00:12 | 72-84 diss | 84-84 black");
    EXPECT_EQ(read(keyed).edit->getNumChans(), 2);
}

TEST(Events, AKeyGoesOutInOneWordOrTwo) {
    std::string two = keyed;
    two.replace(two.find("KO "), 3, "K O");
    EXPECT_EQ(channel(two, 1), channel(keyed, 1));
}

TEST(Events, KeyThatFadesOutInNoTimeEndsWithACut) {
    EXPECT_EQ(channel("001  A V K B     01:00:00:00 01:00:04:00 10:00:00:00 10:00:04:00\n"
                      "001  T V K   012 05:00:00:00 05:00:02:00 10:00:01:00 10:00:03:00\n"
                      "002  T V KO  000 05:00:02:00 05:00:02:00 10:00:03:00 10:00:03:00\n",
                      1),
              "24-24 black | 24-36 diss | 36-72 T@05:00:00:12");
}

//     | key . . . |\-X-|= = = next key       the fade would take 12 frames, and 5 are left to it
TEST(Events, AKeyThatFadesOutUnderTheNextIsCutToWhatIsLeft) {
    const std::string next = "003  U V K   000 06:00:00:00 06:00:01:00 10:00:03:05 10:00:04:05\n";
    EXPECT_EQ(drawn(read(keyed + next).edit, 1),
              "24-24 black | 24-36 diss | 36-72 T@05:00:00:12 | 72-77 diss | 77-77 black | 77-101 U@06:00:00:00");
    EXPECT_THAT(told(read(keyed + next)),
                ElementsAre("a.edl: line 3: cut by 7 frames, as line 5 is recorded over its end"));
    std::string at_once = next;
    at_once.replace(at_once.find("10:00:03:05 10:00:04:05"), 23, "10:00:03:00 10:00:04:00");
    EXPECT_EQ(drawn(read(keyed + at_once).edit, 1),
              "24-24 black | 24-36 diss | 36-72 T@05:00:00:12 | 72-96 U@06:00:00:00");
    EXPECT_THAT(told(read(keyed + at_once)),
                ElementsAre("a.edl: line 3: cut by 12 frames, as line 5 is recorded over its end"));
}

// The record of a fade may be any: its frames are those of its line.
TEST(Events, AKeyFadesOutInItsFramesWhateverItsRecordSays) {
    for (const char* out : {"10:00:03:00", "10:00:03:04", "10:00:04:00"}) {
        std::string list = keyed;
        list.replace(list.find("10:00:03:12"), 11, out);
        EXPECT_EQ(drawn(read(list).edit, 1), channel(keyed, 1)) << out;
    }
}

TEST(Events, AnEventNeedsNoReel) {
    const formats::ReadResult result = read("001  V C 01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n");
    EXPECT_THAT(result.warnings, IsEmpty());
    EXPECT_EQ(drawn(result.edit, 0), "0-24 @01:00:00:00");
    EXPECT_EQ(reel_at(result.edit, 0, 0), "");
}

TEST(Events, TheOnlyLineOfAnEventIsWhatItGoesToAsWell) {
    EXPECT_EQ(channel("001  A V C 01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n"
                      "* TO FILE: pass.mov\n"),
              "0-24 pass@01:00:00:00");
    EXPECT_EQ(channel("001  A V C 01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n"
                      "* TO CLIP NAME: Pass\n"),
              "0-24 Pass@01:00:00:00");
}

TEST(Events, KeyWithoutAFadeIsACutOnTheSecondTrack) {
    EXPECT_EQ(channel("001  A V K B     01:00:00:00 01:00:02:00 10:00:00:00 10:00:02:00\n"
                      "001  T V K   000 05:00:00:00 05:00:01:00 10:00:01:00 10:00:02:00\n",
                      1),
              "24-48 T@05:00:00:00");
}

TEST(Events, SpeedsComeFromTheM2Line) {
    EXPECT_EQ(channel("001  A V C 01:00:00:00 01:00:02:00 10:00:00:00 10:00:01:00\n"
                      "M2   A       048.0       01:00:00:00\n"
                      "002  B V C 02:00:00:00 02:00:00:12 10:00:01:00 10:00:02:00\n"
                      "M2   B       12          02:00:00:00\n"),
              "0-24 A@01:00:00:00*2 | 24-48 B@02:00:00:00*0.5");
}

TEST(Events, BackwardTheLastFrameOfTheStretchComesFirst) {
    EXPECT_EQ(channel("001  A V C 01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n"
                      "M2   A      -024.0       01:00:00:00\n"),
              "0-24 A@01:00:00:23*-1");
}

TEST(Events, FreezesHoldOneFrame) {
    EXPECT_EQ(channel("001  A V C 01:00:00:05 01:00:00:06 10:00:00:00 10:00:01:00\n"
                      "M2   A       000.0       01:00:00:05\n"
                      "002  B V C 02:00:00:00 02:00:00:01 10:00:01:00 10:00:02:00\n"
                      "* * FREEZE FRAME\n"),
              "0-24 A@01:00:00:05*0 | 24-48 B@02:00:00:00*0");
}

TEST(Events, BothWaysToGiveTheSourceLengthUnderASpeed) {
    for (const char* out : {"01:00:04:00", "01:00:02:00", "01:00:03:23"})
        EXPECT_EQ(channel(std::string("001  A V C 01:00:00:00 ") + out + " 10:00:00:00 10:00:02:00\n" +
                          "M2   A       048.0       01:00:00:00\n"),
                  "0-48 A@01:00:00:00*2")
            << out;
}

TEST(Events, SpeedGoesToTheLineOfItsReelAndTimecode) {
    EXPECT_EQ(channel("001  A  V C     01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n"
                      "001  B  V D 012 02:00:00:00 02:00:01:00 10:00:01:00 10:00:02:00\n"
                      "M2   A       036.0       01:00:00:00\n"),
              "0-24 A@01:00:00:00*1.5 | 24-36 diss | 36-48 B@02:00:00:12");
}

TEST(Events, NormalSpeedIsTheCountingOrTheTrueRate) {
    for (const char* speed : {"030.0", "029.9", "29.97", "030"})
        EXPECT_EQ(channel(std::string("001  A V C 01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\nM2 A ") + speed +
                              " 01:00:00:00\n",
                          0, 29.97),
                  "0-30 A@01:00:00:00")
            << speed;
}

TEST(Events, SoundChannelsKeepTheirNumbers) {
    const formats::ReadResult result = read("001  A B    C 01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n"
                                            "002  B AA/V C 02:00:00:00 02:00:01:00 10:00:01:00 10:00:02:00\n"
                                            "003  C NONE C 03:00:00:00 03:00:01:00 10:00:02:00 10:00:03:00\n"
                                            "AUD  3    4\n");
    ASSERT_EQ(result.edit->getNumChans(), 5);
    EXPECT_EQ(drawn(result.edit, 0), "0-24 A@01:00:00:00 | 24-48 B@02:00:00:00");
    EXPECT_EQ(drawn(result.edit, 1), "0-24 A@01:00:00:00 | 24-48 B@02:00:00:00");
    EXPECT_EQ(drawn(result.edit, 2), "24-48 B@02:00:00:00");
    EXPECT_EQ(drawn(result.edit, 3), "48-72 C@03:00:00:00");
    EXPECT_EQ(drawn(result.edit, 4), drawn(result.edit, 3));
}

TEST(Events, WipeOfSoundIsACrossfade) {
    EXPECT_EQ(channel("001  A A2 C        01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n"
                      "002  A A2 C        01:00:01:00 01:00:01:00 10:00:01:00 10:00:01:00\n"
                      "002  B A2 W001 010 02:00:00:00 02:00:01:00 10:00:01:00 10:00:02:00\n"
                      "EFFECTS NAME IS Constant Power\n",
                      1),
              "0-24 A@01:00:00:00 | 24-34 diss | 34-48 B@02:00:00:10");
}

TEST(Events, SplitEditsDelayOneSideWhileTheOtherShotRunsOn) {
    const std::string list = "001  A B C 01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n"
                             "SPLIT:    AUDIO DELAY=  00:00:00:06\n"
                             "002  B B C 02:00:00:00 02:00:01:00 10:00:01:00 10:00:02:00\n"
                             "SPLIT:    VIDEO DELAY=  00:00:00:03\n"
                             "003  C B C 03:00:00:00 03:00:01:00 10:00:02:00 10:00:03:00\n";
    EXPECT_EQ(channel(list, 0), "0-24 A@01:00:00:00 | 24-51 B@02:00:00:00 | 51-72 C@03:00:00:03");
    EXPECT_EQ(channel(list, 1), "0-30 A@01:00:00:00 | 30-48 B@02:00:00:06 | 48-72 C@03:00:00:00");
}

TEST(Events, ABadDelayLeavesTheWholeEventOut) {
    const formats::ReadResult result = read("001  A B C 01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n"
                                            "SPLIT:    AUDIO DELAY=  00:00:00:24\n"
                                            "002  B B C 02:00:00:00 02:00:01:00 10:00:01:00 10:00:02:00\n"
                                            "003  C B C 03:00:00:00 03:00:01:00 10:00:02:00 10:00:03:00\n");
    ASSERT_EQ(result.error, "");
    EXPECT_EQ(drawn(result.edit, 0), "0-24 A@01:00:00:00 | 24-48 black | 48-72 C@03:00:00:00");
    EXPECT_EQ(drawn(result.edit, 1), "0-24 A@01:00:00:00 | 48-72 C@03:00:00:00");
    ASSERT_EQ(result.warnings.size(), 1U);
    EXPECT_EQ(result.warnings[0].kind, embedded::WarningKind::dropped);
    EXPECT_EQ(result.warnings[0].text,
              "a.edl: line 3: its delay: frame 24 doesn't exist at 24 a second; the event is left out");
}

TEST(Events, ADelayOfASideThatTheEventHasNotIsPassedOver) {
    const formats::ReadResult result = read("SPLIT:    AUDIO DELAY=  00:00:00:24\n"
                                            "001  A V C 01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n");
    EXPECT_EQ(drawn(result.edit, 0), "0-24 A@01:00:00:00");
    EXPECT_THAT(result.warnings, IsEmpty());
}

TEST(Events, AnEventWithoutLengthNeedsATransition) {
    const formats::ReadResult result = read("001  A V C 01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00\n"
                                            "002  B V C 02:00:00:00 02:00:00:00 10:00:01:00 10:00:01:00\n");
    EXPECT_EQ(drawn(result.edit, 0), "0-24 A@01:00:00:00");
    ASSERT_EQ(result.warnings.size(), 1U);
    EXPECT_EQ(result.warnings[0].kind, embedded::WarningKind::dropped);
    EXPECT_EQ(result.warnings[0].text, "a.edl: line 2: an event without length that no transition follows; "
                                       "the event is left out");
}

TEST(Events, SeveralListsGiveThePictureTracks) {
    const formats::ReadResult result = read({"001 A B C 01:00:00:00 01:00:02:00 10:00:00:00 10:00:02:00\n",
                                             "001 T V C 05:00:00:00 05:00:01:00 10:00:00:12 10:00:01:12\n",
                                             "001 S B C 06:00:00:00 06:00:01:00 10:00:01:00 10:00:02:00\n"});
    ASSERT_EQ(result.error, "");
    ASSERT_EQ(result.edit->getNumChans(), 4);
    EXPECT_EQ(drawn(result.edit, 0), "0-48 A@01:00:00:00");
    EXPECT_EQ(drawn(result.edit, 1), "12-36 T@05:00:00:00");
    EXPECT_EQ(drawn(result.edit, 2), "24-48 S@06:00:00:00");
    EXPECT_EQ(drawn(result.edit, 3), "0-48 A@01:00:00:00");
    EXPECT_THAT(result.warnings, ElementsAre(HasSubstr("c.edl: its sound is left out")));
}

TEST(Events, OverlapsCutWhatIsThere) {
    const formats::ReadResult result = read("001  A V C 01:00:00:00 01:00:02:00 10:00:00:00 10:00:02:00\n"
                                            "002  B V C 02:00:00:00 02:00:01:00 10:00:01:00 10:00:02:00\n");
    EXPECT_EQ(drawn(result.edit, 0), "0-24 A@01:00:00:00 | 24-48 B@02:00:00:00");
    EXPECT_THAT(result.warnings,
                ElementsAre(Warning(WarningKind::dropped,
                                    "a.edl: line 1: cut by 24 frames, as line 2 is recorded over its end")));
}

TEST(Events, ADayHasAllFramesButThoseThatAreDropped) {
    using formats::edl::frames_of_day;
    EXPECT_EQ(frames_of_day(*embedded::nearest_rate(25), false), 2160000);
    EXPECT_EQ(frames_of_day(*embedded::nearest_rate(29.97), false), 2592000);
    EXPECT_EQ(frames_of_day(*embedded::nearest_rate(29.97), true), 2589408);
    EXPECT_EQ(frames_of_day(*embedded::nearest_rate(59.94), true), 5178816);
}

TEST(Events, ProgrammesRunOverMidnight) {
    EXPECT_EQ(channel("001  A V C 23:59:59:12 00:00:00:12 23:59:59:00 00:00:00:00\n"
                      "002  B V C 02:00:00:00 02:00:01:00 00:00:00:00 00:00:01:00\n"),
              "0-24 A@23:59:59:12 | 24-48 B@02:00:00:00");
}

TEST(Events, MissingRecordOutTakesTheSourcesLength) {
    const formats::ReadResult result = read("001  A V C 01:00:00:00 01:00:01:00 10:00:00:00 00:00:00:00\n");
    EXPECT_EQ(drawn(result.edit, 0), "0-24 A@01:00:00:00");
    EXPECT_THAT(result.warnings, ElementsAre(HasSubstr("line 1: no record out")));
}

TEST(Events, AnEventWithASpeedEndsAtMidnightWhereItsSourceSaysSo) {
    const std::string speed = "M2 A 048.0 01:00:00:00\n", still = "M2 A 000.0 01:00:00:00\n";
    const auto ending = [](const std::string& source_out) {
        return "001  A V C 01:00:00:00 " + source_out + " 23:59:59:00 00:00:00:00\n";
    };
    const formats::ReadResult over = read(ending("01:00:02:00") + speed);
    EXPECT_THAT(drawn(over.edit, 0), HasSubstr("0-24 A@01:00:00:00"));
    EXPECT_THAT(over.warnings, IsEmpty());
    for (const std::string& text : {ending("01:00:03:00") + speed, ending("01:00:00:01") + still}) {
        const formats::ReadResult unfilled = read(text);
        EXPECT_THAT(unfilled.warnings, ElementsAre(HasSubstr("line 1: no record out"))) << text;
    }
}

TEST(Keys, WithoutLengthSayWhatIsWrong) {
    const formats::ReadResult result = read("001 A V C 01:00:00:00 01:00:01:00 00:00:00:00 00:00:01:00\n"
                                            "002 T V K 012 01:00:00:00 01:00:00:00 00:00:01:00 00:00:01:00\n");
    ASSERT_EQ(result.warnings.size(), 1U);
    EXPECT_EQ(result.warnings[0],
              "a.edl: line 2: a key without length: its record out is its record in; the event is left out");
}

TEST(SeveralLists, HaveTheirTracksAboveThoseOfTheListsBefore) {
    const std::string picture = "001 A V  C 01:00:00:00 01:00:01:00 00:00:00:00 00:00:01:00\n"
                                "002 B V2 C 01:00:00:00 01:00:01:00 00:00:00:00 00:00:01:00\n";
    const std::string titles = "001 T V  C 01:00:00:00 01:00:01:00 00:00:00:00 00:00:01:00\n";
    const EditPtr one = read(std::vector<std::string>{picture}).edit, two = read({picture, titles}).edit;
    EXPECT_EQ(one->getNumChans(), 2);
    EXPECT_EQ(drawn(one, 1), "0-24 B@01:00:00:00");
    ASSERT_EQ(two->getNumChans(), 3);
    EXPECT_EQ(drawn(two, 1), "0-24 B@01:00:00:00");
    EXPECT_EQ(drawn(two, 2), "0-24 T@01:00:00:00");
    EXPECT_EQ(drawn(read({titles, picture}).edit, 0), "0-24 T@01:00:00:00");
}

// A backward clip shows its last frame first, wherever what is recorded later cuts it.
TEST(Events, BackwardClipsThatAreCutKeepTheirFirstFrame) {
    const std::string backward = "001  A V C 01:00:00:00 01:00:02:00 10:00:00:00 10:00:02:00\n"
                                 "M2   A       -024.0       01:00:00:00\n";
    const std::string whole = channel(backward);
    ASSERT_EQ(whole.substr(0, 7), "0-48 A@");
    const formats::ReadResult cut = read(backward + "002  B V C 02:00:00:00 02:00:01:00 10:00:01:12 10:00:02:12\n");
    EXPECT_EQ(drawn(cut.edit, 0), "0-36 A@" + whole.substr(7) + " | 36-60 B@02:00:00:00");
}

TEST(Events, ASpeedFromAnotherTimecodeCountsWithADoubt) {
    const formats::ReadResult result = read("001  A V C 01:00:00:00 01:00:02:00 10:00:00:00 10:00:01:00\n"
                                            "M2   A       048.0       01:00:09:00\n");
    EXPECT_EQ(drawn(result.edit, 0), "0-24 A@01:00:00:00*2");
    ASSERT_EQ(result.warnings.size(), 1U);
    EXPECT_EQ(result.warnings[0].kind, embedded::WarningKind::doubt);
    EXPECT_NE(result.warnings[0].text.find("a speed from another timecode than the event's source in, which counts"),
              std::string::npos);
}

} // namespace
