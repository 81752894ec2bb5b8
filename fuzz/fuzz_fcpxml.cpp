// Reads any bytes as FCPXML, with options that the first byte chooses; each channel of what is read must have its
// events in order, and what is refused must say why.

#include "formats/fcpxml/fcpxml_reader.h"
#include "fuzz/edit_order.h"

#include <cstdint>
#include <cstdlib>

namespace {

/// The first of several, as nobody is there to choose.
std::string first_sequence(std::string_view bytes) {
    formats::ReadOptions options;
    options.list_only = true;
    const formats::ReadResult listed = formats::read_fcpxml_bytes(bytes, "a.fcpxml", 0, options);
    return listed.sequences.size() < 2 ? std::string() : listed.sequences[0].name;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    formats::ReadOptions options;
    options.rate = data[0] & 1 ? embedded::nearest_rate(24.0) : nullptr;
    options.all_effects = (data[0] & 2) != 0;
    options.sequence = first_sequence(bytes);
    const formats::ReadResult result = formats::read_fcpxml_bytes(bytes, "a.fcpxml", 0, options);
    if (!result.edit == result.error.empty()) std::abort();
    if (!result.edit) return 0;
    check_order(result.edit);
    return 0;
}
