#include "tool/limit_options.h"

#include "embedded/limits.h"

#include <climits>

namespace tool {

namespace {

constexpr std::size_t mebibyte = std::size_t{1} << 20;
constexpr int most_mebibytes = 1 << 20;
constexpr int shortest_name = 16;
constexpr int shortest_line = 256;

} // namespace

LimitOptions::LimitOptions()
    : input_mebibytes_(static_cast<int>(embedded::Limits().input_bytes / mebibyte)),
      line_bytes_(static_cast<int>(embedded::Limits().line_bytes)),
      name_bytes_(static_cast<int>(embedded::Limits().name_bytes)) {}

void LimitOptions::add_to(OptionTable& options) {
    options.add({
        {"--max-input", "MIB", "The largest file to read", WholeNumber{input_mebibytes_, 1, most_mebibytes}},
        {"--max-line", "BYTES", "The longest line of an edit list or a log",
         WholeNumber{line_bytes_, shortest_line, INT_MAX}},
        {"--max-name", "BYTES", "Longer names are cut", WholeNumber{name_bytes_, shortest_name, INT_MAX}},
    });
}

void LimitOptions::apply() const {
    embedded::Limits limits;
    limits.input_bytes = static_cast<std::size_t>(input_mebibytes_) * mebibyte;
    limits.line_bytes = static_cast<std::size_t>(line_bytes_);
    limits.name_bytes = static_cast<std::size_t>(name_bytes_);
    embedded::set_limits(limits);
}

} // namespace tool
