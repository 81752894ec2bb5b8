// Files out of ZIP archives, and bundles of edits.

#include "formats/bundle/folder_bundle.h"
#include "formats/bundle/otio_bundle.h"
#include "formats/bundle/zip_entry.h"
#include "formats/edit_readers.h"
#include "tests/support/scratch_directory.h"

#include <gmock/gmock.h>
#include <zlib.h>

#include <filesystem>

using formats::bundle::entry_of;
using formats::bundle::holds_entry;
using testing::HasSubstr;

namespace {

std::string bytes_of(std::uint64_t value, int size) {
    std::string bytes;
    for (int i = 0; i < size; ++i)
        bytes += i < 8 ? static_cast<char>(value >> (8 * i)) : '\0';
    return bytes;
}

std::string deflated(const std::string& text) {
    std::string packed(text.size() + 100, '\0');
    z_stream stream{};
    deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

struct File {
    std::string name, bytes;
    int method = 0, flags = 0;
    bool large = false; ///< sizes and place behind the record
};

std::string archive(const std::vector<File>& files, const std::string& comment = {}) {
    std::string body, directory;
    for (const File& file : files) {
        const std::string packed = file.method == 8 ? deflated(file.bytes) : file.bytes;
        const std::uint64_t place = body.size();
        const std::string sizes = file.large ? bytes_of(0xFFFFFFFF, 4) + bytes_of(0xFFFFFFFF, 4)
                                             : bytes_of(packed.size(), 4) + bytes_of(file.bytes.size(), 4);
        const std::string extra = file.large ? bytes_of(1, 2) + bytes_of(24, 2) + bytes_of(file.bytes.size(), 8) +
                                                   bytes_of(packed.size(), 8) + bytes_of(place, 8)
                                             : std::string();
        const std::string middle = bytes_of(static_cast<std::uint64_t>(file.flags), 2) +
                                   bytes_of(static_cast<std::uint64_t>(file.method), 2) + bytes_of(0, 8) + sizes +
                                   bytes_of(file.name.size(), 2);
        body += "PK\x03\x04" + bytes_of(20, 2) + middle + bytes_of(3, 2) + file.name + "xyz" + packed;
        directory += "PK\x01\x02" + bytes_of(20, 2) + bytes_of(20, 2) + middle + bytes_of(extra.size(), 2) +
                     bytes_of(0, 10) + bytes_of(file.large ? 0xFFFFFFFF : place, 4) + file.name + extra;
    }
    const std::string end = "PK\x05\x06" + bytes_of(0, 4) + bytes_of(files.size(), 2) + bytes_of(files.size(), 2) +
                            bytes_of(directory.size(), 4) + bytes_of(body.size(), 4) + bytes_of(comment.size(), 2);
    return body + directory + end + comment;
}

std::string why_not(const std::string& bytes, const std::string& name) {
    std::string why;
    return entry_of(bytes, name, why) ? "read" : why;
}

TEST(ZipEntries, AreReadStoredAndPacked) {
    const std::string text(5000, 't');
    for (const bool large : {false, true}) {
        const std::string bytes =
            archive({{"a", "first", 0, 0, large}, {"b/c", text, 8, 0, large}, {"empty", "", 8, 0, large}}, "a comment");
        std::string why;
        EXPECT_EQ(entry_of(bytes, "a", why), "first");
        EXPECT_EQ(entry_of(bytes, "b/c", why), text);
        EXPECT_EQ(entry_of(bytes, "empty", why), "");
        EXPECT_TRUE(holds_entry(bytes, "b/c"));
        EXPECT_FALSE(holds_entry(bytes, "c"));
    }
}

// Beyond 4 GB the end says nothing, and another one ahead of it, which is found by a third, says where the directory
// is.
TEST(ZipEntries, OfArchivesBeyondFourGigabytesAreFoundByTheLargeEnd) {
    const std::string plain = archive({{"a", "first"}, {"b", "second"}});
    const std::size_t end = plain.size() - 22;
    const std::uint64_t directory = plain.find("PK\x01\x02");
    const std::string large_end = "PK\x06\x06" + bytes_of(44, 8) + bytes_of(0, 12) + bytes_of(2, 8) + bytes_of(2, 8) +
                                  bytes_of(end - directory, 8) + bytes_of(directory, 8);
    const std::string locator = "PK\x06\x07" + bytes_of(0, 4) + bytes_of(end, 8) + bytes_of(1, 4);
    std::string last = plain.substr(end);
    last.replace(16, 4, bytes_of(0xFFFFFFFF, 4));
    std::string why;
    EXPECT_EQ(entry_of(plain.substr(0, end) + large_end + locator + last, "b", why), "second") << why;
    EXPECT_EQ(why_not(plain.substr(0, end) + last, "b"), "isn't in the archive");
    EXPECT_EQ(why_not(plain.substr(0, end) + std::string(56, 'x') + locator + last, "b"), "isn't in the archive");
}

TEST(ZipEntries, ThatCannotBeReadSayWhy) {
    EXPECT_EQ(why_not(archive({{"a", "x"}}), "b"), "isn't in the archive");
    EXPECT_EQ(why_not("PK\x03\x04", "a"), "isn't in the archive");
    EXPECT_EQ(why_not(archive({{"a", "x", 0, 1}}), "a"), "is encrypted");
    EXPECT_EQ(why_not(archive({{"a", "x", 12, 0}}), "a"), "is packed in a way that isn't read");
    std::string bytes = archive({{"a", std::string(5000, 't'), 8}});
    bytes[40] = static_cast<char>(~bytes[40]);
    EXPECT_EQ(why_not(bytes, "a"), "is damaged");
    bytes = archive({{"a", "text"}});
    bytes[0] = 'Q';
    EXPECT_EQ(why_not(bytes, "a"), "is damaged");
}

TEST(ZipEntries, OfSizesThatCannotBeAreNotUnpacked) {
    std::string bytes = archive({{"a", std::string(5000, 't'), 8}});
    const std::size_t record = bytes.find("PK\x01\x02");
    bytes.replace(record + 24, 4, bytes_of(400'000'000, 4));
    EXPECT_EQ(why_not(bytes, "a"), "is damaged");
    bytes.replace(record + 24, 4, bytes_of(0xF0000000, 4));
    EXPECT_EQ(why_not(bytes, "a"), "is too long");
    bytes.replace(record + 24, 4, bytes_of(5000, 4));
    bytes.replace(record + 20, 4, bytes_of(100'000, 4));
    EXPECT_EQ(why_not(bytes, "a"), "is cut short");
}

TEST(ZipEntries, OfArchivesThatEndAnywhereOrAreChangedAreReadOrRefused) {
    const std::string whole = archive({{"content.otio", std::string(900, 't'), 8}, {"b", "x"}}, "c");
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::string why;
        const auto cut = entry_of(whole.substr(0, at), "content.otio", why);
        EXPECT_NE(cut.has_value(), !why.empty()) << at;
        std::string changed = whole, reason;
        changed[at] = static_cast<char>(~changed[at]);
        const auto read = entry_of(changed, "content.otio", reason);
        EXPECT_NE(read.has_value(), !reason.empty()) << at;
    }
}

constexpr const char* edit =
    R"({"OTIO_SCHEMA": "Timeline.1", "name": "", "tracks": {"OTIO_SCHEMA": "Stack.1", "children":
    [{"OTIO_SCHEMA": "Track.1", "children": []}]}})";

