// Manual pages and completion, which the command writes from the tables of its options.

#include "tests/tool/tool_process.h"
#include "tool/command.h"
#include "tool/command_line.h"
#include "tool/man_pages.h"
#include "tool/tool_error.h"
#include "tool/value_words.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <regex>
#include <sstream>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;
using testing::UnorderedElementsAreArray;
using tool::Command;
using tool::Option;
using tool::ValueKind;
using tool::ValueWords;

namespace {

using Words = std::vector<std::string>;

Words lines_of(const std::string& text) {
    Words lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/// What a shell prints on standard output and standard error.
std::string output_of(const std::string& line) {
    std::string text;
    FILE* pipe = ::popen(("{ " + line + "\n} 2>&1").c_str(), "r");
    if (!pipe) return "no shell";
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe))
        text += static_cast<char>(c);
    ::pclose(pipe);
    return text;
}

bool is_there(const std::string& program) {
    return std::system(("command -v " + program + " >/dev/null").c_str()) == 0;
}

std::string plain(std::string text) {
    for (const char* mark : {"\\fB", "\\fI", "\\fR"})
        for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark))
            text.erase(at, 3);
    std::erase(text, '\\');
    return text;
}

/// The options that a page has an entry for.
Words entries_of(const std::string& page) {
    Words names;
    const Words lines = lines_of(page);
    for (std::size_t i = 1; i < lines.size(); ++i)
        if (lines[i - 1] == ".TP") names.push_back(plain(lines[i]).substr(0, plain(lines[i]).find_first_of(" .,")));
    return names;
}

class HelpFiles : public ToolTest {
protected:
    void SetUp() override { expect_done({"help", "--files", path("help")}); }

    /// What bash offers for the last word.
    Words bash(const Words& words) const {
        std::string line = "cd '" + path("") + "'; source help/completions/bash/quillbrook; COMP_WORDS=(";
        for (const std::string& word : words)
            line += "'" + word + "' ";
        line +=
            "); COMP_CWORD=" + std::to_string(words.size() - 1) + "; _quillbrook; printf '%s\\n' \"${COMPREPLY[@]}\"";
        write("line.sh", line);
        Words offered = lines_of(output_of("bash '" + path("line.sh") + "'"));
        std::erase(offered, "");
        return offered;
    }
};

TEST_F(HelpFiles, EveryOptionOfEveryCommandIsInItsPageAndNoOther) {
    const std::vector<tool::ManPage> pages = tool::man_pages();
    ASSERT_EQ(pages.size(), tool::all_commands().size() + 1);
    for (std::size_t i = 0; i < tool::all_commands().size(); ++i) {
        const Command& command = *tool::all_commands()[i];
        Words names{"-h"};
        const tool::Prepared prepared = command.prepare();
        for (const Option& option : prepared.options.rows()) {
            names.emplace_back(option.name);
            EXPECT_THAT(plain(pages[i + 1].text), HasSubstr(option.help));
        }
        EXPECT_THAT(entries_of(pages[i + 1].text), UnorderedElementsAreArray(names)) << command.name;
        const bool has_arguments =
            std::any_of(names.begin(), names.end(), [](const auto& name) { return name[0] != '-'; });
        EXPECT_EQ(pages[i + 1].text.find(".SH ARGUMENTS\n") != std::string::npos, has_arguments) << command.name;
        EXPECT_EQ(read("help/man1/" + pages[i + 1].name + ".1"), pages[i + 1].text);
        EXPECT_THAT(pages[0].text, HasSubstr(".TP\n\\fB" + std::string(command.name) + "\\fR\n"));
    }
}

TEST_F(HelpFiles, PagesNameWhatIsAskedForAndTheirNeighbours) {
    for (const tool::ManPage& page : tool::man_pages()) {
        const std::string text = plain(page.text);
        EXPECT_THAT(text, HasSubstr("\n.BR quillbrook-formats (5)\n")) << page.name;
        if (page.name == "quillbrook")
            EXPECT_THAT(text, HasSubstr("\n.BR quillbrook-cutlist (1) ,\n"));
        else
            EXPECT_THAT(text, HasSubstr("\n.BR quillbrook (1) ,\n")) << page.name;
    }
    EXPECT_THAT(plain(read("help/man1/quillbrook-cutlist.1")),
                HasSubstr("\nquillbrook cutlist EDIT... -o FILE [options]\n"));
    EXPECT_THAT(plain(read("help/man1/quillbrook-print.1")), HasSubstr("\nquillbrook print CDB -o FILE [options]\n"));
}

