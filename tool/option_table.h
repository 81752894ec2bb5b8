#pragma once
// What a command takes from the line. Each command lists its options in its own file, straight into its own job:
//
//     options.add({{"--frames", "", "Positions in frames in place of feet and frames", job.frames},
//                  {"-o", "FILE", "The report to write", job.report, Needed::yes}});
//
// To add an option: one row there, or in tool/shared_options.cpp where several commands have it. The type of what the
// row fills says what the line may hold:
//
//     bool&, Switch               nothing: a switch
//     std::string&, optional&     one value
//     std::vector<std::string>&   one or more values
//     WholeNumber                 a number within limits, preset to what it is
//     InputFile, InputFiles       a file, or one or more, to be read; "-" is standard input
//     InputGroups                 one or more files each time, as often as one likes
//     OneText                     one value, turned into what the job holds
//     one_of(words, ...)          one of some words
//     EachText                    one value each time, as often as one likes
//
// A row whose name begins with no dash takes what stands on the line without a name. What options may not be together
// is a check of its own. Command: tool/command.h.

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace tool {

struct WholeNumber {
    std::reference_wrapper<int> number;
    int least, most;
};

/// `turn_on` is called where the switch stands on the line.
struct Switch {
    std::function<void()> turn_on;
};

/// The path that the job reads. "-" becomes the path of standard input, which only one file of a line may be.
struct InputFile {
    std::reference_wrapper<std::string> path;
    std::function<std::string(const std::string&)> fault = {}; ///< as of `OneText`
};

struct InputFiles {
    std::reference_wrapper<std::vector<std::string>> paths;
};

/// The files of each time that the option stands on the line.
struct InputGroups {
    std::reference_wrapper<std::vector<std::vector<std::string>>> groups;
};

/// `take` throws `UsageError`.
struct OneText {
    std::function<void(const std::string& text)> take;
    std::string preset = {};                                   ///< told by the help and taken where the line has none
    std::function<std::string(const std::string&)> fault = {}; ///< why a text is none; empty where it is fine
    std::vector<std::string> words = {};                       ///< all that it may be; empty where that is open
};

/// "a, b, c"
std::string listed(const std::vector<std::string>& words);

/// "\"x\" is none of a, b, c"
std::string none_of(const std::string& text, const std::vector<std::string>& words);

/// One of these words; other texts are refused with all of them.
OneText one_of(std::vector<std::string> words, std::function<void(const std::string& word)> take,
               std::string preset = {});

/// What the rows are called: `name` is a member of them.
template <class Row, std::size_t count, class Name>
std::vector<std::string> names_in(const Row (&rows)[count], Name Row::*name) {
    std::vector<std::string> names;
    for (const Row& row : rows)
        names.emplace_back(row.*name);
    return names;
}

/// `value` becomes what the word stands for. The table stays where it is.
template <class Value, class Target, std::size_t count>
OneText one_of(const std::pair<const char*, Value> (&meanings)[count], Target& value, std::string preset = {}) {
    const auto take = [&meanings, &value](const std::string& text) {
        for (const auto& [word, meaning] : meanings)
            if (text == word) value = meaning;
    };
    return one_of(names_in(meanings, &std::pair<const char*, Value>::first), take, std::move(preset));
}

/// `take` gets all the texts at once, in the order of the line, and throws `UsageError`.
struct EachText {
    std::function<void(const std::vector<std::string>& texts)> take;
};

using Target =
    std::variant<std::reference_wrapper<bool>, std::reference_wrapper<std::string>,
                 std::reference_wrapper<std::optional<std::string>>, std::reference_wrapper<std::vector<std::string>>,
                 WholeNumber, Switch, InputFile, InputFiles, InputGroups, OneText, EachText>;

enum class Needed : bool { no, yes };

struct Option {
    const char* name;  ///< "--rate", "-o", or "EDIT" for what stands without a name
    const char* value; ///< what the help calls its value; empty for a switch
    const char* help;
    Target target;
    Needed needed = Needed::no;
};

/// It takes what stands on the line without a name.
bool is_positional(const Option& option);
/// It takes more than one value, at once or each time that it stands on the line.
bool takes_several(const Option& option);

/// The options of one command, in the order of its help.
class OptionTable {
public:
    /// What the rows refer to stays where it is.
    void add(std::vector<Option> rows);
    /// Called after all options were taken; throws `UsageError`.
    void add_check(std::function<void()> check) { checks_.push_back(std::move(check)); }

    // Not of one that is about to go: a loop over what is returned would outlive it.
    const std::vector<Option>& rows() && = delete;
    const std::vector<Option>& rows() const& { return rows_; }
    const std::vector<std::function<void()>>& checks() const& { return checks_; }

private:
    std::vector<Option> rows_;
    std::vector<std::function<void()>> checks_;
};

} // namespace tool
