// "quillbrook cutlist" and "quillbrook print" from outside.

#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

class Cutlist : public ToolTest {
protected:
    void SetUp() override { write_edit("cut.otio"); }

    /// The job failed: status 1 and one line that holds `text`; only `left` stands in the folder.
    void expect_failure(const std::vector<std::string>& arguments, const std::string& text,
                        const std::vector<std::string>& left) {
        const ToolResult result = run(arguments);
        EXPECT_EQ(result.status, 1) << result.out;
        EXPECT_THAT(result.err, HasSubstr(text));
        EXPECT_EQ(result.err.find('\n'), result.err.size() - 1) << result.err;
        EXPECT_EQ(names(), left);
    }
    void expect_done(const std::vector<std::string>& arguments) {
        const ToolResult result = run(arguments);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.err, "");
    }
};

class Print : public Cutlist {
protected:
    void SetUp() override {
        Cutlist::SetUp();
        expect_done({"cutlist", "cut.otio", "-o", "cut.txt"});
        expect_done({"cutlist", "cut.otio", "-o", "sound.txt", "--channel", "A1"});
    }
};

TEST_F(Cutlist, MakesTheReportAndTheTableBesideIt) {
    expect_done({"cutlist", "cut.otio", "-o", "cut.txt"});
    EXPECT_THAT(names(), ElementsAre("cut.cdb", "cut.otio", "cut.txt"));
    EXPECT_THAT(read("cut.cdb"), StartsWith("%recdb 2\n"));
    EXPECT_THAT(read("cut.cdb"), HasSubstr("\nproject_name=Heron\nedit_name=Two shots\n"));
    EXPECT_THAT(read("cut.cdb"), HasSubstr("\ncutlist_type=cutting-copy\nchannel=V00\n"));
    EXPECT_THAT(read("cut.cdb"), HasSubstr("KJ123456"));
    EXPECT_THAT(read("cut.txt"), HasSubstr("TWO SHOTS"));
    EXPECT_THAT(read("cut.txt"), HasSubstr("CUTTING-COPY version 9"));
}

TEST_F(Cutlist, TellsProgressOnStandardError) {
    const ToolResult result = run({"cutlist", "cut.otio", "-o", "cut.txt"});
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.progress, HasSubstr("Analysing track V1\n"));
    EXPECT_EQ(result.err, "");
}

