// Makes documents of any bytes that are a saved cutlist. No text may leave its cell in any of the formats.

#include "documents/csv.h"
#include "documents/html.h"
#include "documents/json.h"
#include "documents/list_kinds.h"
#include "documents/plain_text.h"
#include "film/film_uses.h"
#include "film/find.h"
#include "tests/support/environment.h"
#include "tests/support/scratch_directory.h"

#include <climits>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

constexpr std::size_t longest_table = 1 << 16;

std::size_t count_of(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
}

void require(bool held) {
    if (!held) std::abort();
}

std::string all_controls() {
    std::string all;
    for (char c = 0; c < ' '; ++c)
        if (c != '\n' && c != '\r') all += c;
    return all;
}

/// By the library, which isn't built for fuzzing: a loop here took half of a run.
bool is_printable(const std::string& text) {
    static const std::string controls = all_controls();
    return text.find_first_of(controls) == std::string::npos;
}

void check(const documents::Document& document) {
    std::size_t rows = 0;
    for (const documents::List& list : document.lists) {
        const std::string csv = documents::csv_of(list);
        require(count_of(csv, "\r\n") == documents::count_of_rows(list) + 1 &&
                count_of(csv, "\n") == count_of(csv, "\r\n"));
        rows += documents::count_of_rows(list);
    }
    const std::string page = documents::html_of(document), json = documents::json_of(document);
    require(count_of(page, "<tr role=row id=") == rows);
    require(count_of(page, "<script>") == 1 && count_of(page, "</style>") == 1);
    require(is_printable(page) && is_printable(json) && is_printable(documents::plain_text_of(document)));
}

void make_documents(const recdb& table, const documents::CutOptions& options) {
    const documents::CutFilmPtr cut =
        documents::cut_film(film::uses_of_table(table), table, film::check_table(table, {}), options);
    check(documents::document_of(*cut, *documents::profile_named("all")));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchDirectory scratch;
    static const EnvironmentValue now("SOURCE_DATE_EPOCH", "1000000000");
    if (size > longest_table) return 0;
    const std::string path = scratch.file("table.cdb");
    put_bytes(path, std::string(reinterpret_cast<const char*>(data), size));
    const recdb table(fromUTF8(path.c_str(), -1), INT_MAX, false);
    documents::CutOptions frames;
    frames.frames = true;
    frames.handles = 8;
    for (const documents::CutOptions& options : {documents::CutOptions(), frames})
        make_documents(table, options);
    return 0;
}
