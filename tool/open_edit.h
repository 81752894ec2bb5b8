#pragma once
// Opens edit files for the commands.

#include "embedded/warning.h"
#include "formats/edit_reading.h"
#include "host/edit.h"
#include "tool/job_parts.h"

namespace tool {

/// An edit list by its name, or by its lines where the name says nothing.
bool is_edit_list(const std::string& path);

/// The edit of a file, or of the edit lists of one programme, by extension or else by content; what was read past
/// goes to `warnings`. Throws `JobError`.
EditPtr open_edit(const EditInput& input, embedded::Warnings& warnings);

/// All that the file holds, for `EditInput::sequence`. Throws `JobError`.
std::vector<formats::Sequence> sequences_of(const EditInput& input);

} // namespace tool
