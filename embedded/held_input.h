#pragma once
// Inputs that can be read once only: standard input, pipes and devices. What came from them is kept, so that whoever
// reads such a path later gets the same bytes.

#include "embedded/file_calls.h"

#include <string>

namespace embedded {

/// The path under which `read_file` reads standard input.
extern const char* const standard_input;

/// The bytes that were kept for a path; null where none were.
const std::string* held_input(const std::string& path);
/// Whether the descriptor is of such an input.
bool is_stream(int descriptor);
/// Keeps what was read from such a path.
void hold_input(const std::string& path, const std::string& bytes);
/// Not open, with `errno` set, where it can't be read.
Descriptor open_input(const std::string& path);

} // namespace embedded
