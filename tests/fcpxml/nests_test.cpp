// Items that contain others: clips, compound clips, angles, auditions.

#include "tests/fcpxml/fcpxml_texts.h"

#include <gtest/gtest.h>

#include <algorithm>

using namespace fcpxml_texts;
using embedded::WarningKind;

namespace {

std::string ref(const std::string& id, const std::string& attributes, const std::string& inside = {}) {
    return "<ref-clip ref=\"" + id + "\" name=\"" + id + "\" " + attributes + ">" + inside + "</ref-clip>";
}

std::string drawn_ref(const std::string& ref_clip, const std::string& media) {
    return drawn_spine(ref_clip, R"(format="r24")", media);
}

TEST(FcpxmlClips, AVideoInAClipStandsAtItsOffset) {
    EXPECT_EQ(drawn_spine(R"(<clip name="C" start="65s" duration="2s">)"
                          R"(<video ref="m24" offset="60s" start="100s" duration="50s"/></clip>)"),
              "0-48 C@00:01:45:00");
    EXPECT_EQ(drawn_spine(R"(<clip name="C" start="3605s" duration="2s">)"
                          R"(<video ref="hour" offset="3600s" duration="50s"/></clip>)"),
              "0-48 C@01:00:05:00")
        << "from the medium's first frame where it doesn't say";
}

TEST(FcpxmlClips, AClipShowsNoMoreThanItContains) {
    EXPECT_EQ(
        drawn_spine(R"(<clip name="C" start="1s" duration="4s"><video ref="m24" offset="2s" duration="1s"/></clip>)"),
        "0-24 black | 24-48 C@00:00:00:00 | 48-96 black");
}

TEST(FcpxmlClips, AClipThatMeetsNothingOfWhatItHoldsIsTold) {
    const std::string words = "shows nothing: all that it holds lies elsewhere on its clock";
    for (const char* clip :
         {R"(<clip start="3605s" duration="5s"><video ref="hour" duration="100s"/></clip>)",
          R"(<sync-clip duration="5s"><asset-clip ref="hour" offset="3600s" start="3600s" duration="9s"/></sync-clip>)",
          R"(<ref-clip ref="c" start="0s" duration="5s"/>)"}) {
        const auto result = read(with_spine(clip, R"(format="r24")",
                                            compound("c", R"(<asset-clip ref="hour" start="3600s" duration="9s"/>)",
                                                     R"(format="r24" tcStart="3600s")")));
        EXPECT_EQ(drawn(result.edit, 0), "0-120 black") << clip;
        EXPECT_TRUE(warns(result, words, WarningKind::replaced)) << clip;
        EXPECT_EQ(result.warnings.size(), 1U) << clip;
    }
    const auto in_a_gap = read(with_spine(ref("c", R"(start="1s" duration="1s")"), R"(format="r24")",
                                          compound("c", R"(<gap duration="3s"/>)" + clip("A", R"(duration="3s")"))));
    EXPECT_TRUE(in_a_gap.warnings.empty()) << "a gap is meant to be black";
}

TEST(FcpxmlCompounds, MarkersOfTheirGapsAreTold) {
    const auto result =
        read(with_spine(ref("c", R"(duration="2s")"), R"(format="r24")",
                        compound("c", clip("A", R"(duration="1s")") +
                                          R"(<gap name="G" duration="1s"><marker start="0s" value="x"/></gap>)")));
    EXPECT_EQ(cues_of(result.edit, 0), "");
    EXPECT_TRUE(warns(result, "gap \"G\": a marker lies outside what is used of it", WarningKind::note));
}

TEST(FcpxmlClips, AClipMayHoldAStoryline) {
    EXPECT_EQ(drawn_spine(R"(<clip name="C" start="1s" duration="3s"><spine>)" + clip("A", R"(duration="2s")") +
                          clip("B", R"(start="7s" duration="2s")") + "</spine></clip>"),
              "0-24 A@00:00:01:00 | 24-72 B@00:00:07:00");
}

// Each of them is asked for its length, and then for its picture: it ends soon, and is told of once.
TEST(FcpxmlClips, ClipsWithoutALengthInEachOtherAreReadOnce) {
    std::string clips = R"(<video ref="m24" offset="0s" start="100s" duration="2s"/><surprise/>)";
    for (int i = 0; i < 40; ++i)
        clips = "<clip name=\"C" + std::to_string(i) + "\" offset=\"0s\">" + clips + "</clip>";
    const auto result = read(with_spine(clips));
    EXPECT_EQ(drawn(result.edit, 0), "0-48 C0@00:01:40:00");
    EXPECT_EQ(std::count_if(result.warnings.begin(), result.warnings.end(),
                            [](const auto& one) { return one.text.find("surprise") != std::string::npos; }),
              1);
}

TEST(FcpxmlClips, AClipOfSoundAloneIsBlackAtTheBottom) {
    EXPECT_EQ(drawn_spine(R"(<clip name="C" duration="1s"><audio ref="noise" offset="0s" duration="1s"/></clip>)"),
              "0-24 black");
}

TEST(FcpxmlClips, AVideoInAVideoCoversItWithinItsEnds) {
    const auto result = read(with_spine(R"(<video ref="m24" name="Below" start="10s" duration="2s">)"
                                        R"(<video ref="m25" name="Above" offset="11s" duration="5s"/></video>)"));
    EXPECT_EQ(drawn(result.edit, 0), "0-48 Below@00:00:10:00");
    EXPECT_EQ(drawn(result.edit, 1), "24-48 Above@00:00:00:00");
    EXPECT_TRUE(warns(result, "\"Above\": lies in an item with a picture of its own"));
}

TEST(FcpxmlClips, ASynchronisedClipIsItsPictureWithTheWordsOfBoth) {
    const auto result = read(with_spine(R"(<sync-clip name="Sync" duration="2s" start="1s"><metadata>)"
                                        R"(<md key="com.apple.proapps.studio.scene" value="7"/>)"
                                        R"(<md key="com.apple.proapps.studio.reel" value="notthis"/></metadata>)" +
                                        clip("Cam", R"(offset="0s" start="10s" duration="9s")",
                                             R"(<asset-clip ref="noise" lane="-1" offset="10s" duration="9s"/>)") +
                                        "</sync-clip>"));
    EXPECT_EQ(drawn(result.edit, 0), "0-48 Cam@00:00:11:00");
    EXPECT_EQ(reel_at(result.edit, 0, 0), "M24");
    strp_field scene;
    ASSERT_EQ(read_edit_field(source_at(result.edit, 0, 0).get(), "scene", scene), 0);
    EXPECT_STREQ(scene, "7");
}

TEST(FcpxmlCompounds, AreSplicedInWhereOnePictureLiesInThem) {
    const std::string media =
        compound("c", clip("A", R"(offset="3600s" start="5s" duration="2s")") + clip("B", R"(duration="2s")"),
                 R"(format="r24" tcStart="3600s")");
    EXPECT_EQ(drawn_ref(ref("c", R"(start="3601s" duration="2s")"), media), "0-24 A@00:00:06:00 | 24-48 B@00:00:00:00");
    EXPECT_EQ(drawn_ref(ref("c", R"(duration="1s")"), media), "0-24 A@00:00:05:00") << "from its timecode on";
    EXPECT_EQ(drawn_ref(ref("c", ""), media), "0-48 A@00:00:05:00 | 48-96 B@00:00:00:00") << "all of it";
}

TEST(FcpxmlCompounds, PicturesOfStorylinesOverGapsAreOneRow) {
    const std::string media = compound("c", clip("A", R"(duration="1s")") + R"(<gap start="3600s" duration="2s">)" +
                                                clip("B", R"(lane="1" offset="7201/2s" duration="1s")") + "</gap>");
    EXPECT_EQ(drawn_ref(ref("c", R"(duration="3s")"), media),
              "0-24 A@00:00:00:00 | 24-36 black | 36-60 B@00:00:00:00 | 60-72 black");
}

TEST(FcpxmlCompounds, WithPicturesAboveEachOtherTheyAreRendered) {
    const std::string media =
        compound("c", clip("A", R"(duration="4s")", clip("B", R"(lane="1" offset="2s" duration="1s")")));
    const auto result = read(with_spine(ref("c", R"(start="1s" duration="2s")"), R"(format="r24")", media));
    EXPECT_EQ(drawn(result.edit, 0), "0-48 c@");
    EXPECT_TRUE(warns(result, "\"c\": several pictures lie above each other in it", WarningKind::replaced));
    EXPECT_EQ(drawn_ref(ref("c", R"(start="0s" duration="2s")"), media), "0-48 A@00:00:00:00")
        << "only what is used of it counts";
}

TEST(FcpxmlCompounds, KeepTheirTransitionsWhereTheCutIsUsed) {
    const std::string media =
        compound("c", clip("A", R"(duration="2s")") + dissolve(R"(offset="7/4s" duration="1/2s")") +
                          clip("B", R"(start="9s" offset="2s" duration="2s")"));
    EXPECT_EQ(drawn_ref(ref("c", R"(start="1s" duration="2s")"), media),
              "0-18 A@00:00:01:00 | 18-30 diss | 30-48 B@00:00:09:06");
    EXPECT_EQ(drawn_ref(ref("c", R"(start="2s" duration="2s")"), media), "0-48 B@00:00:09:00");
}

// Seen from 7/4 s to 9/4 s, with the cut at 2 s.
TEST(FcpxmlCompounds, ATransitionThatTheyAreCutInIsTold) {
    const std::string media =
        compound("c", clip("A", R"(duration="2s")") + dissolve(R"(offset="7/4s" duration="1/2s")") +
                          clip("B", R"(start="9s" offset="2s" duration="2s")"));
    const auto told = [&](const std::string& attributes, const std::string& inside = {}) {
        const auto result = read(with_spine(ref("c", attributes, inside), R"(format="r24")", media));
        return std::count_if(result.warnings.begin(), result.warnings.end(), [](const embedded::Warning& warning) {
            return warning.kind == WarningKind::dropped &&
                   warning.text.find("\"X\": left out, as what is taken of its track begins or ends inside it") !=
                       std::string::npos;
        });
    };
    EXPECT_EQ(told(R"(start="2s" duration="2s")"), 1);
    EXPECT_EQ(told(R"(start="17/8s" duration="1s")"), 1) << "it begins behind the cut";
    EXPECT_EQ(told(R"(start="0s" duration="15/8s")"), 1) << "it ends ahead of the cut";
    EXPECT_EQ(told(R"(start="1s" duration="2s")"), 0) << "it stays";
    EXPECT_EQ(told(R"(start="0s" duration="7/4s")"), 0) << "nothing of it is seen";
    EXPECT_EQ(told(R"(start="9/4s" duration="1s")"), 0);
    EXPECT_EQ(told(R"(duration="3s")", speed("0s 17/8s, 9s 17/8s")), 1) << "a frame of it is held";
    EXPECT_EQ(told(R"(duration="3s")", speed("0s 1s, 1s 17/8s, 2s 4s")), 0) << "it stays with the span of its cut";
    EXPECT_EQ(told(R"(duration="3s")", speed("0s 1s, 1s 2s, 2s 4s")), 1) << "the speed changes at its cut";
}

TEST(FcpxmlCompounds, AtDoubleSpeedAndInReverse) {
    const std::string media = compound("c", clip("A", R"(duration="2s")") + clip("B", R"(start="9s" duration="2s")"));
    EXPECT_EQ(drawn_ref(ref("c", R"(duration="2s")", speed("0s 0s, 2s 4s")), media),
              "0-24 A@00:00:00:00*2 | 24-48 B@00:00:09:00*2");
    EXPECT_EQ(drawn_ref(ref("c", R"(duration="4s")", speed("0s 4s, 4s 0s")), media),
              "0-48 B@00:00:10:23*-1 | 48-96 A@00:00:01:23*-1");
}

TEST(FcpxmlCompounds, FrozenShowOneFrameOfWhatLiesThere) {
    const std::string media = compound("c", clip("A", R"(duration="2s")") + clip("B", R"(start="9s" duration="2s")"));
    EXPECT_EQ(drawn_ref(ref("c", R"(duration="3s")", speed("0s 3s, 9s 3s")), media), "0-72 B@00:00:10:00*0");
    EXPECT_EQ(drawn_ref(ref("c", R"(duration="3s")", speed("0s 4s, 9s 4s")), media), "0-72 B@00:00:10:23*0")
        << "at its very end the last frame is held, not the one behind it";
}

// Of A at twice the speed a compound of 2 s shows frames 0, 2, ..., 94; of A backward 95, 93, ..., 1.
TEST(FcpxmlCompounds, OfARetimedClipShowFramesThatItShows) {
    const auto played = [](const std::string& inner, const std::string& outer, const std::string& length = "2s") {
        const std::string media = compound("c", clip("A", R"(duration="2s")", speed(inner)));
        return drawn_ref(ref("c", "duration=\"" + length + "\"", speed(outer)), media);
    };
    const std::string twice = "0s 0s, 2s 4s", twice_back = "0s 4s, 2s 0s";
    EXPECT_EQ(played(twice, "0s 2s, 2s 0s"), "0-48 A@00:00:03:22*-2");
    EXPECT_EQ(played(twice, "0s 2s, 1s 0s", "1s"), "0-24 A@00:00:03:22*-4");
    EXPECT_EQ(played(twice_back, "0s 2s, 2s 0s"), "0-48 A@00:00:00:01*2");
    EXPECT_EQ(played(twice_back, "0s 0s, 1s 2s", "1s"), "0-24 A@00:00:03:23*-4");
    EXPECT_EQ(played(twice, "0s 1s, 2s 1s"), "0-48 A@00:00:02:00*0");
    EXPECT_EQ(played(twice, "0s 2s, 2s 2s"), "0-48 A@00:00:03:22*0") << "at its end the last one";
    EXPECT_EQ(played(twice_back, "0s 1s, 2s 1s"), "0-48 A@00:00:01:23*0");
    EXPECT_EQ(played(twice_back, "0s 2s, 2s 2s"), "0-48 A@00:00:00:01*0");
    EXPECT_EQ(played("0s 2s, 2s 0s", "0s 0s, 2s 0s"), "0-48 A@00:00:01:23*0");
}

// Frames 0 to 15 show 0 to 45 of the compound, frame 16 its 48, the second of B.
TEST(FcpxmlCompounds, ACutBetweenTwoFramesLiesWhereTheNextBegins) {
    const auto of = [](const std::string& a, const std::string& b) {
        return compound("c", clip("A", "duration=\"" + a + "\"") +
                                 clip("B", R"(start="9s" duration=")" + b + "\"", R"(<marker start="9s" value="m"/>)"));
    };
    const std::string thrice = ref("c", R"(duration="4/3s")", speed("0s 0s, 4/3s 4s"));
    const auto result = read(with_spine(thrice, R"(format="r24")", of("47/24s", "49/24s")));
    EXPECT_EQ(drawn(result.edit, 0), "0-16 A@00:00:00:00*3 | 16-32 B@00:00:09:01*3");
    EXPECT_EQ(cues_of(result.edit, 0), "16 m");
    const std::string rounded = ref("c", R"(duration="4/3s")", speed("0s 0s, 3200/2400s 4s"));
    EXPECT_EQ(drawn_ref(rounded, of("4801/2400s", "4799/2400s")), "0-16 A@00:00:00:00*3 | 16-32 B@00:00:09:00*3");
    const std::string backward = ref("c", R"(duration="4/3s")", speed("0s 4s, 4/3s 0s"));
    EXPECT_EQ(drawn_ref(backward, of("47/24s", "49/24s")), "0-17 B@00:00:11:00*-3 | 17-32 A@00:00:01:20*-3")
        << "95, 92, ... 47 of the compound, then 44";
}

