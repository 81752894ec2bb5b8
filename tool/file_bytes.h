#pragma once
// Files that a job takes in whole.

#include <string>

namespace tool {

/// All bytes of a file. Throws `JobError` with its name and why where it can't be read.
std::string bytes_of(const std::string& path);

} // namespace tool
