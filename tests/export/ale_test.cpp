// Logs of what an edit uses name the film that its lists name.

#include "film/film_uses.h"
#include "formats/logs/ale_reader.h"
#include "formats/logs/ale_writer.h"
#include "tests/export/plain_edit.h"

#include <gmock/gmock.h>

using namespace export_test;
using formats::Written;

namespace {

formats::Log read_again(const Written& written) {
    return formats::read_ale(formats::TextLines(written.text), "again.ale", {});
}

std::string lines_of(const embedded::Warnings& warnings) {
    std::string text;
    for (const embedded::Warning& warning : warnings)
        text += warning.text + "\n";
    return text;
}

/// The number of the row of that reel in which the frame lies.
std::string key_in(const formats::Log& log, const std::string& reel, std::int64_t frame) {
    for (const formats::LogRow& row : log.rows) {
        if (row[formats::LogField::reel] != reel || frame < row.start.sample || frame >= row.end.sample) continue;
        LabelPoint key = row.key_start;
        key += static_cast<int>(frame - row.start.sample) * key.cvt()->samples_per_frame();
        return key.get_string();
    }
    return "no row";
}

/// Tracks of shots whose timecode counts as their film does, each with a reel of its own.
EditPtr filmed_edit() {
    EditDescription description = generator_test::plain_edit();
    description.rate = embedded::nearest_rate(*rc::gen::element(24.0, 25.0));
    const Fraction frame = Fraction(1) / description.rate->rate();
    EditBuilder builder(description);
    const int sources = number(1, 5), channels = number(1, 3);
    for (int i = 0; i < sources; ++i) {
        SourceDescription source = shot("s" + std::to_string(i), "KJ1234564100+05", *rc::gen::element(10, 11, 12, 34));
        source.video_timecode->type = description.rate->timecode;
        builder.add_source(source);
    }
    for (int channel = 0; channel < channels; ++channel) {
        builder.add_channel(picture);
        for (int left = number(1, 8); left > 0; --left) {
            EventDescription event;
            event.source = number(0, sources);
            event.duration = Fraction(number(1, 40)) * frame;
            event.source_in = Fraction(number(60, 300)) * frame;
            event.speed = *rc::gen::element<Fraction>(1, 1, 2, -1, 0, Fraction(1, 2));
            TransitionDescription transition = dissolve(0, 0);
            transition.in_offset = Fraction(number(0, 12)) * frame;
            transition.out_offset = Fraction(number(0, 12)) * frame;
            if (one_in(3)) builder.add_transition(channel, transition);
            builder.add_event(channel, event);
        }
    }
    return builder.finish();
}

TEST(AleExport, HoldsTheFilmOfEveryEvent) {
    EXPECT_TRUE(rc::check([] {
        const EditPtr edit = filmed_edit();
        std::vector<int> channels(edit->getNumChans());
        for (std::size_t i = 0; i < channels.size(); ++i)
            channels[i] = static_cast<int>(i);
        const Written written = formats::write_ale(edit, {channels, {}});
        RC_ASSERT(lines_of(written.warnings) + written.error == "");
        const formats::Log log = read_again(written);
        RC_ASSERT(lines_of(log.warnings) + log.error == "");
        for (const film::Strip& strip : film::uses_of_edit(edit, {}))
            for (std::int64_t k = 0; !strip.black && k < strip.length(); ++k)
                RC_ASSERT(key_in(log, strip.rolls.tape, strip.timecode.frame_at(k)) == strip.key.text_at(k));
    }));
}

TEST(AleExport, IsReadOfAnyEdit) {
    EXPECT_TRUE(rc::check([] {
        const EditPtr edit = one_in(2) ? PlainEdit().finish() : any_edit();
        const Written written = formats::write_ale(edit, {{0}, {}});
        RC_ASSERT(written.text.empty() == !written.error.empty());
        if (written.error.empty()) RC_ASSERT(read_again(written).error == "");
    }));
}

EditBuilder& two_events_of_a_shot(EditBuilder& builder, const SourceDescription& source) {
    const SourceId a = builder.add_source(source);
    builder.add_channel(picture);
    builder.add_event(0, event_of(a, 24, 48));
    builder.add_event(0, event_of(a, 24, 12));
    return builder;
}

TEST(AleRows, AreOneAShotWithItsNumbersAtItsFirstFrame) {
    EditBuilder builder(generator_test::plain_edit());
    SourceDescription source = shot("A", "KJ1234560100+05", 12);
    source.reels[{10, 1}] = "L1";
    source.reels[{4, 3}] = "S1";
    source.sound_timecode = label(label_tc_24, "03:00:00:00");
    source.timecode_24p = label(label_tc_24, "02:00:00:00");
    source.ink = label(45, "AB__0100+00");
    source.scene = "27";
    source.take = "3";
    source.description = "birds";
    const Written written = formats::write_ale(two_events_of_a_shot(builder, source).finish(), {{0}, {}});
    EXPECT_EQ(lines_of(written.warnings), "");
    EXPECT_EQ(written.text.substr(written.text.find("Data\n")),
              "Data\nA\tTA\tV\t01:00:00:12\t01:00:03:00\t00:00:02:12\t24\tKJ1234560100+17.1\tKJ1234560103+13.1\t"
              "35mm,3perf\t\tAB__0100+12.1\tA001\tL1\t\tS1\t03:00:00:12\t02:00:00:12\t\t27\t3\tbirds\n");
    const formats::Log log = read_again(written);
    ASSERT_EQ(log.rows.size(), 1U) << log.error;
    EXPECT_EQ(log.rows[0].key_frames, 60);
    EXPECT_EQ(log.rows[0][formats::LogField::scene], "27");
}

TEST(AleRows, BeginWithACycleOfPulldown) {
    EditDescription description = generator_test::plain_edit();
    description.rate = embedded::nearest_rate(29.97);
    EditBuilder builder(description);
    SourceDescription source = shot("A");
    source.video_timecode->type = description.rate->timecode;
    source.video_timecode->text = "00:00:00:00";
    const SourceId a = builder.add_source(source);
    builder.add_channel(picture);
    EventDescription event = event_of(a, 0);
    event.source_in = Fraction(13) / description.rate->rate();
    event.duration = Fraction(10) / description.rate->rate();
    builder.add_event(0, event);
    const Written written = formats::write_ale(builder.finish(), {{0}, {}});
    EXPECT_NE(written.text.find("A\tTA\tV\t00:00:00:10\t00:00:00:23\t00:00:00:13\t29.97\tKJ1234560100+08"),
              std::string::npos)
        << written.text;
}

TEST(AleRows, StandWithTheirRatesWhereTheseDiffer) {
    EditBuilder builder(generator_test::plain_edit());
    SourceDescription other = shot("B");
    other.rate = embedded::nearest_rate(25.0);
    other.video_timecode->type = other.rate->timecode;
    builder.add_channel(picture);
    for (const SourceDescription& source : {shot("A"), other})
        builder.add_event(0, event_of(builder.add_source(source), 24));
    const formats::Log log = read_again(formats::write_ale(builder.finish(), {{0}, {}}));
    ASSERT_EQ(log.rows.size(), 2U) << log.error;
    EXPECT_EQ(log.rows[0].standard.rate, embedded::nearest_rate(24.0)->code);
    EXPECT_EQ(log.rows[1].standard.rate, embedded::nearest_rate(25.0)->code);
}

TEST(AleExport, TellsWhatIsLeftOut) {
    EditBuilder builder(generator_test::plain_edit());
    SourceDescription lost = shot("lost"), reelless = shot("reelless");
    lost.opens = false;
    reelless.reels.clear();
    builder.add_channel(picture);
    for (const SourceDescription& source : {lost, bare_source("title"), reelless})
        builder.add_event(0, event_of(builder.add_source(source), 24));
    const EditPtr edit = builder.finish();
    EXPECT_EQ(lines_of(formats::write_ale(edit, {{0}, {}}).warnings),
              "source \"lost\": has no media, and is left out\n"
              "source \"title\": has no timecode, and is left out\n"
              "source \"reelless\": has no reel: as a log, its row is one of any reel\n");
    EXPECT_EQ(formats::write_ale(edit, {{}, {}}).error, "the edit uses no shot that has a timecode");
}

} // namespace
