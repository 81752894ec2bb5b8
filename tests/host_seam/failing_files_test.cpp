// Files that can't be written whole.

#include "tests/host_seam/small_run.h"
#include "tests/support/memory_files.h"

#include <csignal>
#include <sys/resource.h>

using namespace host_seam;

namespace {

/// No file of the process grows beyond `bytes` while it lives: what a full disc looks like.
class FullDisc {
public:
    explicit FullDisc(std::size_t bytes) : old_handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &old_limit_);
        rlimit limit = old_limit_;
        limit.rlim_cur = bytes;
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisc() {
        ::setrlimit(RLIMIT_FSIZE, &old_limit_);
        std::signal(SIGXFSZ, old_handler_);
    }
    FullDisc(const FullDisc&) = delete;
    FullDisc& operator=(const FullDisc&) = delete;

private:
    rlimit old_limit_{};
    void (*old_handler_)(int);
};

/// Takes so many bytes in all and loses what is beyond. It tells nobody, as a stream has no way to.
class LossyFiles : public file_service {
public:
    explicit LossyFiles(std::size_t room) : room_(room) {}

    void remove(LightweightString<wchar_t>) override {}
    Qb::Ptr<stream> open(LightweightString<wchar_t>, int, int, int, int) override {
        return Qb::Ptr<stream>(new LossyStream(*this));
    }

    std::string bytes;
    int open_streams = 0;

private:
    class LossyStream : public stream {
    public:
        explicit LossyStream(LossyFiles& files) : files_(files) { ++files_.open_streams; }
        ~LossyStream() override { --files_.open_streams; }
        void write(const void* data, unsigned int count) override {
            const std::size_t room = files_.room_ - std::min(files_.room_, files_.bytes.size());
            files_.bytes.append(static_cast<const char*>(data), std::min<std::size_t>(count, room));
        }

    private:
        LossyFiles& files_;
    };

    std::size_t room_;
};

class LossySystem : public operating_system {
public:
    explicit LossySystem(std::size_t room) : lossy(room) { embedded::use_operating_system(this); }
    ~LossySystem() override { embedded::use_operating_system(nullptr); }
    memory_service& memory() override { return embedded::standard_operating_system().memory(); }
    file_service& files() override { return lossy; }
    count_service& counts() override { return embedded::standard_operating_system().counts(); }

    LossyFiles lossy;
};

class FailingFiles : public SmallRun {
protected:
    FailingFiles() {
        block.set("assembly_list", "0");
        block.set("optical_list", "0");
    }

    void clear_scratch() const {
        for (const auto& entry : std::filesystem::directory_iterator(scratch.path()))
            std::filesystem::remove(entry.path());
    }
    bool make_with_room(const EditPtr& edit, std::size_t room) {
        const FullDisc disc(room);
        return make_small(edit);
    }
    /// Every file that stands is one of the two, whole.
    void expect_nothing_half_written(const std::string& cdb, const std::string& report) const {
        for (const auto& entry : std::filesystem::directory_iterator(scratch.path())) {
            std::string bytes;
            EXPECT_TRUE(embedded::read_file(entry.path().string(), &bytes, nullptr));
            EXPECT_EQ(bytes, entry.path().filename() == "list.cdb" ? cdb : report) << entry.path();
        }
    }
};

TEST_F(FailingFiles, WhereverTheDiscIsFullNothingHalfWrittenStays) {
    const EditPtr edit = smallest_edit();
    ASSERT_TRUE(make_small(edit));
    const std::string cdb = bytes_of("list.cdb"), report = bytes_of("list.txt");
    const std::size_t most = std::max(cdb.size(), report.size());
    embedded::take_write_failure(nullptr);
    for (std::size_t room = 0; room <= most; ++room) {
        clear_scratch();
        make_with_room(edit, room);
        SCOPED_TRACE(room);
        EXPECT_EQ(embedded::take_write_failure(nullptr), room < most);
        EXPECT_EQ(stands("list.cdb"), room >= cdb.size());
        EXPECT_EQ(stands("list.txt"), room >= most);
        expect_nothing_half_written(cdb, report);
        if (HasFailure()) break;
    }
}

TEST_F(FailingFiles, AnOldListStaysWholeWhereTheNewOneDoesntFit) {
    const EditPtr edit = smallest_edit();
    ASSERT_TRUE(make_small(edit));
    const std::string report = bytes_of("list.txt");
    block.set("pgm_id", "another");
    const bool overwrite = false;
    for (const std::size_t room : {std::size_t{0}, report.size() / 2, report.size() - 1}) {
        const FullDisc disc(room);
        make_cutlist_from_edit(edit, logger, 0, &block, nullptr, overwrite);
        std::string bytes;
        embedded::read_file(scratch.file("list.txt"), &bytes, nullptr);
        EXPECT_TRUE(bytes == report) << room;
    }
    std::string failed;
    EXPECT_TRUE(embedded::take_write_failure(&failed));
    EXPECT_FALSE(failed.empty());
}

TEST_F(FailingFiles, AStreamThatLosesBytesGetsTheSameCallsAsOneThatKeepsThem) {
    const EditPtr edit = smallest_edit();
    ASSERT_TRUE(make_small(edit));
    const std::string report = bytes_of("list.txt");
    for (std::size_t room = 0; room <= report.size(); ++room) {
        LossySystem system(room);
        ASSERT_TRUE(make_small(edit)) << room;
        ASSERT_TRUE(system.lossy.bytes == report.substr(0, room)) << room;
        ASSERT_EQ(system.lossy.open_streams, 0) << room;
    }
}

TEST_F(FailingFiles, AReportThatCannotBeOpenedFailsTheRun) {
    const EditPtr edit = smallest_edit();
    MemoryFileSystem system;
    system.disc.refuses = true;
    EXPECT_FALSE(make_small(edit));
    EXPECT_TRUE(stands("list.cdb"));
}

TEST_F(FailingFiles, ThePathsGoThroughTheServiceAsTheyAre) {
    const EditPtr edit = smallest_edit();
    MemoryFileSystem system;
    EXPECT_TRUE(make_small(edit));
    EXPECT_EQ(system.disc.calls,
              (std::vector<std::string>{"remove " + scratch.file("list.cdb"), "remove " + scratch.file("list.txt"),
                                        "open " + scratch.file("list.txt") + " 2 1 0 0"}));
    EXPECT_FALSE(stands("list.txt"));
}

} // namespace
