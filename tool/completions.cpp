#include "tool/completions.h"

#include "tool/command.h"
#include "tool/value_words.h"

#include <functional>
#include <utility>
#include <vector>

namespace tool {
namespace {

constexpr const char* kind_words[] = {"free", "words", "list", "keys", "files", "folders"};

using Words = std::vector<std::string>;

std::string joined(const Words& words, const std::string& before, const std::string& between) {
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : between) + before + word;
    return text;
}

/// In single quotes, as all of these shells take them; `quote` is what stands there for one.
std::string quoted(const std::string& text, const char* quote) {
    std::string result = "'";
    for (const char c : text)
        result += c == '\'' ? std::string(quote) : std::string(1, c);
    return result + "'";
}

std::string with_mark_before(const std::string& text, std::string_view signs) {
    std::string result;
    for (const char c : text)
        result += (signs.find(c) == std::string_view::npos ? "" : "\\") + std::string(1, c);
    return result;
}

std::string replaced(std::string text, const std::string& mark, const std::string& by) {
    const std::size_t at = text.find(mark);
    return at == std::string::npos ? text : text.replace(at, mark.size(), by);
}

void for_each_option(const Command& command, const std::function<void(const Option&)>& take) {
    const Prepared prepared = command.prepare();
    for (const Option& option : prepared.options.rows())
        take(option);
}

/// What may stand behind a word of the line: commands and groups, each once, with what they do.
std::vector<std::pair<std::string, std::string>> words_behind(const std::string& group) {
    std::vector<std::pair<std::string, std::string>> words;
    for (const Command* command : all_commands()) {
        const CommandGroup* of = group_of(*command);
        const std::string name = command->name;
        if (!group.empty() && of && of->name == group)
            words.emplace_back(name.substr(name.find(' ') + 1), command->about);
        if (group.empty() && !of) words.emplace_back(name, command->about);
        if (group.empty() && of && (words.empty() || words.back().first != of->name))
            words.emplace_back(of->name, of->about);
    }
    if (group.empty()) words.emplace_back("help", "Tell of one command");
    return words;
}

Words groups() {
    Words names;
    for (const Command* command : all_commands())
        if (const CommandGroup* group = group_of(*command); group && (names.empty() || names.back() != group->name))
            names.emplace_back(group->name);
    return names;
}

// ---- bash

std::string bash_row(const std::string& at, const std::string& kind, const Words& words) {
    return "    " + quoted(at, "'\\''") + ") echo " +
           quoted(kind + (words.empty() ? "" : " ") + joined(words, "", " "), "'\\''") + " ;;\n";
}

std::string bash_rows_of_words() {
    std::string rows;
    Words places = groups();
    places.insert(places.begin(), "");
    for (const std::string& place : places) {
        Words words;
        for (const auto& [word, about] : words_behind(place))
            words.push_back(word);
        rows += bash_row(place, "commands", words);
        if (!place.empty()) rows += bash_row("help " + place, "commands", words);
        if (!place.empty()) continue;
        words.pop_back();
        rows += bash_row("help", "commands", words);
    }
    return rows;
}

std::string bash_rows_of(const Command& command) {
    Words names{"--help"};
    std::string rows;
    const std::string begin = std::string(command.name) + " ";
    for_each_option(command, [&](const Option& option) {
        if (!is_positional(option)) names.emplace_back(option.name);
        const ValueWords values = value_words(command.name, option);
        const char* kind = kind_words[static_cast<int>(values.kind)];
        if (is_positional(option) || *option.value)
            rows += bash_row(begin + (is_positional(option) ? "arguments" : option.name), kind, values.words);
    });
    return bash_row(command.name, "options", names) + rows;
}

constexpr const char* bash_script = R"script(# Completion of quillbrook for bash, written by quillbrook itself.

_quillbrook_table() {
    case "$1" in
@ROWS@    esac
}

_quillbrook_reply() { # kind and words, what is there of a word
    local kind=${1%% *} words= cur=$2 name before=
    [[ $1 == *' '* ]] && words=${1#* }
    case $kind in
    commands | options | words) mapfile -t COMPREPLY < <(compgen -W "$words" -- "$cur") ;;
    keys)
        compopt -o nospace 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -S = -W "$words" -- "$cur")
        ;;
    list)
        [[ $cur == *,* ]] && before=${cur%,*},
        compopt -o nospace 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -P "$before" -W "$words" -- "${cur##*,}")
        ;;
    folders)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -d -- "$cur")
        ;;
    files)
        compopt -o filenames 2>/dev/null
        while IFS= read -r name; do
            if [[ -z $words || -d $name || " $words " == *" ${name##*.} "* ]]; then COMPREPLY+=("$name"); fi
        done < <(compgen -f -- "$cur")
        ;;
    esac
}

