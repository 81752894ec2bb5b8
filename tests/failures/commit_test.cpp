// The files of a run get to their places together wherever memory ends: all of them, or none.

#include "embedded/services.h"
#include "embedded/transaction.h"
#include "tests/failures/failing_memory.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

class Commit : public testing::Test {
protected:
    static constexpr const char* names[] = {"a", "b", "c", "one/d"};

    void fill() const {
        std::filesystem::remove_all(at("one"));
        std::filesystem::create_directory(at("one"));
        for (const char* name : {"a", "b", "link"})
            std::filesystem::remove(at(name));
        std::filesystem::remove(at("c"));
        put_bytes(at("a"), "old a");
        put_bytes(at("b"), "old b");
        put_bytes(at("one/d"), "old d");
        // A file of two names is overwritten where it is.
        std::filesystem::create_hard_link(at("b"), at("link"));
    }
    std::string at(const std::string& name) const { return scratch.file(name); }
    std::string set() const {
        std::string all;
        for (const char* name : names)
            all += bytes_of_file(at(name)) + ';';
        return all;
    }
    std::size_t count() const {
        const std::filesystem::recursive_directory_iterator all(scratch.path());
        return static_cast<std::size_t>(std::distance(begin(all), end(all)));
    }

    /// One run whose memory ends in the midst of `commit`. Whether all was committed, and whether memory ended.
    std::pair<bool, bool> commit_with(long number, MemoryEnds how) const {
        fill();
        embedded::Transaction run;
        for (const char* name : names)
            EXPECT_TRUE(embedded::write_file_whole(at(name), std::string("new ") + name, nullptr));
        run.remove(at("a"));
        const LastAllocation last(number, how);
        bool done = false;
        try {
            done = run.commit(nullptr);
        } catch (const std::bad_alloc&) {
        }
        return {done, LastAllocation::reached()};
    }

    ScratchDirectory scratch;
};

TEST_F(Commit, MemoryMayEndAtEachAllocation) {
    const std::string old_set = "old a;old b;;old d;", new_set = ";new b;new c;new one/d;";
    for (const MemoryEnds how : {MemoryEnds::once, MemoryEnds::for_good}) {
        long number = 1, failed = 0;
        for (bool reached = true; reached; ++number) {
            bool done = false;
            std::tie(done, reached) = commit_with(number, how);
            EXPECT_EQ(set(), done ? new_set : old_set) << number;
            EXPECT_EQ(count(), 5U) << number; // files of either set, and a folder
            failed += done ? 0 : 1;
        }
        EXPECT_GT(failed, 20);
        EXPECT_EQ(set(), new_set);
    }
}

} // namespace
