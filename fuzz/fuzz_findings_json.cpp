// The document of what is wrong or doubtful of any bytes as an edit (.otio, or by the first byte .edl): JSON with a
// member for each finding. What a line of the command tells of one is one line.

#include "embedded/edit_builder.h"
#include "formats/edl/edl_reader.h"
#include "formats/json_document.h"
#include "formats/otio/otio_reader.h"
#include "tool/film_check.h"
#include "tool/findings_json.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using formats::JsonValue;

constexpr std::size_t longest_edit = 1 << 14;

void check(bool holds) {
    if (!holds) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0 || size > longest_edit) return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    const int choice = data[0];
    formats::ReadOptions options;
    options.rate = embedded::nearest_rate(25.0);
    options.all_effects = true;
    const auto read = (choice & 1) != 0 ? formats::read_edl_texts({{bytes, "a.edl", 0}}, options)
                                        : formats::read_otio_bytes(bytes, "a.otio", 0, options);
    if (!read.edit) return 0;
    const tool::ListedFilm film(read.edit, "");
    film::CheckOptions checked;
    checked.edit_file = "a.edit";
    checked.uses.kind = choice & 2 ? tool::sound_kind : tool::picture_kind;
    checked.uses.neg_cut = (choice & 4) != 0;
    checked.edl = (choice & 1) != 0;
    const film::Findings findings = tool::check_film(tool::ListedFilm(read.edit, ""), checked, read.warnings);
    formats::JsonDocument document;
    check(document.parse(tool::findings_document(findings)));
    const JsonValue* members = formats::json_member(document.root(), "findings");
    check(members && members->IsArray() && members->Size() == findings.size());
    for (const film::Finding& finding : findings)
        check(tool::line_of(finding).find('\n') == std::string::npos);
    return 0;
}
