#pragma once
// Names that sources take on when they come in, whatever file they are read of.

#include "embedded/edit_builder.h"

#include <functional>

namespace embedded {

/// Called for each source that is added to an edit from now on, in de-rendered copies too, until another is set; an
/// empty one changes nothing. Edits that stand are left alone. Set it while no other thread builds edits.
void set_source_naming(std::function<void(SourceDescription&)> naming);

} // namespace embedded
