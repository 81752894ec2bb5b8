#pragma once
// Opens edit files for the commands.

#include "embedded/warning.h"
#include "host/edit.h"
#include "tool/job_parts.h"

namespace tool {

/// The edit of a file, or of the edit lists of one programme, by extension or else by content; what was read past
/// goes to `warnings`. Throws `JobError`.
EditPtr open_edit(const EditInput& input, embedded::Warnings& warnings);

} // namespace tool
