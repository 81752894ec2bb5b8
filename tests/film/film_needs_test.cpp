// What film edits need whose frames don't begin together with those of the film.

#include "film/cut_uses.h"
#include "tests/film/made_film.h"
#include "tests/generator/made_edit.h"
#include "tests/shots/logged_edit.h"

#include <gmock/gmock.h>

using namespace generator_test;
using film::FilmNeeds;
using film::FrameRange;
using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::Le;
using testing::SizeIs;

namespace {

constexpr std::int64_t first_frame = 1600; ///< 0100+00
constexpr label_t tc_30 = static_cast<label_t>(5);

Fraction video(std::int64_t frames) { return {frames, 30}; }

EditDescription edit_30() {
    EditDescription edit = plain_edit();
    edit.rate = embedded::nearest_rate(30.0);
    return edit;
}

SourceDescription shot_30(const std::string& name) {
    SourceDescription source = shot(name);
    source.rate = embedded::nearest_rate(30.0);
    source.video_timecode = LabelDescription{tc_30, "01:00:00:00", {}, Fraction(30)};
    return source;
}

EventDescription video_event(SourceId source, std::int64_t first, std::int64_t length) {
    EventDescription event;
    event.source = source;
    event.source_in = video(first);
    event.duration = video(length);
    return event;
}

TransitionDescription video_dissolve(std::int64_t before, std::int64_t behind) {
    TransitionDescription transition;
    transition.in_offset = video(before);
    transition.out_offset = video(behind);
    return transition;
}

/// All film that the video frames may show, counted from the source's first.
FrameRange shown(std::int64_t first, std::int64_t length) {
    return {first_frame + first * 4 / 5, first_frame + ((first + length) * 4 + 4) / 5 - 1};
}

film::ReelNeeds needs_of(const EditPtr& edit, const film::LogRows* log = nullptr) {
    film::ReelNeeds all;
    film::add_needs(film::film_of_edit(edit, {}, log), log, 0, all);
    return all;
}

std::vector<FrameRange> ranges_of(const FilmNeeds& needs) {
    std::vector<FrameRange> ranges;
    for (const film::FilmNeed& need : needs)
        ranges.push_back(need.frames);
    return ranges;
}

film::CutUses uses_of(const EditPtr& edit) {
    film::CutFilm all;
    film::add_cut(film::film_of_edit(edit, {}, nullptr), nullptr, film::CutMethod::ab, 0, all);
    return all.uses;
}

bool holds(const FrameRange& frames, const FrameRange& wanted) { return frames.holds(wanted); }

// At 30 the dissolve begins and ends between frames of film; the parts of a shot in it and beside it are one stretch.
TEST(FilmNeeds, AShotWithTransitionsIsOneStretchWithPulldown) {
    for (std::int64_t first = 8; first < 13; ++first) {
        for (std::int64_t before = 0; before < 5; ++before) {
            for (const std::int64_t behind : {3, 5, 8}) {
                EditBuilder builder(edit_30());
                const int v1 = builder.add_channel(picture);
                builder.add_event(v1, video_event(builder.add_source(shot_30("a")), first, 21 + before));
                builder.add_transition(v1, video_dissolve(before, behind));
                SourceDescription other = shot_30("b");
                other.key = label(label_key_35mm_4p, "KJ9876540100+00");
                builder.add_event(v1, video_event(builder.add_source(other), first, 40));
                const EditPtr edit = builder.finish();
                const FilmNeeds needs = needs_of(edit).needs;
                ASSERT_THAT(needs, SizeIs(2)) << first << ' ' << before << ' ' << behind;
                EXPECT_TRUE(holds(needs[0].frames, shown(first, 21 + before + behind)));
                EXPECT_TRUE(holds(needs[1].frames, shown(first - before, 40 + before)));
                EXPECT_LE(needs[0].frames.length(), shown(first, 21 + before + behind).length() + 1);
                EXPECT_THAT(uses_of(edit), SizeIs(2));
            }
        }
    }
}

TEST(FilmNeeds, EventsThatGoOnWithEachOtherLeaveNoFrameBetweenThem) {
    for (std::int64_t first = 0; first < 5; ++first) {
        for (std::int64_t length = 10; length < 15; ++length) {
            EditBuilder builder(edit_30());
            const int v1 = builder.add_channel(picture);
            const SourceId a = builder.add_source(shot_30("a"));
            builder.add_event(v1, video_event(a, first, length));
            builder.add_event(v1, video_event(a, first + length, 20));
            const EditPtr edit = builder.finish();
            EXPECT_THAT(ranges_of(needs_of(edit).needs), ElementsAre(shown(first, length), shown(first + length, 20)));
            const film::CutUses uses = uses_of(edit);
            ASSERT_THAT(uses, SizeIs(1)) << first << ' ' << length;
            EXPECT_EQ(uses[0].frames, shown(first, length + 20));
        }
    }
}

// A frame of video between two frames of film is in no list; it is ordered all the same.
TEST(FilmNeeds, AnEventOfLessThanAFrameIsNeeded) {
    EditBuilder builder(edit_30());
    const int v1 = builder.add_channel(picture);
    const SourceId a = builder.add_source(shot_30("a"));
    builder.add_event(v1, video_event(a, 0, 5));
    builder.add_event(v1, video_event(builder.add_source(shot_30("b")), 21, 1));
    builder.add_event(v1, video_event(a, 40, 9));
    const film::EditFilm edit = film::film_of_edit(builder.finish(), {}, nullptr);
    EXPECT_THAT(edit.strips, SizeIs(2));
    film::ReelNeeds all;
    film::add_slivers(edit, nullptr, 0, all);
    EXPECT_THAT(ranges_of(all.needs), ElementsAre(shown(21, 1)));
    EXPECT_EQ(all.needs.at(0).strip.event, 2);
}

TEST(FilmNeeds, FilmThatGoesFrameForFrameIsNeededToTheFrame) {
    EditBuilder builder(plain_edit());
    const int v1 = builder.add_channel(picture);
    const SourceId a = builder.add_source(shot("a"));
    builder.add_event(v1, event_of(a, 10, 5));
    builder.add_event(v1, event_of(a, 10, 0, Fraction(3, 2)));
    EXPECT_THAT(ranges_of(needs_of(builder.finish()).needs),
                ElementsAre(FrameRange{1605, 1614}, FrameRange{1600, 1613}));
}

// As doubles these speeds lie a hair below what is meant.
TEST(FilmNeeds, ASpeedThatIsAHairOffLosesNoFrame) {
    const struct {
        double speed;
        int length;
        FrameRange frames;
    } cases[] = {
        {1.2, 6, {1600, 1606}}, {0.7, 11, {1600, 1607}}, {2.0 / 3, 4, {1600, 1602}}, {1.0 / 3, 7, {1600, 1602}}};
    for (const auto& one : cases) {
        EditBuilder builder(plain_edit());
        const int v1 = builder.add_channel(picture);
        builder.add_event(v1, event_of(builder.add_source(shot("a")), one.length, 0, Fraction::exactly(one.speed)));
        EXPECT_THAT(ranges_of(needs_of(builder.finish()).needs), ElementsAre(one.frames)) << one.speed;
    }
}

TEST(FilmNeeds, AStripInReverseBeginsWithTheFrameThatASpeedMeans) {
    EditBuilder builder(plain_edit());
    const int v1 = builder.add_channel(picture);
    builder.add_event(v1, event_of(builder.add_source(shot("a")), 3, 10, -Fraction::exactly(1.0 / 3)));
    EXPECT_EQ(needs_of(builder.finish()).needs.at(0).strip.source.frame_at(0), 10);
}

struct LoggedPulldown : testing::Test {
    /// The row begins with an A frame.
    EditPtr edit(std::int64_t first, std::int64_t length) {
        EditBuilder builder(edit_30());
        SourceDescription source = logged::transfer("VT1");
        source.rate = embedded::nearest_rate(30.0);
        source.video_timecode = LabelDescription{tc_30, "01:00:00:00", {}, Fraction(30)};
        source.key.reset();
        builder.add_event(builder.add_channel(picture), video_event(builder.add_source(source), first, length));
        return builder.finish();
    }
    Params params() {
        Params made = logged::log_params();
        made[1].second = "30fps";
        return made;
    }

