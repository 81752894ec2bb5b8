// Events with cues, type 4, and how the lists go with a run.

#include "cutlist/single_layer_tables.h"
#include "tests/generator/generator_fixture.h"
#include "tests/single_layer/layer_fixture.h"

#include <gtest/gtest.h>

namespace {

using CuedEvents = LayerTest;

TEST_F(CuedEvents, WithoutACueNoListIsMade) {
    add(clip(1, 0, 24, "1A"));
    EXPECT_EQ(sl4(), "");
    EXPECT_FALSE(stands("sl4"));
    EXPECT_TRUE(logger.said("Creating sl4 file " + scratch.file("reel.sl4"), 0));
}

TEST_F(CuedEvents, EventsOfAllTracksStandAtFullLengthAlsoUnderOpticals) {
    add(with_cue(with_out(with_in(clip(1, 10, 40, "1A"), "DI", 6), "WO", 8), "Rain"));
    cut_s upper = with_cue(clip(3, 0, 24, "3A"), "Gate");
    put_text(upper.utr_fx_name, "Flop");
    add(upper);
    add(with_cue(optical(0, 20, "Blur"), "Optical"));
    EXPECT_EQ(sl4(), "1|4|DISSOLVE|6|WIPE|8|44|A001|KJ1234560099+10|KJ1234560102+05|1||1A|Rain\n"
                     "3|0|||||24|A001|KJ1234560100+00|KJ1234560101+07|1|Flop|3A|Gate\n");
}

TEST_F(CuedEvents, BlackAndMissingKeyNumbers) {
    add(with_cue(black(0, 24), "Leader"));
    cut_s cut = with_cue(clip(1, 24, 48, "1A"), "Lost");
    cut.keycode_missing = 1;
    cut.speed = 0.5;
    add(cut);
    EXPECT_EQ(sl4(), "1|0|||||24|__BLACK|||1|||Leader\n"
                     "1|24|||||24|A001|????????0100+00|????????0101+08.3|0.5||1A|Lost\n");
}

TEST_F(CuedEvents, RenderedMaterialHasNoFilmCodes) {
    add(with_cue(rendered(1, 0, 24), "Nest"));
    EXPECT_EQ(sl4(), "1|0|||||24|RENDERED|||1|||Nest\n");
}

TEST_F(CuedEvents, RowWithoutATrackHasNoTrackNumber) {
    add(with_cue(clip(0, 0, 24, "1A"), "Odd"));
    EXPECT_EQ(sl4(), "|0|||||24|A001|KJ1234560100+00|KJ1234560101+07|1||1A|Odd\n");
}

TEST(SingleLayerTables, ColumnsStandInTheirOrder) {
    const auto names = [](const recdb& table) {
        std::string all;
        for (unsigned column = 0; column < table.get_num_fields(); ++column) {
            EXPECT_EQ(table.get_fieldtype(column), DBFieldTypes::text);
            all += std::string(column == 0 ? "" : ",") + table.get_fieldname(column);
        }
        return all;
    };
    const std::string clip = "AT_EDIT_FRAME,TRANSITION_IN,TRNS_IN_LENGTH,TRANSITION_OUT,TRNS_OUT_LENGTH,CLIP_LENGTH,"
                             "REEL_ID,FILM_CODE_IN,FILM_CODE_OUT(incl),CLIP_SPEED,CLIP_MODIFICATION,SHOT_NAME,"
                             "COMMENTS(CUES)";
    EXPECT_EQ(names(sl1db()), "FX_NUM,FX_TYPE,TRACK_NUM(A/B Roll)," + clip);
    EXPECT_EQ(names(sl2db()), "EVENT_NUM,TYPE(CLIP/FX),TRACK_NUM(A/B Roll)," + clip);
    EXPECT_EQ(names(sl3db()), "TRACK_NUM," + clip);
}

using generator_test::EditBuilder;

class LayersOfARun : public generator_test::GeneratorTest {
protected:
    bool make_cued_edit() {
        EditBuilder builder(generator_test::plain_edit());
        const int main = builder.add_channel(generator_test::picture);
        const int fx = builder.add_channel(generator_test::picture, chan_fx);
        const auto source = builder.add_source(generator_test::shot("1A"));
        builder.add_event(main, generator_test::event_of(source, 48));
        builder.add_gap(fx, generator_test::frames(12));
        builder.add_gap(fx, generator_test::frames(12), {generator_test::lab_effect("Blur")});
        builder.add_stack_cue(generator_test::cue(14, "Mind the wire"));
        return make(builder);
    }
};

TEST_F(LayersOfARun, EachIsMadeByItsOptionInOrder) {
    for (const char* key : {"fsl_type1_file", "fsl_type2_file", "fsl_type3_file", "fsl_type4_file"})
        block.set(key, "1");
    ASSERT_TRUE(make_cued_edit());
    std::string told;
    for (const LoggedLine& line : logger.lines)
        if (line.text.rfind("Creating sl", 0) == 0) told += line.text.substr(9, 4);
    EXPECT_EQ(told, "sl1 sl2 sl3 sl4 ");
    for (const char* name : {"list.sl1", "list.sl3", "list.sl4"})
        EXPECT_TRUE(stands(name)) << name;
}

TEST_F(LayersOfARun, EachOptionMakesItsOwnList) {
    for (const char kind : {'1', '2', '3', '4'}) {
        block = embedded::settings_block();
        block.set("chan_num", "0");
        block.set("output_file", scratch.file("list.txt"));
        for (const char other : {'1', '2', '3', '4'})
            block.set(std::string("fsl_type") + other + "_file", other == kind ? "1" : "0");
        logger.lines.clear();
        ASSERT_TRUE(make_cued_edit());
        std::string told;
        for (const LoggedLine& line : logger.lines)
            if (line.text.rfind("Creating sl", 0) == 0) told += line.text[11];
        EXPECT_EQ(told, std::string(1, kind));
    }
}

TEST_F(LayersOfARun, NoneIsMadeByDefault) {
    ASSERT_TRUE(make_cued_edit());
    for (const char* name : {"list.sl1", "list.sl2", "list.sl3", "list.sl4"})
        EXPECT_FALSE(stands(name)) << name;
}

TEST_F(LayersOfARun, TheTableIsTheSameWithAndWithoutThem) {
    ASSERT_TRUE(make_cued_edit());
    const std::string without = bytes_of_file(scratch.file("list.cdb"));
    block.set("fsl_type1_file", "1");
    block.set("fsl_type3_file", "1");
    ASSERT_TRUE(make_cued_edit());
    EXPECT_EQ(bytes_of_file(scratch.file("list.cdb")), without);
}

} // namespace