TEST_F(HelpFiles, PagesAreSoundForThoseWhoPrintThem) {
    if (!is_there("mandoc")) GTEST_SKIP() << "no mandoc";
    for (const tool::ManPage& page : tool::man_pages()) {
        const std::string file = "'" + path("help/man1/" + page.name + ".1") + "'";
        // Pages have no date: it would be that of the build.
        EXPECT_EQ(output_of("mandoc -Tlint -W warning " + file + " | grep -v 'missing date'"), "");
        EXPECT_THAT(output_of("mandoc -Tutf8 " + file + " | col -b"), HasSubstr("SEE ALSO"));
    }
    const std::string scan = output_of("mandoc -Tascii '" + path("help/man1/quillbrook-log-scan.1") + "' | col -b");
    EXPECT_THAT(scan, HasSubstr("--letters DIGITS=LETTERS"));
    EXPECT_THAT(scan, HasSubstr("quillbrook log scan scans/ -o show.RDB --letters 0274=KJ"));
}

/// Why a command refuses a value of an option; empty where it doesn't.
std::string refusal(const Command& command, const Option& asked, const std::string& value) {
    Words line{"quillbrook"};
    std::istringstream name(command.name);
    for (std::string word; name >> word;)
        line.push_back(word);
    const tool::Prepared prepared = command.prepare();
    for (const Option& option : prepared.options.rows()) {
        if (option.needed == tool::Needed::no) continue;
        if (option.name[0] == '-') line.emplace_back(option.name);
        line.emplace_back("file");
    }
    line.insert(line.end(), {asked.name, value});
    if (std::string(asked.name) == "--match" || std::string(asked.name) == "--log-time")
        line.insert(line.end(), {"--log", "file"});
    if (std::string(command.name) == "print") line.insert(line.end(), {"--prove", "--edit", "file"});
    std::vector<const char*> arguments;
    for (const std::string& word : line)
        arguments.push_back(word.c_str());
    try {
        tool::parse_command_line(static_cast<int>(arguments.size()), arguments.data());
        return "";
    } catch (const tool::UsageError& error) {
        return error.what();
    }
}

/// The words that a refusal names, as in "is none of reel, tape"; none where it names none.
Words choices_in(const std::string& refused) {
    static const std::regex choices("(?:none|not one) of (.*)$");
    std::smatch found;
    const std::string line = refused.substr(0, refused.find(';'));
    Words named;
    if (!std::regex_search(line, found, choices)) return named;
    std::istringstream list(found[1].str());
    for (std::string word; std::getline(list, word, ',');)
        named.push_back(word.substr(word.find_first_not_of(' ')));
    return named;
}

TEST(ValueWords, AllWordsAreTakenAndNoneThatRefusalsNameIsMissing) {
    for (const Command* command : tool::all_commands()) {
        const tool::Prepared prepared = command->prepare();
        for (const Option& option : prepared.options.rows()) {
            if (option.name[0] != '-' || !*option.value) continue;
            const ValueWords values = tool::value_words(command->name, option);
            if (values.kind == ValueKind::files || values.kind == ValueKind::folders) continue;
            // Keys come from the library's own tables, so one of them tells.
            const bool keys = values.kind == ValueKind::keys;
            for (const std::string& word : keys ? Words{values.words.front()} : values.words)
                EXPECT_EQ(refusal(*command, option, word + (keys ? "=1" : "")), "")
                    << command->name << ' ' << option.name;
            const std::string refused = refusal(*command, option, "nowhere");
            EXPECT_TRUE(values.words.empty() || !refused.empty()) << command->name << ' ' << option.name;
            EXPECT_THAT(values.words, IsSupersetOf(choices_in(refused))) << command->name << ' ' << option.name;
        }
    }
}

// The help of an option names the files that it takes.
TEST(ValueWords, FilesAreOfTheKindsThatTheHelpNames) {
    for (const Command* command : tool::all_commands()) {
        const tool::Prepared prepared = command->prepare();
        for (const Option& option : prepared.options.rows()) {
            if (!*option.value && option.name[0] == '-') continue;
            const ValueWords values = tool::value_words(command->name, option);
            if (values.kind != ValueKind::files) continue;
            for (const char* kind : {"cdb", "RDB", "otio", "aaf", "json"})
                if (std::string(option.help).find("(." + std::string(kind)) != std::string::npos) {
                    EXPECT_THAT(values.words, Contains(kind)) << command->name << ' ' << option.name;
                }
        }
    }
}

TEST_F(HelpFiles, BashOffersCommandsOptionsAndValues) {
    EXPECT_THAT(bash({"quillbrook", "l"}), ElementsAre("log"));
    EXPECT_THAT(bash({"quillbrook", "log", "s"}), ElementsAre("scan", "show"));
    EXPECT_THAT(bash({"quillbrook", "help", "log", "im"}), ElementsAre("import"));
    EXPECT_THAT(bash({"quillbrook", "cutlist", "--sin"}), ElementsAre("--single-layer"));
    EXPECT_THAT(bash({"quillbrook", "cutlist", "--channel", "V"}), ElementsAre("V1", "V2", "V3", "V4"));
    EXPECT_THAT(bash({"quillbrook", "cutlist", "--channel", "=", "A1"}), ElementsAre("A1"));
    EXPECT_THAT(bash({"quillbrook", "print", "--for", "c"}), ElementsAre("cutter"));
    EXPECT_THAT(bash({"quillbrook", "cutlist", "--lists", "rolls,p"}), ElementsAre("rolls,pull"));
    EXPECT_THAT(bash({"quillbrook", "changelist", "--lists", "b"}), ElementsAre("bench"));
    EXPECT_THAT(bash({"quillbrook", "cutlist", "--set", "pgm"}), ElementsAre("pgm_id="));
    EXPECT_THAT(bash({"quillbrook", "cutlist", "--handles", ""}), IsEmpty());
}

