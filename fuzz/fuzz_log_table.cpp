// Any bytes as a saved logging table: loaded, merged into a table of the present kind, and turned into shots. Merging
// takes all rows or none.

#include "logging/log_shot_list.h"
#include "quillbrook/logging_tables.h"
#include "tests/support/scratch_directory.h"

#include <climits>
#include <cstdint>
#include <cstdlib>

namespace {

class SilentLogger : public LoggerHandle {
public:
    void message(const LightweightString<wchar_t>&, int) override {}
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchDirectory scratch;
    if (size > 1 << 15) return 0;
    const LightweightString<wchar_t> path = fromUTF8(scratch.file("a.RDB").c_str(), -1);
    put_bytes(scratch.file("a.RDB"), std::string(reinterpret_cast<const char*>(data), size));
    filmdb table(path);
    if (table.get_valid()) {
        filmdb merged;
        const int result = merged.add_any_recdb(&table);
        if (merged.get_num_records() != (result == 0 ? table.get_num_records() : 0)) std::abort();
    }
    recdb plain(path, INT_MAX, false);
    if (!plain.get_valid()) return 0;
    SilentLogger logger;
    const LogShotList shots(plain, -1, logger, 2);
    if (shots.num_shots != static_cast<int>(shots.shots.size())) std::abort();
    return 0;
}
