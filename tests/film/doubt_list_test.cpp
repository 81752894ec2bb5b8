// The pages of missing and doubtful elements, as printed and as read back.

#include "film/doubt_list.h"
#include "film/printed_report.h"

#include <gmock/gmock.h>

#include <sstream>

using namespace film;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

const std::string head = "Edit:         WEIR R1                   Project: WEIR \r\n"
                         "Edit dated:   20 September 2026 20:00:00Format:  35mm 4perf\r\n"
                         "Report dated: 21 September 2026 14:13:20CUTTING-COPY version 9 \r\n"
                         "\r\n"
                         "                                PICTURE TRACK 1\r\n";

Finding finding(Code code, Severity severity, int event, std::int64_t frame, const std::string& what) {
    Finding made;
    made.code = code;
    made.severity = severity;
    made.what = what;
    made.place.channel = "V1";
    made.place.event = event;
    made.place.frame = frame;
    made.place.roll = "A1";
    made.place.tape = "VT1";
    made.place.source_timecode = "01:00:00:00";
    made.place.name = "Weir";
    return made;
}

Finding no_key(int event, std::int64_t frame) {
    return finding(Code::no_key, Severity::doubt, event, frame, "48 frames have no key number");
}

std::string pages(const Findings& findings, bool in_frames = false) {
    return doubt_pages(findings, {head, label_key_35mm_4p, in_frames, false});
}

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

/// The lines behind the heads, without rules and blank lines.
std::vector<std::string> body_of(const std::string& text) {
    std::vector<std::string> body;
    bool in_body = false;
    for (const std::string& line : lines_of(text)) {
        if (in_body && !line.empty() && line[0] != '_' && line[0] != '\f') body.push_back(line);
        in_body = in_body || line == "     What is missing or in doubt";
    }
    return body;
}

/// What reading the pages finds fault with; empty where nothing is.
std::string faults_of(const std::string& text) {
    std::string faults;
    for (const ReadFault& fault : read_report(text).faults)
        faults += "line " + std::to_string(fault.place.line) + ": " + fault.what + "\n";
    return faults;
}

TEST(DoubtList, HeadsItsFirstPageAsTheOtherLists) {
    const std::string text = pages({});
    EXPECT_EQ(text.substr(0, head.size()), head);
    const std::string rule(129, '_');
    EXPECT_EQ(text.substr(head.size()),
              "                         MISSING AND DOUBTFUL ELEMENTS\r\n" + rule +
                  "\r\n"
                  "Evt  Position Roll              Tape              Timecode      Shot name\r\n"
                  "     What is missing or in doubt\r\n" +
                  rule +
                  "\r\n\r\n"
                  "     Nothing is missing or in doubt\r\n"
                  "\r\n"
                  "End of missing and doubtful elements\r\n" +
                  rule + "\r\n\f\n");
    EXPECT_EQ(faults_of(text), "");
    EXPECT_TRUE(read_report(text).doubts->none);
}

TEST(DoubtList, GoesByPositionWithOneEntryAPlace) {
    Finding roll = finding(Code::no_roll, Severity::doubt, 2, 48, "48 frames have no camera roll");
    Finding overrun = finding(Code::log_overrun, Severity::wrong, 1, 24, "5 of 48 frames lie outside");
    const Findings findings{overrun, no_key(2, 48), roll, no_key(1, 0)};
    EXPECT_THAT(body_of(pages(findings)),
                ElementsAre("1    0000+00  A1                VT1               01:00:00:00   Weir",
                            "     MISSING   48 frames have no key number",
                            "1    0001+08  A1                VT1               01:00:00:00   Weir",
                            "     WRONG     5 of 48 frames lie outside",
                            "2    0003+00  A1                VT1               01:00:00:00   Weir",
                            "     MISSING   48 frames have no key number",
                            "     MISSING   48 frames have no camera roll", "End of missing and doubtful elements"));
}

TEST(DoubtList, CountsInFramesWhereTheReportDoes) {
    EXPECT_THAT(body_of(pages({no_key(2, 48)}, true))[0], testing::StartsWith("2    000048   A1 "));
}

TEST(DoubtList, LeavesNotesOut) {
    EXPECT_THAT(pages({finding(Code::inexact, Severity::note, 1, 0, "may be off")}),
                HasSubstr("Nothing is missing or in doubt"));
}

TEST(DoubtList, HasASectionForWhatNoOtherListShowsAndOneForTheWholeEdit) {
    Finding upper = finding(Code::not_listed, Severity::wrong, 0, 10, "20 frames on V2 are in no list");
    upper.place.channel = "V2";
    Finding of_file;
    of_file.code = Code::dropped;
    of_file.place.where = "weir.edl: line 7";
    of_file.what = "a title was left out";
    const std::string text = pages({upper, of_file, no_key(1, 96)});
    EXPECT_THAT(
        body_of(text),
        ElementsAre("1    0006+00  A1                VT1               01:00:00:00   Weir",
                    "     MISSING   48 frames have no key number", "***** IN NO OTHER LIST: film of upper tracks",
                    "V2   0000+10  A1                VT1               01:00:00:00   Weir",
                    "     WRONG     20 frames on V2 are in no list", "***** OF THE EDIT AS A WHOLE",
                    "     DOUBT     weir.edl: line 7: a title was left out", "End of missing and doubtful elements"));
    EXPECT_EQ(faults_of(text), "");
    const PrintedReport report = read_report(text);
    ASSERT_EQ(report.doubts->entries.size(), 2U);
    EXPECT_EQ(report.doubts->entries[0].event, 1);
    EXPECT_EQ(report.doubts->entries[0].position, "0006+00");
    EXPECT_EQ(report.doubts->entries[1].channel, "V2");
    EXPECT_TRUE(report.doubts->entries[1].in_no_list);
    EXPECT_EQ(report.doubts->of_whole_edit, 1);
}

