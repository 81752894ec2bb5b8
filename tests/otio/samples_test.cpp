// Every edit file at hand is read, or refused with a message that names it.

#include "formats/otio/otio_reader.h"
#include "tests/support/project_paths.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace {

TEST(OtioSamples, AreReadOrRefusedWithAReason) {
    const std::filesystem::path folder = std::filesystem::path((project_folder() + "/../shared")) / "samples" / "edits";
    if (!std::filesystem::exists(folder)) GTEST_SKIP() << "no samples here";
    int read = 0;
    for (const auto& file : std::filesystem::recursive_directory_iterator(folder)) {
        if (file.path().extension() != ".otio") continue;
        const std::string path = file.path().string();
        const formats::ReadResult result = formats::read_otio(path);
        EXPECT_TRUE(result.edit || result.error.compare(0, path.size() + 2, path + ": ") == 0) << result.error;
        read += result.edit ? 1 : 0;
        for (const std::string& warning : result.warnings)
            EXPECT_EQ(warning.compare(0, path.size() + 2, path + ": "), 0) << warning;
    }
    EXPECT_GE(read, 15);
}

} // namespace
