#pragma once
// Clips on tracks into an edit.

#include "embedded/edit_builder.h"
#include "embedded/warning.h"
#include "formats/edl/edl_tracks.h"

namespace formats::edl {

/// Stores the edit; what was left out or cut goes to `warnings`, each with its file and line. `description` needs
/// no more than what the lists don't say of the edit's record.
EditPtr build_edit(const std::vector<NamedList>& lists, const Tracks& tracks, embedded::EditDescription description,
                   bool all_effects, embedded::Warnings& warnings);

} // namespace formats::edl
