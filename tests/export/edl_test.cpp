// Edit lists that are written and read again mean the same film.

#include "embedded/edit_recipe.h"
#include "film/film_difference.h"
#include "formats/edl/edl_list.h"
#include "formats/edl/edl_reader.h"
#include "formats/edl/edl_writer.h"
#include "tests/edl/listed_edit.h"
#include "tests/export/plain_edit.h"

#include <gmock/gmock.h>

using namespace export_test;
using formats::Written;

namespace {

formats::ReadResult read_again(const Written& written) {
    return formats::read_edl_texts({{written.text, "again.edl", 7}}, {});
}

std::string lines_of(const embedded::Warnings& warnings) {
    std::string text;
    for (const embedded::Warning& warning : warnings)
        text += warning.text + "\n";
    return text;
}

/// Events on one track, of which a list can say all: whole frames, reels, speeds of few digits.
class ListableEdit {
public:
    EditPtr finish() {
        EditDescription edit = generator_test::plain_edit();
        edit.rate = rate_;
        const int day = 86400 * rate_->nominal; // lengths are even, so no still ends at midnight, which lists can't say
        edit.start_frame = one_in(3) ? day - 2 * number(0, 75) - 1 : number(0, 200000);
        EditBuilder builder(edit);
        builder.add_channel(picture);
        builder.add_event(0, event(builder));
        for (int left = number(0, 9); left > 0; --left)
            add(builder);
        builder.add_event(0, event(builder));
        return builder.finish();
    }

private:
    /// An even number of frames, as at odd ones half the speed lies between two frames of the source.
    Fraction time(int least, int above) { return Fraction(2 * number(least, above)) / rate_->rate(); }

    SourceDescription source(int serial) {
        SourceDescription source = bare_source("source " + std::to_string(serial));
        LabelDescription timecode;
        timecode.type = rate_->timecode;
        timecode.sample = number(200, rate_->nominal * 80000);
        timecode.rate = rate_->rate();
        source.video_timecode = timecode;
        source.reels[{1, 2}] = "REEL " + std::to_string(serial);
        if (!one_in(4)) source.key = label(*rc::gen::element(10, 11, 12, 22, 34, 36), "KJ1234564100+05");
        if (one_in(4) && rate_->num == 24) source.start_strip = Fraction(number(-5, 30), 8);
        if (one_in(3)) source.identity = "dailies/" + source.name + ".mov";
        return source;
    }

    /// Of a reel of its own: what a dissolve comes from is told by its reel.
    EventDescription event(EditBuilder& builder) {
        EventDescription event;
        event.source = builder.add_source(source(++serial_));
        event.duration = time(1, 30);
        event.source_in = time(50, 200);
        event.speed = *rc::gen::element<Fraction>(1, 1, 1, 2, -1, 0, Fraction(1, 2), Fraction(-3, 2));
        return event;
    }

    void add(EditBuilder& builder) {
        if (one_in(3)) {
            TransitionDescription transition = one_in(3) ? wipe(0, 0, number(0, 99), one_in(2)) : dissolve(0, 0);
            transition.in_offset = time(0, 10);
            transition.out_offset = time(0, 10);
            builder.add_transition(0, transition);
        } else if (one_in(4)) {
            builder.add_black(0, time(1, 20));
        } else {
            builder.add_event(0, event(builder));
        }
    }

