// What is written as OpenTimelineIO and read again makes the same lists.

#include "embedded/edit_recipe.h"
#include "formats/otio/otio_reader.h"
#include "formats/otio/otio_writer.h"
#include "formats/recipe_difference.h"
#include "tests/export/plain_edit.h"
#include "tests/generator/generator_fixture.h"
#include "tests/otio/otio_texts.h"

using namespace export_test;
using formats::differences_of;
using formats::Written;

namespace {

formats::ReadResult read_again(const Written& written) {
    return formats::read_otio_bytes(written.text, "again.otio", 7, {});
}

std::string lines_of(const std::vector<std::string>& all) {
    std::string text;
    for (const std::string& line : all)
        text += line + "\n";
    return text;
}

class OtioExport : public GeneratorTest {
protected:
    OtioExport() { embedded::set_host_setting("allow_auto_unrender", 0); }

    /// Of a channel; empty where none is made.
    std::string table_of(const EditPtr& edit, int kind, int channel) {
        std::string bytes;
        block.set("chan_type", std::to_string(kind));
        block.set("chan_num", std::to_string(channel));
        std::filesystem::remove(scratch.file("list.cdb"));
        if (make(edit, EditBuilder::cues_of(edit))) embedded::read_file(scratch.file("list.cdb"), &bytes, nullptr);
        return bytes;
    }

