// How the command answers: help by words, what might have been meant, and values that can't be read.

#include "tests/tool/tool_process.h"
#include "tool/command.h"
#include "tool/suggestion.h"

#include <gmock/gmock.h>

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

class Answers : public ToolTest {
protected:
    std::string refusal(const std::vector<std::string>& line,
                        const std::map<std::string, std::string>& variables = {}) {
        const ToolResult result = run(line, variables);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, "");
        return result.err;
    }
    std::vector<std::string> cutlist(const std::vector<std::string>& more) const {
        std::vector<std::string> line{"cutlist", "cut.otio", "-o", "cut.txt"};
        line.insert(line.end(), more.begin(), more.end());
        return line;
    }
};

TEST_F(Answers, HelpOfACommandIsThatOfItsSwitch) {
    EXPECT_EQ(run({"help"}).out, run({"--help"}).out);
    EXPECT_EQ(run({"help", "print"}).out, run({"print", "--help"}).out);
    EXPECT_EQ(run({"help", "log", "show"}).out, run({"log", "show", "--help"}).out);
    EXPECT_THAT(run({"help", "log", "show"}).out, HasSubstr("quillbrook log show"));
    EXPECT_EQ(run({"help", "log"}).status, 0);
}

TEST_F(Answers, HelpOfWhatIsNoCommandIsRefused) {
    EXPECT_EQ(refusal({"help", "prnt"}), "quillbrook: help: there is no command \"prnt\"; did you mean \"print\"?\n");
    EXPECT_EQ(refusal({"help", "log", "xyzzy"}), "quillbrook: help: there is no command \"xyzzy\"\n");
}

TEST_F(Answers, MistypedCommandsOptionsAndKeysAreGuessed) {
    EXPECT_THAT(refusal({"cutlits"}), HasSubstr("did you mean \"cutlist\"?"));
    EXPECT_THAT(refusal({"log", "improt"}), HasSubstr("did you mean \"import\"?"));
    EXPECT_THAT(refusal(cutlist({"--fremes"})), HasSubstr("did you mean \"--frames\"?"));
    EXPECT_THAT(refusal(cutlist({"--set", "pul_handle=8"})), HasSubstr("did you mean \"pull_handle\"?"));
    EXPECT_THAT(refusal(cutlist({"--config", "alow_auto_unrender=1"})), HasSubstr("did you mean \"allow_auto_unr"));
    EXPECT_THAT(refusal({"xyzzy"}), Not(HasSubstr("did you mean")));
}

TEST(Suggestions, DistanceCountsLettersAndSwappedNeighbours) {
    EXPECT_EQ(tool::edit_distance("", ""), 0u);
    EXPECT_EQ(tool::edit_distance("abc", ""), 3u);
    EXPECT_EQ(tool::edit_distance("print", "prnt"), 1u);
    EXPECT_EQ(tool::edit_distance("cutlits", "cutlist"), 1u);
    EXPECT_EQ(tool::edit_distance("kitten", "sitting"), 3u);
    EXPECT_EQ(tool::edit_distance("ab", "ba"), 1u);
}

TEST(Suggestions, NearestOfSeveralIsTaken) {
    EXPECT_EQ(tool::suggestion("merg", {"show", "merge", "import"}), "; did you mean \"merge\"?");
    EXPECT_EQ(tool::suggestion("zz", {"show", "merge"}), "");
    EXPECT_EQ(tool::suggestion("", {"show"}), "");
}

TEST(Suggestions, HaveAtMostOneLetterInThreeWrongOrTwoOfAShortWord) {
    EXPECT_EQ(tool::suggestion("a", {"b"}), "");
    EXPECT_EQ(tool::suggestion("ab", {"cd"}), "");
    EXPECT_EQ(tool::suggestion("ab", {"ac"}), "; did you mean \"ac\"?");
    EXPECT_EQ(tool::suggestion("abcde", {"abcxy"}), "; did you mean \"abcxy\"?");
    EXPECT_EQ(tool::suggestion("abcde", {"abxyz"}), "");
    EXPECT_EQ(tool::suggestion("abcdefghi", {"abcdefxyz"}), "; did you mean \"abcdefxyz\"?");
    EXPECT_EQ(tool::suggestion("abcdefghi", {"abcdewxyz"}), "");
}

TEST_F(Answers, VariablesThatCantBeReadAreErrors) {
    write_edit("cut.otio");
    for (const char* value : {"", "now", "1 ", "1.5", "99999999999999999999"})
        EXPECT_EQ(refusal(cutlist({}), {{"SOURCE_DATE_EPOCH", value}}),
                  "quillbrook: SOURCE_DATE_EPOCH: \"" + std::string(value[0] == '1' && value[1] == ' ' ? "1" : value) +
                      "\" is not a whole number of seconds\n");
    for (const char* name : {"ALLOW_AUTO_UNRENDER", "AUDIO_CUTLIST_24P", "AUDIO_CUTLIST_BY_TIMECODE_TEST"})
        EXPECT_THAT(refusal(cutlist({}), {{std::string("QUILLBROOK_") + name, "yes"}}),
                    HasSubstr("QUILLBROOK_" + std::string(name) + ": \"yes\" is not a whole number"));
    EXPECT_FALSE(exists("cut.txt"));
    EXPECT_EQ(run({"--version"}, {{"SOURCE_DATE_EPOCH", "now"}}).status, 0);
    EXPECT_EQ(run(cutlist({}), {{"QUILLBROOK_AUDIO_CUTLIST_24P", ""}}).status, 0);
}

TEST_F(Answers, FramesAndChannelsHaveLimits) {
    for (const char* option : {"--handles", "--butt"})
        EXPECT_THAT(refusal(cutlist({option, "10001"})), HasSubstr("is not a whole number of frames from 0 to 10000"));
    EXPECT_THAT(refusal(cutlist({"--set", "pull_handle=1000000000"})),
                HasSubstr("pull_handle: 1000000000 isn't within"));
    EXPECT_THAT(refusal(cutlist({"--set", "chan_num=-1"})), HasSubstr("chan_num: -1 isn't within 0 to 9999"));
    write_edit("cut.otio");
    EXPECT_EQ(run(cutlist({"--handles", "10000"})).status, 0);
    EXPECT_THAT(read("cut.txt"), HasSubstr("1253+00"));
}

} // namespace
