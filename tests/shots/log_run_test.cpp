// Whole runs with a logging table.

#include "embedded/services.h"
#include "quillbrook/cutlist.h"
#include "tests/shots/logged_edit.h"
#include "tests/support/scratch_directory.h"

#include <gmock/gmock.h>

using namespace logged;
using testing::HasSubstr;
using testing::Not;

namespace {

class LogRun : public testing::Test {
protected:
    LogRun() {
        cutlist_options() = CutlistOptions();
        channel = builder.add_channel(1);
        builder.add_event(channel, event_of(builder.add_source(transfer("vt1")), 48, 24));
        // Sixty-three bytes are all that the option holds.
        const std::string log = folder.file("l");
        options.set("log_file", log);
        options.set("output_file", folder.file("list.txt"));
        options.set("chan_type", "1");
        options.set("chan_num", "0");
        options.set("long_keycode", "9");
    }
    ~LogRun() override { cutlist_options() = CutlistOptions(); }

    void put_log(const Params& params, const Records& rows) {
        put_bytes(folder.file("l"), table_bytes(params, log_columns(), rows));
    }
    bool run() {
        edit = builder.finish();
        return make_cutlist_from_edit(edit, logger, 1, &options, EditBuilder::cues_of(edit), false);
    }
    std::string table() const { return bytes_of_file(folder.file("list.cdb")); }

    ScratchDirectory folder;
    EditBuilder builder{edit_24()};
    int channel = 0;
    EditPtr edit;
    embedded::settings_block options;
    RecordingLogger logger;
};

TEST_F(LogRun, ListsTheNumbersOfTheTable) {
    put_log(log_params(), {shot_on_vt1()});
    EXPECT_TRUE(run());
    EXPECT_TRUE(logger.said("Converting database to list of shots", 0));
    EXPECT_THAT(table(), HasSubstr("KJ1234560103+00"));
    EXPECT_THAT(table(), HasSubstr("film label_std=35mm-4p\nmixed_kc_standard=0\n"));
    EXPECT_THAT(table(), Not(HasSubstr("XX999999")));
}

TEST_F(LogRun, TheTableSettlesTheFilmStandard) {
    Params params = log_params();
    params.back().second = "16mm-1p";
    auto row = shot_on_vt1();
    row[7] = "KJ1234560100+00";
    put_log(params, {row});
    EXPECT_TRUE(run());
    EXPECT_THAT(table(), HasSubstr("film label_std=16mm-1p\n"));
    EXPECT_THAT(table(), HasSubstr("KJ1234560102+08"));
}

TEST_F(LogRun, SoundTracksAreListedAlike) {
    const int sound = builder.add_channel(2);
    builder.add_event(sound, event_of(builder.add_source(transfer("vt1")), 48, 24));
    options.set("chan_type", "2");
    put_log(log_params(), {shot_on_vt1()});
    EXPECT_TRUE(run());
    EXPECT_THAT(table(), HasSubstr("05:00:02:00"));
}

TEST_F(LogRun, EndsWithoutATable) {
    EXPECT_FALSE(run());
    EXPECT_TRUE(logger.said("Unable to read logging database", 4));
    EXPECT_FALSE(logger.said("Converting database to list of shots", 0));
    EXPECT_EQ(folder.count_files(), 0U);
}

TEST_F(LogRun, EndsWithoutAShot) {
    put_log(log_params(), {});
    EXPECT_FALSE(run());
    EXPECT_TRUE(logger.said("Converting database to list of shots", 0));
    EXPECT_TRUE(logger.said("Unable to convert logging database", 4));
    EXPECT_EQ(folder.count_files(), 1U);
}

TEST_F(LogRun, EndsSilentlyWithoutAKindOfKeyNumbers) {
    Params params = log_params();
    params.back().second = "no such film";
    put_log(params, {shot_on_vt1()});
    EXPECT_FALSE(run());
    EXPECT_FALSE(logger.said_at(4));
    EXPECT_EQ(folder.count_files(), 1U);
}

TEST_F(LogRun, AFailureLeavesTheUnrenderedCopyBehind) {
    SourceDescription rendered = transfer("vt2");
    rendered.rendered = true;
    builder.add_event(channel, event_of(builder.add_source(rendered), 0, 24));
    const std::string copy = folder.file("copy");
    std::string written;
    EditBuilder plain(edit_24());
    plain.add_event(plain.add_channel(1), event_of(plain.add_source(transfer("vt3")), 0, 24));
    builder.set_unrender({[&](const std::string& path) {
                              written = path;
                              put_bytes(path, "copy");
                              return true;
                          },
                          [&](const std::string&) { return plain.finish(); }});
    EXPECT_FALSE(run());
    EXPECT_TRUE(logger.said("Making a de-rendered copy of the edit", 0));
    EXPECT_TRUE(logger.said("Unable to read logging database", 4));
    EXPECT_EQ(bytes_of_file(written), "copy");
}

} // namespace
