// Events to records by the shots of a logging table.

#include "cutlist/convert_shots.h"
#include "tests/shots/logged_edit.h"
#include "tests/support/event_lists.h"

#include <gmock/gmock.h>
#include <rapidcheck.h>

using namespace logged;

namespace {

class ConvertShots : public testing::Test {
protected:
    ConvertShots() {
        channel = builder.add_channel(1);
        source = builder.add_source(transfer("vt1"));
    }
    ~ConvertShots() override { clear_generator_labels(); }

    /// Finishes the edit and converts all that the first channel holds.
    void convert(const Records& rows, const Params& params = log_params(), int long_keycode = -1, int track = 1) {
        edit = builder.finish();
        if (change_list) change_events(edit, channel, change_list);
        MadeTable table(params, log_columns(), rows);
        shots = std::make_unique<LogShotList>(table, long_keycode, logger, 2);
        make_generator_labels(*edit, shots->film_label_type, long_keycode);
        list = flatten(edit->get_edit_cel_p(channel)->simplify(0, false, true), 3, 1);
        ce_handle handle = list->get_start_ceh();
        std::unique_ptr<cut_s> record;
        while ((ended = convert_event_from_shots(edit, channel, EditBuilder::cues_of(edit), handle, record, shots.get(),
                                                 track)) == convert_done)
            records.push_back(std::move(record));
        EXPECT_EQ(record, nullptr);
    }
    void expect_reels(const cut_s& record, const char* src, const char* others) {
        EXPECT_STREQ(record.src_reelid, src);
        EXPECT_STREQ(record.aud_reelid, others);
        EXPECT_STREQ(record.src24P_reelid, others);
        EXPECT_STREQ(record.cam_reel, others);
    }
    void expect_no_numbers_but_keys(const cut_s& record) {
        EXPECT_FALSE(record.inkcode_in.is_valid());
        EXPECT_FALSE(record.inkcode_out.is_valid());
        EXPECT_FALSE(record.prim_tc.is_valid());
        EXPECT_FALSE(record.aud_tc.is_valid());
        EXPECT_FALSE(record.src24P_tc.is_valid());
    }