TEST_F(HelpFiles, BashOffersTheFilesOfAKind) {
    for (const char* name : {"a b.otio", "show.RDB", "cut.cdb", "note.doc"})
        write(name, "");
    EXPECT_THAT(bash({"quillbrook", "cutlist", ""}), UnorderedElementsAreArray({"a b.otio", "help"}));
    EXPECT_THAT(bash({"quillbrook", "cutlist", "x.otio", "--frames", "a"}), ElementsAre("a b.otio"));
    EXPECT_THAT(bash({"quillbrook", "cutlist", "--log", "s"}), ElementsAre("show.RDB"));
    EXPECT_THAT(bash({"quillbrook", "cutlist", "-o", "n"}), ElementsAre("note.doc"));
    EXPECT_THAT(bash({"quillbrook", "changelist", "--old", "x.cdb", "c"}), ElementsAre("cut.cdb"));
    EXPECT_THAT(bash({"quillbrook", "log", "scan", ""}), ElementsAre("help"));
}

// `_arguments` itself needs a line editor, so it is asked for what it is given.
TEST_F(HelpFiles, ZshGetsTheSpecsOfTheCommand) {
    if (!is_there("zsh")) GTEST_SKIP() << "no zsh";
    const auto given = [&](const std::string& words, int current) {
        write("line.zsh", "compdef() {}\n_arguments() { print -rl -- \"$@\" }\n"
                          "_describe() { print -rl -- ${(P)2} }\nsource help/completions/zsh/_quillbrook\n"
                          "words=(" +
                              words + "); CURRENT=" + std::to_string(current) + "; _quillbrook\n");
        return lines_of(output_of("cd '" + path("") + "'; zsh -f line.zsh"));
    };
    EXPECT_THAT(given("quillbrook ''", 2), Contains("log:Make, show and check logging tables"));
    EXPECT_THAT(given("quillbrook log ''", 3), Contains("scan:Make a logging table (.RDB) of scanned pictures"));
    const Words cutlist = given("quillbrook cutlist ''", 3);
    EXPECT_THAT(cutlist,
                Contains(HasSubstr("--channel[The channel to list\\: V1, V2, ... or A1, A2, ...]:CHANNEL:(V1 V2 ")));
    EXPECT_THAT(cutlist, Contains(HasSubstr("]:TABLE:_files -g \"*.(RDB|rdb)\"")));
    EXPECT_THAT(cutlist, Contains(HasSubstr("]:LIST,...:_values -s , LIST,... rolls pull assembly opticals doubts")));
    const Words scan = given("quillbrook log scan ''", 4);
    EXPECT_THAT(scan, Contains("*:FOLDER:_files -/"));
    EXPECT_THAT(scan, Not(Contains(HasSubstr("--channel"))));
}

TEST_F(HelpFiles, FishOffersCommandsOptionsAndValues) {
    if (!is_there("fish")) GTEST_SKIP() << "no fish";
    for (const char* name : {"a.otio", "note.doc"})
        write(name, "");
    const auto fish = [&](const std::string& line) {
        write("line.fish", "source help/completions/fish/quillbrook.fish\ncomplete -C '" + line + "'\n");
        Words offered;
        for (const std::string& each :
             lines_of(output_of("cd '" + path("") + "'; HOME='" + path("") + "' fish line.fish")))
            offered.push_back(each.substr(0, each.find('\t')));
        return offered;
    };
    EXPECT_THAT(fish("quillbrook lo"), ElementsAre("log"));
    EXPECT_THAT(fish("quillbrook log s"), ElementsAre("scan", "show"));
    EXPECT_THAT(fish("quillbrook log scan --let"), ElementsAre("--letters"));
    EXPECT_THAT(fish("quillbrook cutlist --channel A"), IsSupersetOf({"A1", "A8"}));
    EXPECT_THAT(fish("quillbrook cutlist --lists rolls,pu"), ElementsAre("rolls,pull"));
    EXPECT_THAT(fish("quillbrook cutlist --set pgm"), ElementsAre("pgm_id="));
    const Words files = fish("quillbrook cutlist ");
    EXPECT_THAT(files, IsSupersetOf({"a.otio", "help/"}));
    EXPECT_THAT(files, Not(Contains("note.doc")));
}

} // namespace
