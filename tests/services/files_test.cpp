#include "embedded/services.h"
#include "host/counted.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

namespace {

LightweightString<wchar_t> wide(const std::string& path) { return fromUTF8(path.c_str(), -1); }

class Files : public testing::Test {
protected:
    void SetUp() override { embedded::take_write_failure(nullptr); }

    Qb::Ptr<stream> open(const std::string& name) { return OS()->files().open(wide(scratch.file(name)), 2, 1, 0, 0); }

    ScratchDirectory scratch;
};

TEST_F(Files, AReportStandsInItsPlaceOnceTheLastHolderLetsItGo) {
    put_bytes(scratch.file("report"), "old");
    Qb::Ptr<stream> file = open("report");
    ASSERT_TRUE(file);
    Qb::Ptr<stream> second = file;
    for (const char c : std::string("new text"))
        file->write(&c, 1);
    file = nullptr;
    EXPECT_EQ(bytes_of_file(scratch.file("report")), "old");
    second = nullptr;
    EXPECT_EQ(bytes_of_file(scratch.file("report")), "new text");
    EXPECT_EQ(scratch.count_files(), 1U);
    EXPECT_FALSE(embedded::take_write_failure(nullptr));
}

TEST_F(Files, AReportLargerThanAnyBufferComesOutWhole) {
    std::string text;
    for (int i = 0; i < 40000; ++i)
        text += std::to_string(i) + "\r\n";
    {
        const Qb::Ptr<stream> file = open("report");
        ASSERT_TRUE(file);
        for (const char c : text)
            file->write(&c, 1);
        file->write(text.data(), static_cast<unsigned>(text.size()));
    }
    EXPECT_EQ(bytes_of_file(scratch.file("report")), text + text);
}

TEST_F(Files, OpeningWhereNothingCanBeWrittenGivesNull) {
    EXPECT_FALSE(open("no/such/report"));
    std::string name;
    EXPECT_TRUE(embedded::take_write_failure(&name));
    EXPECT_EQ(name, scratch.file("no/such/report"));
    EXPECT_FALSE(embedded::take_write_failure(nullptr));
    std::filesystem::create_directory(scratch.file("directory"));
    EXPECT_FALSE(open("directory"));
}

TEST_F(Files, AFailureOnTheWayLeavesTheOldFileAndNothingBeside) {
    {
        const Qb::Ptr<stream> file = open("report");
        ASSERT_TRUE(file);
        file->write("x", 1);
        std::filesystem::create_directory(scratch.file("report"));
    }
    EXPECT_TRUE(embedded::take_write_failure(nullptr));
    EXPECT_EQ(scratch.count_files(), 1U);
}

TEST_F(Files, ADeviceIsWrittenStraightAndItsFailureSeen) {
    if (!std::filesystem::is_character_file("/dev/full")) GTEST_SKIP() << "no device that is always full";
    std::string why;
    EXPECT_FALSE(embedded::write_file_whole("/dev/full", "text", &why));
    EXPECT_FALSE(why.empty());
    EXPECT_TRUE(embedded::write_file_whole("/dev/null", "text", nullptr));
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    std::string name;
    EXPECT_TRUE(embedded::take_write_failure(&name));
    EXPECT_EQ(name, "/dev/full");
}

TEST_F(Files, ALinkStaysALink) {
    put_bytes(scratch.file("real"), "old");
    std::filesystem::create_symlink("real", scratch.file("link"));
    EXPECT_TRUE(embedded::write_file_whole(scratch.file("link"), "new", nullptr));
    EXPECT_TRUE(std::filesystem::is_symlink(scratch.file("link")));
    EXPECT_EQ(bytes_of_file(scratch.file("real")), "new");
}

TEST_F(Files, ReadingTellsWhyItFailed) {
    std::string bytes = "left over";
    std::string why;
    EXPECT_FALSE(embedded::read_file(scratch.file("none"), &bytes, &why));
    EXPECT_FALSE(why.empty());
    EXPECT_TRUE(bytes.empty());
    EXPECT_FALSE(embedded::read_file(scratch.path(), &bytes, nullptr));
    put_bytes(scratch.file("some"), std::string("a\0b", 3));
    EXPECT_TRUE(embedded::read_file(scratch.file("some"), &bytes, nullptr));
    EXPECT_EQ(bytes, std::string("a\0b", 3));
}

TEST_F(Files, RemovingTakesAFileAndPassesOverWhatIsNotThere) {
    put_bytes(scratch.file("report"), "old");
    OS()->files().remove(wide(scratch.file("report")));
    OS()->files().remove(wide(scratch.file("report")));
    std::filesystem::create_directory(scratch.file("directory"));
    OS()->files().remove(wide(scratch.file("directory")));
    EXPECT_EQ(scratch.count_files(), 1U);
}

class NoFiles : public file_service {
public:
    void remove(LightweightString<wchar_t>) override {}
    Qb::Ptr<stream> open(LightweightString<wchar_t>, int, int, int, int) override { return nullptr; }
};

class SystemWithoutFiles : public operating_system {
public:
    memory_service& memory() override { return embedded::standard_operating_system().memory(); }
    file_service& files() override { return files_; }
    count_service& counts() override { return embedded::standard_operating_system().counts(); }

private:
    NoFiles files_;
};

TEST_F(Files, OtherServicesCanTakeTheirPlaceAndGiveItBack) {
    SystemWithoutFiles without;
    embedded::use_operating_system(&without);
    EXPECT_EQ(OS(), &without);
    EXPECT_FALSE(open("report"));
    embedded::use_operating_system(nullptr);
    EXPECT_EQ(OS(), &embedded::standard_operating_system());
    EXPECT_TRUE(open("report"));
}

const LightweightString<char> made_before_main("early text");

TEST(Services, AreThereBeforeMain) { EXPECT_STREQ(made_before_main.c_str(), "early text"); }

TEST(Services, ABlockOfNoBytesIsABlock) {
    void* block = OS()->memory().allocate(0);
    EXPECT_NE(block, nullptr);
    OS()->memory().free(block);
    OS()->memory().free(nullptr);
}

TEST(Services, CountsGoUpAndDown) {
    use_count count;
    OS()->counts().add_ref(count);
    OS()->counts().add_ref(count);
    EXPECT_EQ(OS()->counts().release_ref(count), 1);
    EXPECT_EQ(OS()->counts().release_ref(count), 0);
}

} // namespace
