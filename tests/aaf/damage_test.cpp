// Damaged files: an error or an edit, never a crash, and no more memory than some times the file.

#include "tests/aaf/aaf_edits.h"
#include "tests/support/aaf_samples.h"

#include <gmock/gmock.h>

#include <cstdint>

using namespace aaf_edits;

namespace {

std::string everything() { return written(aaf_samples::everything()); }

formats::ReadResult result_of(const std::string& bytes) { return formats::read_aaf_bytes(bytes, "a.aaf", 0); }

/// An edit, or a reason why there is none.
bool sound(const formats::ReadResult& result) { return static_cast<bool>(result.edit) == result.error.empty(); }

TEST(AafDamage, TheWholeFileIsRead) {
    const auto result = result_of(everything());
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(material(result, 0).size(), 3u);
    EXPECT_EQ(material(result, 1).size(), 2u);
}

TEST(AafDamage, AFileThatEndsAnywhereIsAnErrorOrAnEdit) {
    const std::string whole = everything();
    for (std::size_t at = 0; at < whole.size(); at += 97)
        EXPECT_TRUE(sound(result_of(whole.substr(0, at)))) << at;
}

TEST(AafDamage, AByteChangedAnywhereIsAnErrorOrAnEdit) {
    const std::string whole = everything();
    for (std::size_t at = 0; at < whole.size(); at += 97)
        for (const char change : {'\x00', '\x01', '\x7F', '\xFF'}) {
            std::string changed = whole;
            changed[at] = change;
            EXPECT_TRUE(sound(result_of(changed))) << at;
        }
}

TEST(AafDamage, NumbersOutOfAllBoundsAreAnErrorOrAnEdit) {
    for (const std::int64_t number : {INT64_MIN, std::int64_t{-1}, std::int64_t{1} << 62, INT64_MAX}) {
        EXPECT_TRUE(sound(read(track(sequence({clip(1, number, 10), clip(1, 0, 10)})))));
        EXPECT_TRUE(sound(read(track(sequence({clip(1, 0, number), clip(1, 0, 10)}, 20)))));
        EXPECT_TRUE(sound(read(track(sequence({clip(1, 0, 10), transition(number, number), clip(1, 0, 10)}, 20)))));
        EXPECT_TRUE(sound(read(track(effect(speed_control, number, {clip(1, 0, 20)}, {constant(speed_ratio, 1, 2)})))));
        EXPECT_TRUE(sound(read(track(effect(speed_control, 10, {clip(1, 0, 20)},
                                            {varying(speed_offset_map, {{0, number % 0x7FFFFFFF}, {10, 5}})})))));
        EXPECT_TRUE(
            sound(read(reel({slot(1, {24}, clip(1, 0, 10), {}, number), slot(2, {24}, timecode(number, 24, 10))}))));
        Made made = track(clip(1, 5, 10));
        made.mobs[1] = master(1, "A", {slot(1, {24}, pulldown(100, true, clip(2001, number, 10)), {}, number)});
        EXPECT_TRUE(sound(read(made)));
        made.mobs[1] =
            film(1, "A", {slot(1, {24}, clip(0, 0, 10)), slot(2, {24}, edge_code("KJ291010", number, 100), 1)});
        EXPECT_TRUE(sound(read(made)));
    }
}

} // namespace
