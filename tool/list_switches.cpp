#include "tool/list_switches.h"

#include "tool/tool_error.h"

namespace tool {
namespace {

/// A word of a switch, the option of the library that it turns on, and the extension of a file of its own.
struct ListWord {
    const char* word;
    const char* key;
    const char* extension;
};

constexpr ListWord printed_lists[] = {
    {"rolls", "roll_list", ""},       {"pull", "pull_list", ""}, {"assembly", "assembly_list", ""},
    {"opticals", "optical_list", ""}, {"doubts", nullptr, ""},
};

constexpr ListWord single_layer_lists[] = {
    {"1", "fsl_type1_file", ".sl1"},
    {"2", "fsl_type2_file", ".sl2"},
    {"3", "fsl_type3_file", ".sl3"},
    {"4", "fsl_type4_file", ".sl4"},
};

struct ChangeListWord {
    const char* word;
    const char* key;
    bool by_default;
};

constexpr ChangeListWord change_lists[] = {
    {"summary", "chg_summary_list", true}, {"new", "chg_pull_list", true},
    {"changes", "chg_verbose_list", true}, {"transitions", "chg_dissolve_list", true},
    {"bench", "chg_bench_list", false},
};

/// A word and the value of an option that it stands for.
using ValueWord = std::pair<const char*, const char*>;

constexpr ValueWord bench_costs[] = {{"moves", "1"}, {"splices", "2"}, {"frames", "3"}};

constexpr ValueWord change_units[] = {{"frames", "0"}, {"feet", "1"}, {"timecode", "2"}};

std::vector<std::string> split_words(const std::vector<std::string>& values) {
    std::vector<std::string> words;
    for (const std::string& value : values) {
        std::size_t begin = 0;
        for (std::size_t comma = 0; comma != std::string::npos; begin = comma + 1) {
            comma = value.find(',', begin);
            words.push_back(value.substr(begin, comma == std::string::npos ? comma : comma - begin));
        }
    }
    return words;
}

template <class Word, std::size_t N>
const Word& find_word(const char* option, const Word (&known)[N], const std::string& word) {
    for (const Word& candidate : known)
        if (word == candidate.word) return candidate;
    throw UsageError(std::string(option) + ": \"" + word + "\" is not one of " + listed(names_in(known, &Word::word)));
}

using Switches = std::map<std::string, std::string>;

void choose_printed(Switches& switches, bool& doubts, const std::vector<std::string>& values) {
    switches["some_lists"] = "1";
    for (const ListWord& list : printed_lists)
        if (list.key) switches[list.key] = "0";
    for (const std::string& word : split_words(values)) {
        const ListWord& list = find_word("--lists", printed_lists, word);
        if (list.key)
            switches[list.key] = "1";
        else
            doubts = true;
    }
}

void choose_single_layer(Switches& switches, const std::vector<std::string>& values) {
    for (const std::string& word : split_words(values))
        switches[find_word("--single-layer", single_layer_lists, word).key] = "1";
}

void choose_changes(Switches& switches, const std::vector<std::string>& values) {
    for (const ChangeListWord& list : change_lists)
        switches[list.key] = "0";
    for (const std::string& word : split_words(values))
        switches[find_word("--lists", change_lists, word).key] = "1";
}

template <std::size_t count>
OneText one_of(LibraryOptions& library, const char* key, const ValueWord (&values)[count], const char* preset = "") {
    const auto take = [&library, key, &values](const std::string& text) {
        for (const auto& [word, value] : values)
            if (text == word) library.switches[key] = value;
    };
    return tool::one_of(names_in(values, &ValueWord::first), take, preset);
}

Option word_option(const char* name, const char* value, const char* help, LibraryOptions& library,
                   void (*choose)(Switches&, const std::vector<std::string>&)) {
    return {name, value, help,
            EachText{[&library, choose](const std::vector<std::string>& values) { choose(library.switches, values); }}};
}

} // namespace

Option printed_lists_option(LibraryOptions& library, bool& doubts) {
    const auto choose = [&library, &doubts](const std::vector<std::string>& values) {
        choose_printed(library.switches, doubts, values);
    };
    return {"--lists", "LIST,...",
            "Only these lists: rolls, pull, assembly, opticals, and doubts, which is off by default", EachText{choose}};
}

Option single_layer_option(LibraryOptions& library) {
    return word_option("--single-layer", "N,...", "Single-layer lists to write: 1, 2, 3, 4", library,
                       choose_single_layer);
}

Option change_lists_option(LibraryOptions& library) {
    for (const ChangeListWord& list : change_lists)
        library.switches[list.key] = list.by_default ? "1" : "0";
    return word_option("--lists", "LIST,...",
                       "Only these lists: summary, new, changes, transitions, bench; by default all but bench", library,
                       choose_changes);
}

Option bench_cost_option(LibraryOptions& library) {
    return {"--cost", "COST", "Plan the bench list for the fewest moves or splices, or the least frames, and prove it",
            one_of(library, "chg_bench_cost", bench_costs)};
}

Option change_units_option(LibraryOptions& library) {
    return {"--units", "UNITS", "Lengths and positions in frames, feet or timecode",
            one_of(library, "chg_lengthunits", change_units, change_units[0].first)};
}

std::vector<const char*> all_single_layer_extensions() {
    std::vector<const char*> extensions;
    for (const ListWord& list : single_layer_lists)
        extensions.push_back(list.extension);
    return extensions;
}

std::vector<const char*> single_layer_extensions(const LibraryOptions& options) {
    std::vector<const char*> extensions;
    for (const ListWord& list : single_layer_lists)
        if (options.is_on(list.key)) extensions.push_back(list.extension);
    return extensions;
}

} // namespace tool
