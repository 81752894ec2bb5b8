// A printed report in which one character or one row is wrong isn't proved.

#include "tests/list_proof/proved_example.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

namespace {

using namespace list_proof;

/// One place of a report, looked for behind a title, and what stands there instead.
struct Break {
    const char* report;
    const char* title;
    const char* text;
    const char* with;
};

constexpr const char* heron = "16mm/heron";
constexpr const char* harbour = "3perf/harbour-neg";
constexpr const char* lantern = "opticals/lantern";
constexpr const char* newsroom = "29.97df/newsroom-a1-timecode";
constexpr const char* rolls = "LIST OF ROLLS";
constexpr const char* pulls = "PULL LIST BY";
constexpr const char* lab = "OPTICALS PULL LIST BY";
constexpr const char* reuse = "RE-USE OF";
constexpr const char* assembly = "ASSEMBLY LIST";
constexpr const char* opticals = "OPTICALS LIST";

constexpr Break breaks[] = {
    // Headings.
    {heron, rolls, "LIST OF ROLLS", "LIST OF ROLES"},
    {heron, pulls, "REEL ID", "REEL IT"},
    {heron, assembly, "KeyKodes", "KeyCodes"},
    {heron, reuse, "Edit:         HERON", "Edit:         HERDN"},
    {heron, pulls, "16mm 1perf", "16mm 2perf"},
    {heron, opticals, "page 2", "page 3"},
    {lantern, opticals, "Edit:  THE LANTERN R4", "Edit:  THE LANTERN R5"},
    // The list of rolls.
    {heron, rolls, "     H14", "     H16"},
    {heron, rolls, "     LIB3", "     H14 "},
    {heron, rolls, "Edit dated:   20", "Edit dated:   21"},
    // Pull lists.
    {heron, pulls, "NOTE: 1 case", "NOTE: 2 case"},
    {heron, pulls, "8    H14", "9    H14"},
    {heron, pulls, "8    H14", "8    H15"},
    {heron, pulls, "Wings 4", "Wings 5"},
    {heron, pulls, "1+15", "1+16"},
    {heron, pulls, "KE43120710003+12", "KE43120710003+13"},
    {heron, pulls, "KE43120710003+12", "KE43120710004+12"},
    {heron, pulls, "KE4312073306+07", "KF4312073306+07"},
    {heron, pulls, "3310+16", "3310+17"},
    {heron, pulls, "HA010202+20", "HA010202+21"},
    {heron, pulls, "HA010202+20", "HB010202+20"},
    {heron, pulls, "0204+29", "0204+28"},
    {heron, pulls, "** EH6523221211", "   EH6523221211"},
    {heron, pulls, "NO KEYKODE", "NO KEYKODA"},
    {harbour, lab, "OPTICAL#2", "OPTICAL#1"},
    {harbour, lab, "A001 ", "A002 "},
    {harbour, lab, "3+11", "3+12"},
    {harbour, lab, "3465+08.3", "3465+08.2"},
    {harbour, lab, "1806+20.3", "1806+19.3"},
    // The re-use report.
    {heron, reuse, "EH6523221216+00", "EH6523221216+01"},
    {heron, reuse, "roll: H15", "roll: H14"},
    {heron, reuse, "(butt edit)", "(butt edif)"},
    {harbour, reuse, "from KQ1234561237+00.1", "from KQ1234561236+00.1"},
    {harbour, reuse, "to 1237+10.1", "to 1237+11.1"},
    // The assembly.
    {heron, assembly, "2    0001+20", "2    0001+21"},
    {heron, assembly, "2+10    H14", "2+11    H14"},
    {heron, assembly, "3    0003+30", "4    0003+30"},
    {heron, assembly, "H14       Nest 1", "H15       Nest 1"},
    {heron, assembly, "Nest 1", "Nest 2"},
    {heron, assembly, "KE4312073306+07", "KE4312073306+08"},
    {heron, assembly, "3310+16", "3311+16"},
    {heron, assembly, "HA010202+20", "HA010203+20"},
    {heron, assembly, "Length 17", "Length 18"},
    {heron, assembly, "MARK FROM KE43120710001+13", "MARK FROM KE43120710001+14"},
    {heron, assembly, "FREEZE-FRAME", "FREEZE-FLAME"},
    {heron, assembly, "__BLACK_0000+00", "__BLACK_0000+01"},
    {heron, assembly, "0001+19", "0001+18"},
    {heron, assembly, "     0013+14", "     0013+15"},
    {heron, assembly, "End of assembly", "End of a sembly"},
    {harbour, assembly, "run at 2 times", "run at 3 times"},
    {harbour, assembly, "-- OPTICAL#1 --", "-- OPTICAL#2 --"},
    {harbour, assembly, "-- OPTICAL#1 --\r", "-- OPTICAL#1 --!\r"},
    {harbour, assembly, "6+20       --", "6+19       --"},
    // The drawings.
    {harbour, opticals, "OPTICAL#1 ", "OPTICAL#3 "},
    {harbour, opticals, "Assembly event 3", "Assembly event 2"},
    {harbour, opticals, "begin footage: 0004+00", "begin footage: 0004+01"},
    {harbour, opticals, "frame length: 148", "frame length: 149"},
    {harbour, opticals, "A-ROLL", "C-ROLL"},
    {harbour, opticals, "roll: A002", "roll: A003"},
    {harbour, opticals, "SPACER 51", "SPACER 52"},
    {harbour, opticals, "length: 75", "length: 74"},
    {harbour, opticals, "begin:    0004+00 KQ1234561234+00.1", "begin:    0004+00 KQ1234561234+00.2"},
    {harbour, opticals, "FX start 0006+08", "FX start 0006+09"},
    {harbour, opticals, "FX len 24", "FX len 25"},
    {harbour, opticals, "start OUT:0006+08 KQ", "start OUT:0006+08 KR"},
    {harbour, opticals, "start IN:0006+08 KU2296111802", "start IN:0006+08 KU2296111803"},
    {harbour, opticals, "full  OUT:0007+10", "full  OUT:0007+11"},
    {harbour, opticals, "1803+11.3", "1803+12.3"},
    {harbour, opticals, "end:     0010+19", "end:     0010+18"},
    {"edl/ferryman", opticals, "0000+00   end footage: 0007+07   frame length: 120",
     "0000+00   end footage: 0007+07   frame length: 121"},
    {lantern, opticals, "-- Layer  2  of", "-- Layer  3  of"},
    {lantern, opticals, "SPEED 200%", "SPEED 201%"},
    {lantern, opticals, "FX start: 0018+02", "FX start: 0018+03"},
    {lantern, assembly, "EFFECT - Flop", "EFFECT - Flap"},
    {lantern, opticals, "<Moonlight>", "<Moonlighf>"},
    {harbour, opticals, "<single-layer", "<single-laver"},
    // The timecode list.
    {newsroom, "TIMECODE", "01:00:56;20", "01:00:56;21"},
    {newsroom, "TIMECODE", "01:00:57;10", "01:00:58;10"},
    {newsroom, "TIMECODE", "02:10:01;03", "02:10:01;04"},
    {newsroom, "TIMECODE", "D2   20Phone", "D3   20Phone"},
};

std::string broken(const std::string& report, const Break& made) {
    std::string text = report;
    const std::size_t title = text.find(made.title);
    const bool heading = std::string(made.text).rfind("Edit:         ", 0) == 0 ||
                         std::string(made.text).rfind("Edit dated:", 0) == 0 || std::string(made.text) == "16mm 1perf";
    const std::size_t place = heading ? text.rfind(made.text, title) : text.find(made.text, title);
    EXPECT_NE(place, std::string::npos) << made.text;
    if (place != std::string::npos) text.replace(place, std::string(made.text).size(), made.with);
    return text;
}

TEST(BrokenReports, ArentProvedForOneWrongCharacter) {
    static_assert(std::size(breaks) >= 60);
    for (const Break& made : breaks) {
        const Example sound = example(made.report);
        const std::size_t before = proof_of(sound, sound.report).failures.size();
        EXPECT_GT(proof_of(sound, broken(sound.report, made)).failures.size(), before)
            << made.report << ", " << made.title << ": " << made.with;
    }
}

TEST(BrokenReports, TellWhatStandsThereAndWhatShould) {
    const Example sound = example(heron);
    const film::ListProof proof =
        proof_of(sound, broken(sound.report, {heron, assembly, "KE4312073306+07", "KE4312073306+08"}));
    ASSERT_EQ(proof.failures.size(), 1u);
    EXPECT_EQ(film::line_of(proof.failures[0]).substr(0, 39), "assembly list, page 1, line 83, event 2");
    EXPECT_EQ(proof.failures[0].frame, 60);
    EXPECT_EQ(proof.failures[0].what, "KE4312073306+08 to 3310+16, should be KE4312073306+07 to 3310+16");
    const film::ListProof longer =
        proof_of(sound, broken(sound.report, {heron, assembly, "2+10    H14", "2+11    H14"}));
    ASSERT_FALSE(longer.failures.empty());
    EXPECT_EQ(longer.failures[0].frame, 60);
    EXPECT_EQ(longer.failures[0].what, "frames 60 to 151, should be 60 to 150");
}

/// Each begins where the one before ends, and all together are as long as they should be.
TEST(BrokenReports, TellOfABoundaryBetweenOpticalsThatMoved) {
    const Example sound = example("opticals/lantern-neg");
    std::string report = broken(sound.report, {"", assembly, "0050+04      16+14", "0050+04      16+15"});
    report = broken(report, {"", assembly, "0067+02       4+10", "0067+03       4+09"});
    const std::size_t before = proof_of(sound, sound.report).failures.size();
    const film::ListProof proof = proof_of(sound, report);
    ASSERT_EQ(proof.failures.size(), before + 2);
    std::vector<std::string> told;
    for (const auto& failure : proof.failures)
        told.push_back(failure.what);
    EXPECT_THAT(told, testing::IsSupersetOf({"frames 804 to 1075, should be 804 to 1074",
                                             "frames 1075 to 1148, should be 1074 to 1148"}));
}

TEST(BrokenReports, TellOfARollAheadOfItsPlace) {
    const Example sound = example(heron);
    std::string report = sound.report;
    const std::string rows = "     LIB3                          \r\n     H14                           \r\n";
    const std::size_t at = report.find(rows);
    ASSERT_NE(at, std::string::npos);
    report.replace(at, rows.size(), rows.substr(rows.size() / 2) + rows.substr(0, rows.size() / 2));
    const film::ListProof proof = proof_of(sound, report);
    ASSERT_EQ(proof.failures.size(), 1u);
    EXPECT_EQ(film::line_of(proof.failures[0]),
              "list of rolls, page 1, line 10, LIB3: is used ahead of the rolls above it");
}

/// The lines of an entry, with the blank one behind them.
struct Rows {
    std::size_t first = 0, second = 0, end = 0; ///< bytes
};

Rows rows_at(const std::string& report, const char* title, const char* first, const char* second, const char* end) {
    const std::size_t list = report.find(title);
    const auto line_of = [&](const char* text) {
        const std::size_t at = report.find(text, list);
        EXPECT_NE(at, std::string::npos) << text;
        return report.rfind('\n', at) + 1;
    };
    return {line_of(first), line_of(second), line_of(end)};
}

struct RowPlace {
    const char* report;
    const char* title;
    const char* first;
    const char* second;
    const char* end;
};

constexpr RowPlace row_places[] = {
    {heron, rolls, "     LIB3", "     H14", "     H15"},
    {heron, pulls, "8    H14", "3              Wings", "2              Nest"},
    {heron, pulls, "2              Nest", "6              Nest", "4    H15"},
    {harbour, lab, "OPTICAL#1    A003", "OPTICAL#2              Tug", "End of opticals pull list"},
    {heron, assembly, "2    0001+20", "3    0003+30", "4    0005+23"},
    {heron, assembly, "6    0008+38", "7    0010+39", "8    0011+39"},
    {newsroom, "TIMECODE", "  2  01:01:00", "  3  01:01:02", "  4  01:01:06"},
};

void expect_caught(const RowPlace& place, const std::string& what, const std::string& report) {
    const Example sound = example(place.report);
    EXPECT_GT(proof_of(sound, report).failures.size(), proof_of(sound, sound.report).failures.size())
        << what << ": " << place.title << ", " << place.first;
}

TEST(BrokenReports, ArentProvedForARowThatIsMissing) {
    for (const RowPlace& place : row_places) {
        std::string report = example(place.report).report;
        const Rows rows = rows_at(report, place.title, place.first, place.second, place.end);
        expect_caught(place, "missing", report.erase(rows.first, rows.second - rows.first));
    }
}

TEST(BrokenReports, ArentProvedForARowThatStandsTwice) {
    for (const RowPlace& place : row_places) {
        std::string report = example(place.report).report;
        const Rows rows = rows_at(report, place.title, place.first, place.second, place.end);
        expect_caught(place, "twice", report.insert(rows.second, report.substr(rows.first, rows.second - rows.first)));
    }
}

// The order of rolls is nobody's matter.
TEST(BrokenReports, ArentProvedForRowsThatChangedPlaces) {
    for (const RowPlace& place : row_places) {
        if (std::string(place.title) == rolls) continue;
        std::string report = example(place.report).report;
        const Rows rows = rows_at(report, place.title, place.first, place.second, place.end);
        const std::string first = report.substr(rows.first, rows.second - rows.first);
        const std::string second = report.substr(rows.second, rows.end - rows.second);
        expect_caught(place, "swapped", report.replace(rows.first, rows.end - rows.first, second + first));
    }
}

TEST(BrokenReports, ArentProvedForAPageThatIsMissing) {
    const Example sound = example("reel/reel-neg");
    const std::size_t before = proof_of(sound, sound.report).failures.size();
    std::vector<std::size_t> feeds;
    for (std::size_t at = sound.report.find('\f'); at != std::string::npos; at = sound.report.find('\f', at + 1))
        feeds.push_back(at);
    ASSERT_GT(feeds.size(), 20u);
    for (std::size_t page = 0; page + 2 < feeds.size(); ++page) {
        std::string report = sound.report;
        report.erase(feeds[page], feeds[page + 1] - feeds[page]);
        EXPECT_GT(proof_of(sound, report).failures.size(), before) << "page " << page + 2 << " of the file";
    }
}

bool is_body_digit(const std::string& line, std::size_t at) {
    const bool heading = line.rfind("Edit", 0) == 0 || line.rfind("Report", 0) == 0;
    return !heading && std::isdigit(static_cast<unsigned char>(line[at])) != 0;
}

// All numbers of two whole reports, but the dates and versions of their headings.
TEST(BrokenReports, ArentProvedForAnyOneDigit) {
    for (const char* const name : {"16mm/heron-neg", heron, harbour}) {
        const Example sound = example(name);
        const std::size_t before = proof_of(sound, sound.report).failures.size();
        std::size_t start = 0;
        for (std::size_t at = 0; at < sound.report.size(); ++at) {
            if (sound.report[at] == '\n' || sound.report[at] == '\f') {
                start = at + 1;
                continue;
            }
            const std::string line = sound.report.substr(start, at + 1 - start);
            if (!is_body_digit(line, at - start)) continue;
            std::string report = sound.report;
            report[at] = report[at] == '9' ? '1' : static_cast<char>(report[at] + 1);
            ASSERT_GT(proof_of(sound, report).failures.size(), before) << name << ": " << line;
        }
    }
}

} // namespace
