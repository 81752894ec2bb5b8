// Two runs at once on one output: the later one waits for the earlier one and then sees what that has made.

#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

#include <chrono>
#include <sys/stat.h>
#include <thread>

using testing::HasSubstr;
using testing::StartsWith;

namespace {

class HeldOutputs : public ToolTest {
protected:
    void SetUp() override {
        write_edit("cut.otio");
        ASSERT_EQ(run({"cutlist", "cut.otio", "-o", "old.txt"}).status, 0);
        ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
    }

    int count_locks() const {
        int locks = 0;
        for (const std::string& name : names())
            locks += name.rfind(".quillbrook-lock-", 0) == 0 ? 1 : 0;
        return locks;
    }

    /// A run that holds its outputs and waits for an input from `pipe`, while `meanwhile` is done; then it gets it.
    template <class Work>
    ToolResult run_during(const std::vector<std::string>& line, const std::string& input, int locks, Work meanwhile) {
        ToolResult result;
        std::thread first([&] { result = run(line); });
        for (int naps = 0; naps < 2000 && count_locks() < locks; ++naps)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        EXPECT_EQ(count_locks(), locks);
        meanwhile();
        write("pipe", input);
        first.join();
        return result;
    }
};

TEST_F(HeldOutputs, LaterRunFindsWhatTheEarlierOneMade) {
    ToolResult later;
    std::thread second;
    const std::vector<std::string> line{"cutlist", "cut.otio", "-o", "new.txt"};
    const ToolResult earlier = run_during({"cutlist", "pipe", "-o", "new.txt", "--neg-cut"}, read("cut.otio"), 2, [&] {
        second = std::thread([&] { later = run(line); });
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    });
    second.join();
    EXPECT_EQ(earlier.status, 0) << earlier.err;
    EXPECT_EQ(later.status, 1);
    EXPECT_EQ(later.err, "quillbrook: new.txt: is there already; --overwrite replaces it\n");
    EXPECT_THAT(read("new.cdb"), HasSubstr("cutlist_type=neg-cut"));
    EXPECT_EQ(count_locks(), 0);
}

TEST_F(HeldOutputs, EachCommandHoldsAllOfItsOutputsFromTheStart) {
    const auto refused = [&](const std::vector<std::string>& line, const std::string& output) {
        const ToolResult result = run(line, {{"QUILLBROOK_WAIT_FOR_OUTPUTS", "0"}});
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err,
                    StartsWith("quillbrook: " + output + ": couldn't be written: another run is writing it (process "));
    };
    EXPECT_EQ(run_during({"log", "import", "pipe", "-o", "a.RDB", "--rate", "25"},
                         "Name,Start,End\n1,0:0:0:0,0:0:0:9\n", 1,
                         [&] {
                             refused({"log", "merge", "old.cdb", "-o", "a.RDB"}, "a.RDB");
                         })
                  .status,
              0);
    EXPECT_EQ(run_during({"changelist", "--old", "pipe", "--new", "old.cdb", "-o", "b.txt", "--json", "b.json",
                          "--lists-dir", "."},
                         read("old.cdb"), 6,
                         [&] {
                             refused({"check", "cut.otio", "--json", "b.json"}, "b.json");
                             refused({"print", "old.cdb", "-o", "oldcut__.chg"}, "oldcut__.chg");
                             refused({"log", "import", "cut.otio", "-o", "b.txt"}, "b.txt");
                         })
                  .status,
              0);
    EXPECT_EQ(run_during({"check", "pipe", "--json", "c.json"}, read("cut.otio"), 1,
                         [&] {
                             refused({"cutlist", "cut.otio", "-o", "c.json"}, "c.json");
                         })
                  .status,
              0);
}

// Of the names on both sides each run gets some first: the order is the same in all runs.
TEST_F(HeldOutputs, RunsWithTheSameOutputsInAnotherOrderDontWaitForEachOther) {
    const auto line = [](const char* report, const char* steps) {
        return std::vector<std::string>{"changelist", "--old", "old.cdb", "--new", "old.cdb",
                                        "-o",         report,  "--json",  steps,   "--overwrite"};
    };
    ToolResult results[8];
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([&, i] { results[i] = i % 2 ? run(line("x", "y")) : run(line("y", "x")); });
    for (std::thread& thread : threads)
        thread.join();
    for (const ToolResult& result : results)
        EXPECT_EQ(result.status, 0) << result.err;
}

} // namespace