// At 12 and a half frames the speed goes from 2 to 4: frame 12 shows 24, frame 13 two frames behind 25.
TEST(FcpxmlSpeeds, ASpeedThatBeginsBetweenTwoFramesShowsFromTheNext) {
    EXPECT_EQ(drawn_spine(clip("A", R"(duration="2s")", speed("0s 0s, 25/48s 25/24s, 121/48s 217/24s"))),
              "0-13 A@00:00:00:00*2 | 13-48 A@00:00:01:03*4");
}

TEST(FcpxmlCompounds, OfARetimedClipAtASpeedThatNoneOfBothShowsAreToldOf) {
    const auto told = [](const std::string& inner, const std::string& outer, const std::string& more = {}) {
        const std::string media = compound("c", clip("A", R"(duration="2s")", more + speed(inner), "m25"));
        const auto result = read(with_spine(ref("c", R"(duration="2s")", speed(outer)), R"(format="r24")", media));
        return warns(result, "\"c\": plays what has a speed already");
    };
    const std::string conformed = R"(<conform-rate srcFrameRate="25"/>)";
    EXPECT_TRUE(told("0s 0s, 2s 4s", "0s 0s, 2s 1s"));
    EXPECT_TRUE(told("0s 0s, 2s 4s", "0s 1s, 2s 0s"));
    EXPECT_FALSE(told("0s 0s, 2s 4s", "0s 2s, 1s 0s"));
    EXPECT_FALSE(told("0s 0s, 2s 1s", "0s 0s, 2s 1s"));
    EXPECT_FALSE(told("0s 0s, 2s 2s", "0s 0s, 2s 1s"));
    EXPECT_FALSE(told("0s 0s, 2s 2s", "0s 0s, 2s 1s", conformed)) << "frame for frame";
    EXPECT_TRUE(told("0s 0s, 2s 4s", "0s 0s, 2s 1s", conformed));
}

