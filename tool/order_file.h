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
/// The same of bytes; `path` is for messages.
void read_order_bytes(const std::string& bytes, const std::string& path, std::vector<film::HadPiece>& pieces,
                      std::vector<std::string>& names);

/// A piece of an order that lies on a new roll.
struct PieceOnRoll : film::HadPiece {
    std::string roll;
    label_t timecode = label_none;
    std::int64_t first = 0; ///< timecode of its first frame there, as a number of frames

    std::int64_t last() const { return first + frames.length() - 1; }
};

/// The pieces of an order whose rolls were built. Throws `JobError` as `read_order`, and where they weren't.
std::vector<PieceOnRoll> read_pieces_on_rolls(const std::string& path);
/// The same of its bytes.
std::vector<PieceOnRoll> read_pieces_on_rolls_bytes(const std::string& bytes, const std::string& path);

} // namespace tool
