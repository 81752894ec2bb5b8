// Reads any bytes as a printed report, and holds it against a little film.

#include "film/list_proof.h"
#include "film/printed_report.h"

#include <cstdint>
#include <cstdlib>

namespace {

constexpr std::size_t longest_report = 1 << 18;

void check_place(const film::Place& place) {
    if (place.line < 1) std::abort();
}

/// Two shots with a dissolve, and a third above them.
film::Strips some_film() {
    film::Strip strip;
    strip.event = strip.optical = 1;
    strip.end = 40;
    strip.rolls.listed = strip.name = "A1";
    strip.key.kind = label_key_35mm_4p;
    strip.key.prefix = "KJ123456";
    strip.item = 0;
    film::Strips strips{strip, strip, strip};
    strips[1].event = 2;
    strips[1].item = 1;
    strips[1].start = 30;
    strips[1].end = 90;
    strips[2].layer = 1;
    strips[2].role = film::Role::layer;
    return strips;
}

void check_proof(std::string_view report) {
    static const film::Strips strips = some_film();
    film::ProofOptions options;
    options.film = label_key_35mm_4p;
    const film::ListProof proof = film::prove_report(report, strips, options);
    for (const film::ProofFinding& failure : proof.failures)
        if (film::line_of(failure).empty()) std::abort();
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
    check_proof({reinterpret_cast<const char*>(data), size});
    return 0;
}
