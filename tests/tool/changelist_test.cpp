// "quillbrook changelist" from outside: its lists, its options, and how it fails.

#include "tests/tool/cut_table.h"
#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

const CutShot lamp{"KJ123456", 1600, 48, "Lamp", "12", "3"};
const CutShot wick{"KJ654321", 3200, 36, "Wick", "12A", "1"};
const CutShot street{"KN111111", 160, 24, "Street", "13", "2"};
const CutShot harbour{"KN222222", 320, 20, "Harbour", "14", "5"};

CutShot shortened(CutShot shot, int length) {
    shot.length = length;
    return shot;
}

class Changelist : public ToolTest {
protected:
    // The lamp loses its tail, street goes ahead of wick, and the harbour is new.
    void SetUp() override {
        write("old.cdb", cut_table({lamp, wick, street}));
        write("new.cdb", cut_table({shortened(lamp, 40), street, wick, harbour}));
    }

    std::vector<std::string> line(const std::vector<std::string>& more = {}) const {
        std::vector<std::string> arguments{"changelist", "--old", "old.cdb", "--new", "new.cdb", "-o", "out.txt"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return arguments;
    }
    ToolResult expect_done(const std::vector<std::string>& arguments) {
        const ToolResult result = run(arguments);
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.err, "");
        return result;
    }
    /// The report of a run of its own with more options.
    std::string listed(const std::vector<std::string>& more = {}) {
        std::vector<std::string> arguments = line(more);
        arguments.push_back("--overwrite");
        expect_done(arguments);
        return read("out.txt");
    }
    /// The job failed with one line, and no file was made or changed.
    void expect_failure(const std::vector<std::string>& arguments, const std::string& text) {
        const std::vector<std::string> before = names();
        const std::string old_bytes = read("old.cdb"), new_bytes = read("new.cdb");
        const ToolResult result = run(arguments);
        EXPECT_EQ(result.status, 1) << result.out;
        EXPECT_THAT(result.err, HasSubstr(text));
        EXPECT_EQ(result.err.find('\n'), result.err.size() - 1) << result.err;
        EXPECT_EQ(names(), before);
        EXPECT_EQ(read("old.cdb"), old_bytes);
        EXPECT_EQ(read("new.cdb"), new_bytes);
    }
    void expect_wrong(const std::vector<std::string>& arguments, const std::string& text) {
        const ToolResult result = run(arguments);
        EXPECT_EQ(result.status, 2) << result.out;
        EXPECT_THAT(result.err, StartsWith("quillbrook: "));
        EXPECT_THAT(result.err, HasSubstr(text));
        EXPECT_EQ(result.err.find('\n'), result.err.size() - 1) << result.err;
        EXPECT_FALSE(exists("out.txt"));
    }
};

struct ListTitle {
    const char* title;
    char letter;
};

constexpr ListTitle list_titles[] = {{"SUMMARY OF CHANGES:", 's'},
                                     {"NEW MATERIAL:", 'n'},
                                     {"DETAILED LIST OF CHANGES:", 'c'},
                                     {"TRANSITIONS IN NEW SEQUENCE:", 't'},
                                     {"BENCH LIST", 'b'}};

/// The lists of a report by letter, in their order on the page.
std::string lists_in(const std::string& report) {
    std::map<std::size_t, char> found;
    for (const ListTitle& list : list_titles)
        if (const std::size_t at = report.find(list.title); at != std::string::npos) found[at] = list.letter;
    std::string letters;
    for (const auto& [at, letter] : found)
        letters += letter;
    return letters;
}

TEST_F(Changelist, PrintsFourListsBehindTheBanner) {
    const ToolResult result = expect_done(line());
    EXPECT_THAT(names(), ElementsAre("new.cdb", "old.cdb", "out.txt"));
    EXPECT_THAT(read("out.txt"), HasSubstr("QUILLBROOK CHANGE LIST"));
    EXPECT_EQ(lists_in(read("out.txt")), "snct");
    EXPECT_THAT(result.progress, HasSubstr("old.cdb"));
    EXPECT_THAT(result.out, Not(HasSubstr("proved")));
}

