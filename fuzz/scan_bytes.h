#pragma once
// What the fuzz targets of scanned pictures hold headers against.

#include "formats/scans/scan_header.h"

#include <cstdint>
#include <cstdlib>

namespace fuzz {

inline void expect(bool holds) {
    if (!holds) std::abort();
}

inline void check_header(const formats::ScanHeader& header) {
    expect(!header.key || !header.key_faulty);
    expect(!header.time || !header.time_faulty);
    if (header.key) {
        expect(header.key->prefix.size() == 6 && formats::number_of_digits(header.key->prefix) >= 0);
        expect(header.key->count >= 0 && header.key->count <= 9999);
        expect(header.key->offset >= 0 && header.key->offset <= 119);
        expect(header.key->film.size() == 4 || header.key->film.size() == 2 || header.key->film.empty());
    }
    if (header.time)
        for (const int part : header.time->parts)
            expect(part >= 0 && part <= 99);
}

} // namespace fuzz