    const embedded::RateInfo* rate_ =
        embedded::nearest_rate(*rc::gen::element(24.0, 23.976, 25.0, 29.97, 30.0, 48.0, 60.0));
    int serial_ = 0;
};

/// The key number at each frame of the tape, event by event.
std::vector<std::string> keys_of(const EditPtr& edit) {
    std::vector<std::string> keys;
    const double frame = edit->getCelResolution();
    const Qb::Ptr<Cel> cel = edit->get_edit_cel_p(0);
    for (ce_handle at = cel->get_start_ceh(); at.valid(); at.increment(ce_all)) {
        const ChannelEvent in = at.get_channel_event();
        at.increment(ce_all);
        if (in.cookie.isEffect() || in.cookie.isBlack()) continue;
        const EditPtr source = edl_tests::source_of(in.cookie);
        const double first = in.source_time - source->getStartStripTime();
        const int length = static_cast<int>((at.get_channel_event().edit_time - in.edit_time) / frame + 0.5);
        for (int k = 0; k < length; ++k)
            keys.push_back(edl_tests::key_at(source, first + k * frame * static_cast<double>(in.speed)));
    }
    return keys;
}

TEST(EdlExport, MeansTheSameFilmWhereAListCanSayIt) {
    EXPECT_TRUE(rc::check([] {
        const EditPtr edit = ListableEdit().finish();
        const Written written = formats::write_edl(edit, {0, {}});
        RC_ASSERT(lines_of(written.warnings) + written.error == "");
        const formats::ReadResult again = read_again(written);
        RC_ASSERT(lines_of(again.warnings) + again.error == "");
        RC_ASSERT(lines_of(film::film_differences(edit, nullptr, again.edit, {})) == "");
        RC_ASSERT(keys_of(again.edit) == keys_of(edit));
        RC_ASSERT(again.edit->getFrameRate() == edit->getFrameRate());
    }));
}

TEST(EdlExport, MakesAListOfAnyEditThatIsReadAgain) {
    EXPECT_TRUE(rc::check([] {
        const EditPtr edit = one_in(2) ? PlainEdit().finish() : any_edit();
        const embedded::EditRecipe& recipe = *embedded::recipe_of(edit);
        const int channel = number(0, static_cast<int>(recipe.channels.size()));
        const Written written = formats::write_edl(edit, {channel, {}});
        RC_ASSERT(written.text.empty() == !written.error.empty());
        if (!written.error.empty()) return;
        const formats::ReadResult again = read_again(written);
        RC_CLASSIFY(!again.warnings.empty(), "with warnings when it is read");
        RC_ASSERT(again.error == "");
        RC_ASSERT(again.edit->getFrameRate() == edit->getFrameRate());
    }));
}

/// One picture track at 24 frames from 01:00:00:00.
class OneTrack {
public:
    explicit OneTrack(double rate = 24.0, bool drop = false) {
        description.rate = embedded::nearest_rate(rate);
        description.drop_frame = drop;
        description.start_frame = 3600 * description.rate->nominal;
    }

    SourceDescription reel(const std::string& name) const {
        SourceDescription source = bare_source(name);
        LabelDescription timecode;
        timecode.type = description.rate->timecode;
        timecode.text = "02:00:00:00";
        timecode.rate = description.rate->rate();
        source.video_timecode = timecode;
        source.reels[{1, 2}] = "R" + name;
        return source;
    }