_quillbrook() {
    local cur=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} command= row values= i
    COMPREPLY=()
    # "--rate=25" stands in three words, "KEY=VALUE" too.
    [[ $cur == = ]] && cur=
    if [[ $before == = ]]; then
        before=${COMP_WORDS[COMP_CWORD - 2]}
        [[ $before == -* ]] || return
    fi
    row=$(_quillbrook_table '')
    for ((i = 1; i < COMP_CWORD; i++)); do
        [[ $row == commands* ]] || break
        command+=${command:+ }${COMP_WORDS[i]}
        row=$(_quillbrook_table "$command")
    done
    if [[ $row == commands* ]]; then
        _quillbrook_reply "$row" "$cur"
        return
    fi
    [[ $before == -* ]] && values=$(_quillbrook_table "$command $before")
    [[ -z $values && $cur == -* ]] && values=$row
    [[ -z $values ]] && values=$(_quillbrook_table "$command arguments")
    # Some options take all that follows.
    for ((i = COMP_CWORD - 1; i > 0; i--)); do
        [[ -z $values && ${COMP_WORDS[i]} == -* ]] && values=$(_quillbrook_table "$command ${COMP_WORDS[i]}")
    done
    _quillbrook_reply "$values" "$cur"
}

complete -F _quillbrook quillbrook
)script";

// ---- zsh

std::string zsh_action(const Option& option, const ValueWords& values) {
    const std::string begin = ":" + std::string(*option.value ? option.value : option.name) + ":";
    switch (values.kind) {
    case ValueKind::free:
        return begin + " ";
    case ValueKind::words:
        return begin + "(" + joined(values.words, "", " ") + ")";
    case ValueKind::list:
        return begin + "_values -s , " + option.value + " " + joined(values.words, "", " ");
    case ValueKind::keys:
        return begin + "{compadd -S = -- " + joined(values.words, "", " ") + "}";
    case ValueKind::files:
        return begin + (values.words.empty() ? "_files" : "_files -g \"*.(" + joined(values.words, "", "|") + ")\"");
    case ValueKind::folders:
        return begin + "_files -/";
    }
    return begin;
}

std::string zsh_spec(const Command& command, const Option& option) {
    const ValueWords values = value_words(command.name, option);
    if (is_positional(option)) return (takes_several(option) ? "*" : "") + zsh_action(option, values);
    const std::string about = with_mark_before(option.help, "[]:\\");
    return (takes_several(option) ? "*" : "") + std::string(option.name) + "[" + about + "]" +
           (*option.value ? zsh_action(option, values) : "");
}

std::string zsh_case_of(const Command& command) {
    std::string text =
        "    " + quoted(command.name, "'\\''") + ")\n        _arguments '(- *)'{-h,--help}'[Tell of the options]'";
    for_each_option(command, [&](const Option& option) {
        text += " \\\n            " + quoted(zsh_spec(command, option), "'\\''");
    });
    return text + "\n        ;;\n";
}

std::string zsh_words(const std::string& group) {
    std::string text = "(";
    for (const auto& [word, about] : words_behind(group))
        text += (text == "(" ? "" : " ") + quoted(word + ":" + with_mark_before(about, ":\\"), "'\\''");
    return text + ")";
}

constexpr const char* zsh_script = R"script(#compdef quillbrook
# Completion of quillbrook for zsh, written by quillbrook itself.

_quillbrook() {
    local -a choices
    local command=$words[2]
    if (( CURRENT == 2 )); then
        choices=@WORDS@
        _describe command choices
        return
    fi
    shift words
    (( CURRENT-- ))
    case $command in
@GROUPS@    esac
    case $command in
@CASES@    esac
}

if [[ $funcstack[1] == _quillbrook ]]; then
    _quillbrook "$@"
