#pragma once
// Options that tell of splices.

#include "film/splice_loss.h"
#include "tool/option_table.h"

namespace tool {

/// --method.
Option method_option(film::SpliceRules& rules);
/// --splice-loss.
Option splice_loss_option(film::SpliceRules& rules);

} // namespace tool
