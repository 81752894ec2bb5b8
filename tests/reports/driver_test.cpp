#include "reports/report_context.h"
#include "reports/report_driver.h"
#include "tests/reports/list_fixture.h"
#include "tests/support/scratch_directory.h"

namespace {

class ReportDriver : public ListTest {
protected:
    ReportDriver() {
        add_header();
        table.set_filename(cdb_path);
        add(shot(1, 0, 16, "12A-3", "KJ1234560010+00", "KJ1234560011+00"));
    }

    void set(const char* name, const char* value) { table.add_param(name, value); }

    bool run(bool overwrite = false, const configb* block = nullptr) {
        EXPECT_EQ(table.save_text(), 0);
        return print_cutlist_reports(cdb_path, fromUTF8("report.txt", -1), logger, overwrite, block);
    }
    std::string text() const {
        const auto file = system.disc.files.find("report.txt");
        return file == system.disc.files.end() ? "<no file>" : plain_lines(file->second->bytes);
    }
    std::vector<std::string> titles() const {
        const std::string report_text = text();
        std::vector<std::string> found;
        for (const char* title : {"LIST OF ROLLS USED\n", "PULL LIST BY", " ASSEMBLY LIST\n",
                                  "TIMECODE ASSEMBLY LIST\n", "OPTICALS LIST\n"}) {
            if (report_text.find(title) != std::string::npos) found.emplace_back(title);
        }
        return found;
    }