TEST_F(Changelist, TellsWhatToDo) {
    const std::string report = listed();
    for (const char* text : {"DELETE SHOT(s)", "MOVE SHOT(s)", "INSERT SHOT(s)", "Harbour", "KN2222220020+00"})
        EXPECT_THAT(report, HasSubstr(text));
}

TEST_F(Changelist, ListsAreChosenByWord) {
    EXPECT_EQ(lists_in(listed({"--lists", "summary"})), "s");
    EXPECT_EQ(lists_in(listed({"--lists", "changes,new"})), "nc");
    EXPECT_EQ(lists_in(listed({"--lists", "transitions", "--lists", "summary"})), "st");
    EXPECT_EQ(lists_in(listed({"--lists", "bench"})), "b");
    EXPECT_EQ(lists_in(listed({"--lists", "summary,new,changes,transitions,bench"})), "snctb");
}

TEST_F(Changelist, ACostIsOfTheBenchListAndProved) {
    const ToolResult moves = run(line({"--lists", "summary", "--cost", "moves"}));
    EXPECT_EQ(moves.status, 0);
    EXPECT_EQ(lists_in(read("out.txt")), "sb");
    EXPECT_THAT(read("out.txt"), HasSubstr("FEWEST MOVES        THIS LIST    DELETE AND INSERT"));
    EXPECT_THAT(moves.out, HasSubstr("bench: proved, 4 steps\nbench: 3 moves, 4 by deleting and inserting\n"));
    EXPECT_THAT(moves.out, Not(HasSubstr("changes: ")));
    const ToolResult frames = run(line({"--cost", "frames", "--prove", "--overwrite"}));
    EXPECT_THAT(frames.out, HasSubstr("changes: proved"));
    EXPECT_THAT(frames.out, HasSubstr("bench: 52 frames, 180 by deleting and inserting\n"));
    EXPECT_THAT(listed({"--lists", "bench"}), Not(HasSubstr("DELETE AND INSERT")));
}

// 300 uses of a take's first 30 frames. Two shots go and each fifth loses a frame, which is what the bench list does.
TEST_F(Changelist, SaysWhyTheDetailedListOfReusedFilmIsLong) {
    std::vector<CutShot> shots;
    for (int i = 0; i < 300; ++i)
        shots.push_back({"KJ123456", 1600 + i * 7 % 30, 8 + i % 3, "Lamp", "12", "3"});
    write("old.cdb", cut_table(shots));
    shots.erase(shots.begin() + 100, shots.begin() + 102);
    for (std::size_t i = 0; i < shots.size(); i += 5)
        --shots[i].length;
    write("new.cdb", cut_table(shots));
    const std::string why = "warning: out.txt: the detailed list has 1539 steps, as film that is used again falls into "
                            "pieces there; the bench list needs 61\n";
    EXPECT_EQ(run(line()).err, why);
    EXPECT_EQ(run(line({"--overwrite", "--lists", "bench"})).err, "");
    EXPECT_EQ(run(line({"--overwrite", "--quiet"})).err, "");
}

TEST_F(Changelist, SetWinsOverAllElse) {
    EXPECT_EQ(lists_in(listed({"--lists", "summary", "--set", "chg_verbose_list=1"})), "sc");
    EXPECT_EQ(lists_in(listed({"--set", "chg_summary_list=0"})), "nct");
    EXPECT_EQ(lists_in(listed({"--set", "chg_bench_list=1"})), "snctb");
    EXPECT_EQ(listed({"--units", "feet", "--set", "chg_lengthunits=2"}), listed({"--units", "timecode"}));
    EXPECT_THAT(listed({"--channel", "V3", "--set", "CHAN_NUM=4"}), HasSubstr("Track: V5"));
}

TEST_F(Changelist, UnitsAreFramesFeetOrTimecode) {
    const std::vector<std::string> only{"--lists", "summary", "--units"};
    const auto in = [&](const char* units) { return listed({only[0], only[1], only[2], units}); };
    EXPECT_THAT(in("frames"), HasSubstr("0000108"));
    EXPECT_THAT(in("feet"), HasSubstr("0006+12"));
    EXPECT_THAT(in("timecode"), HasSubstr("00:00:04:12"));
    EXPECT_EQ(in("frames"), listed({"--lists", "summary"}));
}

