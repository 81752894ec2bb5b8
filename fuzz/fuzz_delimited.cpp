// Reads any bytes as a log; each row that comes of it must survive a table.

#include "formats/logs/delimited_reader.h"
#include "fuzz/log_bytes.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return fuzz::read_any(data, size, formats::read_delimited);
}
