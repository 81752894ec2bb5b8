// What libFuzzer calls for a new input: some changes by the looks of the bytes, now and then one of its own. Of targets
// whose first byte chooses options that byte stays apart.

#include "fuzz/mutators/mutators.h"

#include <algorithm>
#include <cstring>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size);

namespace {

constexpr std::size_t longest_leaf = 4096;

std::string scramble(std::string bytes, fuzz::Random&) {
    const std::size_t size = bytes.size(), most = std::min(size + 32, std::max(size, longest_leaf));
    bytes.resize(most);
    auto* data = reinterpret_cast<std::uint8_t*>(bytes.data());
    bytes.resize(LLVMFuzzerMutate(data, size, most));
    return bytes;
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t max_size,
                                               unsigned seed) {
    constexpr std::size_t choice = FUZZ_CHOICE_BYTES;
    fuzz::Random random(seed);
    if (size <= choice || random.one_in(8)) return LLVMFuzzerMutate(data, size, max_size);
    if (choice > 0 && random.one_in(16)) data[0] = static_cast<std::uint8_t>(random.below(256));
    std::string bytes(reinterpret_cast<const char*>(data) + choice, size - choice);
    do
        bytes = fuzz::mutate_by_looks(bytes, random, scramble);
    while (random.one_in(2));
    if (bytes.size() + choice > max_size) return LLVMFuzzerMutate(data, size, max_size);
    std::memcpy(data + choice, bytes.data(), bytes.size());
    return bytes.size() + choice;
}
