#include "tool/option_table.h"

#include "tool/tool_logger.h"

#include <algorithm>
#include <iterator>

namespace tool {

void OptionTable::add(std::vector<Option> rows) {
    rows_.insert(rows_.end(), std::make_move_iterator(rows.begin()), std::make_move_iterator(rows.end()));
}

std::string listed(const std::vector<std::string>& words) {
    std::string list;
    for (const std::string& word : words)
        list += (list.empty() ? "" : ", ") + word;
    return list;
}

std::string none_of(const std::string& text, const std::vector<std::string>& words) {
    return one_line('"' + text + "\" is none of " + listed(words));
}

OneText one_of(std::vector<std::string> words, std::function<void(const std::string&)> take, std::string preset) {
    const auto fault = [words](const std::string& text) {
        const bool known = std::find(words.begin(), words.end(), text) != words.end();
        return known ? std::string() : none_of(text, words);
    };
    return {std::move(take), std::move(preset), fault, std::move(words)};
}

bool is_positional(const Option& option) { return option.name[0] != '-'; }

bool takes_several(const Option& option) {
    return std::holds_alternative<InputFiles>(option.target) || std::holds_alternative<InputGroups>(option.target) ||
           std::holds_alternative<EachText>(option.target) ||
           std::holds_alternative<std::reference_wrapper<std::vector<std::string>>>(option.target);
}

} // namespace tool
