#pragma once
// All readers of edits, and which of them a file is for.

#include "formats/edit_reading.h"
#include "formats/file_kind.h"

#include <string>
#include <vector>

namespace formats {

struct EditReader {
    FileKind kind;
    const char* extension; ///< in lower case, with its point
    bool many;             ///< several files make one edit
    ReadResult (*read)(const std::vector<std::string>& paths, const ReadOptions& options);
};

/// By what the file holds; where that tells nothing by its name, so that the reader says what is wrong. Null where
/// none reads it.
const EditReader* edit_reader_of(FileKind kind, const std::string& path);

/// "an edit (.otio, .edl)": what to say is wanted.
std::string edits_wanted();

/// Reads, or lists what there is to read. A reader that knows of no sequences has one, its edit.
ReadResult read_edit(const EditReader& reader, const std::vector<std::string>& paths, const ReadOptions& options);

} // namespace formats
