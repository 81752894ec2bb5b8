// Reads any bytes as the header of an OpenEXR picture, in two pieces as from a disc: cut off, it asks for more, and
// never for less or without end.

#include "formats/scans/exr_header.h"
#include "fuzz/scan_bytes.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    for (const std::size_t have : {size / 2, size}) {
        const formats::HeaderReading reading = formats::read_exr_header(bytes.substr(0, have));
        if (reading.trouble) continue;
        if (reading.wanted != 0)
            fuzz::expect(reading.wanted > have && reading.wanted <= formats::most_exr_header_bytes);
        else
            fuzz::check_header(reading.header);
    }
    return 0;
}
