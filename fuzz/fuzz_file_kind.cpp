// Tells the kind of any bytes. What is told must have words, tables must be told by their mark alone, and neither a
// byte order mark nor what stands behind a long head may change the kind of a text.

#include "formats/file_kind.h"

#include <cstdint>
#include <cstdlib>

using formats::FileKind;

namespace {

bool is_table(FileKind kind) {
    return formats::is_record_table(kind) || kind == FileKind::crlf_table || kind == FileKind::marked_table;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const FileKind kind = formats::kind_of_file(bytes);
    if (formats::told_kind(kind).size() <= 3 || !*formats::name_of(kind)) std::abort();
    if ((size == 0) != (kind == FileKind::empty)) std::abort();
    const std::size_t mark = bytes.substr(0, 3) == "\xEF\xBB\xBF" ? 3 : 0;
    if (is_table(kind) && bytes.compare(mark, 7, "%recdb ") != 0) std::abort();
    if (kind == FileKind::edl && formats::kind_of_file("\xEF\xBB\xBF" + bytes) != kind && mark == 0) std::abort();
    return 0;
}