    /// The tables of both edits, of each channel that there is.
    void expect_same_tables(const EditPtr& edit, const EditPtr& again) {
        for (const int kind : {picture, sound})
            for (int channel = 0; channel < 3; ++channel)
                RC_ASSERT(table_of(edit, kind, channel) == table_of(again, kind, channel)); // bytes
    }
};

TEST_F(OtioExport, MakesTheSameTablesOfEveryPlainEdit) {
    EXPECT_TRUE(rc::check([this] {
        const EditPtr edit = PlainEdit().finish();
        const Written written = formats::write_otio(edit);
        RC_ASSERT(written.error == "");
        for (const embedded::Warning& warning : written.warnings)
            RC_FAIL(warning.text);
        const formats::ReadResult again = read_again(written);
        RC_ASSERT(again.error == "");
        RC_ASSERT(lines_of(differences_of(*embedded::recipe_of(edit), *embedded::recipe_of(again.edit))) == "");
        expect_same_tables(edit, again.edit);
    }));
}

TEST_F(OtioExport, MakesTheSameTablesOfAnyEditOrTellsWhatIsLost) {
    EXPECT_TRUE(rc::check([this] {
        const EditPtr edit = any_edit();
        const Written written = formats::write_otio(edit);
        RC_ASSERT(written.text.empty() == !written.error.empty());
        RC_CLASSIFY(!written.error.empty(), "refused");
        RC_CLASSIFY(!written.warnings.empty(), "with losses");
        if (written.error.empty() && written.warnings.empty()) expect_same_tables(edit, read_again(written).edit);
    }));
}

namespace texts {

using namespace otio_texts;

std::string time_text() { return std::to_string(number(0, 40)); }

std::string random_clip() {
    static const std::vector<std::string> own{
        R"("keycode": "KJ 12 3456-0100+05", "reel": "V012", "film": "35mm-3p")",
        R"("rendered": true)",
        R"("inkcode": "AB120100+00", "timecode": "01:00:00:12", "cam_reel": "A012")",
        R"("sound_timecode": "02:00:00:00", "scene": "27", "take": 3)",
        "",
    };
    const std::string media = *rc::gen::element<std::string>(
        "null", reference(R"("target_url": "a/b.mov", "available_range": )" + range(3, 60, 25)),
        reference(R"("name": "B", "available_range": )" + range(86400, 600, 24)),
        object("GeneratorReference.1", R"("generator_kind": "black")"),
        object("GeneratorReference.1", R"("generator_kind": "bars")"), object("MissingReference.1", ""));
    std::string extra = quillbrook(*rc::gen::elementOf(own));
    if (one_in(4)) extra += ", " + effects({warp(number(-3, 4))});
    if (one_in(4)) extra += ", " + effects({effect(quillbrook(R"("optical": true)"))});
    if (one_in(4)) extra += ", " + markers({marker(number(0, 20), "mark")});
    if (one_in(8)) extra += R"(, "enabled": false)";
    return clip("clip " + time_text(), number(0, 30), number(0, 30), extra, media);
}

std::string random_track(int depth, const std::string& extra);

std::string random_child(int depth) {
    if (one_in(4)) return gap(number(0, 12));
    if (depth > 0 && one_in(5)) return stack({random_track(depth - 1, "")}, source_range(number(-3, 9), number(0, 30)));
    if (depth > 0 && one_in(9)) return stack({random_track(0, ""), random_track(0, "")});
    return random_clip();
}

std::string random_track(int depth, const std::string& extra) {
    std::string children;
    for (int left = number(1, 6); left > 0; --left) {
        children += (children.empty() ? "" : ", ") + random_child(depth);
        if (one_in(3)) children += ", " + transition(number(0, 4), number(0, 4));
    }
    return object("Track.1", with("\"children\": [" + children + "]", extra));
}

std::string random_text() {
    const std::string extra = quillbrook(*rc::gen::element<std::string>(
        R"("project": "Heron", "drop_frame": true)", R"("film_rate": 24)", R"("timecode_24p": "01:00:00:00")"));
    const std::string second = one_in(4) ? quillbrook(R"("subtype": 8)") : one_in(3) ? R"("kind": "Audio")" : "";
    return timeline(
        {random_track(2, one_in(3) ? source_range(number(0, 9), number(0, 60)) : ""), random_track(1, second)},
        extra + ", \"global_start_time\": " + moment(1000, *rc::gen::element(24.0, 23.976, 29.97, 25.0)),
        one_in(3) ? markers({marker(number(0, 20), "stack")}) : "");
}

} // namespace texts

TEST_F(OtioExport, MakesTheSameTablesOfEveryFile) {
    EXPECT_TRUE(rc::check([this] {
        const std::string text = texts::random_text();
        const formats::ReadResult read = otio_texts::read(text);
        RC_ASSERT(read.error == "");
        const Written written = formats::write_otio(read.edit);
        RC_ASSERT(written.error == "");
        for (const embedded::Warning& warning : written.warnings)
            RC_FAIL(warning.text);
        expect_same_tables(read.edit, read_again(written).edit);
    }));
}

TEST_F(OtioExport, IsTheSameWhenItIsExportedAgain) {
    EXPECT_TRUE(rc::check([] {
        const Written first = formats::write_otio(PlainEdit().finish());
        const bool same = formats::write_otio(read_again(first).edit).text == first.text;
        RC_ASSERT(same);
    }));
}

// The cue stands a whole second behind the start of the media, which a number can say, and its clip doesn't.
TEST(OtioCues, StandExactlyInAClipWhoseStartNoNumberSays) {
    embedded::EditBuilder builder(generator_test::plain_edit());
    const int channel = builder.add_channel(generator_test::picture);
    embedded::EventDescription event = generator_test::event_of(builder.add_source(generator_test::shot("A")), 48);
    event.source_in = embedded::Fraction(1, 7000000000003);
    builder.add_event(channel, event);
    builder.add_cue(channel, embedded::EditBuilder::CueLevel::clip,
                    {embedded::Fraction(1) - event.source_in, "One", 4});
    const Written first = formats::write_otio(builder.finish());
    EXPECT_EQ(formats::write_otio(read_again(first).edit).text, first.text);
}

TEST(OtioSources, NameTheStandardThatStepsAsTheirSoundDoes) {
    for (const char* name : {"23.976fps", "24fps", "25fps", "29.97fps", "30fps", "59.94fps", "60fps"}) {
        const embedded::RateInfo& rate = *embedded::rate_info(edlstr_to_tv_standard(name).rate);
        SourceDescription source = generator_test::shot("A");
        source.sound_timecode = embedded::LabelDescription{};
        source.sound_timecode->type = rate.timecode;
        source.sound_timecode->rate = rate.rate();
        source.sound_timecode->sample = 100;
        embedded::EditBuilder builder(generator_test::plain_edit());
        builder.add_event(builder.add_channel(generator_test::picture),
                          generator_test::event_of(builder.add_source(source), 24));
        EXPECT_NE(formats::write_otio(builder.finish()).text.find("\"sound_std\": \"" + std::string(name) + '"'),
                  std::string::npos)
            << name;
    }
}

TEST(OtioTracks, AreNamedByKindAndNumber) {
    embedded::EditBuilder builder(generator_test::plain_edit());
    for (const int kind :
         {generator_test::sound, generator_test::picture, generator_test::picture, generator_test::sound})
        builder.add_black(builder.add_channel(kind), generator_test::frames(10));
    const std::string text = formats::write_otio(builder.finish()).text;
    std::string names;
    for (std::size_t at = text.find("Track.1"); at != std::string::npos; at = text.find("Track.1", at + 1)) {
        const std::size_t name = text.find("\"name\"", at);
        names += text.substr(name, text.find(',', name) + 1 - name);
    }
    EXPECT_EQ(names, R"("name": "A1","name": "V1","name": "V2","name": "A2",)");
}

} // namespace