// The 60 frames of a second are those of the medium; a compound at 24 shows the one at its own last frame.
TEST(FcpxmlClips, HeldAtTheirEndShowTheLastFrameOfTheirMedium) {
    const std::string held = speed("0s 0s, 2s 2s, 4s 2s"), media = clip("A", R"(duration="2s")", {}, "m60");
    const std::string plain = R"(<clip name="C" duration="4s">)" + held + R"(<video ref="m60" duration="2s"/></clip>)";
    EXPECT_EQ(drawn_spine(plain, R"(format="r24")"), "0-48 C@00:00:00:00 | 48-96 C@00:00:01:59*0");
    EXPECT_EQ(drawn_ref(ref("c", R"(duration="4s")", held), compound("c", media)),
              "0-48 A@00:00:00:00 | 48-96 A@00:00:01:57*0");
}

// 25 in 24, frame for frame: backward at normal speed nothing is left out.
TEST(FcpxmlCompounds, OfConformedMediaPlayBackwardFrameForFrame) {
    const std::string conformed = R"(<conform-rate srcFrameRate="25"/>)";
    const std::string media = compound("c", clip("A", R"(duration="2s")", conformed, "m25"));
    EXPECT_EQ(drawn_ref(ref("c", R"(duration="2s")", speed("0s 2s, 2s 0s")), media), "0-48 A@00:00:01:22*-1");
    EXPECT_EQ(drawn_ref(ref("c", R"(duration="2s")", speed("0s 0s, 2s 0s")), media), "0-48 A@00:00:00:00*0");
}

