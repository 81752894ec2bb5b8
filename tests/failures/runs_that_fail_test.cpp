// Runs whose host fails: each service at each call, and memory at each allocation. A run that failed says so, leaves
// no file half written, and the next run in the process is as good as the first.

#include "reports/pull_event.h"
#include "tests/changelist/cut_files.h"
#include "tests/failures/failing_host.h"
#include "tests/failures/failing_memory.h"
#include "tests/generator/generator_fixture.h"

#include <cstdlib>

using namespace failures;

namespace {

#ifdef __has_feature
constexpr bool leaks_are_found = __has_feature(address_sanitizer);
#else
constexpr bool leaks_are_found = false;
#endif

/// Every call is tried where the environment asks for that, else the first ones and a share of the others.
long next_call(long call) {
    static const bool every = std::getenv("QUILLBROOK_EVERY_FAILURE") != nullptr;
    return every || call < 24 ? call + 1 : call + 1 + call / 6;
}

std::string bytes_at(const std::string& path) {
    std::string bytes;
    embedded::read_file(path, &bytes, nullptr);
    return bytes;
}

/// What a job makes of the files of its folder: their names and bytes.
using Made = std::map<std::string, std::string>;

Made files_in(const ScratchDirectory& folder) {
    Made made;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
        made[entry.path().filename().string()] = bytes_at(entry.path().string());
    return made;
}

/// A job that can be done again and again in its folder.
struct Job {
    const ScratchDirectory& folder;
    std::function<bool(LoggerHandle&, const embedded::settings_block&)> run;
    std::function<void()> clear;
    embedded::settings_block block;

    Made make_afresh() const {
        forget_pulled_roll();
        return make_plainly();
    }
    Made make_plainly() const {
        clear();
        RecordingLogger logger;
        EXPECT_TRUE(run(logger, block));
        return files_in(folder);
    }
};

/// Each file that stands is as a good run makes it.
void expect_only_whole_files(const Made& made, const Made& whole) {
    for (const auto& [name, bytes] : made) {
        const auto expected = whole.find(name);
        ASSERT_TRUE(expected != whole.end()) << name << " is left behind";
        EXPECT_TRUE(bytes == expected->second) << name;
    }
}

void remove_unclosed(const ScratchDirectory& folder) {
    for (const auto& [name, bytes] : files_in(folder))
        if (name.rfind(".quillbrook-", 0) == 0) std::filesystem::remove(folder.file(name));
}

/// Does the job once with the failure; true where that struck.
bool try_failure(const Job& job, Failure failure, const Made& whole) {
    SCOPED_TRACE(testing::Message() << "service " << int(failure.service) << ", call " << failure.call << ", fault "
                                    << int(failure.fault));
    job.clear();
    forget_pulled_roll();
    bool done = false;
    {
        FailingHost host(failure);
        FailingLogger logger(failure);
        const FailingBlock block(job.block, failure);
        done = job.run(logger, block);
    }
    if (!failure.struck()) {
        EXPECT_TRUE(done);
        return false;
    }
    // The last user of all is the caller's own copy of the edit, which goes behind the run.
    if (failure.service == Service::release_ref && done) return false;
    EXPECT_FALSE(done);
    // A count that can't be taken off loses what it counts: the stream never closes.
    if (failure.service == Service::release_ref) remove_unclosed(job.folder);
    expect_only_whole_files(files_in(job.folder), whole);
    EXPECT_TRUE(job.make_plainly() == whole) << "the next run differs";
    return true;
}

void try_all_services(const Job& job) {
    const Made whole = job.make_afresh();
    for (const Service service : services) {
        if (service == Service::release_ref && leaks_are_found) continue;
        for (const Fault fault : {Fault::throws, Fault::throws_no_exception, Fault::returns_null}) {
            const bool may_be_null = service == Service::allocate || service == Service::open;
            if (fault == Fault::returns_null && !may_be_null) continue;
            long call = 1;
            while (try_failure(job, {service, call, fault, 0}, whole) && !testing::Test::HasFailure())
                call = next_call(call);
            EXPECT_GT(call, 1) << "service " << int(service) << " is never asked";
            if (testing::Test::HasFailure()) return;
        }
    }
}

/// The host's memory service fails in its own way where the test program's memory ends.
class EndingMemory : public operating_system, private memory_service {
public:
    EndingMemory() { embedded::use_operating_system(this); }
    ~EndingMemory() override { embedded::use_operating_system(nullptr); }
    memory_service& memory() override { return *this; }
    file_service& files() override { return embedded::standard_operating_system().files(); }
    count_service& counts() override { return embedded::standard_operating_system().counts(); }

private:
    void* allocate(std::size_t size) override {
        return allocation_fails() ? nullptr : embedded::standard_operating_system().memory().allocate(size);
    }
    void free(void* block) override { embedded::standard_operating_system().memory().free(block); }
};

bool try_end_of_memory(const Job& job, long allocation, MemoryEnds how, const Made& whole) {
    SCOPED_TRACE(testing::Message() << "allocation " << allocation << (how == MemoryEnds::once ? "" : " and on"));
    job.clear();
    forget_pulled_roll();
    bool done = false, reached = false;
    {
        const EndingMemory host;
        class Deaf : public LoggerHandle {
            void message(const LightweightString<wchar_t>&, int) override {}
        } deaf;
        const LastAllocation last(allocation, how);
        done = job.run(deaf, job.block);
        reached = LastAllocation::reached();
    }
    // A read that goes on without its buffer is as good as any, if what it makes is whole.
    EXPECT_TRUE(!done || files_in(job.folder) == whole);
    expect_only_whole_files(files_in(job.folder), whole);
    EXPECT_TRUE(done || job.make_plainly() == whole) << "the next run differs";
    return reached;
}

void try_all_allocations(const Job& job) {
    const Made whole = job.make_afresh();
    for (const MemoryEnds how : {MemoryEnds::once, MemoryEnds::for_good}) {
        long allocation = 1;
        while (try_end_of_memory(job, allocation, how, whole) && !testing::Test::HasFailure())
            allocation = next_call(allocation);
        EXPECT_GT(allocation, 100);
    }
}

class FailingCutlist : public generator_test::GeneratorTest {
protected:
    FailingCutlist() {
        using namespace generator_test;
        EditBuilder builder(plain_edit());
        const SourceId one = builder.add_source(shot("one"));
        const SourceId two = builder.add_source(shot("two", "KJ1234560300+00"));
        builder.add_channel(picture);
        builder.add_channel(picture, chan_fx);
        builder.add_event(0, event_of(one, 48, 24));
        builder.add_transition(0, dissolve(8, 8));
        builder.add_event(0, event_of(two, 48, 24));
        builder.add_event(0, event_of(one, 20, 30));
        builder.add_gap(1, frames(24), {lab_effect("Blur", {0})});
        edit = builder.finish();
        for (const char* text : {"proj_name", "pgm_id"})
            block.set(text, "small");
        block.set("fsl_type1_file", "1");
        block.set("pull_match_assembly", "0");
    }

