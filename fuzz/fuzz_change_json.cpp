// The document of the steps between any two files as the cutlists of two cuts: JSON whatever the names hold, with a
// member for each step. The kind of film is named by the first line of the bytes.

#include "formats/json_document.h"
#include "fuzz/compared_tables.h"
#include "tool/change_json.h"

#include <cstdint>
#include <cstdlib>

namespace {

using formats::JsonValue;

constexpr std::size_t longest_input = 1 << 15;

void check(bool holds) {
    if (!holds) std::abort();
}

void check_steps(const JsonValue& lists, const char* name, change_list list) {
    unsigned count = 0;
    const change_step* steps = change_steps(list, count);
    const JsonValue* members = formats::json_member(lists, name);
    check(members && members->IsArray() && members->Size() == count);
    for (unsigned i = 0; i < count; ++i) {
        const JsonValue* number = formats::json_member((*members)[i], "step");
        check(number && number->GetInt() == steps[i].step);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static ComparedTables tables;
    if (size > longest_input) return 0;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    tables.take(bytes);
    tables.compare({"0", "0", "1"});
    formats::JsonDocument document;
    check(document.parse(tool::change_document(bytes.substr(0, bytes.find('\n')))));
    const JsonValue* lists = formats::json_member(document.root(), "lists");
    check(lists != nullptr);
    check_steps(*lists, "changes", detailed_changes);
    check_steps(*lists, "bench", bench_changes);
    return 0;
}