TEST(FcpxmlCompounds, TheirClipsKeepTheirMarkersAndTheyHaveTheirOwn) {
    const std::string media =
        compound("c", clip("A", R"(start="5s" duration="4s")", R"(<marker start="7s" value="inner"/>)"));
    const auto result = read(with_spine(
        ref("c", R"(start="1s" duration="2s")", R"(<marker start="5/2s" value="own"/>)"), R"(format="r24")", media));
    EXPECT_EQ(cues_of(result.edit, 0), "24 inner, 36 own");
}

TEST(FcpxmlCompounds, OneThatHoldsItselfIsRefused) {
    EXPECT_EQ(drawn_ref(ref("c", R"(duration="1s")"), compound("c", ref("c", R"(duration="1s")"))),
              "a.fcpxml: line 3: sequence: holds itself");
    EXPECT_EQ(drawn_ref(ref("c", R"(duration="1s")"),
                        compound("c", ref("d", R"(duration="1s")")) + compound("d", ref("c", ""))),
              "a.fcpxml: line 3: sequence: holds itself");
}

TEST(FcpxmlCompounds, OnesThatHoldEachOtherTenTimesDontFillTheMemory) {
    std::string media = compound("c0", clip("A", R"(duration="1/24s")"));
    for (int i = 1; i <= 12; ++i) {
        std::string ten;
        for (int j = 0; j < 10; ++j)
            ten += ref("c" + std::to_string(i - 1), "");
        media += compound("c" + std::to_string(i), ten);
    }
    EXPECT_NE(drawn_ref(ref("c12", R"(duration="90000s")"), media).find("its compound clips hold each other so often"),
              std::string::npos);
    EXPECT_EQ(drawn_ref(ref("c12", R"(duration="1/24s")"), media).find("0-1 A"), std::string::npos);
}