else
    compdef _quillbrook quillbrook
fi
)script";

std::string zsh_group(const std::string& group) {
    return "    " + group + ")\n        if (( CURRENT == 2 )); then\n            choices=" + zsh_words(group) +
           "\n            _describe command choices\n            return\n        fi\n        command=\"$command "
           "$words[2]\"\n" +
           "        shift words\n        (( CURRENT-- ))\n        ;;\n";
}

// ---- fish

std::string fish_values(const ValueWords& values) {
    switch (values.kind) {
    case ValueKind::free:
        return " -x";
    case ValueKind::words:
        return " -x -a " + quoted(joined(values.words, "", " "), "\\'");
    case ValueKind::list:
        return " -x -a " +
               quoted("(__fish_complete_list , 'printf %s\\\\n " + joined(values.words, "", " ") + "')", "\\'");
    case ValueKind::keys:
        return " -x -a " + quoted(joined(values.words, "", "= ") + "=", "\\'");
    case ValueKind::files:
        return values.words.empty()
                   ? " -r -F"
                   : " -r -k -a " + quoted("(__quillbrook_files " + joined(values.words, "", " ") + ")", "\\'");
    case ValueKind::folders:
        return " -x -a '(__fish_complete_directories)'";
    }
    return "";
}

std::string fish_line(const std::string& at) { return "complete -c quillbrook -n '__quillbrook_at " + at + "'"; }

std::string fish_option(const Command& command, const Option& option) {
    const ValueWords values = value_words(command.name, option);
    const std::string about = " -d " + quoted(option.help, "\\'");
    if (is_positional(option)) return fish_line(command.name) + fish_values(values) + "\n";
    const std::string name = option.name;
    const bool is_long = name.substr(0, 2) == "--";
    return fish_line(command.name) + (is_long ? " -l " + name.substr(2) : " -s " + name.substr(1)) +
           (*option.value ? fish_values(values) : "") + about + "\n";
}

std::string fish_words(const std::string& place, const std::string& group) {
    std::string text;
    for (const auto& [word, about] : words_behind(group))
        if (place.empty() || word != "help")
            text += "complete -c quillbrook -n '__quillbrook_behind " + place + "' -a " + word + " -d " +
                    quoted(about, "\\'") + "\n";
    return text;
}

constexpr const char* fish_script = R"script(# Completion of quillbrook for fish, written by quillbrook itself.

function __quillbrook_at -d 'whether the line has come to a command'
    set -l words (commandline -opc)[2..-1]
    set -l many (count $argv)
    test (count $words) -ge $many; and test "$words[1..$many]" = "$argv"
end

function __quillbrook_behind -d 'whether a command stands next'
    set -l words (commandline -opc)[2..-1]
    test "$words" = "$argv"
end

function __quillbrook_files -d 'files with one of these extensions, and folders'
    for name in (__fish_complete_path (commandline -ct))
        set -l path (string split -m 1 \t -- $name)[1]
        if string match -q '*/' -- $path; or contains -- (string replace -r '.*\.' '' -- $path) $argv
            printf '%s\n' $name
        end
    end
end

complete -c quillbrook -f
complete -c quillbrook -n '__quillbrook_behind' -l version -d 'Tell the version'
complete -c quillbrook -s h -l help -d 'Tell of the options'
)script";

} // namespace

std::string bash_completion() {
    std::string rows = bash_rows_of_words();
    for (const Command* command : all_commands())
        rows += bash_rows_of(*command);
    return replaced(bash_script, "@ROWS@", rows);
}

std::string zsh_completion() {
    std::string cases, of_groups;
    for (const Command* command : all_commands())
        cases += zsh_case_of(*command);
    for (const std::string& group : groups())
        of_groups += zsh_group(group);
    return replaced(replaced(replaced(zsh_script, "@WORDS@", zsh_words("")), "@GROUPS@", of_groups), "@CASES@", cases);
}

std::string fish_completion() {
    std::string text = std::string(fish_script) + fish_words("", "") + fish_words("help", "");
    for (const std::string& group : groups())
        text += fish_words(group, group) + fish_words("help " + group, group);
    for (const Command* command : all_commands())
        for_each_option(*command, [&](const Option& option) { text += fish_option(*command, option); });
    return text;
}

} // namespace tool
