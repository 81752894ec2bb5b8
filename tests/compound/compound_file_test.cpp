// Compound files, sound and damaged.

#include "formats/compound/compound_file.h"
#include "formats/compound/wide_text.h"
#include "tests/support/compound_writer.h"

#include <gmock/gmock.h>

using compound_writer::Layout;
using compound_writer::Node;
using compound_writer::written;
using formats::compound::File;
using formats::compound::root_storage;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

Node stream(const std::string& name, const std::string& bytes) { return {name, false, {}, bytes, {}}; }

Node storage(const std::string& name, std::vector<Node> children) { return {name, true, {}, {}, std::move(children)}; }

std::string counted(std::size_t size) {
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i)
        bytes += static_cast<char>(i * 7 + i / 256);
    return bytes;
}

/// Streams of no bytes, of some, and of more than the small ones may have.
Node sample() {
    Node root = storage("Root Entry", {stream("none", ""), stream("small", counted(100)), stream("edge", counted(4095)),
                                       stream("large", counted(4096)), stream("larger", counted(20000))});
    root.children.push_back(storage("folder", {stream("inner", "abc"), storage("empty", {})}));
    root.children.back().class_id = {1, 2, 3};
    return root;
}

void put_word(std::string& bytes, std::size_t at, std::uint32_t value) {
    for (std::size_t i = 0; i < 4; ++i)
        bytes[at + i] = static_cast<char>(value >> (8 * i));
}

std::uint32_t word(const std::string& bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;)
        value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
    return value;
}

std::size_t place_of_sector(std::uint32_t number) { return (number + 1) * 512; }

/// Where the directory's entry of that number stands, the directory being in sectors one behind the other.
std::size_t place_of_entry(const std::string& bytes, std::size_t number) {
    return place_of_sector(word(bytes, 48)) + number * 128;
}

/// Reads everything that can be reached.
std::size_t read_all(const File& file, formats::compound::StorageId storage = root_storage) {
    std::size_t count = 0;
    for (const std::string& name : file.names(storage)) {
        if (const auto bytes = file.stream(storage, name)) count += bytes->size();
        if (const auto inner = file.storage(storage, name)) count += read_all(file, *inner);
    }
    return count;
}

TEST(CompoundFile, SectorsOfBothSizesGiveEveryStream) {
    for (const std::size_t size : {512u, 4096u}) {
        const std::string bytes = written(sample(), {size, {}});
        File file;
        ASSERT_TRUE(file.open(bytes)) << file.error();
        for (const std::size_t length : {0u, 100u, 4095u, 4096u, 20000u}) {
            const char* name = length == 0      ? "none"
                               : length == 100  ? "small"
                               : length == 4095 ? "edge"
                               : length == 4096 ? "large"
                                                : "larger";
            EXPECT_EQ(file.stream(root_storage, name), counted(length)) << name << " in sectors of " << size;
        }
        const auto folder = file.storage(root_storage, "folder");
        ASSERT_TRUE(folder);
        EXPECT_EQ(file.class_id(*folder)[2], 3);
        EXPECT_THAT(file.names(*folder), ElementsAre("empty", "inner"));
        EXPECT_EQ(file.stream(*folder, "inner"), "abc");
    }
}

TEST(CompoundFile, AnAllocationTableLongerThanTheHeaderHoldsIsFollowed) {
    const std::string content = counted(9'000'000);
    const std::string bytes = written(storage("Root Entry", {stream("long", content)}));
    File file;
    ASSERT_TRUE(file.open(bytes)) << file.error();
    EXPECT_TRUE(file.stream(root_storage, "long") == content);
}

TEST(CompoundFile, WhatIsMissingOrOfTheOtherSortIsNothing) {
    const std::string bytes = written(sample());
    File file;
    ASSERT_TRUE(file.open(bytes));
    EXPECT_FALSE(file.stream(root_storage, "lost"));
    EXPECT_FALSE(file.stream(root_storage, "folder"));
    EXPECT_FALSE(file.storage(root_storage, "small"));
}

TEST(CompoundFile, OtherFilesAreRefusedByName) {
    File file;
    EXPECT_FALSE(file.open("TITLE: a list"));
    EXPECT_EQ(file.error(), "is no compound file");
    File short_file;
    EXPECT_FALSE(short_file.open(written(sample()).substr(0, 100)));
    EXPECT_EQ(short_file.error(), "the compound file ends within its header");
    std::string other = written(sample());
    other[30] = 11;
    File other_sectors;
    EXPECT_FALSE(other_sectors.open(other));
    EXPECT_THAT(other_sectors.error(), HasSubstr("neither 512 nor 4096"));
}

TEST(CompoundFile, ATableThatLoopsIsAnErrorAndNoHang) {
    std::string bytes = written(sample());
    const std::uint32_t directory = word(bytes, 48);
    put_word(bytes, place_of_sector(word(bytes, 76)) + 4 * directory, directory);
    File file;
    EXPECT_FALSE(file.open(bytes));
    EXPECT_EQ(file.error(), "the compound file's directory can't be followed");
}

TEST(CompoundFile, AStreamWhoseSectorsLoopEndsAtItsSize) {
    std::string bytes = written(storage("Root Entry", {stream("large", counted(20000))}));
    put_word(bytes, place_of_sector(word(bytes, 76)), 0); // its first sector follows itself
    File file;
    ASSERT_TRUE(file.open(bytes));
    EXPECT_EQ(file.stream(root_storage, "large")->size(), 20000u);
}