TEST(FcpxmlCompounds, TooDeepInEachOtherTheyAreRefused) {
    std::string media = compound("c0", clip("A", R"(duration="1s")"));
    for (int i = 1; i <= 300; ++i)
        media += compound("c" + std::to_string(i), ref("c" + std::to_string(i - 1), R"(duration="1s")"));
    EXPECT_NE(drawn_ref(ref("c300", R"(duration="1s")"), media).find("lies in more than 100 items"), std::string::npos);
    EXPECT_EQ(drawn_ref(ref("c20", R"(duration="1s")"), media), "0-24 A@00:00:00:00");
}

TEST(FcpxmlAuditions, TheFirstIsPickedWithItsOwnLength) {
    const auto result = read(
        with_spine(R"(<audition offset="0s">)" +
                   clip("Pick", R"(start="5s" duration="2s")", clip("On", R"(lane="1" offset="6s" duration="1s")")) +
                   clip("Other", R"(duration="7s")") + "</audition>" + clip("B", R"(duration="1s")")));
    EXPECT_EQ(drawn(result.edit, 0), "0-48 Pick@00:00:05:00 | 48-72 B@00:00:00:00");
    EXPECT_EQ(drawn(result.edit, 1), "24-48 On@00:00:00:00");
}

std::string multicam() {
    return R"(<media id="mc" name="Multi"><multicam format="r24" tcStart="0s">)"
           R"(<mc-angle name="A" angleID="a">)" +
           clip("CamA", R"(offset="0s" start="10s" duration="10s")") +
           R"(</mc-angle><mc-angle name="B" angleID="b"><gap offset="0s" duration="2s"/>)" +
           clip("CamB", R"(offset="2s" start="50s" duration="8s")") +
           R"(</mc-angle><mc-angle name="S" angleID="s"><asset-clip ref="noise" name="Mix" duration="10s"/></mc-angle>)"
           "</multicam></media>";
}

