// Lists from the world: each reads, or is refused with its line and reason.

#include "formats/edl/edl_reader.h"
#include "tests/support/project_paths.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> lists() {
    std::vector<fs::path> found;
    for (const char* folder : {"cmx3600", "edl", "otio-history"}) {
        const fs::path place = fs::path((project_folder() + "/../shared")) / "samples/edits" / folder;
        if (!fs::is_directory(place)) continue;
        for (const fs::directory_entry& entry : fs::directory_iterator(place)) {
            std::string extension = entry.path().extension();
            std::transform(extension.begin(), extension.end(), extension.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
            if (extension == ".edl") found.push_back(entry.path());
        }
    }
    return found;
}

TEST(Samples, EachReadsOrIsRefusedWithItsLine) {
    if (lists().empty()) GTEST_SKIP() << "no samples here";
    for (const fs::path& path : lists()) {
        for (const double rate : {24.0, 25.0, 29.97, 30.0, 60.0}) {
            formats::ReadOptions options;
            options.rate = embedded::nearest_rate(rate);
            const formats::ReadResult result = formats::read_edl(path.string(), options);
            EXPECT_TRUE(result.edit || result.error.find("line ") != std::string::npos) << path << ": " << result.error;
            for (const std::string& warning : result.warnings)
                EXPECT_NE(warning.find("line "), std::string::npos) << warning;
        }
    }
}

TEST(Samples, AllReadAtThirty) {
    if (lists().empty()) GTEST_SKIP() << "no samples here";
    formats::ReadOptions options;
    options.rate = embedded::nearest_rate(30);
    for (const fs::path& path : lists())
        EXPECT_EQ(formats::read_edl(path.string(), options).error, "");
}

} // namespace
