// A memory service that counts.

#include "tests/host_seam/small_run.h"

#include <unordered_set>

using namespace host_seam;

namespace {

/// Knows which blocks of its own are out. Others' it gives back to where all come from.
class CountingMemory : public memory_service {
public:
    void* allocate(std::size_t size) override {
        void* block = standard().allocate(size);
        out.insert(block);
        ++made;
        return block;
    }
    void free(void* block) override {
        out.erase(block);
        standard().free(block);
    }

    std::unordered_set<void*> out;
    unsigned long made = 0;

private:
    static memory_service& standard() { return embedded::standard_operating_system().memory(); }
};

class CountingCounts : public count_service {
public:
    void add_ref(use_count& count) override {
        ++users;
        standard().add_ref(count);
    }
    int release_ref(use_count& count) override {
        --users;
        return standard().release_ref(count);
    }

    long users = 0;

private:
    static count_service& standard() { return embedded::standard_operating_system().counts(); }
};

class CountingSystem : public operating_system {
public:
    CountingSystem() { embedded::use_operating_system(this); }
    ~CountingSystem() override { embedded::use_operating_system(nullptr); }
    memory_service& memory() override { return blocks; }
    file_service& files() override { return embedded::standard_operating_system().files(); }
    count_service& counts() override { return counting; }

    CountingMemory blocks;
    CountingCounts counting;
};

class Memory : public SmallRun {
protected:
    Memory() { block.set("some_lists", "0"); }

    /// Blocks and users that a run leaves out, once what lasts from run to run has been made.
    template <class Run> void expect_balanced(Run run) {
        CountingSystem system;
        run();
        const std::size_t blocks = system.blocks.out.size();
        const long users = system.counting.users;
        const unsigned long made = system.blocks.made;
        run();
        EXPECT_EQ(system.blocks.out.size(), blocks);
        EXPECT_EQ(system.counting.users, users);
        EXPECT_GT(system.blocks.made, made);
        // What lasts must not outlive the service that made it.
        cutlist_options() = CutlistOptions();
        logger.lines.clear();
    }
};

TEST_F(Memory, ARunGivesBackAllThatItTakes) {
    const EditPtr edit = small_edit();
    expect_balanced([&] { EXPECT_TRUE(make_small(edit)); });
}

TEST_F(Memory, SoDoesAListForTheNegativeCutter) {
    block.set("pull_match_assembly", "0");
    const EditPtr edit = small_edit();
    expect_balanced([&] { EXPECT_TRUE(make_small(edit)); });
}

TEST_F(Memory, SoDoesARunThatFails) {
    const EditPtr edit = small_edit();
    expect_balanced([&] { EXPECT_FALSE(make(EditPtr())); });
    block.set("chan_num", "7");
    expect_balanced([&] { EXPECT_FALSE(make_small(edit)); });
}

TEST_F(Memory, SoDoesARunWithoutAReport) {
    std::filesystem::create_directory(scratch.file("list.txt"));
    const EditPtr edit = small_edit();
    expect_balanced([&] { EXPECT_FALSE(make_small(edit)); });
}

TEST_F(Memory, SoDoesARunOfTooManyRecords) {
    EditBuilder builder(plain_edit());
    const SourceId one = builder.add_source(shot("one"));
    builder.add_channel(picture);
    for (int i = 0; i < 10000; ++i)
        builder.add_event(0, event_of(one, 1, 2 * i));
    const EditPtr edit = builder.finish();
    expect_balanced([&] { EXPECT_FALSE(make_small(edit)); });
}

TEST_F(Memory, TheEditItselfIsGivenBackToo) {
    expect_balanced([&] { EXPECT_TRUE(make_small(small_edit())); });
}

} // namespace
