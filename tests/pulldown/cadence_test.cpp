// How film frames are counted from video frames, held against the fields of the cadence one by one.

#include "formats/edl/edl_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <vector>

namespace {

/// Which film frame each field of a transfer shows, from a film frame that starts a cycle.
std::vector<int> fields_of(const std::vector<int>& fields_a_frame, int film_frames) {
    std::vector<int> fields;
    for (int film = 0; film < film_frames; ++film) {
        const int count = fields_a_frame[static_cast<std::size_t>(film) % fields_a_frame.size()];
        fields.insert(fields.end(), static_cast<std::size_t>(count), film);
    }
    return fields;
}

std::vector<int> pulldown_23(int film_frames) { return fields_of({2, 3, 2, 3}, film_frames); }

/// 24 film frames in 25 of video: frames 12 and 24 of each second have a third field.
std::vector<int> pulldown_24_in_25(int film_frames) {
    std::vector<int> second(24, 2);
    second[11] = second[23] = 3;
    return fields_of(second, film_frames);
}

EditPtr source_at(double rate) {
    formats::ReadOptions options;
    options.rate = embedded::nearest_rate(rate);
    const formats::ReadResult result =
        formats::read_edl_texts({{"001 A V C 01:00:00:00 01:00:01:00 10:00:00:00 10:00:01:00", "a.edl", 0}}, options);
    EditPtr source;
    source.i_open(result.edit->get_edit_cel_p(0)->get_start_ceh().get_channel_event().cookie, edit_open_default);
    return source;
}

/// Where in a video frame its position is taken: labels count from its start, a log from behind its middle.
constexpr double by_label = 0.0;
constexpr double by_log = 0.6;

/// How far the count is from the film that frame `v` shows, for every start on the video frame `phase` of the
/// cycle: 0 where it names a film frame that is there. The key number is that of the start's first field.
std::set<int> errors(const std::vector<int>& fields, double rate, std::size_t phase, double inside) {
    const EditPtr source = source_at(rate);
    const double frame = source->getCelResolution();
    std::set<int> found;
    for (std::size_t v = 0; 2 * (v + phase) + 1 < fields.size(); ++v) {
        const int first = fields[2 * (v + phase)] - fields[2 * phase];
        const int second = fields[2 * (v + phase) + 1] - fields[2 * phase];
        const double position = (static_cast<double>(v) + inside) * frame;
        const int counted = static_cast<int>(mPosn_Xlate(position, medium_edit, medium_film, source));
        found.insert(counted < first ? counted - first : counted > second ? counted - second : 0);
    }
    return found;
}

enum Phase : std::size_t { phase_a, phase_b, phase_x, phase_c, phase_d };

TEST(TwoThree, CadenceIsThatOfTheTape) {
    const std::vector<int> fields = pulldown_23(4);
    EXPECT_EQ(fields, (std::vector<int>{0, 0, 1, 1, 1, 2, 2, 3, 3, 3}));
}

TEST(TwoThree, ThroughALogFromAnABOrDFrameEveryNumberIsOnItsFrame) {
    for (const Phase phase : {phase_a, phase_b, phase_d})
        EXPECT_EQ(errors(pulldown_23(24000), 29.97, phase, by_log), std::set<int>({0})) << phase;
}

TEST(TwoThree, ThroughALogFromAnXOrCFrameItIsAtMostOneEarly) {
    for (const Phase phase : {phase_x, phase_c})
        EXPECT_EQ(errors(pulldown_23(24000), 29.97, phase, by_log), std::set<int>({-1, 0})) << phase;
}

TEST(TwoThree, ByTheSourcesOwnLabelItIsAtMostOneEarly) {
    for (const Phase phase : {phase_a, phase_b, phase_x, phase_c, phase_d}) {
        const std::set<int> found = errors(pulldown_23(24000), 29.97, phase, by_label);
        EXPECT_EQ(*found.rbegin(), 0) << phase;
        EXPECT_GE(*found.begin(), -1) << phase;
    }
    EXPECT_EQ(errors(pulldown_23(24000), 29.97, phase_a, by_label), std::set<int>({-1, 0}));
}

TEST(FrameForFrame, NothingIsOff) {
    const std::vector<int> fields = fields_of({2}, 24000);
    for (const double rate : {23.976, 24.0, 25.0})
        for (const double inside : {by_label, by_log})
            EXPECT_EQ(errors(fields, rate, 0, inside), std::set<int>({0})) << rate;
}

TEST(TwentyFourInTwentyFive, CountsAFrameTooMuchEachSecond) {
    for (const int seconds : {1, 2, 10}) {
        for (const double inside : {by_label, by_log}) {
            const std::set<int> found = errors(pulldown_24_in_25(24 * seconds), 25, 0, inside);
            EXPECT_EQ(*found.begin(), 0);
            EXPECT_EQ(*found.rbegin(), seconds) << "after " << seconds << " s";
        }
    }
}

} // namespace