TEST(Bundles, AnArchiveWithAnEditIsOne) {
    const std::string bytes = archive({{"version.txt", "1.0.0"}, {"content.otio", edit, 8}, {"media/a.mov", "m"}});
    EXPECT_EQ(formats::kind_of_file(bytes), formats::FileKind::otioz);
    EXPECT_EQ(formats::kind_of_file(archive({{"version.txt", "1.0.0"}})), formats::FileKind::zip);
    EXPECT_EQ(formats::kind_of_file(archive({{"media/content.otio", edit}})), formats::FileKind::zip);
    EXPECT_NE(formats::edit_reader_of(formats::FileKind::otioz, "a"), nullptr);
    const auto result = formats::read_otioz_bytes(bytes, "dir/reel 3.otioz", 0);
    ASSERT_TRUE(result.edit) << result.error;
    EXPECT_STREQ(toUTF8(result.edit->getName()).c_str(), "reel 3");
    const ScratchDirectory folder;
    put_bytes(folder.file("reel 4.otioz"), bytes);
    const formats::EditReader* reader = formats::edit_reader_of(formats::FileKind::otioz, "a");
    const auto of_file = formats::read_edit(*reader, {folder.file("reel 4.otioz")}, {});
    ASSERT_TRUE(of_file.edit) << of_file.error;
    EXPECT_STREQ(toUTF8(of_file.edit->getName()).c_str(), "reel 4");
    EXPECT_EQ(formats::read_otioz_bytes("PK\x03\x04", "a.otioz", 0).error,
              "a.otioz: content.otio isn't in the archive");
}

TEST(Bundles, AFolderWithAnEditIsOne) {
    const ScratchDirectory folder;
    const std::string bundle = folder.file("reel.otiod");
    std::filesystem::create_directory(bundle);
    EXPECT_EQ(formats::file_of_bundle(bundle), bundle);
    put_bytes(bundle + "/content.otio", edit);
    EXPECT_EQ(formats::file_of_bundle(bundle), bundle + "/content.otio");
    EXPECT_EQ(formats::file_of_bundle("plain.otio"), "plain.otio");
}

} // namespace
