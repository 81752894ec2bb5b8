#include "tool/value_words.h"

#include "quillbrook/changelist.h"
#include "quillbrook/cutlist.h"
#include "tool/key_values.h"

#include <map>
#include <utility>

namespace tool {
namespace {

using Words = std::vector<std::string>;

/// Keys of the library that the line sets by options of their own.
bool has_own_option(const std::string& key) { return key == "output_file" || key == "log_file"; }

template <class Key> Words names_of(const Key* key) {
    Words names;
    for (; key->name; ++key)
        if (!has_own_option(key->name)) names.emplace_back(key->name);
    return names;
}

Words with(Words words, const Words& more) {
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

using Table = std::map<std::pair<std::string, std::string>, ValueWords>;

// By option, or by the name of its value; and by command where an option is another thing there.
Table made_table() {
    const Words edits{"otio", "otioz", "otiod", "edl", "fcpxml", "fcpxmld", "xml", "aaf"};
    const Words cdb{"cdb", "CDB"}, tables{"RDB", "rdb"};
    const Words logs{"RDB", "rdb", "ale", "ALE", "flx", "FLX", "flex", "ftl", "kl", "csv", "tsv", "tab", "txt"};
    const Words kinds{"35mm,4perf", "35mm,3perf",  "35mm,2perf",  "35mm,8perf", "16mm",      "65mm-5p120",
                      "65mm-8p120", "65mm-10p120", "65mm-15p120", "65mm-5p80",  "65mm-8p80", "65mm-10p80"};
    const ValueWords any_file{ValueKind::files, {}}, folder{ValueKind::folders, {}};
    const auto words = [](const Words& list) { return ValueWords{ValueKind::words, list}; };
    const auto files = [](const Words& list) { return ValueWords{ValueKind::files, list}; };
    const auto keys = [](const Words& list) { return ValueWords{ValueKind::keys, list}; };
    Table table;
    const auto of_all = [&](const char* option, const ValueWords& values) { table[{"", option}] = values; };
    const auto of = [&](const char* command, const char* option, const ValueWords& values) {
        table[{command, option}] = values;
    };

    of_all("EDIT", files(edits));
    of("changelist", "EDIT", files(with(cdb, edits)));
    of("order", "EDIT", files(with(cdb, edits)));
    of("conform", "EDIT", files(with(cdb, edits)));
    of_all("CDB", files(cdb));
    of_all("TABLE", files(tables));
    of_all("LOG", files(logs));
    of_all("FOLDER", folder);
    for (const char* option : {"--old", "--new", "--edit", "--edits", "--cut"})
        of_all(option, files(with(cdb, edits)));
    of_all("--log", files(tables));
    of_all("--had", files({"json"}));
    of_all("--on-rolls", files({"json"}));
    of_all("FILE", any_file);
    of("describe", "FILE", files(with(with(cdb, edits), logs)));
    of_all("DIR", folder);

    of_all("--channel", words({"V1", "V2", "V3", "V4", "A1", "A2", "A3", "A4", "A5", "A6", "A7", "A8"}));
    of_all("--rate", words({"23.976", "23.98", "24", "25", "29.97", "30", "47.952", "48", "50", "59.94", "60"}));
    of_all("--film", words(kinds));
    of_all("--lists", {ValueKind::list, {"rolls", "pull", "assembly", "opticals", "doubts"}});
    of("changelist", "--lists", {ValueKind::list, {"summary", "new", "changes", "transitions", "bench"}});
    of_all("--single-layer", {ValueKind::list, {"1", "2", "3", "4"}});
    of_all("--config", keys(setting_keys));
    of_all("--set", keys(names_of(cutlist_option_keys())));
    of_all("--cut-set", keys(names_of(cutlist_option_keys())));
    of("changelist", "--set", keys(names_of(changelist_option_keys())));

    return table;
}

} // namespace

ValueWords value_words(const std::string& command, const Option& option) {
    const OneText* text = std::get_if<OneText>(&option.target);
    if (text && !text->words.empty()) return {ValueKind::words, text->words};
    static const Table& table = *new Table(made_table());
    const std::pair<std::string, std::string> keys[] = {{command, option.name}, {"", option.name}, {"", option.value}};
    for (const auto& key : keys)
        if (const auto found = table.find(key); found != table.end()) return found->second;
    return {};
}

} // namespace tool
