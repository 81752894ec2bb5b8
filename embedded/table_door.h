#pragma once
// Texts of tables that are read for use, not to be stored again as they were: what `visible_text.h` does to names.

#include "embedded/warning.h"

#include <functional>
#include <string>

class recdb;

namespace embedded {

class TableData;

/// From now on all tables that `recdb` reads go through the door, and `tell` gets a line for each file that held such
/// texts, once. Null takes tables as they stand again, as it is at first.
void receive_tables(std::function<void(const Warning&)> tell);

/// For `recdb`.
void receive_table(TableData& table, const std::string& path);
/// The same for the rows of a table that was made of a file of another kind.
void receive_rows(recdb& table, const std::string& path);

} // namespace embedded
