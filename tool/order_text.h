#pragma once
// Orders as people read them.

#include "tool/order_file.h"

#include <string>

namespace tool {

/// A table for each roll, what was longer, what no reel uses any more, and what can't be ordered.
std::string order_text(const OrderToTell& order);

} // namespace tool
