#include "reports/cutdb.h"

#include "tests/support/recording_logger.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class Cutdb : public testing::Test {
protected:
    LightweightString<wchar_t> path_of(const char* name) const { return fromUTF8(scratch.file(name).c_str(), -1); }

    LightweightString<wchar_t> write_table(const std::string& parameters) const {
        put_bytes(scratch.file("table.cdb"), "%recdb 1\n" + parameters + "\nevent\na\n1\n");
        return path_of("table.cdb");
    }

    ScratchDirectory scratch;
    RecordingLogger logger;
};

TEST_F(Cutdb, HasItsColumnsByNumberWithTwoNamesTwice) {
    const cutdb table(&logger);
    ASSERT_EQ(table.get_num_fields(), 54U);
    EXPECT_STREQ(table.get_fieldname(cf_event), "event");
    EXPECT_STREQ(table.get_fieldname(cf_cam_reel), "cam_reel");
    EXPECT_STREQ(table.get_fieldname(cf_flags), "flags");
    EXPECT_STREQ(table.get_fieldname(39), "src24P_tc_in");
    EXPECT_STREQ(table.get_fieldname(40), "aud_tc_out");
    EXPECT_STREQ(table.get_fieldname(41), "aud_tc_out");
    EXPECT_STREQ(table.get_fieldname(42), "aud_tc_medium");
    EXPECT_STREQ(table.get_fieldname(43), "src24P_tc_in");
    EXPECT_STREQ(table.get_fieldname(53), "utr_fx_name");
    for (unsigned field = 0; field < 54; ++field)
        EXPECT_EQ(table.get_fieldtype(field), DBFieldTypes::text);
}

TEST_F(Cutdb, ANewTableHoldsItsRevision) {
    const cutdb table(&logger);
    EXPECT_TRUE(table.get_valid());
    EXPECT_STREQ(table.get_param_val("cutdb"), "Rev 22");
}

TEST_F(Cutdb, ASavedTableReadsBack) {
    cutdb table(&logger);
    table.get_record(static_cast<unsigned>(table.add_records(1)))->set_field(cf_aud_tc_std, "24fps", true);
    table.set_filename(path_of("saved.cdb"));
    ASSERT_EQ(table.save_text(), 0);
    const cutdb again(path_of("saved.cdb"), &logger);
    ASSERT_TRUE(again.get_valid());
    EXPECT_STREQ(again.get_record(0)->get_field(41), "24fps");
    EXPECT_TRUE(logger.lines.empty());
}

TEST_F(Cutdb, RefusesAnotherRevisionAndSaysSo) {
    for (const char* revision : {"21", "23"}) {
        logger.lines.clear();
        const cutdb table(write_table(std::string("CUTDB=Rev ") + revision + "\n"), &logger);
        EXPECT_FALSE(table.get_valid());
        ASSERT_EQ(logger.lines.size(), 1U);
        EXPECT_EQ(logger.lines[0].text,
                  std::string("ERROR: incorrect cutlist (.CDB) file (rev ") + revision + ") : cannot process\n");
    }
}

TEST_F(Cutdb, RefusesAFileWithoutRevisionInSilence) {
    const cutdb table(write_table("edit_name=x\n"), &logger);
    EXPECT_FALSE(table.get_valid());
    EXPECT_TRUE(logger.lines.empty());
}

TEST_F(Cutdb, AShortRevisionCountsAsNone) {
    const cutdb table(write_table("CUTDB=R\n"), &logger);
    EXPECT_FALSE(table.get_valid());
    EXPECT_TRUE(logger.said("ERROR: incorrect cutlist (.CDB) file (rev 0) : cannot process\n", 0));
}

TEST_F(Cutdb, RefusesAMissingFileInSilence) {
    const cutdb table(path_of("no such file.cdb"), &logger);
    EXPECT_FALSE(table.get_valid());
    EXPECT_TRUE(logger.lines.empty());
}

TEST(ReelWords, BeginWithTwoUnderscores) {
    EXPECT_TRUE(is_real_reel("A001"));
    EXPECT_TRUE(is_real_reel("RENDERED"));
    EXPECT_TRUE(is_real_reel("_1"));
    EXPECT_FALSE(is_real_reel("__BLACK"));
    EXPECT_FALSE(is_real_reel(""));
    EXPECT_FALSE(is_real_reel(nullptr));
    EXPECT_TRUE(is_pseudo_reel("__NOLOG"));
    EXPECT_FALSE(is_pseudo_reel("_1"));
    EXPECT_FALSE(is_pseudo_reel(""));
    EXPECT_FALSE(is_pseudo_reel(nullptr));
}

} // namespace
