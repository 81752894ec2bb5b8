#include "tool/man_pages.h"

#include <algorithm>
#include <sstream>

namespace tool {
namespace {

/// As troff takes a text that it is to print as it stands.
std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : text) {
        const bool begins_line = result.empty() || result.back() == '\n';
        if (begins_line && (c == '.' || c == '\'')) result += "\\&";
        if (c == '\\')
            result += "\\e";
        else if (c == '-')
            result += "\\-";
        else
            result += c;
    }
    return result;
}

std::string capitals(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? char(c - 32) : c; });
    return text;
}

std::string page_name(const std::string& command) {
    std::string name = "quillbrook" + std::string(command.empty() ? "" : "-") + command;
    std::replace(name.begin(), name.end(), ' ', '-');
    return name;
}

std::string head_of(const std::string& command, const std::string& about) {
    const std::string name = page_name(command);
    return ".TH " + escaped(capitals(name)) +
           " 1 \"\" \"quillbrook " QUILLBROOK_VERSION "\" \"User Commands\"\n.SH NAME\n" + escaped(name) + " \\- " +
           escaped(about) + "\n";
}

/// "\fB\-\-rate\fR \fIRATE\fR"
std::string spelled(const Option& option) {
    if (is_positional(option)) return "\\fI" + escaped(option.name) + "\\fR" + (takes_several(option) ? "..." : "");
    const std::string name = "\\fB" + escaped(option.name) + "\\fR";
    return *option.value ? name + " \\fI" + escaped(option.value) + "\\fR" : name;
}

std::string synopsis_of(const Command& command, const std::vector<Option>& options) {
    std::string line = "\\fBquillbrook " + escaped(command.name) + "\\fR";
    for (const Option& option : options)
        if (option.needed == Needed::yes) line += " " + spelled(option);
    return ".SH SYNOPSIS\n" + line + " [\\fIoptions\\fR]\n";
}

/// What the line need not say, and within which limits.
std::string limits_of(const Option& option) {
    if (const auto* number = std::get_if<WholeNumber>(&option.target))
        return " From " + std::to_string(number->least) + " to " + std::to_string(number->most) + "; " +
               std::to_string(number->number.get()) + " where the line doesn't say.";
    const auto* text = std::get_if<OneText>(&option.target);
    return text && !text->preset.empty() ? " By default " + text->preset + "." : "";
}

std::string entry_of(const Option& option) {
    std::string about = escaped(option.help);
    if (about.back() != '.') about += '.';
    if (takes_several(option) && !is_positional(option))
        about += std::holds_alternative<EachText>(option.target) ? " May be given often." : " One or more.";
    if (option.needed == Needed::yes && !is_positional(option)) about += " Required.";
    return ".TP\n" + spelled(option) + "\n" + about + escaped(limits_of(option)) + "\n";
}

std::string options_of(const std::vector<Option>& options) {
    std::string arguments, named = ".SH OPTIONS\n";
    for (const Option& option : options)
        (is_positional(option) ? arguments : named) += entry_of(option);
    named += ".TP\n\\fB\\-h\\fR, \\fB\\-\\-help\\fR\nTell of the options.\n";
    return (arguments.empty() ? "" : ".SH ARGUMENTS\n") + arguments + named;
}

/// A block of its own for what the help says below its options, each part with its title.
std::string parts_of(const std::string& text) {
    std::string result;
    std::istringstream lines(text);
    bool filled = true;
    for (std::string line; std::getline(lines, line);) {
        if (line == "Examples:") {
            result += ".SH EXAMPLES\n.nf\n";
            filled = false;
        } else if (line.substr(0, 13) == "Exit status: ") {
            result += std::string(filled ? "" : ".fi\n") + ".SH EXIT STATUS\n" + escaped(line.substr(13)) + "\n";
            filled = true;
        } else if (!line.empty()) {
            result += escaped(line) + "\n";
        }
    }
    return result + (filled ? "" : ".fi\n");
}

std::string see_also(const std::vector<std::string>& pages) {
    std::string text = ".SH SEE ALSO\n";
    for (std::size_t i = 0; i < pages.size(); ++i)
        text += ".BR " + escaped(pages[i]) + " (" + (pages[i].find("quillbrook-formats") == 0 ? "5" : "1") + ")" +
                (i + 1 < pages.size() ? " ,\n" : "\n");
    return text;
}

ManPage page_of(const Command& command) {
    const Prepared prepared = command.prepare();
    const std::vector<Option>& options = prepared.options.rows();
    return {page_name(command.name), head_of(command.name, command.about) + synopsis_of(command, options) +
                                         ".SH DESCRIPTION\n" + escaped(command.about) + ".\n" + options_of(options) +
                                         parts_of(command.examples) + see_also({"quillbrook", "quillbrook-formats"})};
}

ManPage chief_page() {
    std::string text = head_of("", "film lists from edits") +
                       ".SH SYNOPSIS\n\\fBquillbrook\\fR \\fIcommand\\fR [\\fIoptions\\fR]\n.br\n"
                       "\\fBquillbrook help\\fR [\\fIcommand\\fR]\n.SH DESCRIPTION\n" +
                       escaped(about) + "\n.SH COMMANDS\n";
    std::vector<std::string> pages;
    for (const Command* command : all_commands()) {
        text += ".TP\n\\fB" + escaped(command->name) + "\\fR\n" + escaped(command->about) + ".\n";
        pages.push_back(page_name(command->name));
    }
    text += ".SH OPTIONS\n.TP\n\\fB\\-h\\fR, \\fB\\-\\-help\\fR\nTell of the commands.\n"
            ".TP\n\\fB\\-\\-version\\fR\nTell the version.\n";
    pages.emplace_back("quillbrook-formats");
    return {"quillbrook", text + parts_of(main_examples) + see_also(pages)};
}

} // namespace

std::vector<ManPage> man_pages() {
    std::vector<ManPage> pages{chief_page()};
    for (const Command* command : all_commands())
        pages.push_back(page_of(*command));
    return pages;
}

} // namespace tool