    Records rows{logged::shot_on_vt1()};
};

// A B X C D hold the frames 0, 1, 1 and 2, 2 and 3, 3.
TEST_F(LoggedPulldown, FilmBeginsWithTheFrameThatTheListsName) {
    MadeTable table(params(), logged::log_columns(), rows);
    const film::LogRows log(table);
    const std::int64_t firsts[] = {0, 1, 2, 2, 3};
    for (std::int64_t k = 0; k < 5; ++k) {
        const film::FilmNeed need = needs_of(edit(k, 10), &log).needs.at(0);
        EXPECT_EQ(need.frames.first, first_frame + firsts[k]) << k;
        EXPECT_EQ(need.strip.key.frame_at(0), first_frame + firsts[k]) << k;
        EXPECT_GE(need.frames.last, first_frame + (k + 10 - 1) * 4 / 5) << k;
        EXPECT_LE(need.frames.length(), 9) << k;
    }
}

TEST_F(LoggedPulldown, AFreezeHasItsRowAsTake) {
    EditBuilder builder(edit_30());
    SourceDescription source = logged::transfer("VT1");
    source.rate = embedded::nearest_rate(30.0);
    source.video_timecode = LabelDescription{tc_30, "01:00:00:00", {}, Fraction(30)};
    EventDescription event = video_event(builder.add_source(source), 100, 10);
    event.speed = 0;
    builder.add_event(builder.add_channel(picture), event);
    MadeTable table(params(), logged::log_columns(), rows);
    const film::LogRows log(table);
    // A minute at 30 is 1440 frames of film.
    EXPECT_EQ(needs_of(builder.finish(), &log).needs.at(0).take, (FrameRange{first_frame, first_frame + 1439}));
}

TEST(FilmNeeds, FilmWithoutKeyNumbersHasItsMediaAsTake) {
    EditBuilder builder(plain_edit());
    SourceDescription source = shot("a");
    source.key.reset();
    source.length = frames(40);
    builder.add_event(builder.add_channel(picture), event_of(builder.add_source(source), 10, 5));
    const film::FilmNeed need = needs_of(builder.finish()).needs.at(0);
    constexpr std::int64_t one_o_clock = 86400;
    EXPECT_EQ(need.frames, (FrameRange{one_o_clock + 5, one_o_clock + 14}));
    EXPECT_EQ(need.take, (FrameRange{one_o_clock, one_o_clock + 39}));
}

} // namespace
