// Any bytes as several edit lists of one programme, parted by bytes of 1. What is refused says why.

#include "formats/edl/edl_reader.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    std::vector<formats::EdlText> lists;
    while (!rest.empty() && lists.size() < 8) {
        const std::size_t end = std::min(rest.find('\x01'), rest.size());
        lists.push_back({rest.substr(0, end), std::to_string(lists.size()) + ".edl", 0});
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    if (lists.empty()) return 0;
    formats::ReadOptions options;
    options.rate = embedded::nearest_rate(25.0);
    const formats::ReadResult result = formats::read_edl_texts(lists, options);
    if (!result.edit == result.error.empty()) std::abort();
    return 0;
}
