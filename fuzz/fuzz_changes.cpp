// Compares any two files as the cutlists of two cuts, in each form of the lists, and carries the steps out.

#include "fuzz/compared_tables.h"

#include <cstdint>
#include <cstdlib>

namespace {

constexpr std::size_t longest_input = 1 << 16;

constexpr ComparedTables::Form forms[] = {{"0", "0", "1"}, {"1", "1", "1"}, {"2", "0", "0"}};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static ComparedTables tables;
    if (size > longest_input) return 0;
    tables.take({reinterpret_cast<const char*>(data), size});
    for (const ComparedTables::Form& form : forms) {
        tables.compare(form);
        for (const change_list list : {detailed_changes, bench_changes}) {
            const change_proof proof = prove_change_steps(list);
            if (!proof.proved && proof.reason[0] == '\0') std::abort();
        }
    }
    return 0;
}
