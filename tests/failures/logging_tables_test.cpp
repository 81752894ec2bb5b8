// Logging tables whose memory ends: an exception comes only out of the host's own `recdb`; what the library does
// beyond that leaves a table that says it is invalid.

#include "embedded/services.h"
#include "quillbrook/keylog.h"
#include "tests/failures/failing_memory.h"
#include "tests/support/recording_logger.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <cstring>
#include <new>

namespace {

/// A table that a test may declare valid.
struct OpenTable : filmdb {
    using filmdb::filmdb;
    using recdb::set_valid;
};

class FailingTables : public testing::Test {
protected:
    ScratchDirectory scratch;
    LightweightString<wchar_t> name = fromUTF8(scratch.file("film.RDB").c_str(), -1);

    FailingTables() {
        OpenTable table(name, name);
        table.set_film_std(gauge_35mm_4p);
        table.set_film_rate(24);
        table.get_record(static_cast<unsigned>(table.add_records(1)))->set_field(0, "shot", true);
        table.set_valid(1);
        EXPECT_EQ(table.save_text(), 0);
    }
};

TEST_F(FailingTables, ALoadThatRunsOutOfMemoryLeavesAnInvalidTableOrNone) {
    int invalid = 0, none = 0;
    bool reached = true;
    for (long allocation = 1; reached; ++allocation) {
        bool failed = false, valid = false;
        char said[128] = "";
        {
            const LastAllocation last(allocation, MemoryEnds::once);
            try {
                filmdb table(name);
                valid = table.get_valid() != 0 && table.get_num_records() == 1;
                std::strcpy(said, table.get_error_message());
            } catch (const std::bad_alloc&) {
                failed = true;
            }
            reached = LastAllocation::reached();
        }
        ASSERT_TRUE(valid || failed || *said) << allocation;
        invalid += !valid && !failed;
        none += failed;
    }
    EXPECT_GT(none, 0);
    EXPECT_TRUE(filmdb(name).get_valid());
    RecordProperty("invalid", invalid);
}

TEST_F(FailingTables, AnEmptyTableAndItsSettersNeverThrow) {
    OpenTable table;
    bool reached = true;
    int failed = 0;
    for (long allocation = 1; reached; ++allocation) {
        table.set_valid(1);
        {
            const LastAllocation last(allocation, MemoryEnds::for_good);
            table.set_film_std(gauge_16mm);
            table.set_film_rate(25);
            table.set_pulldown(true);
            table.set_sequence(2);
            table.set_picqual(3);
            table.set_vid_std({Qb::frame_rate_25, 0});
            reached = LastAllocation::reached();
        }
        if (!reached) break;
        ++failed;
        EXPECT_FALSE(table.get_valid());
        EXPECT_STREQ(table.get_error_message(), "A service of the host failed");
    }
    EXPECT_GT(failed, 0);
    EXPECT_STREQ(table.get_param_val("film rate"), "25    ");
}

TEST_F(FailingTables, MergingIntoATableThatRunsFullFails) {
    filmdb other(name);
    ASSERT_TRUE(other.get_valid());
    bool reached = true;
    int failed = 0;
    for (long allocation = 1; reached; ++allocation) {
        OpenTable table;
        table.set_valid(1);
        int result = 0;
        {
            const LastAllocation last(allocation, MemoryEnds::for_good);
            result = table.add_any_recdb(&other);
            reached = LastAllocation::reached();
        }
        ASSERT_EQ(result, reached ? 1 : 0) << allocation;
        ASSERT_EQ(table.get_valid() != 0, !reached) << allocation;
        failed += reached;
    }
    EXPECT_GT(failed, 0);
}

} // namespace
