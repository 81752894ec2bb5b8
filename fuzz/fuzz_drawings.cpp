// Draws any bytes that are a saved cutlist, and a recut of it by steps out of the same bytes. Each picture is
// well-formed and as long as its frames; pages can be made of all.

#include "documents/change_drawing.h"
#include "documents/list_kinds.h"
#include "documents/optical_drawing.h"
#include "documents/pdf.h"
#include "documents/reel_drawing.h"
#include "documents/svg.h"
#include "film/film_uses.h"
#include "film/find.h"
#include "formats/xml/xml_document.h"
#include "tests/support/scratch_directory.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr std::size_t longest_table = 1 << 16, most_steps = 20;

void require(bool held) {
    if (!held) std::abort();
}

std::int64_t number_of(const formats::xml::Element& element, const char* name) {
    return std::atoll(std::string(element.attribute(name)).c_str());
}

void check(const documents::Drawing& drawing) {
    const bool down = drawing.way == documents::Way::down;
    formats::xml::Document svg;
    require(svg.parse(documents::svg_of(drawing)));
    const std::int64_t unit = number_of(svg.root(), "data-units");
    for (const formats::xml::Element& part : svg.root().children())
        for (const formats::xml::Element& shape : part.children()) {
            const std::string_view kind = shape.attribute("data-kind");
            if (kind != "film" && kind != "spacer" && kind != "black") continue;
            require(number_of(shape, down ? "height" : "width") == number_of(shape, "data-frames") * unit);
        }
}

/// Steps out of bytes, most of which can be carried out.
std::vector<change_step> steps_of(const std::uint8_t* data, std::size_t size, std::int64_t length) {
    std::vector<change_step> steps;
    for (std::size_t i = 0; i + 4 <= size && steps.size() < most_steps; i += 4) {
        change_step step;
        step.step = static_cast<int>(steps.size()) + 1;
        step.action = static_cast<change_action>(data[i] % 4);
        step.reel = 1;
        step.position = static_cast<int>(data[i + 1] * std::min<std::int64_t>(length, INT_MAX / 256) / 256);
        step.length = data[i + 2];
        step.other_step = data[i + 3] % (step.step + 1);
        steps.push_back(step);
    }
    return steps;
}

void draw(const recdb& table, const std::uint8_t* data, std::size_t size) {
    const documents::CutFilmPtr cut =
        documents::cut_film(film::uses_of_table(table), table, film::check_table(table, {}), {});
    check(documents::reel_drawing(*cut));
    for (const documents::LabOptical& optical : cut->opticals)
        for (const documents::Drawing& drawing : documents::drawings_of(*cut, optical))
            check(drawing);
    const documents::Recut recut{{cut}, {cut}, steps_of(data, size, cut->length())};
    for (const documents::Drawing& drawing : documents::change_drawings(recut))
        check(drawing);
    for (const documents::Drawing& drawing : documents::step_drawings(recut))
        check(drawing);
    documents::PdfOptions options;
    options.made = 0;
    const auto document = documents::document_of(*cut, *documents::profile_named(""));
    require(documents::pdf_of(document, options).compare(0, 5, "%PDF-") == 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > longest_table) return 0;
    static const ScratchDirectory folder;
    const std::string path = folder.file("t.cdb");
    put_bytes(path, std::string(reinterpret_cast<const char*>(data), size));
    const recdb table(fromUTF8(LightweightString<char>(path.c_str())), INT_MAX, false);
    if (table.get_valid() != 0) draw(table, data, size);
    return 0;
}
