// What a range leaves of the items and transitions of a track, against an account frame by frame.

#include "tests/otio/otio_texts.h"

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>

using namespace otio_texts;

namespace {

constexpr double offset = 0.25; ///< of each transition, on both sides of its cut

/// Items of some seconds, with a transition at each cut and at both ends.
struct Row {
    std::string children = transition(0, offset);
    std::vector<int> item_at; ///< of each second
    std::vector<int> cuts{0};

    explicit Row(const std::vector<int>& lengths) {
        for (std::size_t item = 0; item < lengths.size(); ++item) {
            children += ", " + clip("item", 100.0 * static_cast<double>(item), lengths[item]) + ", " +
                        transition(offset, offset);
            item_at.insert(item_at.end(), static_cast<std::size_t>(lengths[item]), static_cast<int>(item));
            cuts.push_back(total());
        }
    }
    int total() const { return static_cast<int>(item_at.size()); }
    int second_of_item(int second) const {
        int first = second;
        while (first > 0 && item_at[static_cast<std::size_t>(first) - 1] == item_at[static_cast<std::size_t>(second)])
            --first;
        return second - first;
    }
};

/// Where transitions lie once only the seconds from `from` to `to` are left, with black behind them up to `end`.
std::vector<std::pair<double, double>> transitions_left(const Row& row, int from, int to, int end) {
    std::vector<std::pair<double, double>> left;
    for (const int cut : row.cuts) {
        const bool inside = from < cut && cut < to;
        const bool untouched_end = (cut == 0 && from == 0) || (cut == row.total() && to == row.total());
        if (inside || untouched_end)
            left.emplace_back(std::max(cut - offset, double(from)) - from, std::min(cut + offset, double(end)) - from);
    }
    return left;
}

std::vector<std::pair<double, double>> transitions_read(const formats::ReadResult& result) {
    std::vector<std::pair<double, double>> found;
    const std::vector<ChannelEvent> all = points(result);
    for (std::size_t i = 0; i + 1 < all.size(); i += 2)
        if (all[i].cookie.isEffect()) found.emplace_back(all[i].edit_time, all[i + 1].edit_time);
    return found;
}

/// The middle of each second shows the second of media that it showed before; a transition never reaches it.
bool shows_the_same_media(const formats::ReadResult& result, const Row& row, int from, int to) {
    const std::vector<ChannelEvent> all = points(result);
    for (int second = from; second < to; ++second) {
        const double middle = second - from + 0.5;
        std::size_t at = 0;
        while (at + 1 < all.size() && !(all[at].edit_time < middle && middle < all[at + 1].edit_time))
            at += 2;
        if (at + 1 >= all.size()) return false;
        const double media = all[at].source_time + middle - all[at].edit_time;
        const int item = row.item_at[static_cast<std::size_t>(second)];
        if (media != 100.0 * item + row.second_of_item(second) + 0.5) return false;
    }
    return true;
}

std::string on_nest(const Row& row, const Extra& range) {
    return timeline({track({stack({track({row.children})}, range)})});
}
std::string on_nested_track(const Row& row, const Extra& range) {
    return timeline({track({stack({track({row.children}, range)})})});
}
std::string on_track(const Row& row, const Extra& range) { return timeline({track({row.children}, range)}); }
std::string on_stack(const Row& row, const Extra& range) { return timeline({track({row.children})}, {}, range); }

void check_against_seconds(std::string (*trimmed)(const Row&, const Extra&), bool fills_up = false) {
    EXPECT_TRUE(rc::check("a trimmed row has the seconds and the transitions that the range leaves", [=] {
        const auto lengths = *rc::gen::nonEmpty(rc::gen::container<std::vector<int>>(rc::gen::inRange(1, 5)));
        const Row row(lengths);
        const int from = *rc::gen::inRange(0, row.total());
        const int length = *rc::gen::inRange(1, row.total() + 3);
        const int to = std::min(from + length, row.total());
        const auto result = read(trimmed(row, source_range(from, length)));
        RC_ASSERT(transitions_read(result) == transitions_left(row, from, to, fills_up ? from + length : to));
        RC_ASSERT(shows_the_same_media(result, row, from, to));
    }));
}

TEST(OtioTrim, OfANestLeavesWhatLiesInside) { check_against_seconds(on_nest, true); }
TEST(OtioTrim, OfATrackInANestLeavesWhatLiesInside) { check_against_seconds(on_nested_track); }
TEST(OtioTrim, OfATrackLeavesWhatLiesInside) { check_against_seconds(on_track); }
TEST(OtioTrim, OfAStackLeavesWhatLiesInside) { check_against_seconds(on_stack); }

//     |x B . . . .|       the tail goes, and the fade at the head stays; and the other way round
TEST(OtioTrim, AnEndThatIsLeftAloneKeepsItsFade) {
    const Row row({4});
    for (const auto trimmed : {on_track, on_stack, on_nest, on_nested_track}) {
        const auto left = [&](int from, int length) { return drawn(trimmed(row, source_range(from, length))); };
        EXPECT_EQ(left(0, 3), "b 0-0 | x 0-0.25 | item 0.25-3");
        EXPECT_EQ(left(1, 3), "item 0-2.75 | x 2.75-3 | b 3-3");
        EXPECT_EQ(left(1, 2), "item 0-2");
        EXPECT_EQ(left(0, 4), "b 0-0 | x 0-0.25 | item 0.25-3.75 | x 3.75-4 | b 4-4");
    }
    EXPECT_EQ(drawn(on_track(row, source_range(-1, 3))), "b 0-0 | x 0-0.25 | item 0.25-2");
    EXPECT_EQ(drawn(on_stack(row, source_range(-1, 3))), "b 0-0 | x 0-0.25 | item 0.25-2");
    EXPECT_EQ(drawn(on_stack(row, source_range(0, 9))), "b 0-0 | x 0-0.25 | item 0.25-3.75 | x 3.75-4 | b 4-4");
    EXPECT_EQ(drawn(on_stack(row, source_range(5, 9))), "");
}

} // namespace
