#include "tool/option_table.h"

#include <iterator>

namespace tool {

void OptionTable::add(std::vector<Option> rows) {
    rows_.insert(rows_.end(), std::make_move_iterator(rows.begin()), std::make_move_iterator(rows.end()));
}

} // namespace tool