TEST_F(Changelist, KeyColumnsCanBeLeftOut) {
    EXPECT_THAT(listed(), HasSubstr("KEY"));
    EXPECT_THAT(listed({"--no-keys", "--lists", "new,changes"}), Not(HasSubstr("KN222222")));
}

TEST_F(Changelist, SceneAndTakeStandInPlaceOfNames) {
    EXPECT_THAT(listed(), AllOf(HasSubstr("Shot Name"), HasSubstr("Harbour")));
    const std::string report = listed({"--scene-take", "--lists", "new"});
    EXPECT_THAT(report, AllOf(HasSubstr("Scene"), HasSubstr("Take"), Not(HasSubstr("Harbour"))));
}

TEST_F(Changelist, TrackIsTheTablesOrTheNamedOne) {
    EXPECT_THAT(listed(), HasSubstr("Track: V1"));
    EXPECT_THAT(listed({"--channel", "V2"}), HasSubstr("Track: V2"));
    EXPECT_THAT(listed({"--channel", "a3"}), HasSubstr("Track: A3"));
    write("old.cdb", cut_table({lamp, wick}, {{"channel", "A02"}}));
    write("new.cdb", cut_table({wick, lamp}, {{"channel", "A02"}}));
    const std::string sound = listed();
    EXPECT_THAT(sound, HasSubstr("Track: A1"));
    EXPECT_EQ(lists_in(sound), "snc");
}

TEST_F(Changelist, ReelsOfOneSideMayBeFewer) {
    expect_done({"changelist", "--old", "old.cdb", "new.cdb", "old.cdb", "--new", "new.cdb", "-o", "a.txt"});
    expect_done({"changelist", "--old", "old.cdb", "--new", "new.cdb", "--new", "old.cdb", "-o", "b.txt"});
    EXPECT_EQ(lists_in(read("a.txt")), "snct");
    EXPECT_EQ(lists_in(read("b.txt")), "snct");
}

TEST_F(Changelist, TableMayHaveTheNameThatEndsASide) {
    write(".CDB", read("new.cdb"));
    expect_done({"changelist", "--old", "old.cdb", "--new", ".CDB", "-o", "a.txt"});
    EXPECT_EQ(read("a.txt"), listed());
}

TEST_F(Changelist, NamesComeFromEditsThatAreGiven) {
    write_edit("cut.otio");
    expect_done({"cutlist", "cut.otio", "-o", "cut.txt", "--quiet"});
    std::vector<std::string> arguments{"changelist", "--old", "old.cdb", "--new", "cut.cdb", "-o", "a.txt"};
    expect_done(arguments);
    EXPECT_THAT(read("a.txt"), Not(HasSubstr("Two shots")));
    arguments.back() = "b.txt";
    arguments.insert(arguments.end(), {"--edits", "cut.otio"});
    expect_done(arguments);
    EXPECT_THAT(read("b.txt"), HasSubstr("New Sequence: Two shots"));
    EXPECT_THAT(read("b.txt"), Not(HasSubstr("Old Sequence: Two shots")));
}

TEST_F(Changelist, EditsMustBeReadable) {
    write("cut.edl", "TITLE: Lists\n\n001  A001 V C 01:00:00:00 01:00:02:00 01:00:00:00 01:00:02:00\n");
    expect_failure(line({"--edits", "no.otio"}), "no.otio");
    expect_failure(line({"--edits", "old.cdb"}), "old.cdb");
    expect_failure(line({"--edits", "cut.edl"}), "--rate");
    EXPECT_EQ(run(line({"--edits", "cut.edl", "--rate", "24"})).status, 0);
}

TEST_F(Changelist, WorkingFilesAreKeptWhereAsked) {
    std::filesystem::create_directory(path("work"));
    expect_done(line({"--lists-dir", "work"}));
    EXPECT_THAT(names(),
                ElementsAre("new.cdb", "old.cdb", "out.txt", "work", "work/newcut__.chg", "work/oldcut__.chg"));
    EXPECT_EQ(read("out.txt"), listed());
    listed({"--lists-dir", "work/"});
}

TEST_F(Changelist, FolderOfWorkingFilesMustBeThere) {
    expect_failure(line({"--lists-dir", "work"}), "work: no such directory");
    expect_failure(line({"--lists-dir", "old.cdb"}), "old.cdb: not a directory");
    expect_failure(line({"--lists-dir", ""}), "no such directory");
    std::filesystem::create_directories(path("work/oldcut__.chg"));
    expect_failure(line({"--lists-dir", "work"}), "work/oldcut__.chg: is a directory");
}

