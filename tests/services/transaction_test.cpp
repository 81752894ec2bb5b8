// All files of a run together or not at all: what is seen before, during and after a run, and what a run finds of dead
// ones.

#include "embedded/transaction.h"

#include "embedded/file_calls.h"
#include "embedded/limits.h"
#include "embedded/services.h"
#include "host/counted.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using embedded::Transaction;
using embedded::write_file_whole;

LightweightString<wchar_t> wide(const std::string& path) { return fromUTF8(path.c_str(), -1); }

class Run : public testing::Test {
protected:
    void SetUp() override {
        embedded::take_write_failure(nullptr);
        put("a", "old a");
        put("b", "old b");
    }
    ~Run() override { embedded::clear_host_settings(); }

    std::string at(const std::string& name) const { return scratch.file(name); }
    void put(const std::string& name, const std::string& bytes) const { put_bytes(at(name), bytes); }
    std::string get(const std::string& name) const { return bytes_of_file(at(name)); }
    bool write(const std::string& name, const std::string& bytes) const {
        return write_file_whole(at(name), bytes, nullptr);
    }
    std::string read(const std::string& name) const {
        std::string bytes;
        return embedded::read_file(at(name), &bytes, nullptr) ? bytes : "none";
    }
    mode_t mode(const std::string& name) const {
        struct stat status = {};
        return ::stat(at(name).c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
    }

    /// Does it in a process that then dies as by a power cut.
    template <class Work> void die_in(Work work) const {
        const pid_t child = ::fork();
        if (child == 0) {
            work();
            ::_exit(0);
        }
        ::waitpid(child, nullptr, 0);
    }

    ScratchDirectory scratch;
};

/// Files of more bytes than that are refused.
class LimitOfInputs {
public:
    explicit LimitOfInputs(std::size_t bytes) {
        embedded::Limits limits;
        limits.input_bytes = bytes;
        embedded::set_limits(limits);
    }
    ~LimitOfInputs() { embedded::set_limits({}); }
    LimitOfInputs(const LimitOfInputs&) = delete;
    LimitOfInputs& operator=(const LimitOfInputs&) = delete;
};

TEST_F(Run, ReadsWhatItMadeItselfHoweverLargeThatIs) {
    const LimitOfInputs limit(10);
    const std::string large(11, 'x');
    put("theirs", large);
    Transaction run;
    ASSERT_TRUE(write("ours", large));
    EXPECT_EQ(read("ours"), large);
    EXPECT_EQ(read("theirs"), "none");
    ASSERT_TRUE(write("theirs", large + 'y'));
    EXPECT_EQ(read("theirs"), large + 'y');
    ASSERT_TRUE(run.commit(nullptr));
    EXPECT_EQ(read("ours"), "none") << "it belongs to the run no longer";
}

TEST_F(Run, ReadsWorkingFilesHoweverLargeTheyAre) {
    const LimitOfInputs limit(10);
    const std::string large(11, 'x'), working = embedded::work_directory() + "/copy";
    ASSERT_TRUE(write_file_whole(working, large, nullptr));
    std::string bytes, why;
    EXPECT_TRUE(embedded::read_file(working, &bytes, &why)) << why;
    EXPECT_EQ(bytes, large);
}

TEST_F(Run, ShowsItsFilesToItselfAloneUntilItIsDone) {
    Transaction run;
    ASSERT_TRUE(write("a", "new a"));
    ASSERT_TRUE(write("c", "new c"));
    OS()->files().remove(wide(at("b")));
    EXPECT_EQ(read("a"), "new a");
    EXPECT_EQ(read("b"), "none");
    EXPECT_FALSE(fileExists(wide(at("b"))));
    EXPECT_TRUE(fileExists(wide(at("c"))));
    EXPECT_EQ(get("a"), "old a");
    EXPECT_EQ(get("b"), "old b");
    EXPECT_FALSE(embedded::stands(at("c")));
    std::string why;
    ASSERT_TRUE(run.commit(&why)) << why;
    EXPECT_EQ(get("a"), "new a");
    EXPECT_FALSE(embedded::stands(at("b")));
    EXPECT_EQ(get("c"), "new c");
    EXPECT_EQ(scratch.count_files(), 2U);
}

TEST_F(Run, ThatIsGivenUpLeavesEverythingAsItWas) {
    {
        Transaction run;
        write("a", "new a");
        write("c", "new c");
        OS()->files().remove(wide(at("b")));
    }
    EXPECT_EQ(get("a"), "old a");
    EXPECT_EQ(get("b"), "old b");
    EXPECT_EQ(scratch.count_files(), 2U);
}

TEST_F(Run, WritesInSeveralFoldersAtOnce) {
    std::filesystem::create_directory(at("one"));
    std::filesystem::create_directory(at("two"));
    Transaction run;
    write("one/x", "1");
    write("two/x", "2");
    ASSERT_TRUE(run.commit(nullptr));
    EXPECT_EQ(get("one/x"), "1");
    EXPECT_EQ(get("two/x"), "2");
}

TEST_F(Run, ThatFailsAtOneFileLeavesAllOthers) {
    std::filesystem::create_directory(at("folder"));
    Transaction run;
    write("a", "new a");
    write("folder/x", "new");
    write("z", "new z");
    // What was no folder becomes one behind the run's back: it can't be replaced by a file.
    std::filesystem::create_directory(at("z"));
    put("z/inside", "");
    std::string why;
    EXPECT_FALSE(run.commit(&why));
    EXPECT_NE(why.find(at("z")), std::string::npos) << why;
    EXPECT_EQ(get("a"), "old a");
    EXPECT_FALSE(embedded::stands(at("folder/x")));
    EXPECT_EQ(read("a"), "old a");
}

TEST_F(Run, KeepsModesLinksAndFurtherNames) {
    ::chmod(at("a").c_str(), 0640);
    std::filesystem::create_hard_link(at("b"), at("b2"));
    std::filesystem::create_symlink("a", at("link"));
    Transaction run;
    write("link", "new a");
    write("b", "new b");
    const mode_t mask = ::umask(027);
    write("c", "new c");
    ASSERT_TRUE(run.commit(nullptr));
    ::umask(mask);
    EXPECT_TRUE(std::filesystem::is_symlink(at("link")));
    EXPECT_EQ(get("a"), "new a");
    EXPECT_EQ(mode("a"), 0640U);
    EXPECT_EQ(get("b2"), "new b");
    EXPECT_EQ(mode("c"), 0640U);
}

TEST_F(Run, FollowsNoLinkWhereAnyoneMayWrite) {
    std::filesystem::create_directory(at("shared"));
    ::chmod(at("shared").c_str(), 01777);
    std::filesystem::create_symlink(at("a"), at("shared/r"));
    std::string why;
    EXPECT_FALSE(write_file_whole(at("shared/r"), "x", &why));
    EXPECT_NE(why.find("anyone may write"), std::string::npos) << why;
    Transaction run;
    EXPECT_FALSE(write_file_whole(at("shared/r"), "x", &why));
    EXPECT_NE(why.find("anyone may write"), std::string::npos) << why;
    EXPECT_TRUE(run.commit(nullptr));
    EXPECT_EQ(get("a"), "old a");
}

TEST_F(Run, GivesAPipeItsBytesAtTheEnd) {
    ASSERT_EQ(::mkfifo(at("pipe").c_str(), 0600), 0);
    std::string got;
    std::thread reader([&] { got = get("pipe"); });
    {
        Transaction run;
        EXPECT_TRUE(write("pipe", "bytes"));
        EXPECT_TRUE(run.commit(nullptr));
    }
    reader.join();
    EXPECT_EQ(got, "bytes");
}

TEST_F(Run, HoldsItsOutputsFromOthers) {
    embedded::set_host_setting("wait_for_outputs", 0);
    int to_child[2], to_parent[2];
    ASSERT_EQ(::pipe(to_child), 0);
    ASSERT_EQ(::pipe(to_parent), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        Transaction run;
        char byte = run.hold(at("a"), nullptr) ? 'y' : 'n';
        (void)!::write(to_parent[1], &byte, 1);
        (void)!::read(to_child[0], &byte, 1);
        ::_exit(0);
    }
    char byte = 0;
    ASSERT_EQ(::read(to_parent[0], &byte, 1), 1);
    {
        Transaction run;
        std::string why;
        EXPECT_FALSE(run.hold(at("a"), &why));
        EXPECT_EQ(why, "another run is writing it (process " + std::to_string(child) + ")");
        EXPECT_TRUE(run.hold(at("b"), &why)) << why;
    }
    ASSERT_EQ(::write(to_child[1], "x", 1), 1);
    ::waitpid(child, nullptr, 0);
    Transaction run;
    EXPECT_TRUE(run.hold(at("a"), nullptr));
}

TEST_F(Run, RemovesWhatADeadRunLeft) {
    die_in([&] {
        Transaction run;
        write("a", "never seen");
        ::kill(::getpid(), SIGKILL);
    });
    EXPECT_GT(scratch.count_files(), 2U);
    Transaction run;
    EXPECT_EQ(read("a"), "old a");
    EXPECT_EQ(scratch.count_files(), 2U);
}

TEST_F(Run, FinishesWhatADeadRunHadBegunToPutInPlace) {
    die_in([&] {
        embedded::PrivateFolder folder(scratch.path(), ".quillbrook-");
        put_bytes(folder.path() + "/f0", "new a");
        put_bytes(folder.path() + "/f1", "new c");
        embedded::Journal journal(folder.path());
        using Kind = embedded::Placing::Kind;
        journal.placings = {{Kind::rename, "", "f0", "k0", "", "a"},
                            {Kind::remove, "", "", "k1", "", "b"},
                            {Kind::rename, "", "f1", "", "", "c"}};
        if (journal.keep_former() || journal.begin()) ::_exit(1);
        // As far as a run gets that dies behind its first file.
        std::filesystem::rename(folder.path() + "/f0", at("a"));
        ::kill(::getpid(), SIGKILL);
    });
    Transaction run;
    EXPECT_EQ(read("c"), "new c");
    EXPECT_EQ(get("a"), "new a");
    EXPECT_FALSE(embedded::stands(at("b")));
    EXPECT_EQ(scratch.count_files(), 2U);
}

TEST_F(Run, TouchesNoFolderThatMerelyLooksAlike) {
    const std::string name = at(".quillbrook-abcdefghijkl");
    std::filesystem::create_directory(name);
    ::chmod(name.c_str(), 0700);
    put_bytes(name + "/notes", "mine");
    std::filesystem::create_directory(at(".quillbrook-mnopqrstuvwx"));
    put_bytes(at(".quillbrook-mnopqrstuvwx/lock"), "");
    embedded::PrivateFolder living(scratch.path(), ".quillbrook-");
    {
        Transaction run;
        write("a", "new a");
        ASSERT_TRUE(run.commit(nullptr));
    }
    EXPECT_EQ(bytes_of_file(name + "/notes"), "mine");
    EXPECT_TRUE(embedded::stands(at(".quillbrook-mnopqrstuvwx/lock")));
    EXPECT_TRUE(embedded::stands(living.path() + "/lock"));
}

TEST_F(Run, LeavesNothingWhenAHandlerOfSignalsCleansUp) {
    die_in([&] {
        Transaction run;
        write("a", "never seen");
        embedded::remove_private_files();
        ::kill(::getpid(), SIGKILL);
    });
    EXPECT_EQ(get("a"), "old a");
    EXPECT_EQ(scratch.count_files(), 2U);
}

} // namespace
