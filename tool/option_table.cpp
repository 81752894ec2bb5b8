#include "tool/option_table.h"

#include <iterator>

namespace tool {

void OptionTable::add(std::vector<Option> rows) {
    rows_.insert(rows_.end(), std::make_move_iterator(rows.begin()), std::make_move_iterator(rows.end()));
}

bool is_positional(const Option& option) { return option.name[0] != '-'; }

bool takes_several(const Option& option) {
    return std::holds_alternative<InputFiles>(option.target) || std::holds_alternative<InputGroups>(option.target) ||
           std::holds_alternative<EachText>(option.target) ||
           std::holds_alternative<std::reference_wrapper<std::vector<std::string>>>(option.target);
}

} // namespace tool
