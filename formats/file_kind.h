#pragma once
// What a file is, told by its bytes, whatever it is called.

#include <string>
#include <string_view>

namespace formats {

enum class FileKind {
    empty,
    cutlist,         ///< a cutlist table (.cdb)
    logging_table,   ///< a logging table (.RDB)
    changelist_work, ///< a working file of a changelist (.chg)
    other_table,     ///< a record table of none of these
    crlf_table,      ///< a record table whose lines end in CR LF, which nothing reads
    marked_table,    ///< one behind a byte order mark
    otio,
    edl,
    ale,
    flex,
    keylog,
    report,          ///< a printed one, of a cutlist or a changelist
    change_document, ///< the steps of a changelist as JSON
    json,
    fcp7xml,
    fcpxml,
    xml,
    aaf,
    pdf,
    otioz, ///< an archive that holds an edit and its media
    zip,
    wide_text, ///< 16-bit text
    binary,
    text, ///< none of the above; a delimited log may be
};

/// Looks at the head of the file only, except for edit lists, whose first event may stand anywhere.
FileKind kind_of_file(std::string_view bytes);

/// Whether it is a record table whose mark and lines are as they should be.
constexpr bool is_record_table(FileKind kind) { return kind >= FileKind::cutlist && kind <= FileKind::other_table; }

/// "an edit list", "a PDF document".
const char* name_of(FileKind kind);
/// The command that takes such a file, as "cutlist"; empty where none does.
const char* command_for(FileKind kind);

/// What there is to say to whoever gave such a file where it isn't taken:
/// "is a cutlist table; \"quillbrook print\" takes it".
std::string told_kind(FileKind kind);

} // namespace formats
