// A reel with everything in it, whole and damaged.

#include "formats/bundle/folder_bundle.h"
#include "tests/fcpxml/fcpxml_texts.h"
#include "tests/support/project_paths.h"

#include "embedded/services.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

using namespace fcpxml_texts;

namespace {

std::string path_of_reel() { return project_folder() + "/tests/samples/fcpxml/reel_2.fcpxml"; }

std::string reel() {
    std::string bytes;
    EXPECT_TRUE(embedded::read_file(path_of_reel(), &bytes, nullptr));
    return bytes;
}

TEST(FcpxmlSamples, AReelWithEverythingInIt) {
    const auto result = formats::read_fcpxml(path_of_reel());
    ASSERT_EQ(result.error, "");
    EXPECT_EQ(drawn(result.edit, 0),
              "0-0 black | 0-24 diss | 24-180 Harbour@01:00:11:00 | 180-204 diss | 204-336 Quay@00:00:50:12 | 336-480 "
              "black | "
              "480-552 He@01:01:42:00 | 552-624 She@01:03:20:00 | 624-720 Right@01:05:06:00 | "
              "720-912 Slow@01:00:05:00*0.5 | 912-1008 photo.png@*0 | 1008-1080 Picked@01:02:00:00 | "
              "1080-1176 Stairs@01:05:01:00 | 1176-1200 black | 1200-1248 Backward@01:01:29:23*-1");
    EXPECT_EQ(drawn(result.edit, 1), "48-120 Opening@ | 360-408 Door@01:00:50:00 | 408-456 Hand@01:01:00:00");
    EXPECT_EQ(cues_of(result.edit, 0), "24 boat, 217 quay");
    EXPECT_EQ(reel_at(result.edit, 0, 2), "A012");
    EXPECT_EQ(key_at(source_at(result.edit, 0, 2), 0), "KJ1234567890+05");
    EXPECT_TRUE(result.warnings.empty()) << result.warnings[0].text;
}

TEST(FcpxmlSamples, AFolderIsReadThroughTheFileInIt) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "quillbrook_bundle.fcpxmld";
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "Info.fcpxml") << reel();
    const auto result = formats::read_fcpxml(folder.string());
    EXPECT_EQ(result.error, "");
    EXPECT_TRUE(result.edit);
    std::filesystem::remove_all(folder);
    EXPECT_EQ(formats::file_of_bundle(path_of_reel()), path_of_reel());
}

TEST(FcpxmlSamples, CutOffAnywhereItIsAnErrorWithItsLine) {
    const std::string whole = reel();
    for (std::size_t size = 0; size + 20 < whole.size(); size += 97) {
        const auto result = read(whole.substr(0, size));
        EXPECT_FALSE(result.edit) << size;
        EXPECT_EQ(result.error.find("a.fcpxml: line "), 0U) << size;
    }
}

TEST(FcpxmlSamples, DamagedAnywhereItIsAnErrorOrAnEdit) {
    const std::string whole = reel();
    int edits = 0;
    for (std::size_t at = 0; at < whole.size(); at += 97)
        for (const char damage : {'\0', '0', '9', '"', '<', '\xFF'}) {
            std::string text = whole;
            text[at] = damage;
            const auto result = read(text);
            EXPECT_EQ(result.error.empty(), static_cast<bool>(result.edit)) << at;
            edits += result.edit ? 1 : 0;
        }
    EXPECT_GT(edits, 50);
}

TEST(FcpxmlSamples, WithAnyLineMissingItIsAnErrorOrAnEdit) {
    const std::string whole = reel();
    for (std::size_t from = 0; from < whole.size();) {
        const std::size_t to = std::min(whole.find('\n', from), whole.size() - 1) + 1;
        const auto result = read(whole.substr(0, from) + whole.substr(to));
        EXPECT_EQ(result.error.empty(), static_cast<bool>(result.edit)) << whole.substr(from, to - from);
        from = to;
    }
}

} // namespace
