// Reads any bytes as an edit list, at a rate that the first byte chooses; each channel of what is read must have its
// events in order, and each message must say something.

#include "formats/edl/edl_reader.h"
#include "fuzz/edit_order.h"

#include <cstdint>
#include <cstdlib>

namespace {

constexpr double rates[] = {0, 24000.0 / 1001, 24, 25, 30000.0 / 1001, 30, 50, 60000.0 / 1001};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    formats::ReadOptions options;
    const double rate = rates[data[0] % (sizeof rates / sizeof *rates)];
    options.rate = rate > 0 ? embedded::nearest_rate(rate) : nullptr;
    options.all_effects = data[0] >= 128;
    const formats::ReadResult result = formats::read_edl_texts({{bytes, "a.edl", 0}}, options);
    if (!result.edit == result.error.empty()) std::abort();
    if (!result.edit) return 0;
    check_order(result.edit);
    return 0;
}