    void clear() const {
        for (const auto& entry : std::filesystem::directory_iterator(scratch.path()))
            std::filesystem::remove(entry.path());
        embedded::take_write_failure(nullptr);
    }
    Job job() const {
        const auto run = [this](LoggerHandle& log, const embedded::settings_block& options) {
            // The copy of the edit that a call takes is still the caller's own.
            bool entered = false, done = false;
            const auto copy = [&] {
                const EditPtr* source = &edit;
                EditPtr taken = *source;
                entered = true;
                return taken;
            };
            try {
                done = make_cutlist_from_edit(copy(), log, 0, &options, nullptr, true);
            } catch (...) {
                if (entered) throw;
            }
            return done && !embedded::take_write_failure(nullptr);
        };
        return {scratch, run, [this] { clear(); }, block};
    }

    EditPtr edit;
};

TEST_F(FailingCutlist, EachServiceMayFailAtEachCall) { try_all_services(job()); }

TEST_F(FailingCutlist, MemoryMayEndAtEachAllocation) { try_all_allocations(job()); }

class FailingChanges : public changelist_test::ChangelistTest {
protected:
    FailingChanges() {
        ask_for_all();
        block.set("chg_bench_list", "1");
        block.set("chg_showedgecodes", "1");
        changelist_test::Shot one, two, three;
        one.length = 30;
        two.frame = 100;
        two.length = 20;
        three.frame = 300;
        three.length = 25;
        write("old.cdb", {one, two, three});
        write("new.cdb", {three, one});
    }

    Job job() {
        const auto run = [this](LoggerHandle& log, const embedded::settings_block& options) {
            embedded::settings_block& mine = const_cast<embedded::settings_block&>(options);
            const char* error = mr_make_changelist(reels, report_name, &mine, log);
            unsigned steps = 0;
            const change_step* first = change_steps(detailed_changes, steps);
            EXPECT_EQ(first == nullptr, error != nullptr);
            const bool planned = change_steps(bench_changes, steps) != nullptr;
            return !error && planned && !embedded::take_write_failure(nullptr);
        };
        const auto clear = [this] {
            for (const char* name : {"changes.txt", "oldcut__.chg", "newcut__.chg"})
                std::filesystem::remove(scratch.file(name));
            embedded::take_write_failure(nullptr);
        };
        return {scratch, run, clear, block};
    }

    EnvironmentValue clock{"SOURCE_DATE_EPOCH", "1000000"};
    EnvironmentValue zone{"TZ", "UTC"};
    changelist_reels reels{{made_cut::wide(scratch.file("old.cdb")), made_cut::wide(scratch.file("new.cdb"))}};
    LightweightString<wchar_t> report_name = made_cut::wide(scratch.file("changes.txt"));
};

TEST_F(FailingChanges, EachServiceMayFailAtEachCall) { try_all_services(job()); }

TEST_F(FailingChanges, MemoryMayEndAtEachAllocation) { try_all_allocations(job()); }

TEST_F(FailingChanges, ARunThatFailedLeavesNothingToProve) {
    RecordingLogger log;
    const Job good = job();
    good.make_plainly();
    EXPECT_TRUE(prove_change_steps(detailed_changes).proved);
    Failure failure{Service::message, 2, Fault::throws, 0};
    {
        FailingHost host(failure);
        FailingLogger failing(failure);
        EXPECT_STREQ(mr_make_changelist(reels, report_name, &block, failing), "A service of the host failed: struck\n");
    }
    EXPECT_FALSE(prove_change_steps(detailed_changes).proved);
    EXPECT_STREQ(prove_change_steps(detailed_changes).reason, "there is no film of a run");
}

} // namespace