    MemoryFileSystem system;
    ScratchDirectory scratch;
    LightweightString<wchar_t> cdb_path = fromUTF8(scratch.file("driver.cdb").c_str(), -1);
};

TEST_F(ReportDriver, PrintsTheListsOneBehindTheOther) {
    ASSERT_TRUE(run());
    const std::string rolls = text().substr(0, text().find("<FF>"));
    EXPECT_NE(rolls.find("LIST OF ROLLS USED"), std::string::npos);
    EXPECT_NE(text().find("<FF>\nEdit:         REEL 1"), std::string::npos) << "each starts a page";
    EXPECT_TRUE(logger.said("Writing cutting list to file", 0));
    EXPECT_TRUE(system.disc.files["report.txt"]->closed);
    EXPECT_EQ(system.disc.files["report.txt"]->longest_write, 1U);
}

TEST_F(ReportDriver, NamesTheTableFirst) {
    run();
    ASSERT_FALSE(logger.lines.empty());
    EXPECT_NE(logger.lines[0].text.find("driver.cdb"), std::string::npos);
    EXPECT_EQ(logger.lines[0].text.find("$FILE$"), std::string::npos);
    EXPECT_EQ(logger.lines[0].level, 0);
}

TEST_F(ReportDriver, OpensTheFileWithItsNumbers) {
    run();
    EXPECT_EQ(system.disc.calls, (std::vector<std::string>{"open report.txt 2 1 0 0"}));
}

TEST_F(ReportDriver, RemovesAnOldReportWhereItIsToldTo) {
    run(true);
    EXPECT_EQ(system.disc.calls, (std::vector<std::string>{"remove report.txt", "open report.txt 2 1 0 0"}));
}

TEST_F(ReportDriver, SaysWhenTheFileCannotBeMade) {
    system.disc.refuses = true;
    EXPECT_FALSE(run());
    EXPECT_TRUE(logger.said("ERROR: Couldn't create report file", 4));
}

TEST_F(ReportDriver, SaysWhenTheTableCannotBeRead) {
    EXPECT_FALSE(
        print_cutlist_reports(fromUTF8("/no/such.cdb", -1), fromUTF8("report.txt", -1), logger, true, nullptr));
    EXPECT_TRUE(logger.said("Unable to read CUTDB database", 4));
    EXPECT_TRUE(system.disc.calls.empty());
}

TEST_F(ReportDriver, RefusesAnOlderRevision) {
    set("CUTDB", "Rev 21");
    EXPECT_FALSE(run());
    EXPECT_TRUE(logger.said("Old format cutting database: can't process", 4));
    EXPECT_TRUE(system.disc.calls.empty());
}

TEST_F(ReportDriver, PrintsANewerRevision) {
    set("CUTDB", "Rev 23");
    EXPECT_TRUE(run());
}

TEST_F(ReportDriver, RefusesATableWithoutRevision) {
    recdb bare(table, 1);
    bare.set_param_val("CUTDB", "");
    bare.set_filename(cdb_path);
    ASSERT_EQ(bare.save_text(), 0);
    EXPECT_FALSE(print_cutlist_reports(cdb_path, fromUTF8("report.txt", -1), logger, false, nullptr));
    EXPECT_TRUE(logger.said("Old format cutting database: can't process", 4));
}

TEST_F(ReportDriver, RefusesATableWithoutAFilmStandard) {
    for (const char* standard : {"", "24fps", "no such film"}) {
        logger.lines.clear();
        set("film label_std", standard);
        EXPECT_FALSE(run());
        EXPECT_TRUE(logger.said("No film-label standard in CUTDB header", 4)) << standard;
    }
    EXPECT_TRUE(system.disc.calls.empty());
}

TEST_F(ReportDriver, PrintsAllListsWhateverTheirSwitches) {
    int CutlistOptions::*const switches[] = {&CutlistOptions::roll_list, &CutlistOptions::pull_list,
                                             &CutlistOptions::assembly_list, &CutlistOptions::optical_list};
    for (const auto one : switches) {
        options().*one = 0;
        run();
        EXPECT_EQ(titles(), (std::vector<std::string>{"LIST OF ROLLS USED\n", "PULL LIST BY", " ASSEMBLY LIST\n",
                                                      "OPTICALS LIST\n"}));
        options().*one = 1;
    }
}

TEST_F(ReportDriver, PrintsTheListsThatAreWanted) {
    options().some_lists = 1;
    options().roll_list = options().pull_list = options().assembly_list = options().optical_list = 0;
    const std::pair<int CutlistOptions::*, const char*> lists[] = {{&CutlistOptions::roll_list, "LIST OF ROLLS USED\n"},
                                                                   {&CutlistOptions::pull_list, "PULL LIST BY"},
                                                                   {&CutlistOptions::assembly_list, " ASSEMBLY LIST\n"},
                                                                   {&CutlistOptions::optical_list, "OPTICALS LIST\n"}};
    for (const auto& [wanted, title] : lists) {
        options().*wanted = 1;
        run();
        EXPECT_EQ(titles(), std::vector<std::string>{title});
        options().*wanted = 0;
    }
}

// What the scan holds belongs to a table that is gone with its run.
TEST_F(ReportDriver, TheSearchForReuseIsMadeAnewInEachRun) {
    ASSERT_TRUE(run());
    EXPECT_EQ(report_context().reuse_scan, nullptr);
    EXPECT_EQ(text().find("re-use"), std::string::npos);
    add(shot(2, 16, 32, "12A-4", "KJ1234560010+00", "KJ1234560011+00"));
    ASSERT_TRUE(run());
    EXPECT_EQ(report_context().reuse_scan, nullptr);
    EXPECT_NE(text().find("***NOTE: 1 case of material re-use"), std::string::npos);
}

TEST_F(ReportDriver, NoListsMakeAnEmptyFile) {
    options().some_lists = 1;
    options().roll_list = options().pull_list = options().assembly_list = options().optical_list = 0;
    EXPECT_TRUE(run());
    EXPECT_EQ(text(), "");
}

TEST_F(ReportDriver, ASoundRunByTimecodePrintsItsListAlone) {
    options().chan_type = 2;
    options().some_lists = 1;
    options().assembly_list = 0;
    embedded::set_host_setting("audio_cutlist_by_timecode_test", 1);
    run();
    EXPECT_EQ(titles(), (std::vector<std::string>{" ASSEMBLY LIST\n", "TIMECODE ASSEMBLY LIST\n"}))
        << "the one title ends in the other";
    EXPECT_EQ(text().find("LIST OF ROLLS"), std::string::npos);
}

TEST_F(ReportDriver, APictureRunHeedsNoTimecodeSetting) {
    embedded::set_host_setting("audio_cutlist_by_timecode_test", 1);
    run();
    EXPECT_EQ(text().find("TIMECODE"), std::string::npos);
}

TEST_F(ReportDriver, AStandardWithoutFeetIsListedInFrames) {
    set("film label_std", "65mm-5p80");
    run();
    EXPECT_EQ(options().edit_units, 1);
    EXPECT_EQ(report_context().frame_label.type(), 36);
    EXPECT_NE(text().find("Format:  65mm 5perf (80 perf/key)"), std::string::npos);
    EXPECT_NE(text().find(" 000000"), std::string::npos);
}

TEST_F(ReportDriver, AStandardWithFeetKeepsTheUnit) {
    run();
    EXPECT_EQ(options().edit_units, 0);
    EXPECT_EQ(report_context().frame_label.type(), 13);
    EXPECT_EQ(report_context().ink_label, 43);
    EXPECT_EQ(report_context().ink_cvt, get_static_label_cvt(static_cast<label_t>(43)));
}

TEST_F(ReportDriver, MixedStandardsAreListedInFramesEverAfter) {
    set("mixed_kc_standard", "1");
    run();
    EXPECT_EQ(options().edit_units, 1);
    EXPECT_NE(text().find("Format:  -- Mixed Edgecode Format --"), std::string::npos);
    set("mixed_kc_standard", "0");
    run();
    EXPECT_NE(text().find("Format:  -- Mixed Edgecode Format --"), std::string::npos);
}

TEST_F(ReportDriver, AProgrammeIdentifierStandsInTheHeading) {
    put_text(options().pgm_id, "AB/1");
    run();
    EXPECT_NE(text().find("CUTTING-COPY version 9 (AB/1)\n"), std::string::npos);
}

TEST_F(ReportDriver, NamesAreCutAndInUpperCase) {
    set("edit_name", "a name that is longer than its column");
    set("edit_date", "a date that is far longer than any date");
    run();
    EXPECT_NE(text().find("Edit:         A NAME THAT IS LONGER THA Project: HARBOUR \n"
                          "Edit dated:   a date that is far longer Format:  35mm 4perf\n"),
              std::string::npos);
}

TEST_F(ReportDriver, ReadsABlockOfOptionsWhereThereIsOne) {
    embedded::settings_block block;
    block.set("chan_type", "2");
    block.set("chan_num", "7");
    run(false, &block);
    EXPECT_NE(text().find("SOUND TRACK 7\n"), std::string::npos);
}

} // namespace
