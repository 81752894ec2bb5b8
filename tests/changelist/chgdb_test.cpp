#include "changelist/chgdb.h"

#include "tests/changelist/film_events.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

namespace {

class ChgdbTest : public testing::Test {
protected:
    /// Saves a table whose revision parameter says `revision`, and reads it again.
    int valid_with(const char* revision) {
        const LightweightString<wchar_t> file = fromUTF8(directory.file("cut.chg").c_str(), -1);
        EventTable made({{"KJ1234560010+00", 10}});
        made.table.set_param_val("CHGDB", revision);
        made.table.set_filename(file);
        EXPECT_EQ(made.table.save_text(), 0);
        const chgdb read(file, &logger);
        return read.get_valid();
    }

    ScratchDirectory directory;
    RecordingLogger logger;
};

TEST_F(ChgdbTest, ANewTableTellsItsRevisionAndStandard) {
    const EventTable made;
    EXPECT_STREQ(made.table.get_param_val("CHGDB"), "Rev 8");
    EXPECT_STREQ(made.table.get_param_val("FILMLAB_STD_"), "35mm-4p");
    EXPECT_EQ(made.table.film_std(), label_key_35mm_4p);
    EXPECT_EQ(made.table.get_num_fields(), 36u);
    EXPECT_STREQ(made.table.get_fieldname(33), "prim_tc_std");
}

TEST_F(ChgdbTest, RevisionSevenIsRefusedAndSaidSo) {
    EXPECT_EQ(valid_with("Rev 7"), 0);
    EXPECT_TRUE(logger.said("ERROR: Old CHGDB (rev 7) : cannot process\n", 0));
}

TEST_F(ChgdbTest, RevisionEightAndAboveAreRead) {
    EXPECT_EQ(valid_with("Rev 8"), 1);
    EXPECT_EQ(valid_with("Rev 12"), 1);
    EXPECT_TRUE(logger.lines.empty());
}

TEST_F(ChgdbTest, ATableWithoutARevisionIsNotValidAndNothingIsSaid) {
    const std::string path = directory.file("plain.chg");
    const auto is_valid = [&](const char* revision) {
        put_bytes(path, std::string("%recdb 1\n") + revision + "FILMLAB_STD_=35mm-4p\n\nevent1\na\n");
        return chgdb(fromUTF8(path.c_str(), -1), &logger).get_valid();
    };
    EXPECT_EQ(is_valid("CHGDB=Rev 8\n"), 1);
    EXPECT_EQ(is_valid(""), 0);
    EXPECT_TRUE(logger.lines.empty());
}

TEST_F(ChgdbTest, ARevisionWithoutANumberIsTheOldest) {
    EXPECT_EQ(valid_with("Rev"), 0);
    EXPECT_TRUE(logger.said("ERROR: Old CHGDB (rev 0) : cannot process\n", 0));
}

TEST_F(ChgdbTest, AMissingFileIsNotValidAndNothingIsSaid) {
    const chgdb read(fromUTF8(directory.file("none.chg").c_str(), -1), &logger);
    EXPECT_EQ(read.get_valid(), 0);
    EXPECT_TRUE(logger.lines.empty());
}

TEST_F(ChgdbTest, AKindIsChosenByItsLeadingLetters) {
    EventTable made;
    for (const char* kind : {"DU", "DC", "I", "", "MO"}) {
        ChangeRecord record = record_of({"KJ1234560010+00", 10});
        put_text(record.record_type, kind);
        append(made.table, record);
    }
    tag_kind(made.table, "D", 0);
    EXPECT_EQ(made.table.get_num_tags(), 2);
    tag_kind(made.table, "I", 1);
    EXPECT_EQ(made.table.get_num_tags(), 3);
}

} // namespace
