// What kind of file any bytes are taken for: whatever the name says, a log is read or refused with a reason, and
// looking for an edit list ends.

#include "formats/edl/edl_reader.h"
#include "formats/logs/log_reader.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    formats::looks_like_edl(bytes);
    for (const char* path : {"a.ale", "a.flx", "a.ftl", "a.csv", "a.RDB", "a"}) {
        const formats::Log log = formats::read_log_bytes(bytes, path);
        if (!log.error.empty() && !log.rows.empty()) std::abort();
    }
    return 0;
}
