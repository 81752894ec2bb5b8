// The shot that an event came from: the first of the table that holds it.

#include "logging/log_shot_list.h"
#include "tests/logging/film_tables.h"
#include "tests/support/recording_logger.h"

#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <rapidcheck.h>

namespace {

struct Row {
    std::string reel;
    int start;
    int end;
};

constexpr int video_24 = 8;

LabelPoint at(int sample) { return {sample, static_cast<label_t>(video_24)}; }

std::unique_ptr<LogShotList> list_of(const std::vector<Row>& rows) {
    Records records;
    for (const Row& row : rows)
        records.push_back({"shot", row.reel, at(row.start).get_string(), at(row.end).get_string(), "cam", ""});
    MadeTable table({{"FILMDB", "Rev 16"}, {"label_std", "24fps"}, {"film label_std", "35mm-4p"}},
                    {"name", "reel", "start time", "end time", "cam reel", "start keycode"}, records);
    RecordingLogger logger;
    return std::make_unique<LogShotList>(table, -1, logger, 2);
}

LogShot* find(LogShotList& list, int start, int end, std::string reel) {
    return find_shot(list, at(start), at(end), reel.data());
}

/// One shot after the other, as the table has them.
LogShot* walk(const LogShotList& list, int start, int end, const std::string& reel) {
    for (const auto& shot : list.shots) {
        const long low = shot->start.sample - 30L, high = shot->end.sample + 30L;
        const bool holds = low <= start && start <= high && low <= end && end <= high;
        if (holds && std::strncmp(reel.c_str(), shot->reel, std::strlen(shot->reel)) == 0) return shot.get();
    }
    return nullptr;
}

TEST(FindShot, GivesThirtyFramesOfSlack) {
    EXPECT_NE(find(*list_of({{"A", 1030, 1070}}), 1000, 1100, "A"), nullptr);
    EXPECT_EQ(find(*list_of({{"A", 1031, 1070}}), 1000, 1100, "A"), nullptr);
    EXPECT_EQ(find(*list_of({{"A", 1030, 1069}}), 1000, 1100, "A"), nullptr);
    EXPECT_NE(find(*list_of({{"A", 1030, 1070}}), 1100, 1000, "A"), nullptr) << "backward as well";
}

TEST(FindShot, RaisesTheReelAndComparesItsBeginning) {
    const auto list = list_of({{"ABC", 0, 100}});
    char reel[] = "abc1234";
    EXPECT_EQ(find_shot(*list, at(0), at(10), reel), list->shots[0].get());
    EXPECT_STREQ(reel, "ABC1234");
    EXPECT_EQ(find(*list, 0, 10, "AB"), nullptr);
    EXPECT_EQ(find(*list, 0, 10, "XABC"), nullptr);
}

TEST(FindShot, AnEmptyReelOfAShotMatchesAll) {
    const auto list = list_of({{"", 0, 100}});
    EXPECT_NE(find(*list, 0, 10, "whatever"), nullptr);
    EXPECT_NE(find(*list, 0, 10, ""), nullptr);
    EXPECT_NE(find_shot(*list, at(0), at(10), nullptr), nullptr);
    EXPECT_EQ(find_shot(*list_of({{"A", 0, 100}}), at(0), at(10), nullptr), nullptr);
}

TEST(FindShot, TheFirstOfTheTableWins) {
    const auto list = list_of({{"AB", 0, 1000}, {"A", 400, 600}, {"", 450, 550}, {"AB", 400, 600}});
    EXPECT_EQ(find(*list, 460, 540, "AB"), list->shots[0].get());
    EXPECT_EQ(find(*list, 460, 540, "AC"), list->shots[1].get());
    EXPECT_EQ(find(*list, 460, 540, "C"), list->shots[2].get());
}

TEST(FindShot, LooksAtFifteenCharactersOfAReel) {
    const auto list = list_of({{std::string(20, 'R'), 0, 100}});
    EXPECT_NE(find(*list, 0, 10, std::string(15, 'r') + "other"), nullptr);
    EXPECT_EQ(find(*list, 0, 10, std::string(14, 'r')), nullptr);
}

TEST(FindShot, OfAnEmptyListIsNone) { EXPECT_EQ(find(*list_of({}), 0, 0, "A"), nullptr); }

TEST(FindShot, FindsWhatAWalkFinds) {
    const auto sample = rc::gen::inRange(0, 600);
    const auto reel = rc::gen::map(rc::gen::container<std::string>(rc::gen::element('A', 'B')),
                                   [](const std::string& text) { return text.substr(0, 4); });
    EXPECT_TRUE(rc::check("index and walk", [&] {
        std::vector<Row> rows;
        const int count = *rc::gen::inRange(0, 70);
        for (int i = 0; i < count; ++i) {
            const int start = *sample;
            rows.push_back({*reel, start, start + *rc::gen::inRange(-2, 200)});
            if (rows.back().end < 0) rows.back().end = 0;
        }
        const auto list = list_of(rows);
        for (int i = 0; i < 20; ++i) {
            const int start = *sample, end = *sample;
            const std::string wanted = *reel;
            RC_ASSERT(find(*list, start, end, wanted) == walk(*list, start, end, wanted));
        }
    }));
}

} // namespace
