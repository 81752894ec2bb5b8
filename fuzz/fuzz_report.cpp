// Reads any bytes as a printed report.

#include "film/printed_report.h"

#include <cstdint>
#include <cstdlib>

namespace {

constexpr std::size_t longest_report = 1 << 18;

void check_place(const film::Place& place) {
    if (place.line < 1) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > longest_report) return 0;
    const film::PrintedReport report = film::read_report({reinterpret_cast<const char*>(data), size});
    if (report.pages.lists.empty() && report.faults.empty()) std::abort();
    for (const film::ReadFault& fault : report.faults)
        check_place(fault.place);
    if (report.assembly)
        for (const film::AssemblyEntry& entry : report.assembly->events)
            check_place(entry.place);
    return 0;
}
