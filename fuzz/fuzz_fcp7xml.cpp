// Reads any bytes as FCP 7 XML, with options that the first byte chooses; each channel of what is read must have its
// events in order, and what is refused must say why.

#include "formats/fcp7xml/fcp7_reader.h"
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
    if (data[0] & 8) options.sequence = "Reel 1";
    const formats::ReadResult result = formats::read_fcp7xml_bytes(bytes, "a.xml", 0, options);
    if ((!result.edit && result.sequences.empty()) == result.error.empty()) std::abort();
    if (!result.edit) return 0;
    check_order(result.edit);
    return 0;
}
