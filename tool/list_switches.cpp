#include "tool/list_switches.h"

#include "tool/key_values.h"
#include "tool/tool_error.h"

namespace tool {
namespace {

/// A word of a switch, the option that it turns on, and the extension of a file of its own.
struct ListWord {
    const char* word;
    const char* key;
    const char* extension;
};

constexpr ListWord printed_lists[] = {
    {"rolls", "roll_list", ""},
    {"pull", "pull_list", ""},
    {"assembly", "assembly_list", ""},
    {"opticals", "optical_list", ""},
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

struct UnitsWord {
    const char* word;
    const char* value;
};

constexpr UnitsWord change_units[] = {{"frames", "0"}, {"feet", "1"}, {"timecode", "2"}};

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
    std::string choices;
    for (const Word& candidate : known) {
        if (word == candidate.word) return candidate;
        choices += std::string(choices.empty() ? "" : ", ") + candidate.word;
    }
    throw UsageError(std::string(option) + ": \"" + word + "\" is not one of " + choices);
}

void choose_printed(Options& options, const std::vector<std::string>& values) {
    if (values.empty()) return;
    options["some_lists"] = "1";
    for (const ListWord& list : printed_lists)
        options[list.key] = "0";
    for (const std::string& word : split_words(values))
        options[find_word("--lists", printed_lists, word).key] = "1";
}

void choose_single_layer(Options& options, const std::vector<std::string>& values) {
    for (const std::string& word : split_words(values))
        options[find_word("--single-layer", single_layer_lists, word).key] = "1";
}

void choose_changes(Options& options, const std::vector<std::string>& values) {
    for (const ChangeListWord& list : change_lists)
        options[list.key] = values.empty() && list.by_default ? "1" : "0";
    for (const std::string& word : split_words(values))
        options[find_word("--lists", change_lists, word).key] = "1";
}

void put_over(Options& options, const Options& set) {
    for (const auto& [key, value] : set)
        options[key] = value;
}

} // namespace

Options list_options(const ListSwitches& switches, const Options& set) {
    Options options;
    choose_printed(options, switches.lists);
    choose_single_layer(options, switches.single_layer);
    if (switches.handles) options["pull_handle"] = parse_frames("--handles", *switches.handles);
    if (switches.butt) options["butt"] = parse_frames("--butt", *switches.butt);
    if (switches.sort_by_key) options["pull_sort_by_keycode"] = "1";
    put_over(options, set);
    return options;
}

Options change_options(const ChangeSwitches& switches, const Options& set) {
    Options options;
    choose_changes(options, switches.lists);
    options["chg_lengthunits"] = find_word("--units", change_units, switches.units).value;
    options["chg_showedgecodes"] = switches.no_keys ? "0" : "1";
    options["chg_useshotscenetake"] = switches.scene_take ? "1" : "0";
    if (switches.channel) {
        const ChannelName channel = parse_channel(*switches.channel);
        options["CHAN_TYPE"] = std::to_string(channel.kind);
        options["CHAN_NUM"] = std::to_string(channel.number - 1);
    }
    put_over(options, set);
    return options;
}

std::vector<const char*> single_layer_extensions(const Options& options) {
    std::vector<const char*> extensions;
    for (const ListWord& list : single_layer_lists) {
        const auto found = options.find(list.key);
        if (found != options.end() && found->second != "0") extensions.push_back(list.extension);
    }
    return extensions;
}

} // namespace tool