std::string angle(const std::string& sources, const std::string& attributes = R"(start="3s" duration="2s")") {
    return "<mc-clip ref=\"mc\" name=\"M\" " + attributes + ">" + sources + "</mc-clip>";
}

std::string drawn_angle(const std::string& sources, const std::string& attributes = R"(start="3s" duration="2s")") {
    return drawn_spine(angle(sources, attributes), R"(format="r24")", multicam());
}

TEST(FcpxmlMulticam, TheActiveAngleIsShown) {
    EXPECT_EQ(drawn_angle(R"(<mc-source angleID="b" srcEnable="all"/>)"), "0-48 CamB@00:00:51:00");
    EXPECT_EQ(drawn_angle(R"(<mc-source angleID="s" srcEnable="audio"/><mc-source angleID="a" srcEnable="video"/>)"),
              "0-48 CamA@00:00:13:00");
}

TEST(FcpxmlMulticam, AnAngleWithAGapThereIsBlack) {
    EXPECT_EQ(drawn_angle(R"(<mc-source angleID="b" srcEnable="all"/>)", R"(start="1s" duration="2s")"),
              "0-24 black | 24-48 CamB@00:00:50:00");
}

TEST(FcpxmlMulticam, WithoutASourceTheFirstAngleIsTaken) {
    EXPECT_EQ(drawn_angle(""), "0-48 CamA@00:00:13:00");
    EXPECT_TRUE(warns(read(with_spine(angle(""), R"(format="r24")", multicam())), "doesn't name its angle"));
}

TEST(FcpxmlMulticam, AnAngleThatIsntThereOrSoundAloneShowNothing) {
    EXPECT_EQ(drawn_angle(R"(<mc-source angleID="s" srcEnable="audio"/>)"), "0-48 black");
    EXPECT_EQ(drawn_angle(R"(<mc-source angleID="z" srcEnable="all"/>)"), "0-48 black");
    EXPECT_TRUE(warns(read(with_spine(angle(R"(<mc-source angleID="z"/>)"), R"(format="r24")", multicam())),
                      "has no angle \"z\"", WarningKind::replaced));
}

