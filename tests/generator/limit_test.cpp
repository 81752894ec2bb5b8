// The most records that a list can hold.

#include "tests/generator/generator_fixture.h"

using namespace generator_test;

namespace {

class Limit : public GeneratorTest {
protected:
    bool make_with_events(int count) {
        EditBuilder builder(plain_edit());
        const SourceId one = builder.add_source(shot("one"));
        builder.add_channel(picture);
        for (int i = 0; i < count; ++i)
            builder.add_event(0, event_of(one, 1, 2 * i));
        block.set("some_lists", "1");
        for (const char* list : {"roll_list", "pull_list", "assembly_list", "optical_list"})
            block.set(list, "0");
        return make(builder);
    }
};

TEST_F(Limit, AListHoldsNineThousandNineHundredAndNinetyNineRecords) {
    EXPECT_TRUE(make_with_events(9999));
    EXPECT_FALSE(logger.said_at(4));
    EXPECT_EQ(rows(), 9999U);
}

TEST_F(Limit, OneRecordMoreEndsTheRunAndWritesNothing) {
    EXPECT_FALSE(make_with_events(10000));
    EXPECT_TRUE(logger.said_at(4));
    EXPECT_EQ(scratch.count_files(), 0U);
}

TEST_F(Limit, OpticalsCountToo) {
    EditBuilder builder(plain_edit());
    const SourceId one = builder.add_source(shot("one"));
    builder.add_channel(picture);
    builder.add_channel(picture, chan_fx);
    for (int i = 0; i < 5000; ++i) {
        builder.add_event(0, event_of(one, 1, 2 * i));
        builder.add_gap(1, frames(1), {lab_effect("Blur", {0})});
    }
    EXPECT_FALSE(make(builder));
    EXPECT_TRUE(logger.said_at(4));
    EXPECT_EQ(scratch.count_files(), 0U);
}

} // namespace
