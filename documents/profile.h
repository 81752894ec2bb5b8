#pragma once
// Whom a document is for: which lists it holds, and which of their columns pages show.

#include "documents/document.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace documents {

struct Profile {
    std::vector<std::string> lists;                          ///< by id, in order
    std::map<std::string, std::vector<std::string>> columns; ///< of a list, by id; a list that isn't here shows its own
    std::optional<bool> frames;                              ///< not feet and frames; unset: as the run has it
    std::optional<Paper> paper;
};

/// "assistant", "cutter", ... as messages and helps name them.
const std::vector<std::string>& profile_names();
/// The usual one where the name is empty; null where there is none of that name.
const Profile* profile_named(std::string_view name);

/// Reads a profile of lines like
///
///     # what we send to the lab
///     lists = assembly, pull-roll, rolls
///     columns assembly = event, length, roll, key
///     units = frames
///     paper = letter
///
/// Without `lists` it has those of the usual one, and so it is with the columns of a list. Where a line can't be
/// understood, nothing, and `fault` says which and why.
std::optional<Profile> read_profile(std::string_view text, std::string* fault);

/// Words parted by commas, without the blanks around them.
std::vector<std::string> words_of(std::string_view text);

/// Leaves to pages the columns that the profile names.
void apply_profile(const Profile& profile, Document& document);

} // namespace documents
