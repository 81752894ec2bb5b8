#include "formats/bundle/otio_bundle.h"
#include "formats/bundle/zip_entry.h"
#include "fuzz/mutators/mutators.h"

namespace fuzz {
namespace {

std::string number(std::uint64_t value, int size) {
    std::string bytes;
    for (int i = 0; i < size; ++i, value >>= 8)
        bytes += static_cast<char>(value);
    return bytes;
}

/// An archive with that one file, not packed. Nobody looks at times and checksums.
std::string archive_of(std::string_view name, const std::string& text) {
    const std::string head = number(20, 2) + number(0, 4) + number(0, 8) + number(text.size(), 4) +
                             number(text.size(), 4) + number(name.size(), 2) + number(0, 2);
    const std::string body = "PK\x03\x04" + head + std::string(name) + text;
    const std::string directory =
        "PK\x01\x02" + number(20, 2) + head + number(0, 10) + number(0, 4) + std::string(name);
    return body + directory + "PK\x05\x06" + number(0, 4) + number(1, 2) + number(1, 2) + number(directory.size(), 4) +
           number(body.size(), 4) + number(0, 2);
}

} // namespace

std::string mutate_bundle(const std::string& archive, Random& random, const Scramble& scramble) {
    std::string why;
    const auto edit = formats::bundle::entry_of(archive, formats::bundled_edit, why);
    if (!edit || random.one_in(2)) return mutate_numbers(archive, random, scramble);
    return archive_of(formats::bundled_edit, mutate_by_looks(*edit, random, scramble));
}

} // namespace fuzz
