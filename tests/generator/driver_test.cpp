#include "cutlist/cdbgen.h"
#include "tests/generator/generator_fixture.h"

#include <fstream>

using namespace generator_test;

namespace {

class Driver : public GeneratorTest {
protected:
    /// V1 with one event of one shot.
    EditPtr simple_edit() {
        EditBuilder builder(plain_edit());
        builder.add_channel(picture);
        builder.add_event(0, event_of(builder.add_source(shot("one")), 48, 10));
        return builder.finish();
    }
    /// V1 with one event of rendered material; de-rendered it is `copy`, where there is one.
    EditPtr rendered_edit(const EditPtr& copy) {
        EditBuilder builder(plain_edit());
        builder.add_channel(picture);
        SourceDescription source = bare_source("nest");
        source.rendered = true;
        builder.add_event(0, event_of(builder.add_source(source), 24));
        if (copy)
            builder.set_unrender({[this](const std::string& path) {
                                      copy_path = path;
                                      return static_cast<bool>(std::ofstream(path) << "copy");
                                  },
                                  [copy](const std::string&) { return copy; }});
        return builder.finish();
    }
    static EditPtr edit_with_empty_track() {
        EditBuilder builder(plain_edit("empty"));
        builder.add_channel(picture);
        return builder.finish();
    }