TEST_F(Changelist, QuietSaysNothing) {
    const ToolResult result = expect_done(line({"--quiet"}));
    EXPECT_EQ(result.out, "");
}

TEST_F(Changelist, ReportIsReplacedOnlyWhenAllowed) {
    write("out.txt", "mine\n");
    expect_failure(line(), "out.txt: is there already; --overwrite replaces it");
    EXPECT_EQ(read("out.txt"), "mine\n");
    EXPECT_EQ(lists_in(listed()), "snct");
}

TEST_F(Changelist, MissingTablesAreNamedWithTheReason) {
    expect_failure({"changelist", "--old", "no.cdb", "--new", "new.cdb", "-o", "a.txt"},
                   "error: Unable to read CUTDB database no.cdb: No such file or directory\n");
    expect_failure({"changelist", "--old", "old.cdb", "--new", "new.cdb", "no.cdb", "-o", "a.txt"}, "no.cdb");
    std::filesystem::create_directory(path("folder.cdb"));
    expect_failure({"changelist", "--old", "folder.cdb", "--new", "new.cdb", "-o", "a.txt"},
                   "error: Unable to read CUTDB database folder.cdb: is a directory\n");
}

TEST_F(Changelist, ErrorsOfTheComparisonAreOneLine) {
    write("broken.cdb", "not a table\n");
    write("empty.cdb", cut_table({}));
    write("negative.cdb", cut_table({lamp}, {{"cutlist_type", "neg-cut"}}));
    write("sound.cdb", cut_table({lamp}, {{"channel", "A01"}}));
    write("narrow.cdb", cut_table({lamp}, {{"film label_std", "35mm-3p"}}));
    const auto against = [](const std::string& name) {
        return std::vector<std::string>{"changelist", "--old", "old.cdb", "--new", name, "-o", "a.txt", "--quiet"};
    };
    expect_failure(against("broken.cdb"),
                   "error: Unable to read CUTDB database broken.cdb: is text of no kind that is known\n");
    expect_failure(against("empty.cdb"), "error: Unable to read CUTDB database empty.cdb: holds no event\n");
    expect_failure(against("negative.cdb"),
                   "error: The cutlist was made for a NEG-CUT - must be a CUTTING-COPY: negative.cdb\n");
    expect_failure(against("sound.cdb"), "error: Cutlists were made for different picture/sound tracks: "
                                         "old.cdb (picture), sound.cdb (sound)\n");
    expect_failure(against("narrow.cdb"), "error: The old and new cutlists have different film standards! "
                                          "old.cdb (35mm-4p), narrow.cdb (35mm-3p)\n");
}

TEST_F(Changelist, ReelOfAnotherFilmOrVersionIsNamed) {
    write("narrow.cdb", cut_table({lamp}, {{"film label_std", "35mm-3p"}}));
    write("other.cdb", cut_table({lamp}, {{"CUTDB", "Rev 21"}}));
    expect_failure({"changelist", "--old", "old.cdb", "narrow.cdb", "--new", "new.cdb", "-o", "a.txt"},
                   "error: The cutlists have different film standards: old.cdb (35mm-4p), narrow.cdb (35mm-3p)\n");
    expect_failure({"changelist", "--old", "old.cdb", "--new", "new.cdb", "other.cdb", "-o", "a.txt"},
                   "error: Unable to read CUTDB database other.cdb: is a cutlist of another version, \"Rev 21\"\n");
}

