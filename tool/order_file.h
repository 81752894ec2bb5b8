#pragma once
// Orders as JSON documents, which later runs hold their needs against.

#include "film/order_facts.h"

#include <string>
#include <vector>

namespace tool {

using film::OrderInput;
using film::OrderToTell;

std::string order_document(const OrderToTell& order);

/// Adds the pieces of an order that was written by an earlier run. Throws `JobError`, naming the file and what is
/// wrong: it is no order, a newer one, or damaged.
void read_order(const std::string& path, std::vector<film::HadPiece>& pieces, std::vector<std::string>& names);

} // namespace tool