    EditDescription description = generator_test::plain_edit();
};

std::string list_of(EditBuilder& builder, int channel = 0) {
    return formats::write_edl(builder.finish(), {channel, {}}).text;
}

TEST(EdlLines, AreThoseOfAnEditList) {
    OneTrack track;
    EditBuilder builder(track.description);
    SourceDescription first = track.reel("A");
    first.key = label(12, "KJ1234560100+05");
    const SourceId a = builder.add_source(first), b = builder.add_source(track.reel("B"));
    builder.add_channel(picture);
    builder.add_event(0, event_of(a, 48, 24));
    builder.add_transition(0, dissolve(6, 6, "SMPTE_Dissolve"));
    builder.add_event(0, event_of(b, 24, 48, Fraction(-1, 2)));
    builder.add_black(0, frames(24));
    builder.add_stack_cue(cue(12, "the door"));
    EXPECT_EQ(list_of(builder), R"(TITLE: Reel 1
FCM: NON-DROP FRAME
* FRAME RATE: 24
001  RA       V     C        02:00:01:00 02:00:02:18 01:00:00:00 01:00:01:18
* FROM CLIP NAME: A
* KEY NUMBER: KJ1234560101+08.2 35mm-3p
* LOC: 01:00:00:12 RED     the door
002  RA       V     C        02:00:02:18 02:00:02:18 01:00:01:18 01:00:01:18
002  RB       V     D    012 02:00:02:00 02:00:02:15 01:00:01:18 01:00:03:00
M2   RB       -012.0                02:00:02:00
* FROM CLIP NAME: A
* KEY NUMBER: KJ1234560103+07.1 35mm-3p
* TO CLIP NAME: B
003  BL       V     C        00:00:00:00 00:00:01:00 01:00:03:00 01:00:04:00
)");
}

// Frames 71 to 140 of a tape at 30 are 56.8 to 112 of film, and 70 is the last ahead of these that begins a frame of
// it.
TEST(EdlLines, TellWhereACycleOfFilmBegins) {
    OneTrack track(30.0);
    EditBuilder builder(track.description);
    SourceDescription source = track.reel("A");
    source.key = label(label_key_35mm_4p, "KJ1234560100+05");
    builder.add_channel(picture);
    EventDescription event = event_of(builder.add_source(source), 0, 0);
    event.source_in = Fraction(71, 30);
    event.duration = Fraction(70, 30);
    builder.add_event(0, event);
    EXPECT_THAT(list_of(builder), testing::HasSubstr("02:00:02:11 02:00:04:21 01:00:00:00 01:00:02:10\n"
                                                     "* FROM CLIP NAME: A\n"
                                                     "* KEY NUMBER: KJ1234560103+13 35mm-4p CYCLE FROM 02:00:02:10\n"));
}

TEST(EdlLines, MarkDropFrameOfTheRecordAndOfEachSource) {
    OneTrack track(29.97, true);
    track.description.start_frame = 0;
    EditBuilder builder(track.description);
    SourceDescription drop = track.reel("D");
    drop.video_timecode->type = track.description.rate->drop_timecode;
    const SourceId a = builder.add_source(drop), b = builder.add_source(track.reel("N"));
    builder.add_channel(picture);
    const Fraction second = Fraction(30) / track.description.rate->rate();
    for (const SourceId source : {a, b, a}) {
        EventDescription event = event_of(source, 0);
        event.duration = second;
        builder.add_event(0, event);
    }
    const std::string list = list_of(builder);
    EXPECT_NE(list.find("FCM: DROP FRAME\n* FRAME RATE: 29.97\n001  RD       V     C        02:00:00;00"),
              std::string::npos)
        << list;
    EXPECT_NE(list.find("FCM: NON-DROP FRAME\n002  RN       V     C        02:00:00:00 02:00:01:00 00:00:01;00"),
              std::string::npos);
    EXPECT_NE(list.find("003  RD       V     C        02:00:00;00"), std::string::npos);
    const formats::ReadResult again = formats::read_edl_texts({{list, "again.edl", 0}}, {});
    const embedded::EditRecipe& recipe = *embedded::recipe_of(again.edit);
    EXPECT_TRUE(recipe.edit.drop_frame);
    EXPECT_EQ(recipe.sources.at(0).video_timecode->type, track.description.rate->drop_timecode);
    EXPECT_EQ(recipe.sources.at(1).video_timecode->type, track.description.rate->timecode);
}

TEST(EdlLines, HoldTheStartWhereTheTrackBeginsEmpty) {
    OneTrack track;
    EditBuilder builder(track.description);
    const SourceId a = builder.add_source(track.reel("A"));
    builder.add_channel(picture);
    builder.add_gap(0, frames(24));
    builder.add_event(0, event_of(a, 24));
    builder.add_gap(0, frames(24));
    builder.add_event(0, event_of(a, 24));
    const std::string list = list_of(builder);
    EXPECT_NE(list.find("001  BL       V     C        00:00:00:00 00:00:01:00 01:00:00:00 01:00:01:00"),
              std::string::npos);
    EXPECT_EQ(list.find("BL", list.find("002")), std::string::npos) << "a later gap is a place that isn't recorded";
}

TEST(EdlLines, AreOfTheChannelThatIsAskedFor) {
    OneTrack track;
    EditBuilder builder(track.description);
    const SourceId a = builder.add_source(track.reel("A")), b = builder.add_source(track.reel("B"));
    builder.add_channel(picture);
    builder.add_event(0, event_of(a, 24));
    for (const SourceId source : {a, b})
        builder.add_event(builder.add_channel(sound), event_of(source, 24));
    const EditPtr edit = builder.finish();
    const Written written = formats::write_edl(edit, {2, {}});
    EXPECT_NE(written.text.find("001  RB       A2    C   "), std::string::npos) << written.text;
    EXPECT_NE(lines_of(written.warnings).find("holds A2 alone: V1, A1 need lists of their own"), std::string::npos);
    EXPECT_EQ(formats::write_edl(edit, {3, {}}).error, "the edit has no such channel");
}

TEST(EdlExport, RefusesWhatCantBeAList) {
    OneTrack track;
    EditBuilder builder(track.description);
    builder.add_channel(picture, 8);
    builder.add_gap(0, frames(20), {lab_effect("Blur")});
    builder.add_channel(picture);
    const EditPtr edit = builder.finish();
    EXPECT_EQ(formats::write_edl(edit, {0, {}}).error, "an FX track can't be an edit list");
    EXPECT_EQ(formats::write_edl(edit, {1, {}}).error, "V2 holds nothing for an edit list");
}

/// One shot of so many frames from `start` on, at 24 a second.
Written list_of(int start, int length) {
    OneTrack track;
    track.description.start_frame = start;
    EditBuilder builder(track.description);
    const SourceId id = builder.add_source(track.reel("A"));
    builder.add_channel(picture);
    builder.add_event(0, event_of(id, length));
    const EditPtr edit = builder.finish();
    const Written written = formats::write_edl(edit, {0, {}});
    const formats::ReadResult again = read_again(written);
    EXPECT_EQ(written.error.empty(), again.edit && film::film_differences(edit, nullptr, again.edit, {}).empty())
        << written.error;
    return written;
}

TEST(EdlExport, RefusesWhatTimecodesDontTellOverMidnight) {
    constexpr int hour = 24 * 3600, noon = 12 * hour, day = 24 * hour;
    EXPECT_EQ(list_of(0, day - 1).error, "");
    EXPECT_EQ(list_of(hour, day - hour).error, "");
    EXPECT_EQ(list_of(noon, day - 1).error, "");
    EXPECT_EQ(list_of(day - hour, hour + noon).error, "");
    EXPECT_EQ(list_of(hour, day - hour + 1).error,
              "V1 begins at 01:00:00:00 and is 1987201 frames long; an edit list that runs over midnight begins after "
              "noon and ends before noon");
    EXPECT_NE(list_of(noon - 1, noon + 2).error, "");
    EXPECT_NE(list_of(day - hour, hour + noon + 1).error, "");
    EXPECT_NE(list_of(0, day).error, "");
    EXPECT_NE(list_of(noon, day).error, "");
}

std::string losses_of(const OneTrack& track, const SourceDescription& source, const Fraction& speed = 1) {
    EditBuilder builder(track.description);
    const SourceId id = builder.add_source(source);
    builder.add_channel(picture);
    builder.add_event(0, event_of(id, 24, 0, speed));
    return lines_of(formats::write_edl(builder.finish(), {0, {}}).warnings);
}

TEST(EdlExport, LeavesOutWhatIsShorterThanAFrame) {
    const OneTrack track;
    EditBuilder builder(track.description);
    const SourceId a = builder.add_source(track.reel("A")), b = builder.add_source(track.reel("B"));
    builder.add_channel(picture);
    EventDescription short_one = event_of(a, 0);
    short_one.duration = Fraction(1, 100);
    builder.add_event(0, short_one);
    builder.add_event(0, event_of(b, 24));
    const Written written = formats::write_edl(builder.finish(), {0, {}});
    EXPECT_EQ(lines_of(written.warnings),
              "times that lie between two frames are moved to the nearest\n"
              "V1 at 01:00:00:00, \"A\": it is shorter than a frame of the list, and is left "
              "out\n");
    EXPECT_EQ(written.text.find(" RA "), std::string::npos);
    EXPECT_NE(written.text.find("001  RB "), std::string::npos);
    EXPECT_EQ(read_again(written).error, "");
}

TEST(EdlExport, TellsWhatAListCantHold) {
    const OneTrack track;
    SourceDescription source = track.reel("A");
    EXPECT_EQ(losses_of(track, source), "");
    source.reels[{2, 1}] = "A001";
    source.scene = "12";
    EXPECT_EQ(losses_of(track, source), "source \"A\": not kept: its other reels, its scene, take and description\n");
    source = track.reel("A");
    source.reels[{1, 2}] = "BL";
    EXPECT_EQ(losses_of(track, source), "source \"A\": its reel \"BL\" means no reel in a list\n");
    source = track.reel("A");
    EXPECT_EQ(losses_of(track, source, Fraction(1, 7)),
              "V1 at 01:00:00:00, \"A\": its speed of 0.142857 can't be told exactly, and is rounded\n");
    source.rate = embedded::nearest_rate(25.0);
    EXPECT_EQ(losses_of(track, source), "source \"A\": its timecode counts 25 and is written as the edit counts\n"
                                        "source \"A\": not kept: its film rate\n");
    source = track.reel("A");
    source.key = label(10, "__5678900100+05");
    EXPECT_EQ(losses_of(track, source), "V1 at 01:00:00:00, \"A\": its key number isn't kept\n");
}

TEST(EdlExport, TakesKeyNumbersFromALogInPlaceOfItsOwn) {
    const OneTrack track;
    EditBuilder builder(track.description);
    SourceDescription source = track.reel("A");
    source.key = label(10, "KJ1234560100+05");
    const SourceId a = builder.add_source(source);
    builder.add_channel(picture);
    builder.add_event(0, event_of(a, 24, 12));
    std::vector<std::string> asked;
    const auto keys = [&](const std::string& reel, std::int64_t frame, const Fraction& share) {
        asked.push_back(reel + " " + std::to_string(frame) + " " + std::to_string(share.to_double()));
        LabelPoint key(0, label_key_35mm_4p);
        key.set_sample("EA1100010003+01");
        formats::LoggedFrame logged;
        logged.key = key;
        logged.end = frame + 12;
        return std::optional(logged);
    };
    const Written written = formats::write_edl(builder.finish(), {0, keys});
    EXPECT_THAT(asked, testing::Contains("RA 172812 1.000000"));
    EXPECT_NE(written.text.find("* KEY NUMBER: EA1100010003+01 35mm-4p"), std::string::npos);
    EXPECT_EQ(written.text.find("KJ12"), std::string::npos);
}

// Logs look up film 3/5 of a frame of tape further on: frames 0 to 5 of the tape show 0, 1, 2, 2, 3 and 4 of film.
TEST(EdlExport, TellsWhereTheCycleOfALogBegins) {
    OneTrack track(30.0);
    EditBuilder builder(track.description);
    builder.add_channel(picture);
    EventDescription event = event_of(builder.add_source(track.reel("A")), 0, 0);
    event.source_in = Fraction(3, 30);
    event.duration = Fraction(1);
    builder.add_event(0, event);
    formats::EdlWriting writing;
    writing.log = [](const std::string&, std::int64_t frame, const Fraction& share) {
        const Fraction film = (Fraction(frame - 2 * 3600 * 30) + Fraction(3, 5)) * share;
        LabelPoint key(0, label_key_35mm_4p);
        key.set_sample("KJ1234560100+00");
        key += static_cast<int>(film.floor()) * key.cvt()->samples_per_frame();
        formats::LoggedFrame logged;
        logged.key = key;
        logged.into = film - Fraction(film.floor());
        logged.end = frame + 60;
        return std::optional(logged);
    };
    const Written written = formats::write_edl(builder.finish(), writing);
    EXPECT_THAT(written.text, testing::HasSubstr("02:00:00:03 02:00:01:03 01:00:00:00 01:00:01:00\n"
                                                 "* FROM CLIP NAME: A\n"
                                                 "* KEY NUMBER: KJ1234560100+02 35mm-4p CYCLE FROM 02:00:00:02\n"));
    EXPECT_EQ(lines_of(written.warnings), "");
}

// Film a thousandth slower than the tape: once in 1001 frames both begin one.
TEST(EdlExport, TellsWhereNoCycleOfFilmBeginsNearby) {
    OneTrack track;
    EditBuilder builder(track.description);
    builder.add_channel(picture);
    SourceDescription source = track.reel("A");
    source.film_rate = Fraction(24000, 1001);
    source.key = label(label_key_35mm_4p, "KJ1234560100+00");
    builder.add_event(0, event_of(builder.add_source(source), 24, 24));
    const Written written = formats::write_edl(builder.finish(), {0, {}});
    EXPECT_THAT(written.text, testing::HasSubstr("* KEY NUMBER: KJ1234560101+07 35mm-4p\n"));
    EXPECT_THAT(
        lines_of(written.warnings),
        testing::HasSubstr("V1 at 01:00:00:00, \"A\": where the cycle of its film begins can't be told, so numbers "
                           "counted from its first key number may be one off\n"));
}

/// One event for each source, at 24 frames.
EditPtr edit_of(const std::vector<SourceDescription>& sources, int source_in) {
    EditBuilder builder(generator_test::plain_edit());
    builder.add_channel(picture);
    for (const SourceDescription& source : sources)
        builder.add_event(0, event_of(builder.add_source(source), 24, source_in));
    return builder.finish();
}

TEST(FilmDifference, IsToldOnceAnEventWithItsFirstFrame) {
    const EditPtr edit = edit_of({shot("A"), shot("B")}, 10);
    EXPECT_EQ(lines_of(film::film_differences(edit, nullptr, edit_of({shot("A"), shot("B")}, 10), {})), "");
    EXPECT_EQ(
        lines_of(film::film_differences(edit, nullptr, edit_of({shot("A"), shot("B", "KJ1234560100+01")}, 10), {})),
        "from film frame 24 on, 24 frames are read again as other film: KJ1234560100+11 in place of "
        "KJ1234560100+10\n");
    EXPECT_EQ(lines_of(film::film_differences(edit, nullptr, edit_of({shot("A")}, 10), {})),
              "from film frame 24 on, 24 frames are read again as other film: nothing in place of KJ1234560100+10\n");
}

TEST(FilmDifference, IsNoneOfMaterialWithoutNumbers) {
    const EditPtr edit = edit_of({bare_source("title"), shot("B")}, 10);
    EXPECT_EQ(lines_of(film::film_differences(edit, nullptr, edit_of({shot("A"), shot("B")}, 10), {})), "");
}

TEST(FilmDifference, IsToldOfATimecodeThatIsGone) {
    SourceDescription timed = shot("A");
    timed.key.reset();
    EXPECT_EQ(lines_of(film::film_differences(edit_of({timed}, 10), nullptr, edit_of({bare_source("A")}, 10), {})),
              "from film frame 0 on, 24 frames are read again as other film: nothing in place of TA 01:00:00:10\n");
}

TEST(FilmDifference, IsCountedBeyondTwentyEvents) {
    std::vector<SourceDescription> sources, others;
    for (int i = 0; i < 23; ++i) {
        sources.push_back(shot("s" + std::to_string(i)));
        others.push_back(shot("s" + std::to_string(i), "KJ1234560100+01"));
    }
    const embedded::Warnings told = film::film_differences(edit_of(sources, 0), nullptr, edit_of(others, 0), {});
    ASSERT_EQ(told.size(), 21U);
    EXPECT_EQ(told.back().text, "the same of 3 further events");
}

TEST(EdlKeyNumbers, AreOfTheKindThatTheCommentNames) {
    const auto film_of = [](const std::string& comment) {
        const auto found = formats::edl::find_key_number(comment, false);
        return found ? found->film : "none";
    };
    EXPECT_EQ(film_of("* KEY NUMBER: KJ1234560100+05 65mm-5p80"), "65mm-5p80");
    EXPECT_EQ(film_of("* KEY NUMBER: KJ1234560100+05 35mm-3p-5d"), "35mm-3p-5d");
    EXPECT_EQ(film_of("* KEY NUMBER: KJ1234560100+05 25fps"), "35mm-4p");
    EXPECT_EQ(film_of("* KEY NUMBER: KJ1234560100+05 35mm-3p-ft"), "35mm-3p");
    EXPECT_EQ(film_of("* 16 mm, KJ1234560100+05"), "16mm-1p");
}

} // namespace