TEST_F(Cutlist, WarnsOfWhatADerenderedCopyLacks) {
    const auto time = [](int frames) {
        return R"({"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": )" + std::to_string(frames) + "}";
    };
    const auto clip = [&](int frames, const std::string& more) {
        return R"({"OTIO_SCHEMA": "Clip.1", "name": "R", "source_range": {"OTIO_SCHEMA": "TimeRange.1", "start_time": )" +
               time(0) + R"(, "duration": )" + time(frames) + "}, " + more + "}";
    };
    const std::string origin = R"({"OTIO_SCHEMA": "Track.1", "children": [)" +
                               clip(24, R"("media_reference": {"OTIO_SCHEMA": "ExternalReference.1"})") + "]}";
    write("r.otio", clip(48, R"("metadata": {"quillbrook": {"rendered": true, "rendered_from": )" + origin + "}}"));
    const ToolResult result = run({"cutlist", "r.otio", "-o", "r.txt"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.err, testing::StartsWith("doubt: reading: r.otio: \"R\": what it was rendered from is too short "
                                                "for it: a gap stands for what lacks; "));
    EXPECT_THAT(result.err, testing::HasSubstr("doubt: no-key: ")) << "the copy's shot is what is listed";
    EXPECT_EQ(run({"cutlist", "r.otio", "-o", "q.txt", "--quiet"}).err, "");
    EXPECT_THAT(
        run({"cutlist", "r.otio", "-o", "n.txt", "--config", "allow_auto_unrender=0"}).err,
        testing::StartsWith("doubt: no-film: r.otio: \"R\": event 1 of V1 at frame 0 (00:00:00:00): 48 frames "));
}

TEST_F(Cutlist, QuietSaysNothing) {
    const ToolResult result = run({"cutlist", "cut.otio", "-o", "cut.txt", "--quiet"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
}

TEST_F(Cutlist, SoundChannelIsChosenByName) {
    expect_done({"cutlist", "cut.otio", "-o", "cut.txt", "--channel", "A1"});
    EXPECT_THAT(read("cut.cdb"), HasSubstr("\nchannel=A01\n"));
    EXPECT_THAT(read("cut.txt"), HasSubstr("SOUND TRACK 1"));
}

TEST_F(Cutlist, NegCutAndFramesReachTheReport) {
    expect_done({"cutlist", "cut.otio", "-o", "feet.txt"});
    expect_done({"cutlist", "cut.otio", "-o", "neg.txt", "--neg-cut", "--frames"});
    EXPECT_THAT(read("neg.cdb"), HasSubstr("\ncutlist_type=neg-cut\n"));
    EXPECT_THAT(read("neg.txt"), HasSubstr("NEG-CUT version 9"));
    EXPECT_THAT(read("feet.txt"), HasSubstr("0005+04"));
    EXPECT_THAT(read("neg.txt"), HasSubstr("000084"));
}

TEST_F(Cutlist, SetWinsOverAllElse) {
    expect_done({"cutlist", "cut.otio", "-o", "cut.txt", "--neg-cut", "--set", "pull_match_assembly=1", "--set",
                 "proj_name=Egret", "--set", "pgm_id=R7"});
    EXPECT_THAT(read("cut.cdb"), HasSubstr("\nproject_name=Egret\n"));
    EXPECT_THAT(read("cut.cdb"), HasSubstr("\ncutlist_type=cutting-copy\n"));
    EXPECT_THAT(read("cut.txt"), HasSubstr("(R7)"));
}

TEST_F(Cutlist, LongTextOptionsAreCut) {
    expect_done({"cutlist", "cut.otio", "-o", "cut.txt", "--set", "proj_name=" + std::string(500, 'x')});
    EXPECT_THAT(read("cut.cdb"), HasSubstr("\nproject_name=" + std::string(63, 'x') + '\n'));
}

TEST_F(Cutlist, RateOfTheLineWinsOverTheFile) {
    expect_done({"cutlist", "cut.otio", "-o", "cut.txt", "--rate", "23.98"});
    EXPECT_THAT(read("cut.cdb"), HasSubstr("\nedit label_std=23.976fps\n"));
}

TEST_F(Cutlist, MissingEditIsNamed) { expect_failure({"cutlist", "no.otio", "-o", "a.txt"}, "no.otio", {"cut.otio"}); }

TEST_F(Cutlist, BrokenEditLeavesNothingBehind) {
    write("cut.otio", R"({"OTIO_SCHEMA":"Timeline.1", "tracks": )");
    expect_failure({"cutlist", "cut.otio", "-o", "a.txt"}, "cut.otio", {"cut.otio"});
}

TEST_F(Cutlist, OtherKindsOfFilesAreToldApart) {
    write("cut.doc", "TITLE: X\n");
    expect_failure({"cutlist", "cut.doc", "-o", "a.txt"}, ".otio", {"cut.doc", "cut.otio"});
}

TEST_F(Cutlist, MissingChannelIsAnError) {
    expect_failure({"cutlist", "cut.otio", "-o", "a.txt", "--channel", "V2", "--quiet"},
                   "error: Specified source track not present (V2 of cut.otio)", {"cut.otio"});
}

TEST_F(Cutlist, ReportIsReplacedOnlyWhenAllowed) {
    write("cut.txt", "mine\n");
    expect_failure({"cutlist", "cut.otio", "-o", "cut.txt"}, "cut.txt", {"cut.otio", "cut.txt"});
    EXPECT_EQ(read("cut.txt"), "mine\n");
    expect_done({"cutlist", "cut.otio", "-o", "cut.txt", "--overwrite"});
    EXPECT_THAT(read("cut.txt"), HasSubstr("TWO SHOTS"));
}

TEST_F(Cutlist, FolderOfTheReportMustBeThere) {
    expect_failure({"cutlist", "cut.otio", "-o", "lists/cut.txt"}, "lists/: no such directory", {"cut.otio"});
    expect_failure({"cutlist", "cut.otio", "-o", "cut.otio/cut.txt"}, "cut.otio/: not a directory", {"cut.otio"});
}

TEST_F(Cutlist, FolderWithoutPermissionIsRefused) {
    if (geteuid() == 0) GTEST_SKIP() << "root may write everywhere";
    std::filesystem::create_directory(path("lists"));
    std::filesystem::permissions(path("lists"), std::filesystem::perms::owner_read);
    expect_failure({"cutlist", "cut.otio", "-o", "lists/cut.txt"}, "lists/: ", {"cut.otio", "lists"});
}

TEST_F(Cutlist, UnwritablePlaceLeavesNoHalfFile) {
    const ToolResult result = run({"cutlist", "cut.otio", "-o", "/proc/quillbrook/cut.txt"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("/proc/quillbrook/"));
    EXPECT_THAT(names(), ElementsAre("cut.otio"));
}

TEST_F(Cutlist, FilesOfTheRunMustDiffer) {
    const std::vector<std::string> only{"cut.otio"};
    expect_failure({"cutlist", "cut.otio", "-o", "cut.cdb"}, "cut.cdb", only);
    expect_failure({"cutlist", "cut.otio", "-o", "./cut.otio", "--overwrite"}, "cut.otio", only);
    expect_failure({"cutlist", "cut.otio", "-o", "./"}, "./", only);
}

TEST_F(Cutlist, SameBytesWhateverTheLocale) {
    expect_done({"cutlist", "cut.otio", "-o", "a.txt"});
    const ToolResult other = run({"cutlist", "cut.otio", "-o", "b.txt"}, {{"LC_ALL", "C.UTF-8"}, {"LANG", "de_DE"}});
    EXPECT_EQ(other.status, 0);
    EXPECT_EQ(read("a.txt"), read("b.txt"));
    EXPECT_EQ(read("a.cdb"), read("b.cdb"));
}

TEST_F(Cutlist, TimeZoneMovesTheDatesAndNothingElse) {
    expect_done({"cutlist", "cut.otio", "-o", "a.txt"});
    EXPECT_THAT(read("a.cdb"), HasSubstr("edit_date=2 January 1970 00:00:00\n"));
    run({"cutlist", "cut.otio", "-o", "b.txt"}, {{"TZ", "XYZ-3"}});
    run({"cutlist", "cut.otio", "-o", "c.txt"}, {{"TZ", "XYZ-3"}});
    EXPECT_THAT(read("b.cdb"), HasSubstr("edit_date=2 January 1970 03:00:00\n"));
    EXPECT_EQ(read("b.txt"), read("c.txt"));
    const auto records = [](const std::string& table) {
        const std::size_t first = table.find("\n\n");
        return table.substr(first, table.rfind("%end ") - first);
    };
    EXPECT_EQ(records(read("a.cdb")), records(read("b.cdb")));
}

TEST_F(Cutlist, NamesBeyondAsciiPassThrough) {
    write_edit("Schnitt ä.otio");
    expect_done({"cutlist", "Schnitt ä.otio", "-o", "Länge.txt"});
    EXPECT_TRUE(exists("Länge.txt"));
    EXPECT_TRUE(exists("Länge.cdb"));
}

TEST_F(Print, ReadsATableThatWasCutOffWithForceAlone) {
    const std::string table = read("cut.cdb");
    write("short.cdb", table.substr(0, table.rfind("%end ")));
    const ToolResult refused = run({"print", "short.cdb", "-o", "a.txt"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.err, "quillbrook: short.cdb: cut off behind row 2\n");
    EXPECT_FALSE(exists("a.txt"));
    const ToolResult forced = run({"print", "short.cdb", "-o", "a.txt", "--force"});
    EXPECT_EQ(forced.status, 0);
    EXPECT_EQ(forced.err, "warning: short.cdb: cut off behind row 2; read as far as it goes\n");
    EXPECT_EQ(read("a.txt"), read("cut.txt"));
}

TEST_F(Print, RepeatsTheReportOfTheRun) {
    expect_done({"print", "cut.cdb", "-o", "again.txt"});
    EXPECT_EQ(read("again.txt"), read("cut.txt"));
}

TEST_F(Print, SetChoosesLists) {
    expect_done({"print", "cut.cdb", "-o", "none.txt", "--set", "some_lists=1", "--set", "roll_list=0", "--set",
                 "pull_list=0", "--set", "assembly_list=0", "--set", "optical_list=0"});
    EXPECT_LT(read("none.txt").size(), read("cut.txt").size() / 4);
}

TEST_F(Print, FormAndKindComeFromTheTable) {
    expect_done({"print", "sound.cdb", "-o", "sound-again.txt"});
    EXPECT_EQ(read("sound-again.txt"), read("sound.txt"));
    expect_done({"cutlist", "cut.otio", "-o", "neg.txt", "--neg-cut"});
    expect_done({"print", "neg.cdb", "-o", "neg-again.txt"});
    EXPECT_EQ(read("neg-again.txt"), read("neg.txt"));
    EXPECT_THAT(read("neg.txt"), HasSubstr("NEG-CUT version 9"));
}

TEST_F(Print, FramesCanBeAskedFor) {
    expect_done({"cutlist", "cut.otio", "-o", "frames.txt", "--frames"});
    expect_done({"print", "frames.cdb", "-o", "again.txt", "--frames"});
    EXPECT_EQ(read("again.txt"), read("frames.txt"));
}

TEST_F(Print, ExplicitOptionsWinOverTheTable) {
    expect_done({"print", "cut.cdb", "-o", "neg.txt", "--set", "pull_match_assembly=0"});
    EXPECT_THAT(read("neg.txt"), HasSubstr("NEG-CUT version 9"));
    const ToolResult warned = run({"print", "sound.cdb", "-o", "picture.txt", "--set", "chan_type=1"});
    EXPECT_EQ(warned.status, 0);
    EXPECT_EQ(warned.err, "warning: sound.cdb lists a sound channel and is printed as picture\n");
    EXPECT_THAT(read("picture.txt"), HasSubstr("PICTURE TRACK"));
    const ToolResult quiet =
        run({"print", "sound.cdb", "-o", "picture.txt", "--set", "chan_type=1", "--overwrite", "--quiet"});
    EXPECT_EQ(quiet.err, "");
}

TEST_F(Print, WrongFilesAreToldForWhatTheyAre) {
    const auto told = [this](const std::string& file) { return run({"print", file, "-o", "a.txt"}); };
    write("broken.cdb", "not a table\n");
    EXPECT_EQ(told("broken.cdb").err,
              "quillbrook: broken.cdb: is text of no kind that is known; a cutlist table (.cdb) is wanted\n");
    EXPECT_THAT(told("cut.otio").err, HasSubstr("cut.otio: is an OpenTimelineIO edit; \"quillbrook cutlist\" takes"));
    EXPECT_THAT(told("cut.txt").err, HasSubstr("cut.txt: is a printed report; "));
    write("mark.cdb", "\xEF\xBB\xBF" + read("cut.cdb"));
    EXPECT_THAT(told("mark.cdb").err, HasSubstr("mark.cdb: is a table behind a byte order mark"));
    EXPECT_THAT(told("no.cdb").err, StartsWith("quillbrook: no.cdb: No such file"));
    EXPECT_EQ(told("no.cdb").status, 1);
    EXPECT_FALSE(exists("a.txt"));
}

TEST_F(Print, NeverReplacesItsTable) {
    const std::string before = read("cut.cdb");
    const ToolResult result = run({"print", "cut.cdb", "-o", "cut.cdb", "--overwrite"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(read("cut.cdb"), before);
    EXPECT_EQ(run({"print", "cut.cdb", "-o", "cut.txt"}).status, 1);
}

TEST_F(Cutlist, ShowTellsWhatTheLibraryWillSee) {
    const ToolResult result = run({"edit", "show", "cut.otio"});
    EXPECT_EQ(result.status, 0) << result.err;
    for (const char* text : {"Edit \"Two shots\", 24fps, from 01:00:00:00, project \"Heron\"", "V1: picture, track 0",
                             "A1: sound, track 1", "A001", "KJ1234560100+10", "KJ6543210201+04"})
        EXPECT_THAT(result.out, HasSubstr(text));
    EXPECT_THAT(names(), ElementsAre("cut.otio"));
}

} // namespace
