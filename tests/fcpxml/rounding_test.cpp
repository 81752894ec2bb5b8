// Times that were rounded when the file was written.

#include "tests/fcpxml/fcpxml_texts.h"

#include <gtest/gtest.h>

#include <vector>

using namespace fcpxml_texts;

namespace {

const std::string real_time = R"(<conform-rate scaleEnabled="0" srcFrameRate="29.97"/>)";

std::string ref(const std::string& attributes, const std::string& inside = {}) {
    return "<ref-clip ref=\"nest\" name=\"Nest\" " + attributes + ">" + inside + "</ref-clip>";
}

/// Where a channel's events and transitions begin, and where the last ends, in frames that have begun.
std::vector<long> cuts_of(const EditPtr& edit, int channel, double rate = 24) {
    std::vector<long> cuts;
    const Qb::Ptr<Cel> cel = edit->get_edit_cel_p(channel);
    for (ce_handle at = cel->get_start_ceh(); at.valid(); at.increment(ce_all)) {
        const long frame = static_cast<long>(std::floor(at.get_channel_event().edit_time * rate + 1e-6));
        if (cuts.empty() || cuts.back() != frame) cuts.push_back(frame);
    }
    return cuts;
}

using Cuts = std::vector<long>;

TEST(FcpxmlRounding, ASourcePointAHairBesideAFrameIsThatFrame) {
    const auto first = [](const std::string& start) {
        return drawn_spine(clip("A", "start=\"" + start + "\" duration=\"1s\"", real_time, "m29"));
    };
    EXPECT_EQ(first("17137/2400s"), "0-24 A@00:00:07:04") << "0.0015 frames before 214";
    EXPECT_EQ(first("35702/5000s"), "0-24 A@00:00:07:04") << "0.002 frames before it";
    EXPECT_EQ(first("17138/2400s"), "0-24 A@00:00:07:04") << "0.011 frames behind it";
}

TEST(FcpxmlRounding, ASourcePointBetweenFramesIsTheOneThatHasBegun) {
    const auto first = [](const std::string& start) {
        return drawn_spine(clip("A", "start=\"" + start + "\" duration=\"1s\"", real_time, "m29"));
    };
    EXPECT_EQ(first("17133/2400s"), "0-24 A@00:00:07:03") << "0.05 frames before 214";
    EXPECT_EQ(first("17155/2400s"), "0-24 A@00:00:07:04") << "0.23 frames behind it";
}

TEST(FcpxmlRounding, AReversedOrRetimedClipHasWholeFramesToo) {
    EXPECT_EQ(drawn_spine(clip("A", R"(start="0s" duration="1s")", speed("0s 17137/2400s, 100s 497137/2400s"), "m29")),
              "0-24 A@00:00:07:04*2");
    EXPECT_EQ(drawn_spine(clip("A", R"(start="0s" duration="1s")", speed("0s 17137/2400s, 100s 17137/2400s"), "m29")),
              "0-24 A@00:00:07:04*0");
    EXPECT_EQ(drawn_spine(clip("A", R"(start="0s" duration="1s")", speed("0s 119999/24000s, 1s 95999/24000s"))),
              "0-24 A@00:00:04:23*-1");
}

TEST(FcpxmlRounding, TimesInMillionthsCutOnFrames) {
    const auto item = [](const std::string& offset) {
        return clip("A", "offset=\"" + offset + "/1000000s\" start=\"0s\" duration=\"1042708/1000000s\"", {}, "m23");
    };
    const auto result =
        read(with_spine(item("0") + item("1042708") + item("2085416") + item("3128125"), R"(format="r23")"));
    EXPECT_EQ(cuts_of(result.edit, 0, 24000.0 / 1001), (Cuts{0, 25, 50, 75, 100}));
}

TEST(FcpxmlRounding, ACutThatIsTrulyBetweenFramesStays) {
    const auto result = read(with_spine(clip("A", R"(duration="11/240s")") + clip("B", R"(duration="1s")")));
    const Qb::Ptr<Cel> cel = result.edit->get_edit_cel_p(0);
    ce_handle at = cel->get_start_ceh();
    at.increment(ce_all);
    EXPECT_DOUBLE_EQ(at.get_channel_event().edit_time, 11 / 240.0);
}

TEST(FcpxmlRounding, TransitionsBeginAndEndOnFrames) {
    const auto result = read(with_spine(clip("A", R"(duration="1s")") +
                                        dissolve(R"(offset="750001/1000000s" duration="500000/1000000s")") +
                                        clip("B", R"(offset="1s" start="5s" duration="1s")")));
    EXPECT_EQ(cuts_of(result.edit, 0), (Cuts{0, 18, 30, 48}));
    const auto early = read(with_spine(clip("A", R"(duration="1s")") +
                                       dissolve(R"(offset="749999/1000000s" duration="500000/1000000s")") +
                                       clip("B", R"(offset="1s" start="5s" duration="1s")")));
    EXPECT_EQ(cuts_of(early.edit, 0), (Cuts{0, 18, 30, 48}));
}

TEST(FcpxmlRounding, MarkersAHairBeforeAFrameStandOnIt) {
    const auto result =
        read(with_spine(clip("A", R"(duration="1s")", R"(<marker start="499999/1000000s" value="here"/>)")));
    CueList* all = embedded::EditBuilder::cues_of(result.edit);
    const std::unique_ptr<CueList> cues(all->extract(0, 1e6, result.edit->getId(0)));
    ASSERT_EQ(cues->getNumCuePoints(0), 1U);
    EXPECT_DOUBLE_EQ(embedded::EditBuilder::time_of_cue(*cues, 0), 0.5);
}

TEST(FcpxmlRounding, LessThanAFrameBeforeTheTimecodeIsAtIt) {
    const std::string sequence = R"(format="r29" tcStart="107999892/30000s")";
    const std::string spine = clip("A", R"(offset="3599996/1000s" start="0s" duration="1001/100s")", {}, "m29") +
                              clip("B", R"(offset="3610006/1000s" start="1001/50s" duration="1001/100s")", {}, "m29");
    const auto result = read(with_spine(spine, sequence));
    EXPECT_EQ(drawn(result.edit, 0, 30000.0 / 1001), "0-300 A@00:00:00:00 | 300-600 B@00:00:20:00");
    EXPECT_TRUE(result.warnings.empty()) << result.warnings[0].text;

    const auto nested = read(with_spine(ref(R"(start="107999892/30000s" duration="1001/50s")"), R"(format="r29")",
                                        compound("nest", spine, sequence)));
    EXPECT_EQ(drawn(nested.edit, 0, 30000.0 / 1001), "0-300 A@00:00:00:00 | 300-600 B@00:00:20:00");
    EXPECT_TRUE(nested.warnings.empty()) << nested.warnings[0].text;
}

/// A at 0 to 101 frames of 29.97, then B.
std::string nest_at_29() {
    return compound("nest",
                    clip("A", R"(offset="0s" start="0s" duration="101101/30000s")", {}, "m29") +
                        clip("B", R"(offset="101101/30000s" start="20020/1000s" duration="10s")", {}, "m29"),
                    R"(format="r29" tcStart="0s")");
}

TEST(FcpxmlRounding, ANestThatBeginsAHairBeforeACutBeginsAtIt) {
    const std::string spine = clip("S", R"(offset="0s" duration="10s")") + dissolve(R"(offset="9s" duration="2s")") +
                              ref(R"(offset="10s" start="8088/2400s" duration="5s")", real_time);
    const auto result = read(with_spine(spine, R"(format="r24")", nest_at_29()));
    EXPECT_EQ(drawn(result.edit, 0), "0-216 S@00:00:00:00 | 216-264 diss | 264-360 B@00:00:20:29");
    EXPECT_TRUE(result.warnings.empty()) << result.warnings[0].text;
}

TEST(FcpxmlRounding, ANestThatEndsAHairBehindACutEndsAtIt) {
    EXPECT_EQ(drawn_spine(ref(R"(start="89/2400s" duration="8000/2400s")", real_time) + clip("S", R"(duration="1s")"),
                          R"(format="r24")", nest_at_29()),
              "0-80 A@00:00:00:01 | 80-104 S@00:00:00:00");
}

TEST(FcpxmlRounding, ANestThatOnlyTouchesASecondPictureIsSpliced) {
    const std::string nest =
        compound("nest", clip("A", R"(duration="4s")", clip("Over", R"(lane="1" offset="2s" duration="1s")")));
    EXPECT_EQ(drawn_spine(ref(R"(duration="20001/10000s")"), R"(format="r24")", nest), "0-48 A@00:00:00:00");
}

TEST(FcpxmlRounding, WhatFollowsManyNestsDoesntMove) {
    std::string spine;
    Cuts cuts;
    for (int i = 0; i <= 40; ++i) {
        const std::string offset = "offset=\"" + std::to_string(i) + "s\" ";
        spine += i < 40 ? ref(offset + R"(start="8088/2400s" duration="1s")", real_time)
                        : clip("S", offset + R"(duration="1s")");
        cuts.push_back(i * 24);
    }
    cuts.push_back(41 * 24);
    EXPECT_EQ(cuts_of(read(with_spine(spine, R"(format="r24")", nest_at_29())).edit, 0), cuts);
}

TEST(FcpxmlRounding, PicturesOfANestThatMeetBesideAFrameAreSpliced) {
    const std::string above = clip("B", R"(lane="1" offset="0s" duration="1000001/1000000s")");
    const std::string nest =
        compound("nest", R"(<gap start="0s" duration="1s">)" + above + "</gap>" + clip("A", R"(duration="1s")"));
    EXPECT_EQ(drawn_spine(ref(R"(duration="2s")"), R"(format="r24")", nest),
              "0-24 B@00:00:00:00 | 24-48 A@00:00:00:00");
}

TEST(FcpxmlRounding, AFreezeOfANestAHairBeforeACutShowsWhatFollows) {
    const std::string nest = compound("nest", clip("A", R"(duration="1s")") + clip("B", R"(duration="1s")"));
    EXPECT_EQ(drawn_spine(ref(R"(duration="1s")", speed("0s 9999/10000s, 10s 9999/10000s")), R"(format="r24")", nest),
              "0-24 B@00:00:00:00*0");
}

TEST(FcpxmlRounding, ConnectedClipsThatMeetBesideAFrameShareATrack) {
    const auto result = read(with_spine(clip("A", R"(duration="10s")",
                                             clip("B", R"(lane="1" offset="1s" duration="1000001/1000000s")") +
                                                 clip("C", R"(lane="1" offset="2s" duration="1s")"))));
    EXPECT_EQ(channels_of_kind(result.edit, 1), 2);
    EXPECT_EQ(drawn(result.edit, 1), "24-48 B@00:00:00:00 | 48-72 C@00:00:00:00");
}

TEST(FcpxmlRounding, AMarkerOfWhatWasTooShortStandsOnWhatFollows) {
    const auto result = read(with_spine(R"(<sync-clip name="S" start="9998/10000s" duration="1s"><spine>)" +
                                        clip("A", R"(duration="1s")", R"(<marker start="9999/10000s" value="kept"/>)") +
                                        clip("B", R"(duration="2s")") + "</spine></sync-clip>"));
    EXPECT_EQ(drawn(result.edit, 0), "0-24 B@00:00:00:00");
    EXPECT_EQ(cues_of(result.edit, 0), "0 kept");
}

} // namespace
