// Work at once in several threads of a process: edits open beside each other and beside a run; of two runs one is
// refused.

#include "formats/edl/edl_reader.h"
#include "formats/otio/otio_reader.h"
#include "tests/generator/generator_fixture.h"

#include <atomic>
#include <thread>

namespace {

using namespace generator_test;

EditPtr some_edit(int length) {
    EditBuilder builder(plain_edit());
    builder.add_channel(picture);
    const SourceId one = builder.add_source(shot("one"));
    for (int event = 0; event < 20; ++event)
        builder.add_event(0, event_of(one, length, event));
    return builder.finish();
}

/// A logger whose first line waits for another run to be tried.
class BusyLogger : public RecordingLogger {
public:
    explicit BusyLogger(std::function<void()> meanwhile) : meanwhile_(std::move(meanwhile)) {}
    void message(const LightweightString<wchar_t>& text, int level) override {
        RecordingLogger::message(text, level);
        if (meanwhile_) std::exchange(meanwhile_, nullptr)();
    }

private:
    std::function<void()> meanwhile_;
};

class TwoRuns : public GeneratorTest {
protected:
    bool print(LoggerHandle& log) const {
        return print_cutlist_reports(fromUTF8(scratch.file("list.cdb").c_str(), -1),
                                     fromUTF8(scratch.file("other.txt").c_str(), -1), log, true, nullptr);
    }
};

TEST_F(TwoRuns, TheSecondIsRefusedWhicheverThreadItComesFrom) {
    const EditPtr edit = some_edit(10);
    for (const bool other_thread : {false, true}) {
        RecordingLogger second;
        bool printed = true;
        BusyLogger first([&] {
            const auto try_to_print = [&] { printed = print(second); };
            if (!other_thread) return try_to_print();
            std::thread(try_to_print).join();
        });
        EXPECT_TRUE(make_cutlist_from_edit(edit, first, 0, &block, nullptr, true));
        EXPECT_FALSE(printed);
        EXPECT_EQ(second.lines, (std::vector<LoggedLine>{{"Another run is in progress in this process\n", 4}}));
        EXPECT_FALSE(stands("other.txt"));
        RecordingLogger third;
        EXPECT_TRUE(print(third));
        std::filesystem::remove(scratch.file("other.txt"));
    }
}

TEST_F(TwoRuns, OfManyAtOnceEachIsWholeOrRefused) {
    const EditPtr edit = some_edit(10);
    ASSERT_TRUE(make(edit));
    std::atomic<int> done{0}, refused{0};
    const auto work = [&](int thread) {
        const std::string name = scratch.file("print" + std::to_string(thread) + ".txt");
        for (int round = 0; round < 20; ++round) {
            RecordingLogger log;
            const bool printed = print_cutlist_reports(fromUTF8(scratch.file("list.cdb").c_str(), -1),
                                                       fromUTF8(name.c_str(), -1), log, true, nullptr);
            ++(printed ? done : refused);
            EXPECT_TRUE(printed || log.said_at(4));
        }
    };
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 3; ++thread)
        threads.emplace_back(work, thread);
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_GT(done, 0);
    EXPECT_EQ(done + refused, 60);
}

const std::string timeline = R"({"OTIO_SCHEMA":"Timeline.1","name":"t","tracks":{"OTIO_SCHEMA":"Stack.1","children":[
{"OTIO_SCHEMA":"Track.1","kind":"Video","children":[{"OTIO_SCHEMA":"Clip.1","name":"one","source_range":
{"OTIO_SCHEMA":"TimeRange.1","start_time":{"OTIO_SCHEMA":"RationalTime.1","rate":24,"value":5},
"duration":{"OTIO_SCHEMA":"RationalTime.1","rate":24,"value":48}},"media_reference":
{"OTIO_SCHEMA":"ExternalReference.1","target_url":"one.mov","available_range":{"OTIO_SCHEMA":"TimeRange.1","start_time":
{"OTIO_SCHEMA":"RationalTime.1","rate":24,"value":0},"duration":
{"OTIO_SCHEMA":"RationalTime.1","rate":24,"value":400}},"metadata":{"quillbrook":{"keycode":"KJ1234560100+00"}}}}]}]}})";
const std::string edit_list = "TITLE: LIST\nFCM: NON-DROP FRAME\n"
                              "001  R1  V  C  01:00:00:00 01:00:02:00 00:00:00:00 00:00:02:00\n"
                              "002  R2  V  D 012 01:00:00:00 01:00:02:00 00:00:02:00 00:00:04:00\n";

TEST_F(TwoRuns, EditsOpenBesideARun) {
    std::atomic<bool> stop{false};
    std::atomic<int> opened{0};
    const auto open_edits = [&] {
        while (!stop) {
            formats::ReadOptions options;
            options.rate = embedded::nearest_rate(25.0);
            const EditPtr first = formats::read_otio_bytes(timeline, "t.otio", 0).edit;
            const EditPtr second = formats::read_edl_texts({{edit_list, "t.edl", 0}}, options).edit;
            opened += first && second;
        }
    };
    std::thread one(open_edits), two(open_edits);
    const EditPtr edit = some_edit(10);
    for (int round = 0; round < 10 || opened < 20; ++round)
        EXPECT_TRUE(make(edit));
    stop = true;
    one.join();
    two.join();
    EXPECT_GT(opened, 0);
}

} // namespace
