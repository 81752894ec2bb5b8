// Edits as other programs write them, below tests/samples: each reads as it stands here, or is refused by name.

#include "formats/otio/otio_reader.h"
#include "tests/support/project_paths.h"

#include <gmock/gmock.h>

#include <cmath>

namespace {

std::string sample(const std::string& name) { return project_folder() + "/tests/samples/otio/" + name; }

/// Where the points of a channel lie: frames of the edit, and behind a colon those of the source.
std::vector<std::string> points_of(const EditPtr& edit, int channel) {
    std::vector<std::string> points;
    const Qb::Ptr<Cel> list = edit->get_edit_cel_p(channel);
    for (ce_handle handle = list->get_start_ceh(); handle.valid(); handle.increment(ce_all)) {
        const ChannelEvent point = handle.get_channel_event();
        points.push_back(std::to_string(std::lround(point.edit_time * 24)) +
                         (point.cookie.isEffect() ? "" : ":" + std::to_string(std::lround(point.source_time * 24))));
    }
    return points;
}

using Points = std::vector<std::string>;

TEST(OtioSamples, MediaOfLaterVersionsADissolveAGapAndLostMedia) {
    const formats::ReadResult result = formats::read_otio(sample("clips_of_another_version.otio"));
    ASSERT_EQ(result.error, "");
    EXPECT_EQ(points_of(result.edit, 0),
              (Points{"0:72", "90:162", "90", "102", "102:6", "156:60", "156:0", "180:24", "180:0", "192:12"}));
    EXPECT_EQ(points_of(result.edit, 1), (Points{"0:0", "192:192"}));
}

TEST(OtioSamples, ANestIsReadThroughItsRangeAndASpeedThroughItsClip) {
    const formats::ReadResult result = formats::read_otio(sample("nest_and_speed.otio"));
    ASSERT_EQ(result.error, "");
    EXPECT_EQ(points_of(result.edit, 0), (Points{"0:104", "20:124", "20:50", "44:98"}));
}

TEST(OtioSamples, AClipAloneIsAnEdit) {
    const formats::ReadResult result = formats::read_otio(sample("a_clip_alone.otio"));
    ASSERT_EQ(result.error, "");
    EXPECT_EQ(points_of(result.edit, 0), (Points{"0:0", "10:10"}));
}

TEST(OtioSamples, AFileThatEndsEarlyIsRefusedWithItsPlace) {
    EXPECT_EQ(formats::read_otio(sample("cut_short.otio")).error,
              sample("cut_short.otio") + ": line 28, byte 401: Missing a closing quotation mark in string.");
}

} // namespace
