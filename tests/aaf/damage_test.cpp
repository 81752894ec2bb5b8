// Damaged files: an error or an edit, never a crash, and no more memory than some times the file.

#include "tests/aaf/aaf_edits.h"
#include "tests/support/aaf_samples.h"

#include <gmock/gmock.h>

#include <cstdint>

using namespace aaf_edits;
using testing::HasSubstr;

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

TEST(AafDamage, AComponentThatBreaksOffStopsTheReading) {
    EXPECT_EQ(
        read(track(sequence({clip(1, 0, 10), clip(2, 50, 10).breaks_off()}, 20))).error,
        "reel.aaf: composition \"Reel\", slot 1, component 2: its properties break off, so that nothing tells what "
        "it is");
    const auto inner = read(track(sequence({selector(10, clip(2, 50, 10).breaks_off())}, 10)));
    EXPECT_THAT(inner.error, HasSubstr("component 1: its properties break off"));
}

TEST(AafDamage, AComponentWithoutLengthStopsTheReading) {
    const char* why = "it has no length, and all behind it would move";
    const auto in_a_row = read(track(sequence({clip(1, 0, 10).without(pid::length), clip(2, 50, 10)}, 20)));
    EXPECT_EQ(in_a_row.error, std::string("reel.aaf: composition \"Reel\", slot 1, component 1: ") + why);
    EXPECT_THAT(read(track(clip(1, 0, 10).without(pid::length))).error, HasSubstr(why));
    EXPECT_THAT(read(track(sequence({clip(1, 0, 10), filler(std::int64_t{1} << 40)}, 20))).error,
                HasSubstr("component 2: its length is out of all bounds"));
}

TEST(AafDamage, AnIndexThatIsNotWholeStopsTheReading) {
    const auto error_of = [](std::function<void(std::string&)> change) {
        Object parts = sequence({clip(1, 0, 10), clip(2, 50, 10), clip(3, 0, 10)});
        return read(track(parts.changes_index(pid::components, std::move(change)))).error;
    };
    EXPECT_THAT(error_of([](std::string& index) { index.resize(index.size() - 1); }), HasSubstr("component 3: isn't"));
    EXPECT_THAT(error_of([](std::string& index) { index.clear(); }), HasSubstr("component 1: isn't"));
    EXPECT_THAT(error_of([](std::string& index) { index[16] = 0; }), HasSubstr("component 2: isn't")) << "one twice";
    EXPECT_THAT(error_of([](std::string& index) { index[0] = 2; }), HasSubstr("component 3: isn't"))
        << "counts too few";
    EXPECT_EQ(error_of([](std::string&) {}), "");
}

TEST(AafDamage, ATrackThatAnIndexLosesIsToldOf) {
    Made made = reel({slot(1, {24}, clip(1, 0, 10)), slot(2, {24}, clip(2, 0, 10))});
    made.mobs[0].changes_index(pid::slots, [](std::string& index) { index.resize(index.size() - 1); });
    EXPECT_TRUE(warns_of(read(made), "reel.aaf: composition \"Reel\": the index of p-4403 is damaged"));
}

TEST(AafDamage, WhatOfTheChainBreaksOffIsToldOfAndNotRead) {
    Made made = track(clip(1, 100, 10));
    made.mobs[3] =
        tape(2001, "TA", {slot(1, {24}, clip(0, 0, 10000)), slot(2, {24}, timecode(86400, 24, 10000).breaks_off(), 1)});
    auto result = read(made);
    EXPECT_EQ(label_at(result, user_label_timecode), "00:00:04:04") << "none, so that of the source's own frames";
    EXPECT_TRUE(warns_of(result, "source \"TA\", p-4403{1}, p-4803: its properties break off"));
    EXPECT_TRUE(warns_of(result, "slot 1: its chain leads to something of which only a part is in the file"));
    made.mobs[3] =
        film(2001, "A012",
             {slot(1, {24}, clip(0, 0, 10000)), slot(2, {24}, edge_code("KJ291010", 0, 10000).breaks_off(), 1)});
    result = read(made);
    EXPECT_EQ(label_at(result, user_label_key), "-") << "no number rather than one without its prefix";
    EXPECT_TRUE(warns_of(result, "source \"A012\", p-4403{1}, p-4803: its properties break off"));
}

TEST(AafDamage, WhatAReferenceNamesAndTheFileLacksIsToldOf) {
    const Object lost = slot(1, {24}, clip(1, 0, 10)).without(pid::slot_segment).text(pid::slot_segment, "p-9999");
    const Made made = reel({lost});
    const auto result = read(made);
    EXPECT_EQ(result.error, "reel.aaf: composition \"Reel\": neither pictures nor timecode tell its rate (composition "
                            "\"Reel\", p-4403{0}: p-9999 isn't in the file)");
    EXPECT_TRUE(warns_of(result, "composition \"Reel\", p-4403{0}: p-9999 isn't in the file"));
}

TEST(AafDamage, TimecodeThatCountsNothingAndASequenceOfNothingAreToldOf) {
    Made made = track(clip(1, 100, 10));
    made.mobs[3] = tape(2001, "TA", {slot(1, {24}, clip(0, 0, 10000)), slot(2, {24}, timecode(86400, 0, 10000), 1)});
    EXPECT_TRUE(warns_of(read(made), "its timecode counts no frames, and is left out"));
    const auto empty = read(track(sequence({}, 0).without(pid::components)));
    EXPECT_TRUE(warns_of(empty, "slot 1: it holds nothing, not even an empty list"));
    made.mobs[3] = tape(2001, "TA", {slot(1, {24}, sequence({}, 10000))});
    EXPECT_TRUE(warns_of(read(made), "a sequence of its chain holds nothing, or less than it should"));
    made.mobs[3] = tape(2001, "TA", {slot(1, {24}, sequence({clip(0, 0, 10).without(pid::length), clip(0, 0, 900)}))});
    EXPECT_TRUE(warns_of(read(made), "a sequence of its chain holds something that has no length"));
}

TEST(AafDamage, APlaceThatNothingTellsIsToldOf) {
    EXPECT_TRUE(warns_of(read(track(clip(1, 0, 10).without(pid::start_time))),
                         "slot 1: nothing tells where in its source it begins: it counts from 0"));
    EXPECT_TRUE(
        warns_of(read(track(sequence({clip(1, 0, 10), transition(4, 2).without(pid::cut_point), clip(2, 0, 10)}))),
                 "component 2: nothing tells its cut point: it counts as 0"));
}

TEST(AafDamage, AnEditWithoutRateNamesTheTrackThatLacksIt) {
    const auto why = [](const Object& only) { return read(reel({only})).error; };
    EXPECT_THAT(why(slot(1, {24}, clip(1, 0, 10)).without(pid::slot_segment)),
                HasSubstr("its rate (slot 1 holds nothing)"));
    EXPECT_THAT(why(slot(7, {0}, clip(1, 0, 10))), HasSubstr("its rate (slot 7 has no rate that is listed)"));
    EXPECT_THAT(why(slot(1, {24}, clip(1, 0, 10).without(pid::data_definition))),
                HasSubstr("its rate (slot 1 holds neither pictures nor timecode)"));
}

} // namespace
