// What the command says of itself, and how it answers a wrong line.

#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

class Usage : public ToolTest {
protected:
    /// Wrong usage: status 2, one line on standard error that holds `text`, and nothing made.
    void expect_wrong(const std::vector<std::string>& arguments, const std::string& text) {
        const ToolResult result = run(arguments);
        EXPECT_EQ(result.status, 2) << result.err;
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, StartsWith("quillbrook: "));
        EXPECT_THAT(result.err, HasSubstr(text));
        EXPECT_EQ(result.err.find('\n'), result.err.size() - 1);
        EXPECT_THAT(names(), IsEmpty());
    }
    void expect_wrong_set(const std::string& option, const std::string& pair, const std::string& text) {
        expect_wrong({"cutlist", "cut.otio", "-o", "cut.txt", option, pair}, text);
    }
};

TEST_F(Usage, NoArgumentsAreWrongUsage) {
    expect_wrong({}, "a command is required: cutlist, print, changelist, check, explain, order, conform, export, "
                     "describe, edit show, log or web; see quillbrook --help");
}

TEST_F(Usage, UnknownCommandIsNamed) { expect_wrong({"cutlits"}, "cutlits"); }

TEST_F(Usage, UnknownOptionIsNamed) { expect_wrong({"cutlist", "a.otio", "-o", "a.txt", "--fremes"}, "--fremes"); }

TEST_F(Usage, EditWithoutItsCommandIsWrong) { expect_wrong({"edit"}, "--help"); }

TEST_F(Usage, ReportMustBeNamed) { expect_wrong({"cutlist", "a.otio"}, "-o"); }

TEST_F(Usage, HelpShowsTheCommandsWithExamples) {
    for (const char* flag : {"-h", "--help"}) {
        const ToolResult result = run({flag});
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.err, "");
        for (const char* text : {"cutlist", "print", "edit", "Examples:", "Exit status"})
            EXPECT_THAT(result.out, HasSubstr(text));
    }
}

TEST_F(Usage, EachCommandHasHelpWithExamples) {
    const std::vector<std::vector<std::string>> lines{
        {"cutlist", "--help"}, {"print", "--help"}, {"edit", "show", "--help"}};
    for (const std::vector<std::string>& line : lines) {
        const ToolResult result = run(line);
        EXPECT_EQ(result.status, 0);
        EXPECT_THAT(result.out, HasSubstr("Examples:\n  quillbrook " + line[0]));
    }
}

TEST_F(Usage, VersionIsOneLine) {
    const ToolResult result = run({"--version"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "quillbrook 0.1.0\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(Usage, OptionKeysAreChecked) {
    expect_wrong_set("--set", "pul_handle=8", "\"pul_handle\"");
    expect_wrong_set("--set", "pull_handle", "KEY=VALUE");
    expect_wrong_set("--set", "=8", "KEY=VALUE");
    expect_wrong_set("--set", "output_file=x", "output_file");
    expect_wrong_set("--config", "allow_unrender=1", "\"allow_unrender\"");
}

TEST_F(Usage, NumbersAreCheckedAndNamedWithTheirKey) {
    for (const char* value : {"", "many", "8 ", "8x", "1.5", "99999999999"}) {
        expect_wrong_set("--set", std::string("pull_handle=") + value, "pull_handle: \"" + std::string(value) + '"');
        expect_wrong_set("--config", std::string("allow_auto_unrender=") + value, "allow_auto_unrender");
    }
}

TEST_F(Usage, WordsOfTheListSwitchesAreChecked) {
    for (const char* word : {"", "roll", "rolls,", "rolls,pul", "Rolls", "1"})
        expect_wrong_set("--lists", word, "is not one of rolls, pull, assembly, opticals");
    expect_wrong_set("--lists", "rolls,pul", "--lists: \"pul\"");
    for (const char* word : {"", "0", "5", "1,5", "sl1", "1 "})
        expect_wrong_set("--single-layer", word, "is not one of 1, 2, 3, 4");
    expect_wrong({"print", "cut.cdb", "-o", "cut.txt", "--lists", "rools"}, "\"rools\"");
    expect_wrong({"print", "cut.cdb", "-o", "cut.txt", "--single-layer", "1"}, "--single-layer");
}

TEST_F(Usage, FramesOfTheSwitchesAreChecked) {
    for (const char* option : {"--handles", "--butt"})
        for (const char* value : {"", "many", "8x", "1.5", "-1", "99999999999"})
            expect_wrong({"cutlist", "cut.otio", "-o", "cut.txt", std::string(option) + '=' + value}, option);
}

TEST_F(Usage, NumbersBelowTheirLeastAreRefused) {
    expect_wrong({"web", "--port", "-1"}, "--port: Value -1 not in range 0 to 65535");
    expect_wrong({"order", "cut.otio", "-o", "order.txt", "--build-rolls", "-1"},
                 "--build-rolls: Value -1 not in range 0 to 100000");
}

TEST_F(Usage, ChannelsAndRatesAreChecked) {
    for (const char* channel : {"", "V", "V0", "A-1", "X1", "1", "V1x"})
        expect_wrong({"cutlist", "a.otio", "-o", "a.txt", "--channel", channel}, "hannel");
    for (const char* rate : {"0", "26", "nan", "24fps", "-24"})
        expect_wrong({"edit", "show", "a.otio", std::string("--rate=") + rate}, rate);
}

TEST_F(Usage, VariablesThatNothingReadsAreTold) {
    write_edit("cut.otio");
    const auto told = [&](const char* name, const char* value) {
        const ToolResult result = run({"edit", "show", "cut.otio"}, {{name, value}});
        EXPECT_EQ(result.status, 0);
        return result.err;
    };
    EXPECT_EQ(told("QUILLBROOK_WAIT_FOR_OUTPUT", "3"),
              "warning: QUILLBROOK_WAIT_FOR_OUTPUT: there is no such variable; it says nothing; did you mean "
              "\"QUILLBROOK_WAIT_FOR_OUTPUTS\"?\n");
    EXPECT_EQ(told("QUILLBROOK_", ""), "warning: QUILLBROOK_: there is no such variable; it says nothing\n");
    EXPECT_EQ(told("QUILLBROOK_A\x1b[2J", "1").find('\x1b'), std::string::npos);
    EXPECT_EQ(told("QUILLBROOK_WAIT_FOR_OUTPUTS", "3"), "");
    EXPECT_EQ(told("QUILLBROOK_AUDIO_CUTLIST_24P", "1"), "");
    EXPECT_EQ(told("MY_QUILLBROOK_HOME", "1"), "");
}

} // namespace