TEST(CompoundFile, ADirectoryTreeThatLoopsIsAnError) {
    std::string bytes = written(sample());
    const std::uint32_t child = word(bytes, place_of_entry(bytes, 0) + 76);
    put_word(bytes, place_of_entry(bytes, child) + 68, child);
    File file;
    EXPECT_FALSE(file.open(bytes));
    EXPECT_EQ(file.error(), "the compound file's directory loops");
}

TEST(CompoundFile, ADirectoryThatLeadsOutsideIsAnError) {
    std::string bytes = written(sample());
    put_word(bytes, place_of_entry(bytes, 0) + 76, 5000);
    File file;
    EXPECT_FALSE(file.open(bytes));
    EXPECT_EQ(file.error(), "the compound file's directory leads outside of itself");
}

TEST(CompoundFile, AStreamLongerThanTheFileIsNotRead) {
    std::string bytes = written(storage("Root Entry", {stream("large", counted(5000))}));
    put_word(bytes, place_of_entry(bytes, 1) + 120, 0x7FFFFFFF);
    File file;
    ASSERT_TRUE(file.open(bytes));
    EXPECT_FALSE(file.stream(root_storage, "large"));
}

TEST(CompoundFile, StoragesMayNotLieTooDeep) {
    Node deep = storage("s", {});
    for (int i = 0; i < formats::compound::depth_limit + 1; ++i)
        deep = storage("s", {std::move(deep)});
    const std::string bytes = written(storage("Root Entry", {std::move(deep)}));
    File file;
    EXPECT_FALSE(file.open(bytes));
    EXPECT_THAT(file.error(), HasSubstr("too deep"));
}

TEST(CompoundFile, StreamsThatShareSectorsGiveNoMoreThanSomeTimesTheFile) {
    std::vector<Node> streams{stream("s0", counted(400'000))};
    for (int i = 1; i < 100; ++i)
        streams.push_back(stream("s" + std::to_string(i), counted(5000)));
    std::string bytes = written(storage("Root Entry", std::move(streams)));
    const std::uint32_t start = word(bytes, place_of_entry(bytes, 1) + 116);
    for (std::size_t i = 2; i <= 100; ++i) {
        put_word(bytes, place_of_entry(bytes, i) + 116, start);
        put_word(bytes, place_of_entry(bytes, i) + 120, 400'000);
    }
    File file;
    ASSERT_TRUE(file.open(bytes)) << file.error();
    EXPECT_GT(read_all(file), 0u);
    EXPECT_LE(read_all(file), formats::compound::read_limit * bytes.size());
}

TEST(CompoundFile, ATreeThatIsOneLongBranchIsRead) {
    std::vector<Node> streams;
    for (int i = 0; i < 3000; ++i)
        streams.push_back(stream("s" + std::to_string(i), "x"));
    std::string bytes = written(storage("Root Entry", std::move(streams)));
    for (std::size_t i = 0; i <= 3000; ++i) {
        put_word(bytes, place_of_entry(bytes, i) + (i == 0 ? 76 : 72), i == 3000 ? 0xFFFFFFFF : std::uint32_t(i + 1));
        put_word(bytes, place_of_entry(bytes, i) + 68, 0xFFFFFFFF);
    }
    File file;
    ASSERT_TRUE(file.open(bytes)) << file.error();
    EXPECT_EQ(file.names(root_storage).size(), 3000u);
}

TEST(CompoundFile, OneThatEndsAnywhereOrWithAByteChangedIsReadOrRefused) {
    const std::string whole = written(sample());
    std::size_t refused = 0;
    for (std::size_t at = 0; at < whole.size(); at += 97) {
        File cut;
        const std::string head = whole.substr(0, at);
        const std::size_t limit = formats::compound::read_limit * whole.size();
        EXPECT_LE(cut.open(head) ? read_all(cut) : 0, limit);
        refused += cut.error().empty() ? 0 : 1;
        for (const char change : {'\xFF', '\x00', '\x01'}) {
            std::string changed = whole;
            changed[at] = change;
            File file;
            EXPECT_LE(file.open(changed) ? read_all(file) : 0, limit);
        }
    }
    EXPECT_GT(refused, 0u);
}

TEST(WideText, BecomesUtf8UpToItsEnd) {
    using formats::compound::utf8_of_wide;
    EXPECT_EQ(utf8_of_wide({"A\0\xE9\0\xAC\x20\x3D\xD8\x00\xDE\0\0B\0", 14}), "A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(utf8_of_wide({"\0A\x20\xAC", 4}, true), "A\xE2\x82\xAC");
    EXPECT_EQ(utf8_of_wide({"\x3D\xD8Z\0\x01", 5}), "\xEF\xBF\xBDZ");
    EXPECT_EQ(utf8_of_wide({"\x42\xD8\xB7\xDF", 4}), "𠮷");
    const std::unique_ptr<char[]> half(new char[3]{0x3D, static_cast<char>(0xD8), 1}); // nothing lies behind it
    EXPECT_EQ(utf8_of_wide({half.get(), 3}), "\xEF\xBF\xBD");
}

} // namespace
