#include "tool/command_line.h"

#include "embedded/held_input.h"
#include "tool/command.h"
#include "tool/help_files.h"
#include "tool/suggestion.h"
#include "tool/tool_error.h"

#include <CLI/CLI.hpp>

#include <deque>
#include <map>
#include <optional>

namespace tool {
namespace {

/// Values that a job doesn't hold as they stand on the line.
struct Raw {
    bool on = false;
    std::string text;
    std::vector<std::string> texts;
};

/// Adds the options of one command to the parser; afterwards gives the job what has to be turned into something first.
class Reader {
public:
    Reader(CLI::App& parser, const Command& command) : prepared_(command.prepare()) {
        for (const Option& option : prepared_.options.rows())
            finish(std::visit([&](const auto& target) { return add(parser, option, target); }, option.target), option);
    }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    std::function<JobResult()> job() const {
        for (const std::function<void()>& take : takes_)
            take();
        for (const std::function<void()>& check : prepared_.options.checks())
            check();
        return prepared_.run;
    }

private:
    static void finish(CLI::Option* added, const Option& option) {
        if (*option.value) added->type_name(option.value);
        added->required(option.needed == Needed::yes);
    }

    static CLI::Option* add(CLI::App& parser, const Option& option, std::reference_wrapper<bool> target) {
        return parser.add_flag(option.name, target.get(), option.help);
    }
    template <class Value>
    static CLI::Option* add(CLI::App& parser, const Option& option, std::reference_wrapper<Value> target) {
        return parser.add_option(option.name, target.get(), option.help);
    }
    static CLI::Option* add(CLI::App& parser, const Option& option, const WholeNumber& target) {
        return parser.add_option(option.name, target.number.get(), option.help)
            ->check(CLI::Range(target.least, target.most))
            ->capture_default_str();
    }
    CLI::Option* add(CLI::App& parser, const Option& option, const Switch& target) {
        Raw& raw = raws_.emplace_back();
        takes_.push_back([&raw, &target] {
            if (raw.on) target.turn_on();
        });
        return parser.add_flag(option.name, raw.on, option.help);
    }
    CLI::Option* add(CLI::App& parser, const Option& option, const InputFile& target) {
        CLI::Option* added = parser.add_option(option.name, target.path.get(), option.help);
        if (target.fault) added->check(target.fault);
        takes_.push_back([this, &target] { name_standard_input(target.path.get()); });
        return added;
    }
    CLI::Option* add(CLI::App& parser, const Option& option, const InputFiles& target) {
        takes_.push_back([this, &target] {
            for (std::string& path : target.paths.get())
                name_standard_input(path);
        });
        return parser.add_option(option.name, target.paths.get(), option.help);
    }
    CLI::Option* add(CLI::App& parser, const Option& option, const InputGroups& target) {
        takes_.push_back([this, &target] {
            for (std::vector<std::string>& group : target.groups.get())
                for (std::string& path : group)
                    name_standard_input(path);
        });
        return parser.add_option(option.name, target.groups.get(), option.help);
    }
    CLI::Option* add(CLI::App& parser, const Option& option, const OneText& target) {
        Raw& raw = raws_.emplace_back(Raw{false, target.preset, {}});
        CLI::Option* added = parser.add_option(option.name, raw.text, option.help);
        if (!target.preset.empty()) added->capture_default_str();
        if (target.fault) added->check(target.fault);
        takes_.push_back([&raw, &target, added] {
            if (added->count() > 0 || !target.preset.empty()) target.take(raw.text);
        });
        return added;
    }
    CLI::Option* add(CLI::App& parser, const Option& option, const EachText& target) {
        Raw& raw = raws_.emplace_back();
        CLI::Option* added = parser.add_option(option.name, raw.texts, option.help)->allow_extra_args(false);
        takes_.push_back([&raw, &target, added] {
            if (added->count() > 0) target.take(raw.texts);
        });
        return added;
    }

    void name_standard_input(std::string& path) {
        if (path != "-") return;
        if (reads_standard_input_) throw UsageError("-: standard input can be read once only");
        reads_standard_input_ = true;
        path = embedded::standard_input;
    }

    Prepared prepared_;
    bool reads_standard_input_ = false;
    std::deque<Raw> raws_;
    std::vector<std::function<void()>> takes_;
};

std::string listed(const std::vector<std::string>& words) {
    std::string list;
    for (std::size_t i = 0; i < words.size(); ++i)
        list += (i == 0 ? "" : i + 1 == words.size() ? " or " : ", ") + words[i];
    return list;
}

std::string word_behind_group(const Command& command) {
    const std::string name = command.name;
    return name.substr(name.find(' ') + 1);
}

/// The commands of a group as they are typed behind it.
std::vector<std::string> commands_of(const CommandGroup& group) {
    std::vector<std::string> words;
    for (const Command* command : all_commands())
        if (group_of(*command) == &group) words.push_back(word_behind_group(*command));
    return words;
}

/// All commands; a group of several by its own name.
std::string all_choices() {
    std::vector<std::string> words;
    for (const Command* command : all_commands()) {
        const CommandGroup* group = group_of(*command);
        const std::string word = group && commands_of(*group).size() > 1 ? group->name : command->name;
        if (words.empty() || words.back() != word) words.push_back(word);
    }
    return listed(words);
}

[[noreturn]] void refuse_bare(const CommandGroup& group) {
    const std::vector<std::string> words = commands_of(group);
    throw UsageError(std::string(group.name) + ": a command is required" + (words.size() == 1 ? ", " : ": ") +
                     listed(words) + "; see quillbrook " + group.name + " --help");
}

/// The commands and options that may stand behind a command.
std::vector<std::string> words_behind(const CLI::App& app) {
    std::vector<std::string> words;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        words.push_back(command->get_name());
    for (const CLI::Option* option : app.get_options())
        if (!option->get_positional()) words.push_back(option->get_name());
    return words;
}

/// All commands. The options of one are set up when the line or the help comes to it, as most of a short run would go
/// into those of the others.
class Parser {
public:
    Parser() : app_(about, "quillbrook") {
        app_.footer(main_examples);
        app_.set_version_flag("--version", "quillbrook " QUILLBROOK_VERSION);
        app_.require_subcommand(0, 1);
        for (const Command* command : all_commands())
            add(*command);
    }

