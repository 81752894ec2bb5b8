#include "embedded/limits.h"

#include "embedded/visible_text.h"

namespace embedded {
namespace {

constinit Limits chosen;

} // namespace

void set_limits(const Limits& limits) {
    chosen = limits;
    set_longest_name(limits.name_bytes);
}

const Limits& limits() { return chosen; }

std::string fault_of_size(std::uint64_t bytes) {
    constexpr std::size_t mebibyte = std::size_t{1} << 20;
    if (bytes <= chosen.input_bytes) return {};
    return "is larger than " + std::to_string(chosen.input_bytes / mebibyte) +
           " MiB, the most that is read; --max-input takes more";
}

} // namespace embedded