TEST(DoubtList, CutsNamesAtTheirColumnsAndNeverRunsThemTogether) {
    Finding made = no_key(1, 0);
    made.place.roll = "A001_C001_0101AB_LONG";
    made.place.tape = std::string(40, 'T');
    made.place.name = std::string(90, 'n');
    EXPECT_EQ(body_of(pages({made}))[0],
              "1    0000+00  A001_C001_0101AB_ TTTTTTTTTTTTTTTTT 01:00:00:00   " + std::string(65, 'n'));
}

TEST(DoubtList, KeepsItsColumnsUnderNamesOfOtherScripts) {
    Finding made = no_key(1, 0);
    made.place.roll = "Плёнка А";
    made.place.tape = "Кассета №1";
    made.place.name = "Паром у причала";
    EXPECT_EQ(body_of(pages({made}))[0],
              "1    0000+00  Плёнка А          Кассета №1        01:00:00:00   Паром у причала");
    made.place.name.clear();
    for (int i = 0; i < 80; ++i)
        made.place.name += "ж";
    const std::string line = body_of(pages({made}))[0];
    EXPECT_THAT(line, EndsWith("01:00:00:00   " + made.place.name.substr(0, std::size_t{65} * 2)));
}

TEST(DoubtList, NamesMaterialWithoutANameByItsPlace) {
    Finding made = finding(Code::no_film, Severity::doubt, 1, 0, "48 frames have no media");
    made.place.roll = made.place.tape = made.place.source_timecode = made.place.name = "";
    made.place.where = "tracks/A2/children[3] \"Bell\"";
    EXPECT_EQ(body_of(pages({made}))[0], "1    0000+00  " + std::string(50, ' ') + made.place.where);
}

TEST(DoubtList, BreaksLongTextsAtBlanks) {
    std::string words, long_word(130, 'x');
    for (int i = 0; i < 40; ++i)
        words += "слово ";
    Finding made = finding(Code::reading, Severity::doubt, 1, 0, words + long_word);
    const std::vector<std::string> body = body_of(pages({made}));
    ASSERT_EQ(body.size(), 7U);
    EXPECT_THAT(body[1], testing::StartsWith("     DOUBT     слово слово"));
    EXPECT_THAT(body[1], EndsWith(" слово"));
    EXPECT_THAT(body[2], testing::StartsWith("               слово"));
    EXPECT_EQ(body[4], std::string(15, ' ') + std::string(114, 'x'));
    EXPECT_EQ(body[5], std::string(15, ' ') + std::string(16, 'x'));
    EXPECT_EQ(faults_of(pages({made})), "");
}

TEST(DoubtList, HeadsEachPageAndKeepsEntriesWhole) {
    Findings findings;
    for (int event = 1; event <= 60; ++event)
        findings.push_back(no_key(event, event * 48));
    const std::string text = pages(findings);
    EXPECT_EQ(faults_of(text), "");
    EXPECT_EQ(read_report(text).doubts->entries.size(), 60U);
    std::vector<std::string> page;
    int number = 1;
    for (const std::string& line : lines_of(text)) {
        if (line != "\f") {
            page.push_back(line);
            continue;
        }
        EXPECT_LE(page.size(), 59U);
        if (number > 1) {
            EXPECT_EQ(page[0].substr(0, 49), "Edit:  WEIR R1                 LIST OF DOUBTS    ");
            EXPECT_THAT(page[0], EndsWith("  page " + std::to_string(number)));
            EXPECT_THAT(page[5], testing::MatchesRegex("[0-9]+ .*")) << "a page begins with an entry";
        }
        page.clear();
        ++number;
    }
    EXPECT_EQ(number, 5);
}

TEST(DoubtList, TellsThatItGoesByATableAlone) {
    const std::string text = doubt_pages({no_key(1, 0)}, {head, label_key_35mm_4p, false, true});
    EXPECT_THAT(text, HasSubstr("_\r\n***NOTE: by the table alone, without its edit and its log\r\nEvt  "));
    EXPECT_EQ(faults_of(text), "");
    EXPECT_TRUE(read_report(text).doubts->by_table);
}

TEST(DoubtList, IsntReadWhereALineIsAnother) {
    const std::string text = pages({no_key(1, 0)});
    const std::pair<const char*, const char*> breaks[] = {
        {"MISSING ", "MISSIND "}, {"     MISSING", "MISSING     "}, {"End of m", "End of n"},
        {"Evt  Pos", "Evt  Bos"}, {"     What is", "     That is"},
    };
    for (const auto& [from, to] : breaks) {
        std::string broken = text;
        broken.replace(broken.rfind(from), std::string(from).size(), to);
        EXPECT_NE(faults_of(broken), "") << from;
    }
    EXPECT_THAT(faults_of(pages({}) + pages({})), HasSubstr("a second list of doubts"));
}

} // namespace
