#pragma once
// The rolls of selects of an order, as aligned text.

#include "film/order_facts.h"

#include <string>

namespace tool {

/// Empty where none were built.
std::string select_rolls_text(const film::OrderToTell& order);

} // namespace tool
