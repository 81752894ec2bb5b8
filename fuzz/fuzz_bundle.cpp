// Reads any bytes as an archive with an edit; what is refused must say why.

#include "formats/bundle/otio_bundle.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const formats::ReadResult result = formats::read_otioz_bytes(bytes, "a.otioz", 0);
    if (!result.edit == result.error.empty()) std::abort();
    if (result.edit && !formats::is_otioz(bytes)) std::abort();
    return 0;
}