TEST(FcpxmlSound, StandsOnChannelsOfItsOwnFromTheStorylineDown) {
    const std::string spine = clip("A", R"(duration="2s")",
                                   clip("Low", R"(lane="-2" offset="1s" duration="1s")", {}, "noise") +
                                       clip("Near", R"(lane="-1" offset="0s" duration="1s")", {}, "noise") +
                                       clip("High", R"(lane="1" offset="0s" duration="1s")", {}, "noise"),
                                   "both");
    const auto result = read(with_spine(spine));
    EXPECT_EQ(channels_of_kind(result.edit, picture_channel), 1);
    EXPECT_EQ(channels_of_kind(result.edit, sound_channel), 4);
    EXPECT_EQ(drawn(result.edit, 1).substr(0, 6), "0-48 A");
    EXPECT_EQ(drawn(result.edit, 2).substr(0, 9), "0-24 Near");
    EXPECT_EQ(drawn(result.edit, 3).substr(0, 9), "24-48 Low");
    EXPECT_EQ(drawn(result.edit, 4).substr(0, 9), "0-24 High");
}

TEST(FcpxmlSound, IsLeftOutWhereTheClipSaysSo) {
    const auto result = read(with_spine(clip("A", R"(duration="1s" srcEnable="video")", {}, "both") +
                                        clip("B", R"(duration="1s" srcEnable="audio")", {}, "both")));
    EXPECT_EQ(drawn(result.edit, 0), "0-24 A@00:00:00:00 | 24-48 black");
    EXPECT_EQ(drawn(result.edit, 1), "24-48 B@00:00:00:00");
}

TEST(FcpxmlSound, ThatBeginsBeforeItsPictureOverlapsOnTheNextChannel) {
    const std::string spine = clip("A", R"(duration="2s")", {}, "both") +
                              clip("B", R"(start="10s" duration="2s" audioStart="9s" audioDuration="3s")", {}, "both");
    const auto result = read(with_spine(spine));
    EXPECT_EQ(drawn(result.edit, 0), "0-48 A@00:00:00:00 | 48-96 B@00:00:10:00");
    EXPECT_EQ(drawn(result.edit, 1), "0-48 A@00:00:00:00");
    EXPECT_EQ(drawn(result.edit, 2), "24-96 B@00:00:09:00");
}

TEST(FcpxmlSound, ChannelsOfOneSoundInAClipAreOne) {
    const auto result =
        read(with_spine(R"(<clip name="C" duration="2s"><video ref="both" offset="0s" duration="9s">)"
                        R"(<audio ref="both" lane="-1" offset="0s" duration="9s" srcCh="1"/>)"
                        R"(<audio ref="both" lane="-2" offset="0s" duration="9s" srcCh="2"/></video></clip>)"));
    EXPECT_EQ(drawn(result.edit, 1), "0-48 C@00:00:00:00");
    EXPECT_EQ(result.edit->getNumChans(), 2);
}

TEST(FcpxmlSound, OfASynchronisedClipIsWhatIsSwitchedOn) {
    const auto sync = [](const std::string& sources) {
        return read(
            with_spine(R"(<sync-clip name="Sync" duration="2s">)" +
                       clip("Cam", R"(offset="0s" duration="9s")",
                            R"(<asset-clip ref="noise" name="Rec" lane="-1" offset="0s" duration="9s"/>)", "both") +
                       sources + "</sync-clip>"));
    };
    const auto off =
        sync(R"(<sync-source sourceID="storyline"><audio-role-source role="d" active="0"/></sync-source>)");
    EXPECT_EQ(drawn(off.edit, 1), "0-48 Rec@00:00:00:00");
    const auto other =
        sync(R"(<sync-source sourceID="connected"><audio-role-source role="d" active="0"/></sync-source>)");
    EXPECT_EQ(drawn(other.edit, 1), "0-48 Cam@00:00:00:00");
    EXPECT_TRUE(warns(sync(""), "several sounds lie beside each other", WarningKind::note));
}

TEST(FcpxmlSound, MarkersOfSoundAloneAreCuesOfItsChannel) {
    const std::string mark = R"(<marker start="1s" value="noise"/>)";
    const auto result = read(with_spine(clip("A", R"(duration="4s")",
                                             R"(<marker start="2s" value="seen"/>)" +
                                                 clip("N", R"(lane="-1" offset="0s" duration="2s")", mark, "noise"),
                                             "both")));
    EXPECT_EQ(cues_of(result.edit, 0), "48 seen");
    EXPECT_EQ(cues_of(result.edit, 1), "");
    EXPECT_EQ(cues_of(result.edit, 2), "24 noise");
}

