// Reads any bytes as a compound file, and all that it holds: never more than some times its bytes.

#include "formats/compound/compound_file.h"

#include <cstdlib>

namespace {

using formats::compound::File;

std::size_t read_all(const File& file, formats::compound::StorageId storage) {
    std::size_t count = 0;
    for (const std::string& name : file.names(storage)) {
        if (const auto bytes = file.stream(storage, name)) count += bytes->size();
        if (const auto inner = file.storage(storage, name)) count += read_all(file, *inner);
    }
    return count;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    File file;
    if (file.open(bytes) != file.error().empty()) std::abort();
    if (!file.error().empty()) return 0;
    if (read_all(file, formats::compound::root_storage) > formats::compound::read_limit * size) std::abort();
    return 0;
}
