#pragma once
// Files that a command doesn't take.

#include "formats/file_kind.h"

#include <string>
#include <vector>

namespace tool {

/// The kind of the file; throws `JobError` where it can't be read.
formats::FileKind kind_of(const std::string& path);

/// "cut.txt: is a printed report; a cutlist table (.cdb) is wanted", as a `JobError`.
[[noreturn]] void refuse_kind(const std::string& path, formats::FileKind kind, const char* wanted);

/// Throws that unless the file is of one of the kinds that are taken. `wanted` names them.
void check_kind(const std::string& path, const std::vector<formats::FileKind>& taken, const char* wanted);

/// Throws `JobError` unless the file is a logging table that can be read with all of its rows.
void check_is_log_table(const std::string& path);

} // namespace tool
