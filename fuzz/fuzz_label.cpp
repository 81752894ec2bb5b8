// Any text read as any kind of label: what is read prints, and its print reads and prints the same again.

#include "host/labels.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

void require(bool holds, const char* what, const std::string& text) {
    if (holds) return;
    std::fprintf(stderr, "%s: %s\n", what, text.c_str());
    std::abort();
}

bool wraps(const LabelPoint& point) { return point.cvt()->prefix_length() == 0 && point.cvt()->count_digits() == 0; }

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    LabelPoint point;
    point.set_type(static_cast<label_t>(data[0] % 50));
    point.set_sample(text.c_str());
    if (!point.is_useful()) {
        require(point.sample == 0, "a refused text left a sample", text);
        return 0;
    }
    const std::string printed = point.get_string();
    LabelPoint again;
    again.set_type(point.type());
    again.set_sample(printed.c_str());
    require(again.is_useful(), "its own print is refused", printed);
    require(again.get_string() == printed, "prints otherwise", printed);
    // Timecode forgets whole days.
    if (!wraps(point)) require(again == point, "comes back changed", printed);
    return 0;
}
