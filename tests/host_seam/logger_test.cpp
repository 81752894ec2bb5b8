// What a host's logger is told, and that nothing is told elsewhere.

#include "tests/host_seam/small_run.h"

#include <algorithm>

using namespace host_seam;

namespace {

class Messages : public SmallRun {
protected:
    long fatal() const {
        return std::count_if(logger.lines.begin(), logger.lines.end(),
                             [](const LoggedLine& line) { return line.level == 4; });
    }
};

TEST_F(Messages, NothingIsPrintedBesideTheLogger) {
    const EditPtr edit = small_edit();
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const bool made = make_small(edit);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_TRUE(made);
    EXPECT_FALSE(logger.lines.empty());
}

TEST_F(Messages, AGoodRunTellsProgressAlone) {
    ASSERT_TRUE(make_small(small_edit()));
    for (const LoggedLine& line : logger.lines)
        EXPECT_EQ(line.level, 0) << line.text;
}

TEST_F(Messages, AFailureIsToldOnce) {
    EXPECT_FALSE(make(EditPtr()));
    EXPECT_EQ(fatal(), 1);
    logger.lines.clear();
    block.set("chan_num", "-3");
    EXPECT_FALSE(make_small(small_edit()));
    EXPECT_EQ(fatal(), 1);
    logger.lines.clear();
    block.set("chan_num", "0");
    EXPECT_FALSE(make_cutlist_from_edit(small_edit(), logger, 1, &block, nullptr, true));
    EXPECT_EQ(logger.lines, (std::vector<LoggedLine>{{"Unable to read logging database", 4}}));
}

TEST_F(Messages, ALoggerThatLooksAwayChangesNothing) {
    class DeafLogger : public LoggerHandle {
        void message(const LightweightString<wchar_t>&, int) override {}
    } deaf;
    const EditPtr edit = small_edit();
    ASSERT_TRUE(make_small(edit));
    const std::string cdb = bytes_of("list.cdb"), report = bytes_of("list.txt");
    EXPECT_TRUE(make_cutlist_from_edit(edit, deaf, 0, &block, EditBuilder::cues_of(edit), true));
    EXPECT_EQ(bytes_of("list.cdb"), cdb);
    EXPECT_EQ(bytes_of("list.txt"), report);
}

} // namespace
