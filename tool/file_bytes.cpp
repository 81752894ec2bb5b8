#include "tool/file_bytes.h"

#include "embedded/services.h"
#include "tool/tool_error.h"

namespace tool {

std::string bytes_of(const std::string& path) {
    std::string bytes, why;
    if (!embedded::read_file(path, &bytes, &why)) throw JobError(path + ": " + why);
    return bytes;
}

} // namespace tool