    std::string copy_path;
};

TEST_F(Driver, MakesTheTableAndTheReport) {
    EXPECT_TRUE(make(simple_edit()));
    EXPECT_TRUE(stands("list.cdb"));
    EXPECT_TRUE(stands("list.txt"));
    EXPECT_FALSE(logger.said_at(4));
    EXPECT_TRUE(logger.said("Analysing opticals on V1", 0));
    EXPECT_TRUE(logger.said("Analysing track V1", 0));
}

TEST_F(Driver, SaysThatThereIsNoEditButReadsTheOptionsFirst) {
    block.set("pull_handle", "9");
    EXPECT_FALSE(make(EditPtr()));
    EXPECT_EQ(logger.lines, (std::vector<LoggedLine>{{"Unable to open edit", 4}}));
    EXPECT_EQ(cutlist_options().pull_handle, 9);
}

TEST_F(Driver, AChannelNumberThatEqualsTheCountIsNotPresent) {
    block.set("chan_num", "1");
    EXPECT_FALSE(make(simple_edit()));
    EXPECT_EQ(logger.lines, (std::vector<LoggedLine>{{"Specified source track not present", 4}}));
    EXPECT_FALSE(stands("list.cdb"));
}

TEST_F(Driver, AChannelNumberBelowZeroIsNotPresent) {
    for (const char* number : {"-1", "-2147483648"}) {
        logger.lines.clear();
        block.set("chan_num", number);
        EXPECT_FALSE(make(simple_edit()));
        EXPECT_EQ(logger.lines, (std::vector<LoggedLine>{{"Specified source track not present", 4}})) << number;
    }
}

TEST_F(Driver, TheChannelNumberBecomesAbsoluteAndStaysSo) {
    EditBuilder builder(plain_edit());
    builder.add_channel(sound);
    builder.add_channel(picture);
    builder.add_event(1, event_of(builder.add_source(shot("one")), 24));
    const EditPtr edit = builder.finish();
    EXPECT_TRUE(make(edit));
    EXPECT_EQ(cutlist_options().chan_num, 1);
    EXPECT_EQ(param("channel"), "V01");
    block = embedded::settings_block();
    EXPECT_FALSE(make(edit));
    EXPECT_TRUE(logger.said("Specified source track not present", 4));
}

TEST_F(Driver, FewerChannelsThanTheAbsoluteNumberIsATrackNotPresent) {
    block.set("chan_num", "1");
    EditPtr edit = simple_edit();
    LightweightString<wchar_t> name;
    EXPECT_FALSE(cdbgen(name, edit, logger, 0, nullptr, &block));
    EXPECT_EQ(logger.lines, (std::vector<LoggedLine>{{"Track not present", 4}}));
    EXPECT_EQ(toUTF8(name), scratch.file("list.cdb").c_str());
}

TEST_F(Driver, WithoutAnOutputFileTheTableHasOnlyItsExtension) {
    block = embedded::settings_block();
    EditPtr none;
    LightweightString<wchar_t> name;
    EXPECT_FALSE(cdbgen(name, none, logger, 0, nullptr, &block));
    EXPECT_EQ(name, L".cdb");
    EXPECT_EQ(logger.lines, (std::vector<LoggedLine>{{"Unable to open edit", 4}}));
}

TEST_F(Driver, AKeyThatTheNextRunLacksKeepsItsValue) {
    const EditPtr edit = simple_edit();
    block.set("proj_name", "Harbour");
    EXPECT_TRUE(make(edit));
    embedded::settings_block less;
    less.set("chan_num", "0");
    less.set("output_file", scratch.file("list.txt"));
    block = less;
    EXPECT_TRUE(make(edit));
    EXPECT_EQ(param("project_name"), "Harbour");
}

TEST_F(Driver, AnEmptyChosenTrackFailsThoughHigherTracksHoldMaterial) {
    EditBuilder builder(plain_edit());
    builder.add_channel(picture);
    builder.add_channel(picture);
    builder.add_event(1, event_of(builder.add_source(shot("one")), 24));
    EXPECT_FALSE(make(builder));
    EXPECT_EQ(logger.lines, (std::vector<LoggedLine>{{"Track is empty", 4}}));
    EXPECT_FALSE(stands("list.cdb"));
}

TEST_F(Driver, APictureRunListsLowerTracksThanTheChosenOne) {
    EditBuilder builder(plain_edit());
    const SourceId one = builder.add_source(shot("one"));
    builder.add_channel(picture);
    builder.add_channel(picture);
    builder.add_event(0, event_of(one, 24));
    builder.add_event(1, event_of(one, 48));
    block.set("chan_num", "1");
    EXPECT_TRUE(make(builder));
    EXPECT_EQ(column(cf_track), "1 2");
}

TEST_F(Driver, WritesItsHeaderInOrder) {
    block.set("proj_name", "Harbour");
    EXPECT_TRUE(make(simple_edit()));
    std::ifstream file(scratch.file("list.cdb"));
    std::string names;
    for (std::string line; std::getline(file, line) && !line.empty();)
        names += line.substr(0, line.find('=')) + ";";
    EXPECT_EQ(names, "%recdb 2;CUTDB;edit_cookie;project_name;edit_name;modification_time;edit_date;edit label_std;"
                     "cutlist_type;channel;edit_vidtc_start;edit_vidtc_std;edit_24ptc_start;edit_24ptc_std;"
                     "film label_std;mixed_kc_standard;");
    EXPECT_EQ(param("project_name"), "Harbour");
    EXPECT_EQ(param("edit_name"), "Reel 1");
    EXPECT_EQ(param("modification_time"), "1000000");
    EXPECT_EQ(param("edit_date"), "12 January 1970 13:46:40");
    EXPECT_EQ(param("edit label_std"), "24fps");
    EXPECT_EQ(param("cutlist_type"), "cutting-copy");
    EXPECT_EQ(param("channel"), "V00");
    EXPECT_EQ(param("edit_vidtc_start"), "00:00:00:00");
    EXPECT_EQ(param("edit_vidtc_std"), "24fps");
    EXPECT_EQ(param("film label_std"), "35mm-4p");
    EXPECT_EQ(param("mixed_kc_standard"), "0");
}

TEST_F(Driver, NamesAListForTheNegativeCutter) {
    block.set("pull_match_assembly", "0");
    EXPECT_TRUE(make(simple_edit()));
    EXPECT_EQ(param("cutlist_type"), "neg-cut");
}

TEST_F(Driver, WithoutAValidKeyLabelItFailsInSilenceAndWritesNothing) {
    EditBuilder builder(plain_edit());
    builder.add_channel(picture);
    builder.add_event(0, event_of(builder.add_source(shot("one", "01:00:00:00", label_tc_24)), 24));
    EXPECT_FALSE(make(builder));
    EXPECT_FALSE(logger.said_at(4));
    EXPECT_FALSE(logger.said("CDB file: no records!", 0));
    EXPECT_EQ(scratch.count_files(), 0U);
}

TEST_F(Driver, ATableWithoutRecordsIsNotSaved) {
    EditBuilder builder(plain_edit());
    builder.add_channel(picture, chan_unlisted);
    builder.add_event(0, event_of(builder.add_source(shot("one")), 24));
    EXPECT_FALSE(make(builder));
    EXPECT_TRUE(logger.said("CDB file: no records!", 0));
    EXPECT_FALSE(logger.said_at(4));
    EXPECT_EQ(scratch.count_files(), 0U);
}

TEST_F(Driver, TheTableStandsEvenIfTheReportCannotBeMade) {
    std::filesystem::create_directory(scratch.file("list.txt"));
    EXPECT_FALSE(make(simple_edit()));
    EXPECT_TRUE(stands("list.cdb"));
    EXPECT_EQ(rows(), 1U);
}

TEST_F(Driver, RenderedMaterialIsListedAsItIsWhereTheHostForbidsACopy) {
    embedded::set_host_setting("allow_auto_unrender", 0);
    EXPECT_TRUE(make(rendered_edit(EditPtr())));
    EXPECT_EQ(field(0, cf_src_reelid), "RENDERED");
    EXPECT_EQ(field(0, cf_aud_reelid), "RENDERED");
    EXPECT_EQ(field(0, cf_src24P_reelid), "RENDERED");
    EXPECT_EQ(field(0, cf_cam_reel), "RENDERED");
    EXPECT_EQ(field(0, cf_special), "110");
    EXPECT_EQ(field(0, cf_prim_tc_in), "");
    EXPECT_EQ(field(0, cf_shot_name), "");
    EXPECT_FALSE(logger.said("Making a de-rendered copy of the edit", 0));
}

TEST_F(Driver, SaysThatTheCopyCannotBeMade) {
    EXPECT_FALSE(make(rendered_edit(EditPtr())));
    EXPECT_EQ(logger.lines,
              (std::vector<LoggedLine>{{"Making a de-rendered copy of the edit", 0}, {"Unable to unrender edit", 4}}));
}

TEST_F(Driver, ListsTheCopyAndDeletesItAfterwards) {
    EXPECT_TRUE(make(rendered_edit(simple_edit())));
    EXPECT_EQ(field(0, cf_src_reelid), "Tone");
    ASSERT_FALSE(copy_path.empty());
    EXPECT_FALSE(std::filesystem::exists(copy_path));
}

TEST_F(Driver, ARunThatFailsEarlyLeavesTheCopyBehind) {
    EXPECT_FALSE(make(rendered_edit(edit_with_empty_track())));
    EXPECT_TRUE(logger.said("Track is empty", 4));
    ASSERT_FALSE(copy_path.empty());
    EXPECT_TRUE(std::filesystem::exists(copy_path));
    std::filesystem::remove(copy_path);
}

TEST_F(Driver, ARunThatFailsOnceItsLabelsAreMadeDeletesTheCopy) {
    EditBuilder unlisted(plain_edit("nothing to list"));
    unlisted.add_channel(picture, chan_unlisted);
    unlisted.add_event(0, event_of(unlisted.add_source(shot("one")), 24));
    EditBuilder unkeyed(plain_edit("no film standard"));
    unkeyed.add_channel(picture);
    unkeyed.add_event(0, event_of(unkeyed.add_source(shot("one", "01:00:00:00", label_tc_24)), 24));
    for (EditBuilder* copy : {&unlisted, &unkeyed}) {
        copy_path.clear();
        EXPECT_FALSE(make(rendered_edit(copy->finish())));
        ASSERT_FALSE(copy_path.empty());
        EXPECT_FALSE(std::filesystem::exists(copy_path));
    }
}

TEST_F(Driver, TheSameEditTwiceGivesTheSameBytes) {
    const EditPtr edit = simple_edit();
    std::string bytes[2], report_bytes[2];
    for (int run = 0; run < 2; ++run) {
        EXPECT_TRUE(make(edit));
        EXPECT_TRUE(embedded::read_file(scratch.file("list.cdb"), &bytes[run], nullptr));
        EXPECT_TRUE(embedded::read_file(scratch.file("list.txt"), &report_bytes[run], nullptr));
    }
    EXPECT_EQ(bytes[0], bytes[1]);
    EXPECT_EQ(report_bytes[0], report_bytes[1]);
}

} // namespace
