// Reads any bytes as JSON in both ways: the quick one must end in the same document as the careful one, or the same
// error.

#include "formats/json_document.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    formats::JsonDocument lent, copied;
    if (lent.parse_lent(bytes) != copied.parse(bytes) || lent.error() != copied.error()) std::abort();
    if (lent.error().empty() && json_to_text(lent.root()) != json_to_text(copied.root())) std::abort();
    return 0;
}
