// Reads any bytes as an AAF edit, with options that the first byte chooses; each channel of what is read must have its
// events in order, and what is refused must say why.

#include "formats/aaf/aaf_reader.h"
#include "fuzz/edit_order.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    formats::ReadOptions options;
    options.rate = data[0] & 1 ? embedded::nearest_rate(25.0) : nullptr;
    options.all_effects = (data[0] & 2) != 0;
    options.list_only = (data[0] & 4) != 0;
    const formats::ReadResult result = formats::read_aaf_bytes(bytes, "a.aaf", 0, options);
    if (result.edit && !result.error.empty()) std::abort();
    if (!result.edit && result.error.empty() && result.sequences.empty()) std::abort();
    if (!result.edit) return 0;
    check_order(result.edit);
    return 0;
}
