#pragma once
// The rolls of selects in an order's document.

#include "film/select_rolls.h"
#include "tool/json_writer.h"

namespace tool {

/// "rolls"; nothing where none were built.
void put_select_rolls(JsonWriter& out, const film::SelectRolls& selects);
/// "on_roll" of a piece.
void put_roll_place(JsonWriter& out, const film::SelectRolls& selects, std::size_t piece);

} // namespace tool
