#pragma once
// What the line says of the rolls that the pieces of an order are laid on.

#include "film/order_facts.h"
#include "tool/option_table.h"

#include <string>
#include <vector>

namespace tool {

struct RollChoices {
    film::RollBuilding building;
    std::string start = "01:00:00:00"; ///< timecode of the leader's first frame
};

/// --build-rolls, --leader, --splice-loss, --start-timecode, --roll-name.
void add_roll_options(OptionTable& options, RollChoices& choices);

/// Lays the pieces of the order, where rolls are asked for. Their timecode counts 25 where all reels do, else 24.
/// Throws `JobError`.
void build_select_rolls(const RollChoices& choices, film::OrderToTell& order);

/// Of a proof; empty where no rolls were built.
std::vector<std::string> failures_of_rolls(const film::OrderToTell& order);

} // namespace tool