    EditBuilder builder{edit_24()};
    int channel = 0;
    SourceId source = 0;
    std::function<void(embedded::CelEvents&)> change_list; ///< what the builder never makes
    EditPtr edit;
    RecordingLogger logger;
    std::unique_ptr<LogShotList> shots;
    Qb::Ptr<Cel> list;
    std::vector<std::unique_ptr<cut_s>> records;
    convert_result ended = convert_done;
};

TEST_F(ConvertShots, CountsAllNumbersFromTheShotsStart) {
    builder.add_event(channel, event_of(source, 48, 24));
    convert({shot_on_vt1()});
    ASSERT_EQ(records.size(), 1U);
    const cut_s& record = *records[0];
    EXPECT_EQ(ended, convert_ended);
    EXPECT_EQ(record.edit_in, 0);
    EXPECT_EQ(record.edit_out, 24);
    EXPECT_EQ(text_of(record.keycode_in), "KJ1234560103+00");
    EXPECT_EQ(text_of(record.keycode_out), "KJ1234560104+08");
    EXPECT_EQ(text_of(record.inkcode_in), "AB120013+00");
    EXPECT_EQ(text_of(record.inkcode_out), "AB120014+08");
    EXPECT_STREQ(record.prim_tc.get_string(0), "01:00:02:00");
    EXPECT_EQ(record.prim_tc.end, 24);
    EXPECT_EQ(record.prim_tc.end_set, 1);
    EXPECT_STREQ(record.aud_tc.get_string(0), "05:00:02:00");
    EXPECT_STREQ(record.src24P_tc.get_string(0), "07:00:02:00");
    EXPECT_EQ(record.src24P_tc.end, 24);
    EXPECT_EQ(record.keycode_missing, 0);
    EXPECT_EQ(record.special, special_none);
    EXPECT_EQ(record.speed, 1.0);
}

TEST_F(ConvertShots, TakesReelsFromTheShotAndLogFieldsFromTheSource) {
    builder.add_event(channel, event_of(source, 0, 24));
    convert({shot_on_vt1()});
    const cut_s& record = *records.at(0);
    EXPECT_STREQ(record.src_reelid, "vt1");
    EXPECT_STREQ(record.cam_reel, "A001");
    EXPECT_STREQ(record.aud_reelid, "S01");
    EXPECT_STREQ(record.src24P_reelid, "P01");
    EXPECT_STREQ(record.scene, "12A");
    EXPECT_STREQ(record.take, "3");
    EXPECT_STREQ(record.description, "A pan");
    EXPECT_EQ(record.shot_name, LightweightString<wchar_t>(L"Slate vt1"));
    EXPECT_EQ(std::string(record.cookie).size(), 8U);
}

TEST_F(ConvertShots, WithoutAFilmRollTheReelIsTheCameras) {
    auto row = shot_on_vt1();
    row[4] = "";
    builder.add_event(channel, event_of(source, 0, 24));
    convert({row});
    EXPECT_STREQ(records.at(0)->cam_reel, "VT1");
}

TEST_F(ConvertShots, ReelsAreCutToEightCharacters) {
    auto row = shot_on_vt1();
    row[4] = "A00100200300";
    builder.add_event(channel, event_of(source, 0, 24));
    convert({row});
    EXPECT_STREQ(records.at(0)->cam_reel, "A0010020");
}

TEST_F(ConvertShots, AShotWithoutAKeyCountsBehindTheCookie) {
    auto row = shot_on_vt1();
    row[7] = "";
    row[8] = "";
    builder.add_event(channel, event_of(source, 48, 24));
    convert({row});
    const cut_s& record = *records.at(0);
    EXPECT_EQ(record.keycode_missing, 1);
    EXPECT_EQ(record.special, special_none);
    EXPECT_EQ(text_of(record.keycode_in), std::string(record.cookie) + "0003+00");
    EXPECT_FALSE(record.inkcode_in.is_valid());
    EXPECT_TRUE(record.prim_tc.is_valid());
}

TEST_F(ConvertShots, LongerCountsComeFromTheOption) {
    auto row = shot_on_vt1();
    row[7] = "KJ12345600100+00";
    builder.add_event(channel, event_of(source, 48, 24));
    convert({row}, log_params(), 1);
    EXPECT_EQ(generator().key_label.type(), 22);
    EXPECT_EQ(text_of(records.at(0)->keycode_in), "KJ12345600103+00");
}

TEST_F(ConvertShots, BlackCountsFromZeroOverItsOwnLength) {
    builder.add_event(channel, event_of(source, 0, 24));
    builder.add_black(channel, frames(36));
    convert({shot_on_vt1()});
    const cut_s& black = *records.at(1);
    expect_reels(black, "__BLACK", "__BLACK");
    EXPECT_EQ(black.special, special_black);
    EXPECT_EQ(black.keycode_missing, 0);
    EXPECT_EQ(text_of(black.keycode_in), "__BLACK_0000+00");
    EXPECT_EQ(text_of(black.keycode_out), "__BLACK_0002+04");
    EXPECT_TRUE(black.shot_name.empty());
    expect_no_numbers_but_keys(black);
}

TEST_F(ConvertShots, LostMediaIsNumberedByItsCookie) {
    SourceDescription lost = transfer("vt2");
    lost.opens = false;
    builder.add_event(channel, event_of(builder.add_source(lost), 48, 24));
    convert({shot_on_vt1()});
    const cut_s& record = *records.at(0);
    expect_reels(record, "__NOLOG", "__NOLOG");
    EXPECT_EQ(record.special, special_no_material);
    EXPECT_EQ(record.keycode_missing, 1);
    EXPECT_EQ(text_of(record.keycode_in), std::string(record.cookie) + "0003+00");
    EXPECT_EQ(text_of(record.keycode_out), std::string(record.cookie) + "0004+08");
    expect_no_numbers_but_keys(record);
}

TEST_F(ConvertShots, LostMediaKeepsItsSpeed) {
    SourceDescription lost = transfer("vt2");
    lost.opens = false;
    builder.add_event(channel, event_of(builder.add_source(lost), 48, 24, 2));
    convert({shot_on_vt1()});
    EXPECT_EQ(records.at(0)->speed, 2.0);
    EXPECT_EQ(text_of(records.at(0)->keycode_in), std::string(records[0]->cookie) + "0003+00");
    EXPECT_EQ(text_of(records.at(0)->keycode_out), std::string(records[0]->cookie) + "0006+00");
}

// What of the source the event takes, and at which speed, counts for nothing. The transition takes 6 of 36 frames.
TEST_F(ConvertShots, BlackBehindATransitionIsAsLongAsWhatTheTransitionLeaves) {
    builder.add_event(channel, event_of(source, 0, 24));
    TransitionDescription fade;
    fade.in_offset = fade.out_offset = frames(6);
    builder.add_transition(channel, fade);
    builder.add_black(channel, frames(36));
    change_list = [](embedded::CelEvents& events) {
        events.at(2).in.source_time = events[2].whole_in.source_time = 1.0;
        events.at(2).out.source_time = events[2].whole_out.source_time = 1.5;
        events.at(2).out.speed = events[2].whole_out.speed = 2.0F;
    };
    convert({shot_on_vt1()});
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(text_of(records[1]->keycode_in), "__BLACK_0000+00");
    EXPECT_EQ(text_of(records[1]->keycode_out), "__BLACK_0001+14");
}

TEST_F(ConvertShots, TheSpeedIsTheOutPoints) {
    builder.add_event(channel, event_of(source, 48, 24, 2));
    change_list = [](embedded::CelEvents& events) { events.at(0).in.speed = 0.5F; };
    convert({shot_on_vt1()});
    EXPECT_EQ(records.at(0)->speed, 2.0);
}

TEST_F(ConvertShots, ShotsOfAnotherReelDoNotMatch) {
    auto row = shot_on_vt1();
    row[1] = "VT10";
    builder.add_event(channel, event_of(source, 48, 24));
    convert({row});
    const cut_s& record = *records.at(0);
    expect_reels(record, "vt1", "__NOSHOT");
    EXPECT_EQ(record.special, special_no_material);
    EXPECT_EQ(record.keycode_missing, 1);
    EXPECT_EQ(record.shot_name, LightweightString<wchar_t>(L"Slate vt1"));
    EXPECT_EQ(text_of(record.keycode_in), std::string(record.cookie) + "0003+00");
    EXPECT_EQ(text_of(record.keycode_out), std::string(record.cookie) + "0004+08");
    expect_no_numbers_but_keys(record);
}

TEST_F(ConvertShots, TheStretchMustLieWithinTheShotAndItsSlack) {
    auto row = shot_on_vt1();
    row[2] = "01:00:01:00";
    row[3] = "01:00:02:00";
    builder.add_event(channel, event_of(source, 0, 78));
    builder.add_event(channel, event_of(source, 0, 79));
    convert({row});
    EXPECT_STREQ(records.at(0)->aud_reelid, "S01");
    EXPECT_STREQ(records.at(1)->aud_reelid, "__NOSHOT");
}

TEST_F(ConvertShots, RenderedMaterialMatchesOnlyShotsWithoutAReel) {
    SourceDescription rendered = transfer("vt1");
    rendered.rendered = true;
    rendered.identity = "rendered";
    builder.add_event(channel, event_of(builder.add_source(rendered), 48, 24));
    convert({shot_on_vt1()});
    expect_reels(*records.at(0), "RENDERED", "__NOSHOT");
    EXPECT_EQ(records.at(0)->special, special_no_material);
    EXPECT_TRUE(records.at(0)->shot_name.empty());
}

TEST_F(ConvertShots, RenderedMaterialTakesTheReelsOfAShotWithoutAReel) {
    SourceDescription rendered = transfer("vt1");
    rendered.rendered = true;
    rendered.identity = "rendered";
    builder.add_event(channel, event_of(builder.add_source(rendered), 48, 24));
    auto row = shot_on_vt1();
    row[1] = ""; // the reel of rendered material counts for nothing, its timecode does
    convert({row});
    const cut_s& record = *records.at(0);
    EXPECT_STREQ(record.src_reelid, "RENDERED");
    EXPECT_STREQ(record.cam_reel, "A001");
    EXPECT_STREQ(record.aud_reelid, "S01");
    EXPECT_EQ(record.special, special_no_material);
    EXPECT_EQ(text_of(record.keycode_in).substr(0, 8), "KJ123456");
    EXPECT_EQ(record.keycode_missing, 0);
}

TEST_F(ConvertShots, SpeedsNearOneAreOneAndNearZeroFreeze) {
    const std::pair<Fraction, double> speeds[] = {
        {Fraction(201, 200), 1.0}, {Fraction(1, 200), 0.0}, {Fraction(2), 2.0}, {Fraction(-1), -1.0}};
    for (const auto& one : speeds)
        builder.add_event(channel, event_of(source, 48, 24, one.first));
    convert({shot_on_vt1()});
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(records.at(i)->speed, speeds[i].second) << i;
    EXPECT_EQ(text_of(records[0]->keycode_out), "KJ1234560104+08");
    EXPECT_EQ(text_of(records[1]->keycode_out), "KJ1234560103+01") << "0.12 of a frame is rounded up";
    EXPECT_EQ(text_of(records[2]->keycode_out), "KJ1234560106+00");
    EXPECT_GT(records[3]->keycode_in.sample, records[3]->keycode_out.sample);
}

TEST(RoundFrames, RoundsAwayFromZeroAboveATwentieth) {
    EXPECT_EQ(round_frames(10.04), 10.04);
    EXPECT_EQ(round_frames(10.06), 11.0);
    EXPECT_EQ(round_frames(-10.06), -11.0);
}

TEST_F(ConvertShots, TakesTheFirstCueWhateverItsFlags) {
    builder.add_event(channel, event_of(source, 0, 24));
    builder.add_event(channel, event_of(source, 48, 24));
    builder.add_cue(channel, EditBuilder::CueLevel::track, {frames(10), "not to be printed", 0});
    builder.add_cue(channel, EditBuilder::CueLevel::track, {frames(12), "printed", 4});
    convert({shot_on_vt1()});
    EXPECT_EQ(records.at(0)->clip_cue, 1);
    EXPECT_STREQ(records.at(0)->cue_description, "not to be printed");
    EXPECT_EQ(records.at(1)->clip_cue, 0);
}

TransitionDescription transition_of(TransitionDescription::Kind kind, const std::string& name) {
    TransitionDescription transition;
    transition.kind = kind;
    transition.name = name;
    transition.in_offset = transition.out_offset = frames(6);
    return transition;
}

TEST_F(ConvertShots, FoldsTransitionsInByTheirKind) {
    using Kind = TransitionDescription::Kind;
    TransitionDescription wipe = transition_of(Kind::wipe, "");
    wipe.pattern = 7;
    wipe.reversed = true;
    for (const TransitionDescription& one :
         {transition_of(Kind::dissolve, "Cross"), transition_of(Kind::film_dissolve, "Film"), wipe,
          transition_of(Kind::other, "Ripple")}) {
        builder.add_event(channel, event_of(source, 48, 48));
        builder.add_transition(channel, one);
    }
    builder.add_event(channel, event_of(source, 48, 48));
    convert({shot_on_vt1()});
    ASSERT_EQ(records.size(), 5U);
    const char* kinds[] = {"DO", "DO", "WO", "XX", ""};
    const char* names[] = {"Cross", "Film", "Unknown Effect", "Ripple", ""};
    const char* modes[] = {"", "", "2.007", "", ""};
    for (std::size_t i = 0; i < 5; ++i) {
        EXPECT_STREQ(records[i]->fx_op_out, kinds[i]) << i;
        EXPECT_STREQ(records[i]->fx_name_out, names[i]) << i;
        EXPECT_STREQ(records[i]->fx_mod_out, modes[i]) << i;
        EXPECT_EQ(records[i]->fx_len_out, i < 4 ? 12 : 0) << i;
    }
    EXPECT_EQ(ended, convert_ended);
}

TEST_F(ConvertShots, ATransitionAtTheEndStaysWithItsCut) {
    builder.add_event(channel, event_of(source, 48, 48));
    TransitionDescription last = transition_of(TransitionDescription::Kind::dissolve, "Out");
    last.out_offset = Fraction(0);
    builder.add_transition(channel, last);
    convert({shot_on_vt1()});
    ASSERT_GE(records.size(), 1U);
    EXPECT_STREQ(records[0]->fx_op_out, "DO");
    EXPECT_EQ(ended, convert_ended);
}

TEST_F(ConvertShots, ATrackThatBeginsWithAnEffectHasNoRecords) {
    builder.add_event(channel, event_of(source, 48, 48));
    builder.add_transition(channel, transition_of(TransitionDescription::Kind::dissolve, "Cross"));
    builder.add_event(channel, event_of(source, 48, 48));
    convert({shot_on_vt1()});
    ce_handle handle = list->get_start_ceh();
    while (handle.valid() && !(handle.is_in_point() && handle.get_channel_event().cookie.isEffect()))
        handle.increment(ce_all);
    ASSERT_TRUE(handle.valid());
    std::unique_ptr<cut_s> record;
    EXPECT_EQ(convert_event_from_shots(edit, channel, nullptr, handle, record, shots.get(), 1), convert_effect_first);
    handle.increment(ce_all);
    EXPECT_EQ(convert_event_from_shots(edit, channel, nullptr, handle, record, shots.get(), 1), convert_out_of_step);
    EXPECT_EQ(record, nullptr);
}

TEST_F(ConvertShots, KeysFollowTheSourceFrameForFrame) {
    EXPECT_TRUE(rc::check("key in and out", [] {
        EditBuilder own(edit_24());
        const int chan = own.add_channel(1);
        const SourceId id = own.add_source(transfer("vt1"));
        const int first = *rc::gen::inRange(0, 1000), length = *rc::gen::inRange(1, 400);
        own.add_event(chan, event_of(id, first, length));
        EditPtr made = own.finish();
        MadeTable table(log_params(), log_columns(), {shot_on_vt1()});
        RecordingLogger quiet;
        LogShotList log(table, -1, quiet, 2);
        make_generator_labels(*made, log.film_label_type, -1);
        const Qb::Ptr<Cel> cel = flatten(made->get_edit_cel_p(chan)->simplify(0, false, true), 3, 1);
        ce_handle handle = cel->get_start_ceh();
        std::unique_ptr<cut_s> record;
        RC_ASSERT(convert_event_from_shots(made, chan, nullptr, handle, record, &log, 1) == convert_done);
        clear_generator_labels();
        RC_ASSERT(record->keycode_in.sample == 6400 + 4 * first);
        RC_ASSERT(record->keycode_out.sample == 6400 + 4 * (first + length));
        RC_ASSERT(record->edit_out == length);
        RC_ASSERT(record->prim_tc.end == length);
    }));
}

} // namespace