    CLI::App& app() { return app_; }

    /// The help of a command or group that is named by words.
    std::string help_on(const std::vector<std::string>& words) {
        CLI::App* at = &app_;
        std::string before;
        for (const std::string& word : words) {
            const std::vector<CLI::App*> named =
                at->get_subcommands([&](const CLI::App* command) { return command->get_name() == word; });
            if (named.empty())
                throw UsageError("help: there is no command \"" + word + '"' + suggestion(word, words_behind(*at)));
            before += (before.empty() ? "" : " ") + at->get_name();
            at = named.front();
            set_up(*at);
        }
        return at->help(before);
    }

    std::function<JobResult()> job() const {
        for (const Leaf& leaf : leaves_)
            if (leaf.parser.parsed()) return leaf.reader->job();
        for (const auto& [group, parser] : groups_)
            if (parser->parsed()) refuse_bare(*group);
        throw UsageError("a command is required: " + all_choices() + "; see quillbrook --help");
    }

private:
    struct Leaf {
        CLI::App& parser;
        const Command& command;
        std::optional<Reader> reader;

        Leaf(CLI::App& at, const Command& its) : parser(at), command(its) {}
        void set_up() {
            if (!reader) reader.emplace(parser, command);
        }
    };

    void set_up(const CLI::App& parser) {
        for (Leaf& leaf : leaves_)
            if (&leaf.parser == &parser) leaf.set_up();
    }

    void add(const Command& command) {
        const CommandGroup* group = group_of(command);
        CLI::App& parent = group ? parser_of(*group) : app_;
        const std::string word = group ? word_behind_group(command) : command.name;
        CLI::App* parser = parent.add_subcommand(word, command.about);
        parser->footer(command.examples);
        Leaf& leaf = leaves_.emplace_back(*parser, command);
        parser->preparse_callback([&leaf](std::size_t) { leaf.set_up(); });
    }
    CLI::App& parser_of(const CommandGroup& group) {
        CLI::App*& parser = groups_[&group];
        if (!parser) parser = app_.add_subcommand(group.name, group.about)->require_subcommand(0, 1);
        return *parser;
    }

    CLI::App app_;
    std::map<const CommandGroup*, CLI::App*> groups_;
    std::deque<Leaf> leaves_;
};

/// The command that the line has come to.
const CLI::App& last_command(const CLI::App& app) {
    const std::vector<const CLI::App*> commands = app.get_subcommands([](const CLI::App*) { return true; });
    for (const CLI::App* command : commands)
        if (command->parsed()) return last_command(*command);
    return app;
}

/// What might have been meant by the first word that wasn't expected.
std::string suggestion_behind(const CLI::App& app) {
    const std::vector<std::string> words = app.remaining(true);
    return words.empty() ? "" : suggestion(words.front(), words_behind(last_command(app)));
}

std::string first_line(const std::string& text) { return text.substr(0, text.find('\n')); }

/// The command that the line has come to, as "quillbrook log show".
std::string command_name(const CLI::App& app) {
    std::string name = app.get_name();
    for (const CLI::App* command : app.get_subcommands())
        name += ' ' + command_name(*command);
    return name;
}

/// For those who install the command: manual pages and completion below a folder.
std::function<JobResult()> job_of_files(const std::string& folder) {
    return [folder]() -> JobResult {
        write_help_files(folder);
        return exit_done;
    };
}

} // namespace

Request parse_command_line(int argc, const char* const* argv) {
    Parser parser;
    CLI::App& app = parser.app();
    if (argc > 1 && std::string_view(argv[1]) == "help") {
        if (argc == 4 && std::string_view(argv[2]) == "--files") return job_of_files(argv[3]);
        return parser.help_on({argv + 2, argv + argc});
    }
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForVersion& version) {
        return std::string(version.what()) + '\n';
    } catch (const CLI::CallForHelp&) {
        return app.help();
    } catch (const CLI::ExtrasError& error) {
        throw UsageError(first_line(error.what()) + suggestion_behind(app) + "; see " + command_name(app) + " --help");
    } catch (const CLI::ParseError& error) {
        throw UsageError(first_line(error.what()) + "; see " + command_name(app) + " --help");
    }
    return parser.job();
}

} // namespace tool