TEST(FcpxmlSound, MarkersOfAClipInAClipWithAPictureAreCuesOfThat) {
    const auto result = read(with_spine(
        R"(<clip name="C" duration="4s"><clip offset="0s" duration="4s"><video ref="m24" offset="0s" duration="9s"/></clip>)"
        R"(<marker start="1s" value="seen"/></clip>)"));
    EXPECT_EQ(cues_of(result.edit, 0), "24 seen");
}

// Over 7/4 s to 9/4 s a dissolve, of which the cut is at 2 s.
TEST(FcpxmlCompounds, TheirTransitionsAndMarkersPlayAtTheirSpeed) {
    const std::string media = compound("c", clip("A", R"(duration="2s")", R"(<marker start="1/2s" value="m"/>)") +
                                                dissolve(R"(offset="7/4s" duration="1/2s")") +
                                                clip("B", R"(start="9s" offset="2s" duration="2s")"));
    const auto at = [&](const std::string& attributes, const std::string& points) {
        return read(with_spine(ref("c", attributes, speed(points)), R"(format="r24")", media));
    };
    const auto twice = at(R"(duration="2s")", "0s 0s, 2s 4s");
    EXPECT_EQ(drawn(twice.edit, 0), "0-21 A@00:00:00:00*2 | 21-27 diss | 27-48 B@00:00:09:06*2");
    EXPECT_EQ(cues_of(twice.edit, 0), "6 m");
    const auto backward = at(R"(duration="4s")", "0s 4s, 4s 0s");
    EXPECT_EQ(drawn(backward.edit, 0), "0-42 B@00:00:10:23*-1 | 42-54 diss | 54-96 A@00:00:01:17*-1");
    EXPECT_EQ(cues_of(backward.edit, 0), "83 m");
}

TEST(FcpxmlCompounds, MarkersStayOnTheirFramesBackward) {
    const auto at = [&](const std::string& marks, const std::string& attributes, const std::string& points) {
        const std::string spine = ref("c", attributes, speed(points)) + clip("Behind", R"(duration="1s")");
        return read(with_spine(spine, R"(format="r24")", compound("c", clip("A", R"(duration="4s")", marks))));
    };
    const std::string odd = R"(<marker start="13/24s" value="odd"/><marker start="95/24s" value="last"/>)";
    const auto backward = at(R"(<marker start="0s" value="first"/>)" + odd, R"(duration="4s")", "0s 4s, 4s 0s");
    EXPECT_EQ(cues_of(backward.edit, 0), "0 last, 82 odd, 95 first");
    const auto twice = at(R"(<marker start="1/24s" value="second"/>)" + odd, R"(duration="2s")", "0s 4s, 2s 0s");
    EXPECT_EQ(drawn(twice.edit, 0), "0-48 A@00:00:03:23*-2 | 48-72 Behind@00:00:00:00");
    EXPECT_EQ(cues_of(twice.edit, 0), "0 last, 41 odd, 47 second");
}

TEST(FcpxmlMulticam, WithoutAStartItIsShownFromItsTimecodeOn) {
    const std::string media = R"(<media id="late" name="Late"><multicam format="r24" tcStart="100s">)"
                              R"(<mc-angle name="A" angleID="a">)" +
                              clip("CamA", R"(offset="100s" start="10s" duration="10s")") +
                              "</mc-angle></multicam></media>";
    EXPECT_EQ(drawn_spine(R"(<mc-clip ref="late" duration="2s"><mc-source angleID="a"/></mc-clip>)", R"(format="r24")",
                          media),
              "0-48 CamA@00:00:10:00");
}

TEST(FcpxmlClips, WhatIsUnknownInAClipIsLeftOut) {
    const auto result = read(with_spine(R"(<clip name="C" duration="2s"><hologram duration="2s"/>)"
                                        R"(<video ref="m24" name="A" duration="2s"/></clip>)"));
    EXPECT_EQ(edl_tests::reel_at(result.edit, 0, 0), "M24");
    EXPECT_TRUE(warns(result, "hologram: isn't known here and is left out", WarningKind::dropped));
}

} // namespace
