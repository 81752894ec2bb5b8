#include "formats/file_kind.h"

#include "formats/bundle/otio_bundle.h"
#include "formats/edl/edl_reader.h"
#include "formats/logs/ale_reader.h"
#include "formats/logs/flex_reader.h"
#include "formats/logs/keylog_reader.h"
#include "formats/text_lines.h"
#include "host/ascii_text.h"

#include <algorithm>

namespace formats {
namespace {

using namespace std::string_view_literals;

/// What tells most kinds stands within so many bytes.
constexpr std::size_t head_size = 16 * 1024;

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
constexpr std::string_view table_mark = "%recdb ";

/// Files that begin with fixed bytes.
struct Magic {
    std::string_view bytes;
    FileKind kind;
};

constexpr Magic magics[] = {
    {"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv, FileKind::aaf},
    {"%PDF-"sv, FileKind::pdf},
    {"PK\x03\x04"sv, FileKind::zip},
    {"\xFF\xFE"sv, FileKind::wide_text},
    {"\xFE\xFF"sv, FileKind::wide_text},
};

/// Texts of a syntax, told by a word in their head; the last of a syntax has none and takes the rest.
struct Word {
    std::string_view word;
    FileKind kind;
};

constexpr Word tables[] = {{"\ncutdb=", FileKind::cutlist},
                           {"\nfilmdb=", FileKind::logging_table},
                           {"\nchgdb=", FileKind::changelist_work},
                           {"", FileKind::other_table}};
constexpr Word json_texts[] = {
    {"\"OTIO_SCHEMA\"", FileKind::otio}, {"\"quillbrook changes\"", FileKind::change_document}, {"", FileKind::json}};
constexpr Word xml_texts[] = {{"<xmeml", FileKind::fcp7xml}, {"<fcpxml", FileKind::fcpxml}, {"", FileKind::xml}};

template <std::size_t N> FileKind by_word(const Word (&words)[N], std::string_view head) {
    return std::find_if(std::begin(words), std::end(words) - 1,
                        [&](const Word& word) { return head.find(word.word) != std::string_view::npos; })
        ->kind;
}

// A CR in the first line of a table stands in all of them, and no reader of tables takes it or a mark before it.
FileKind kind_of_table(std::string_view head, bool marked) {
    const std::string_view first = head.substr(0, head.find('\n'));
    if (marked) return FileKind::marked_table;
    if (first.back() == '\r') return FileKind::crlf_table;
    // Parameters are told apart without regard to case.
    return by_word(tables, ascii::lower_case(std::string(head.substr(0, head.find("\n\n")))));
}

/// The heading of a page, without the blank lines at its top.
bool looks_like_report(std::string_view head) {
    constexpr std::string_view headings[] = {"Edit:         ", "QUILLBROOK CHANGE LIST"};
    return std::any_of(std::begin(headings), std::end(headings),
                       [&](std::string_view heading) { return head.substr(0, heading.size()) == heading; });
}

FileKind kind_of_lines(std::string_view bytes, std::string_view head) {
    if (looks_like_report(head)) return FileKind::report;
    const TextLines lines(head);
    if (looks_like_ale(lines)) return FileKind::ale;
    if (looks_like_keylog(lines)) return FileKind::keylog;
    if (looks_like_edl(bytes)) return FileKind::edl;
    return looks_like_flex(lines) ? FileKind::flex : FileKind::text;
}

/// XML may be 16-bit text, which its reader takes: its head without the half of the bytes that is 0.
FileKind kind_of_wide_text(std::string_view bytes) {
    std::string head;
    for (const char c : bytes.substr(2, 2 * head_size))
        if (c != '\0') head += c;
    const bool xml = !head.empty() && head[0] == '<';
    const FileKind kind = xml ? by_word(xml_texts, head) : FileKind::wide_text;
    return kind == FileKind::xml ? FileKind::wide_text : kind;
}

FileKind kind_of_text(std::string_view bytes, bool marked) {
    if (bytes.substr(0, table_mark.size()) == table_mark) return kind_of_table(bytes.substr(0, head_size), marked);
    const std::string_view text = bytes.substr(std::min(bytes.find_first_not_of(" \t\r\n"), bytes.size()));
    const std::string_view head = text.substr(0, head_size);
    if (head.empty()) return FileKind::text;
    if (head[0] == '{' || head[0] == '[') return by_word(json_texts, head);
    if (head[0] == '<') return by_word(xml_texts, head);
    return kind_of_lines(text, head);
}

/// Some kinds say more further in.
FileKind kind_by_magic(FileKind kind, std::string_view bytes) {
    if (kind == FileKind::wide_text) return kind_of_wide_text(bytes);
    return kind == FileKind::zip && is_otioz(bytes) ? FileKind::otioz : kind;
}

struct Told {
    FileKind kind;
    const char* name;
    const char* command;
};

constexpr Told told[] = {
    {FileKind::empty, "empty", ""},
    {FileKind::cutlist, "a cutlist table", "print"},
    {FileKind::logging_table, "a logging table", "log show"},
    {FileKind::changelist_work, "a working file of a changelist", ""},
    {FileKind::other_table, "a record table, but neither a cutlist nor a log", ""},
    {FileKind::crlf_table, "a table with CR LF line ends, which an editor or a transfer made; take it as it was", ""},
    {FileKind::marked_table, "a table behind a byte order mark, which an editor put there; take it as it was", ""},
    {FileKind::otio, "an OpenTimelineIO edit", "cutlist"},
    {FileKind::edl, "an edit list", "cutlist"},
    {FileKind::ale, "an ALE log", "log import"},
    {FileKind::flex, "a FLEx log", "log import"},
    {FileKind::keylog, "a Keylog log", "log import"},
    {FileKind::report, "a printed report", ""},
    {FileKind::change_document, "the steps of a changelist", ""},
    {FileKind::json, "JSON, but no edit", ""},
    {FileKind::fcpxml, "an FCPXML edit", "cutlist"},
    {FileKind::fcp7xml, "an FCP 7 XML edit", "cutlist"},
    {FileKind::xml, "XML, but no edit", ""},
    {FileKind::aaf, "AAF or another compound file", "cutlist"},
    {FileKind::pdf, "a PDF document", ""},
    {FileKind::otioz, "an OpenTimelineIO bundle", "cutlist"},
    {FileKind::zip, "a ZIP archive", ""},
    {FileKind::wide_text, "16-bit text; save it as UTF-8", ""},
    {FileKind::binary, "binary", ""},
    {FileKind::text, "text of no kind that is known", ""},
};

const Told& row_of(FileKind kind) {
    return *std::find_if(std::begin(told), std::end(told) - 1, [kind](const Told& row) { return row.kind == kind; });
}

} // namespace

FileKind kind_of_file(std::string_view bytes) {
    if (bytes.empty()) return FileKind::empty;
    for (const Magic& magic : magics)
        if (bytes.substr(0, magic.bytes.size()) == magic.bytes) return kind_by_magic(magic.kind, bytes);
    const bool marked = bytes.substr(0, byte_order_mark.size()) == byte_order_mark;
    if (marked) bytes.remove_prefix(byte_order_mark.size());
    if (bytes.substr(0, head_size).find('\0') != std::string_view::npos) return FileKind::binary;
    return kind_of_text(bytes, marked);
}

const char* name_of(FileKind kind) { return row_of(kind).name; }

const char* command_for(FileKind kind) { return row_of(kind).command; }

std::string told_kind(FileKind kind) {
    const Told& row = row_of(kind);
    const std::string is = std::string("is ") + row.name;
    return *row.command ? is + "; \"quillbrook " + row.command + "\" takes it" : is;
}

} // namespace formats
