// Reads any bytes as the header of a DPX picture; what comes of it stays within what such headers can say.

#include "formats/scans/dpx_header.h"
#include "fuzz/scan_bytes.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const formats::HeaderReading reading = formats::read_dpx_header({reinterpret_cast<const char*>(data), size});
    fuzz::expect(reading.wanted == 0);
    if (!reading.trouble) fuzz::check_header(reading.header);
    return 0;
}
