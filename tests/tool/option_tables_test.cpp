// Each command takes the options of its own table, and no other's.

#include "tests/tool/tool_process.h"
#include "tool/command.h"
#include "tool/command_line.h"
#include "tool/tool_error.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <iterator>
#include <set>
#include <sstream>

using testing::HasSubstr;
using tool::Command;
using tool::Option;

namespace {

using Words = std::vector<std::string>;

class OptionTables : public ToolTest {};

Words words_of(const char* name) {
    std::istringstream text(name);
    return {std::istream_iterator<std::string>(text), {}};
}

Words option_names(const Command& command) {
    Words names;
    const tool::Prepared prepared = command.prepare();
    for (const Option& option : prepared.options.rows())
        names.emplace_back(option.name);
    return names;
}

/// The first words of the lines of a help that tell of what the line may hold, those without a name first.
Words told_names(const std::string& help) {
    Words names;
    std::istringstream lines(help.substr(0, help.find("\nExamples:")));
    for (std::string line; std::getline(lines, line);)
        if (line.size() > 2 && line.substr(0, 2) == "  " && line[2] != ' ')
            names.push_back(line.substr(2, line.find(' ', 2) - 2));
    return names;
}

Words in_order_of_help(Words names) {
    std::stable_partition(names.begin(), names.end(), [](const std::string& name) { return name[0] != '-'; });
    const auto first_named =
        std::find_if(names.begin(), names.end(), [](const std::string& name) { return name[0] == '-'; });
    names.insert(first_named, "-h,--help");
    return names;
}

/// A line that holds all that the command needs.
Words enough_for(const Command& command) {
    Words line = words_of(command.name);
    const tool::Prepared prepared = command.prepare();
    for (const Option& option : prepared.options.rows()) {
        if (option.needed == tool::Needed::no) continue;
        if (option.name[0] == '-') line.emplace_back(option.name);
        line.emplace_back("file");
    }
    return line;
}

/// Why the line is refused; empty where it isn't.
std::string refusal_of(const Words& line) {
    std::vector<const char*> arguments{"quillbrook"};
    for (const std::string& word : line)
        arguments.push_back(word.c_str());
    try {
        tool::parse_command_line(static_cast<int>(arguments.size()), arguments.data());
        return "";
    } catch (const tool::UsageError& error) {
        return error.what();
    }
}

std::set<std::string> switches_of_all() {
    std::set<std::string> names;
    for (const Command* command : tool::all_commands())
        for (const std::string& name : option_names(*command))
            if (name[0] == '-') names.insert(name);
    return names;
}

TEST_F(OptionTables, HelpTellsOfExactlyTheOptionsOfTheCommand) {
    for (const Command* command : tool::all_commands()) {
        Words line = words_of(command->name);
        line.emplace_back("--help");
        EXPECT_EQ(told_names(run(line).out), in_order_of_help(option_names(*command))) << command->name;
    }
}

TEST_F(OptionTables, HelpTellsWhatEachOptionIs) {
    for (const Command* command : tool::all_commands()) {
        Words line = words_of(command->name);
        line.emplace_back("--help");
        const std::string help = run(line).out;
        EXPECT_THAT(help, HasSubstr(command->about));
        EXPECT_THAT(help, HasSubstr(command->examples));
        const tool::Prepared prepared = command->prepare();
        for (const Option& option : prepared.options.rows())
            EXPECT_THAT(help, HasSubstr(option.help)) << command->name << ' ' << option.name;
    }
}

TEST_F(OptionTables, LineThatHoldsWhatIsNeededIsTaken) {
    for (const Command* command : tool::all_commands())
        EXPECT_EQ(refusal_of(enough_for(*command)), "") << command->name;
}

TEST_F(OptionTables, WhatIsNeededIsNamedWhereItIsMissing) {
    for (const Command* command : tool::all_commands()) {
        const Words alone = words_of(command->name);
        const std::string wanted = enough_for(*command) == alone ? "" : "is required";
        EXPECT_THAT(refusal_of(alone), HasSubstr(wanted)) << command->name;
    }
}

TEST_F(OptionTables, OptionsOfOtherCommandsAreRefused) {
    for (const Command* command : tool::all_commands()) {
        const Words own = option_names(*command);
        for (const std::string& name : switches_of_all()) {
            if (std::find(own.begin(), own.end(), name) != own.end()) continue;
            Words line = enough_for(*command);
            line.push_back(name);
            EXPECT_THAT(refusal_of(line), HasSubstr("not expected: " + name)) << command->name;
        }
    }
}

TEST_F(OptionTables, NoCommandHasAnOptionTwice) {
    for (const Command* command : tool::all_commands()) {
        const Words names = option_names(*command);
        EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size()) << command->name;
    }
}

TEST_F(OptionTables, EachRunOfTheLineHasAJobOfItsOwn) {
    const auto first = tool::all_commands().front()->prepare();
    const auto second = tool::all_commands().front()->prepare();
    const auto text = [](const tool::Prepared& prepared) -> std::string& {
        for (const Option& option : prepared.options.rows())
            if (std::string(option.name) == "-o") return std::get<std::reference_wrapper<std::string>>(option.target);
        throw std::runtime_error("no -o");
    };
    text(first) = "one.txt";
    EXPECT_EQ(text(second), "");
}

} // namespace