// The comparison cuts an error that names a table at 127 bytes.
TEST_F(Changelist, LongPathsLeaveRoomForTheCause) {
    const std::string folder(70, 'f'), name = folder + '/' + std::string(60, 'n');
    std::filesystem::create_directory(path(folder));
    write(name + "1.cdb", read("new.cdb"));
    write(name + "2.cdb", cut_table({lamp}, {{"mixed_kc_standard", "1"}}));
    write(name + "3.cdb", "not a table\n");
    write(name + "4.cdb", cut_table({lamp}, {{"film label_std", "24fps"}}));
    write(name + "5.cdb", cut_table({lamp}, {{"film label_std", "48mm"}}));
    const auto with = [&](const char* reel) {
        return std::vector<std::string>{"changelist",   "--old",     "old.cdb", "--new",
                                        name + "1.cdb", name + reel, "-o",      "a.txt"};
    };
    expect_failure(with("2.cdb"),
                   "error: CUTDB <" + name + "2.cdb> has mixed film gauges - unsuitable for changelists\n");
    expect_failure(with("3.cdb"),
                   "error: Unable to read CUTDB database " + name + "3.cdb: is text of no kind that is known\n");
    expect_failure(with("4.cdb"),
                   "error: CUTDB <" + name + "4.cdb> - cannot currently generate changelists with this film gauge\n");
    expect_failure(with("5.cdb"), "error: CUTDB <" + name + "5.cdb> has an invalid film label standard\n");
    expect_failure(with("6.cdb"),
                   "error: Unable to read CUTDB database " + name + "6.cdb: No such file or directory\n");
    write(name + "7.cdb", cut_table({lamp}, {{"CUTDB", "Rev 21"}}));
    expect_failure(with("7.cdb"), "error: Unable to read CUTDB database " + name +
                                      "7.cdb: is a cutlist of another version, \"Rev 21\"\n");
}

TEST_F(Changelist, DevicesThatAreNoTablesAreNamed) {
    expect_failure({"changelist", "--old", "/dev/null", "--new", "new.cdb", "-o", "a.txt"}, "/dev/null: is empty");
    expect_failure({"print", "/dev/zero", "-o", "a.txt"}, "/dev/zero: is larger than 256 MiB");
}

TEST_F(Changelist, FilesMustHaveNames) {
    expect_failure({"changelist", "--old", "", "--new", "new.cdb", "-o", "a.txt"}, "quillbrook: \"\": names no file\n");
    expect_failure({"changelist", "--old", "old.cdb", "--new", "", "-o", "a.txt"}, "quillbrook: \"\": names no file\n");
    expect_failure(line({"--edits", ""}), "quillbrook: \"\": names no file\n");
    expect_failure(line({"--lists-dir", ""}), "quillbrook: \"\": no such directory\n");
}

TEST_F(Changelist, MissingFolderForWorkingFilesIsTold) {
    const ToolResult result = run(line(), {{"TMPDIR", path("none")}});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "quillbrook: " + path("none") + ": no such directory\n");
    EXPECT_FALSE(exists("out.txt"));
}

TEST_F(Changelist, ReportThatWasThereSurvivesAnError) {
    write("broken.cdb", "not a table\n");
    write("out.txt", "mine\n");
    expect_failure({"changelist", "--old", "old.cdb", "--new", "broken.cdb", "-o", "out.txt", "--overwrite"},
                   "broken.cdb");
    std::vector<std::string> none = line({"--overwrite"});
    for (const char* list : {"summary", "pull", "verbose", "dissolve"})
        none.insert(none.end(), {"--set", std::string("chg_") + list + "_list=0"});
    expect_failure(none, "error: No reports have been requested!\n");
    EXPECT_EQ(read("out.txt"), "mine\n");
}

TEST_F(Changelist, TooManyReelsAreRefused) {
    std::vector<std::string> arguments = line({"--old"});
    for (int reel = 0; reel < 50; ++reel)
        arguments.push_back("old.cdb");
    expect_failure(arguments, "error: maximum cutting-copy reel count exceeded\n");
}

TEST_F(Changelist, NoFileOfTheRunTakesThePlaceOfAnother) {
    const auto into = [](const std::string& report) {
        return std::vector<std::string>{"changelist",  "--old", "old.cdb", "--new",       "new.cdb",
                                        "--overwrite", "-o",    report,    "--lists-dir", "."};
    };
    const auto with = [&](std::vector<std::string> more) {
        std::vector<std::string> arguments = into("out.txt");
        arguments.insert(arguments.end(), more.begin(), more.end());
        return arguments;
    };
    write_edit("cut.otio");
    expect_failure(into("old.cdb"), "old.cdb: would replace");
    expect_failure(into("./new.cdb"), "new.cdb: would replace");
    expect_failure(into("oldcut__.chg"), "oldcut__.chg: the run makes another file of that name");
    expect_failure(with({"--json", "out.txt"}), "out.txt: the run makes another file of that name");
    expect_failure(with({"--json", "./newcut__.chg"}), "newcut__.chg");
    expect_failure(with({"--json", "new.cdb"}), "new.cdb: would replace");
    expect_failure(with({"--edits", "cut.otio", "--json", "cut.otio"}), "cut.otio: would replace");
    std::filesystem::rename(path("old.cdb"), path("oldcut__.chg"));
    expect_failure({"changelist", "--old", "oldcut__.chg", "--new", "new.cdb", "-o", "out.txt", "--lists-dir", "."},
                   "oldcut__.chg: would replace");
}

