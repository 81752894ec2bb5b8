// Reads any bytes as XML, within small limits, and walks the tree: each child knows its parent, numbers rise in the
// order of the text and all are met.

#include "formats/xml/xml_document.h"

#include <cstdint>
#include <cstdlib>

namespace {

using formats::xml::Element;

void walk(const Element& element, std::uint32_t& next) {
    if (element.number() != next++ || element.line() == 0 || element.name().empty()) std::abort();
    for (const Element child : element.children()) {
        if (child.parent() != element) std::abort();
        walk(child, next);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    formats::xml::Limits limits;
    limits.depth = 20;
    limits.elements = 500;
    limits.text = 100;
    limits.names = 50;
    formats::xml::Document document;
    const bool read = document.parse({reinterpret_cast<const char*>(data), size}, limits);
    if (read != document.error().empty() || read != static_cast<bool>(document.root())) std::abort();
    std::uint32_t next = 0;
    if (read) walk(document.root(), next);
    if (next != document.element_count() || next > limits.elements) std::abort();
    return 0;
}
