// Lists as other systems write them, below tests/samples: each reads as it stands here, or is refused with its line.

#include "tests/edl/listed_edit.h"
#include "tests/support/project_paths.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace {

std::string sample(const std::string& name) { return project_folder() + "/tests/samples/edl/" + name; }

formats::ReadResult read(const std::string& name, double rate) {
    formats::ReadOptions options;
    options.rate = embedded::nearest_rate(rate);
    return formats::read_edl(sample(name), options);
}

/// Film frames at which the points of a channel lie, a transition's too.
std::vector<long> points_of(const EditPtr& edit, int channel, double rate) {
    std::vector<long> points;
    const Qb::Ptr<Cel> list = edit->get_edit_cel_p(channel);
    for (ce_handle handle = list->get_start_ceh(); handle.valid(); handle.increment(ce_all))
        points.push_back(std::lround(handle.get_channel_event().edit_time * rate));
    return points;
}

using Points = std::vector<long>;

TEST(EdlSamples, ALongReelColourDecisionsACueBlackAndASpeed) {
    const formats::ReadResult result = read("pass_2.edl", 24);
    ASSERT_EQ(result.error, "");
    EXPECT_TRUE(result.warnings.empty());
    EXPECT_EQ(points_of(result.edit, 0, 24), (Points{0, 96, 96, 156, 156, 180, 180, 240}));
    EXPECT_EQ(embedded::EditBuilder::cues_of(result.edit)->getNumCuePoints(0), 1U);
}

TEST(EdlSamples, DropFrameADissolveAndSoundOfItsOwn) {
    formats::ReadOptions options;
    const formats::ReadResult result = formats::read_edl(sample("drop.edl"), options);
    ASSERT_EQ(result.error, "");
    EXPECT_TRUE(result.warnings.empty());
    const double rate = 30000.0 / 1001;
    EXPECT_EQ(points_of(result.edit, 0, rate), (Points{0, 60, 60, 90, 90, 150}));
    EXPECT_EQ(points_of(result.edit, 1, rate), (Points{0, 60}));
    EXPECT_EQ(points_of(result.edit, 2, rate), (Points{60, 150}));
}

TEST(EdlSamples, AKeyOverItsBackgroundAndAWipe) {
    const formats::ReadResult result = read("titles.edl", 24);
    ASSERT_EQ(result.error, "");
    EXPECT_EQ(points_of(result.edit, 0, 24), (Points{0, 96, 96, 144, 144, 168, 168, 216}));
    EXPECT_EQ(points_of(result.edit, 1, 24), (Points{0, 0, 0, 12, 12, 96}));
}

TEST(EdlSamples, WhatIsNoListIsRefusedWithItsLine) {
    EXPECT_THAT(read("not_a_list.edl", 24).error,
                testing::EndsWith("holds no event that can be read; line 1: not understood: \"Dear editor,\""));
}

TEST(EdlSamples, EachReadsOrIsRefusedWithItsLineAtAnyRate) {
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(sample(""))) {
        ++count;
        for (const double rate : {24.0, 25.0, 29.97, 30.0, 60.0}) {
            const formats::ReadResult result = read(entry.path().filename(), rate);
            EXPECT_TRUE(result.edit || result.error.find("line ") != std::string::npos) << result.error;
        }
    }
    EXPECT_EQ(count, 4);
}

} // namespace
