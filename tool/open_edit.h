#pragma once
// Opens edit files for the commands.

#include "host/edit.h"
#include "tool/jobs.h"

namespace tool {

/// The edit of a file, chosen by its extension; what was read past goes to `warnings`. Throws `JobError`.
EditPtr open_edit(const EditInput& input, std::vector<std::string>& warnings);

} // namespace tool