TEST_F(Changelist, PlacesThatCantBeWrittenAreRefused) {
    expect_failure({"changelist", "--old", "old.cdb", "--new", "new.cdb", "-o", "lists/a.txt"},
                   "lists/: no such directory");
    expect_failure({"changelist", "--old", "old.cdb", "--new", "new.cdb", "-o", "./"}, "-o ./: names no file");
    expect_failure({"changelist", "--old", "old.cdb", "--new", "new.cdb", "-o", ""}, "-o \"\": names no file");
    expect_failure(line({"--json", "lists/a.json"}), "lists/: no such directory");
    expect_failure(line({"--json", ""}), "--json \"\": names no file");
    std::filesystem::create_directory(path("folder"));
    expect_failure({"changelist", "--old", "old.cdb", "--new", "new.cdb", "-o", "folder"}, "folder: is a directory");
    expect_failure({"changelist", "--old", "old.cdb", "--new", "new.cdb", "-o", "/proc/quillbrook.txt"},
                   "/proc/quillbrook.txt");
}

TEST_F(Changelist, WrongLinesAreToldWhatIsWrong) {
    expect_wrong({"changelist"}, "--old");
    expect_wrong({"changelist", "--new", "new.cdb", "-o", "out.txt"}, "--old");
    expect_wrong({"changelist", "--old", "old.cdb", "-o", "out.txt"}, "--new");
    expect_wrong({"changelist", "--old", "old.cdb", "--new", "new.cdb"}, "-o");
    expect_wrong(line({"--units", "metres"}), "--units: \"metres\" is none of frames, feet, timecode");
    expect_wrong(line({"--cost", "feet"}), "--cost: \"feet\" is none of moves, splices, frames");
    for (const char* word : {"", "change", "Bench", "summary,"})
        expect_wrong(line({"--lists", word}), "is not one of summary, new, changes, transitions, bench");
    expect_wrong(line({"--channel", "X1"}), "--channel");
    expect_wrong(line({"--set", "pull_list=1"}), "\"pull_list\"");
    expect_wrong(line({"--set", "chg_pull_list=yes"}), "chg_pull_list: \"yes\"");
    expect_wrong(line({"--set", "chg_pull_list"}), "KEY=VALUE");
    expect_wrong(line({"--edits", "cut.otio", "--rate", "26"}), "--rate");
    expect_wrong(line({"extra.cdb", "--nothing"}), "--nothing");
    expect_wrong(line({"--nothing"}), "; see quillbrook changelist --help\n");
}

TEST_F(Changelist, HelpNamesEveryOption) {
    const ToolResult result = run({"changelist", "--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("Examples:\n  quillbrook changelist --old"));
    EXPECT_THAT(result.out, HasSubstr("Exit status: 0 done, 1 the job failed, 2 wrong usage, 3 "));
    for (const char* option :
         {"--old", "--new", "-o", "--overwrite", "--quiet", "--lists", "--units", "--no-keys", "--scene-take",
          "--channel", "--set", "--lists-dir", "--edits", "--prove", "--json", "--cost"})
        EXPECT_THAT(result.out, HasSubstr(option));
}

TEST_F(Changelist, SameBytesWhateverTheLocale) {
    const std::string plain = listed({"--json", "a.json"});
    const ToolResult other = run(line({"--json", "b.json", "--overwrite"}), {{"LC_ALL", "C.UTF-8"}, {"LANG", "de_DE"}});
    EXPECT_EQ(other.status, 0);
    EXPECT_EQ(read("out.txt"), plain);
    EXPECT_EQ(read("a.json"), read("b.json"));
}

} // namespace
