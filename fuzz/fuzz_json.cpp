// Reads any bytes as JSON: what is read must read back from its own text as the same, and what is refused must say why.

#include "formats/json_document.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    formats::JsonDocument document, again;
    const bool sound = document.parse({reinterpret_cast<const char*>(data), size});
    if (sound != document.error().empty()) std::abort();
    if (!sound) return 0;
    const std::string text = json_to_text(document.root());
    if (!again.parse(text) || json_to_text(again.root()) != text) std::abort();
    return 0;
}
