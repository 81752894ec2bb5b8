// "quillbrook log scan" from outside, and the way from scans to key numbers.

#include "tests/support/scan_writer.h"
#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

#include <filesystem>

using namespace scan_writer;
using testing::HasSubstr;
using testing::Not;

namespace {

class LogScan : public ToolTest {
protected:
    /// Frames of 35mm with 4 perforations from a key number and a time on, at 24 frames a second.
    void scan(const std::string& roll, int count, int frame, int frames, int minutes, int first_file = 1) {
        std::filesystem::create_directories(path("scans/" + roll));
        for (int i = 0; i < frames; ++i) {
            const int perforation = count * 64 + (frame + i) * 4;
            Dpx header;
            header.count = digits(perforation / 64, 4);
            header.offset = digits(perforation % 64, 2);
            header.timecode = coded_time(1, minutes, i / 24, i % 24);
            write("scans/" + roll + "/" + roll + "." + digits(first_file + i, 6) + ".dpx", bytes_of(header));
        }
    }
};

TEST_F(LogScan, FoldersBecomeATable) {
    scan("A012", 5867, 14, 48, 0);
    scan("B003", 1200, 0, 24, 10);
    const ToolResult result = expect_done({"log", "scan", "scans", "-o", "show.RDB", "--letters", "0274=KJ"});
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.progress, "show.RDB: 2 rows\n");
    EXPECT_EQ(expect_done({"log", "show", "show.RDB"}).out, R"(show.RDB: 2 rows
  line  name  reel  start        end          duration     cam roll  key number       notes                     rate   film
    12  A012  A012  01:00:00:00  01:00:02:00  00:00:02:00  A012      KJ2910105867+14  A012.[000001-000048].dpx  24fps  35mm-4p
    13  B003  B003  01:10:00:00  01:10:01:00  00:00:01:00  B003      KJ2910101200+00  B003.[000001-000024].dpx  24fps  35mm-4p
)");
    EXPECT_EQ(expect_done({"log", "check", "show.RDB"}).out, "2 rows, nothing wrong\n");
}

TEST_F(LogScan, CommonRulesOfOutputsHold) {
    scan("A012", 5867, 14, 4, 0);
    const std::vector<std::string> line{"log", "scan", "scans/A012", "-o", "show.RDB", "--letters", "kj"};
    expect_done(line);
    expect_failure(line, 1, "--overwrite");
    std::vector<std::string> again = line;
    again.push_back("--overwrite");
    expect_done(again);
    expect_failure({"log", "scan", "none", "-o", "x.RDB"}, 1, "none: isn't a folder");
    expect_failure({"log", "scan", "show.RDB", "-o", "x.RDB"}, 1, "show.RDB: isn't a folder");
    expect_failure({"log", "scan", "scans", "-o", "scans/A012/A012.000001.dpx", "--overwrite"}, 1,
                   "has the name of a picture");
    std::filesystem::create_directory(path("empty"));
    expect_failure({"log", "scan", "empty", "-o", "x.RDB"}, 1, "empty: holds no DPX or OpenEXR pictures");
}

TEST_F(LogScan, LettersAreCheckedBeforeAnythingIsRead) {
    for (const char* letters : {"K", "K1", "KJL", "274=KJ", "02x4=KJ", "0274=", "0274=K", ""})
        expect_failure({"log", "scan", "scans", "-o", "x.RDB", "--letters", letters}, 2, "--letters: \"");
}

TEST_F(LogScan, WarningsAreForWhoWantsThem) {
    scan("A012", 5867, 14, 4, 0);
    scan("A012", 5900, 0, 4, 1, 101);
    const std::vector<std::string> line{"log", "scan", "scans", "-o", "-"};
    EXPECT_THAT(run(line).err,
                HasSubstr("warning: scans/A012/A012.000101.dpx: the 96 frames before it are missing; a row "
                          "begins here\n"));
    std::vector<std::string> quiet = line;
    quiet.push_back("--quiet");
    EXPECT_EQ(run(quiet).err, "");
}

// Roll A012 begins with 5867+14 at 01:00:00:00, roll B003 with 1200+00 at 01:10:00:00; 16 frames are a count.
//
//     event  1   A012  01:00:01:00 to 01:00:01:12    frames 24 to 35:   5867+14 and 24 is 5869+06, the last one 5870+01
//     event  2   B003  01:10:00:06 to 01:10:00:20    frames 6 to 19:    1200+06, the last one 1201+03
TEST_F(LogScan, ScansGiveAnEditListItsKeyNumbers) {
    scan("A012", 5867, 14, 48, 0);
    scan("B003", 1200, 0, 24, 10);
    write("reel.edl", "TITLE: REEL\nFCM: NON-DROP FRAME\n\n"
                      "001  A012  V  C  01:00:01:00 01:00:01:12 10:00:00:00 10:00:00:12\n"
                      "002  B003  V  C  01:10:00:06 01:10:00:20 10:00:00:12 10:00:01:02\n");
    expect_done({"log", "scan", "scans", "-o", "show.RDB", "--letters", "0274=KJ"});
    const ToolResult listed = expect_done({"cutlist", "reel.edl", "--rate", "24", "--log", "show.RDB", "-o", "reel.txt",
                                           "--neg-cut", "--frames", "--prove"});
    EXPECT_THAT(listed.err, Not(HasSubstr("wrong")));
    const std::string report = read("reel.txt");
    for (const char* number : {"5869+06", "5870+01", "1200+06", "1201+03"})
        EXPECT_THAT(report, HasSubstr(number));

    expect_done({"order", "reel.edl", "--rate", "24", "--log", "show.RDB", "--handles", "0", "-o", "pull.txt", "--json",
                 "pull.json"});
    const std::string order = read("pull.json");
    // 5869 * 16 + 6, and 11 frames on; 1200 * 16 + 6, and 13 on.
    for (const char* place :
         {"\"first_frame\": 93910", "\"last_frame\": 93921", "\"first_frame\": 19206", "\"last_frame\": 19219"})
        EXPECT_THAT(order, HasSubstr(place));
}

} // namespace
